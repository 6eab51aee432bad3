#pragma once
// 他社データ取込（文章形式の指定）: the prose style of the entry to import.

#include <QDialog>

class QRadioButton;

namespace normaris {

class frmCopy02 : public QDialog {
    Q_OBJECT
public:
    explicit frmCopy02(QWidget *parent = nullptr);

private:
    void next();
    QRadioButton *m_styles[2] = {};
};

} // namespace normaris
