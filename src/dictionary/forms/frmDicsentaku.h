#pragma once
// ディクショナリ管理（文章形式の指定）: the prose style, then the level and position.

#include <QDialog>

class QRadioButton;

namespace normaris {

class frmDicsentaku : public QDialog {
    Q_OBJECT
public:
    explicit frmDicsentaku(QWidget *parent = nullptr);

private:
    void next();

    QRadioButton *m_style[2] {};
};

} // namespace normaris
