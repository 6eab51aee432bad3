#pragma once
// ディクショナリ更新: the open company, or every company, brought to the program's
// dictionary release. For the open company the summary comes first (worked out without
// keeping anything), then each 競合 with its three texts and the choice
// 会社の文章を残す／新しい文章にする, then the update itself.

#include "update/CompanyUpdate.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmDicUpdate : public QDialog {
    Q_OBJECT
public:
    explicit frmDicUpdate(QWidget *parent = nullptr);

private:
    void check();
    void showConflict();
    void decide(bool takeNew);
    void runUpdate();
    void runAll();

    QRadioButton *m_open = nullptr;
    QRadioButton *m_all = nullptr;
    QLabel *m_message = nullptr;
    QPlainTextEdit *m_summary = nullptr;
    QLabel *m_conflictPlace = nullptr;
    QPlainTextEdit *m_texts[3] = {};
    QPushButton *m_check = nullptr;
    QPushButton *m_keep = nullptr;
    QPushButton *m_take = nullptr;
    QPushButton *m_update = nullptr;
    UpdateResult m_trial;
    QList<UpdateEntry> m_conflicts;
    int m_next = 0;
    QStringList m_taken;
};

} // namespace normaris
