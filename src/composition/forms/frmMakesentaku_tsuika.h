#pragma once
// 追加: carries out an add that a panel has confirmed. The user picks the clause from
// the dictionary's stock of the level; it is copied with all selected below it into
// the document at the selected row.

#include "composition/ClauseAdder.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmMakesentaku_tsuika : public QDialog {
    Q_OBJECT
public:
    // Reads the selection a panel left in the application state (CurShubetsu,
    // AddShubetsu, CurRowIndex and the codes of the selected row).
    explicit frmMakesentaku_tsuika(QWidget *parent = nullptr);

protected:
    void reject() override; // 閉じる, the Escape key and the close box alike

private:
    void fill();
    void add();

    AddRequest m_request;
    Outcome (*m_method)(ClauseAdder &, AddRequest) = nullptr; // Tuika… of the selection
    bool m_done = false;                                      // an add runs once per opening
    QComboBox *m_stock = nullptr;
    QLabel *m_code = nullptr;
    QRadioButton *m_filter[3]{};
    QPushButton *m_add = nullptr;
};

} // namespace normaris
