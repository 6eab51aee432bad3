#pragma once
// データエクスポート: the console from which a finished document leaves the system.
// The user picks a style, a kind and a document; five buttons, from top to bottom,
// run the chain: データ作成, the settings and dates, the words, 設定項目の置換 and
// データをWordへ送る. Nothing records which steps have run: each step looks at the data.

#include "export/DocumentRenderer.h"

#include <QDialog>

class QButtonGroup;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace normaris {

class frmExport : public QDialog {
    Q_OBJECT
public:
    explicit frmExport(QWidget *parent = nullptr);

    // The path of the last document written, for the tests.
    QString lastDocument() const { return m_lastDocument; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void reloadLists();
    void showKind(int kind);
    void showStyle(int style);
    // The choosing step every button but 閉じる starts with: false after its message.
    bool chooseStyleAndDocument();
    RenderOptions renderOptions() const;

    void makeWorkData();
    void openSettings();
    void openWords();
    void substitute();
    void sendToWord();

    QButtonGroup *m_style = nullptr;  // Option2
    QButtonGroup *m_kind = nullptr;   // Option4
    QButtonGroup *m_cover = nullptr;  // Option3
    QButtonGroup *m_number = nullptr; // Option1
    QButtonGroup *m_filing = nullptr; // Option5
    QGroupBox *m_styleFrame = nullptr;
    QGroupBox *m_coverFrame = nullptr;
    QGroupBox *m_numberFrame = nullptr;
    QGroupBox *m_filingFrame = nullptr;
    QListWidget *m_lists[2] = {};  // DataList1, DataList2
    QLabel *m_listLabel = nullptr; // Label1
    QPushButton *m_steps[3] = {};  // Command4, Command5, Command6
    QString m_lastDocument;
};

} // namespace normaris
