#pragma once
// 日付の設定: the dates of one document, browsed in a grid and added, changed or
// deleted one at a time.

#include "rulebase/EffectiveDates.h"

#include <QDialog>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace normaris {

class frmSekoubi : public QDialog {
    Q_OBJECT
public:
    explicit frmSekoubi(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Mode { Browsing, Adding, Editing };

    void reload(std::optional<qint64> select = std::nullopt);
    void setMode(Mode mode);
    void moveTo(int row);
    void add();
    void edit();
    void commit();
    void cancel();
    void remove();
    qint64 currentId() const;

    EffectiveDates m_dates;
    QList<EffectiveDate> m_rows;
    Mode m_mode = Mode::Browsing;
    qint64 m_bookmark = 0;
    QTableWidget *m_grid = nullptr;
    QLineEdit *m_date = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_add = nullptr, *m_edit = nullptr, *m_update = nullptr, *m_cancel = nullptr, *m_delete = nullptr, *m_close = nullptr;
    QList<QPushButton *> m_moves;
};

} // namespace normaris
