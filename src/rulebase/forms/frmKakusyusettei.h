#pragma once
// 各種設定: the export console's door to the basic settings and the dates.

#include <QDialog>

namespace normaris {

class frmKakusyusettei : public QDialog {
    Q_OBJECT
public:
    explicit frmKakusyusettei(QWidget *parent = nullptr);
};

} // namespace normaris
