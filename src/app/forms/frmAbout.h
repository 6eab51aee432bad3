#pragma once

#include <QDialog>

namespace normaris {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;
};

} // namespace normaris
