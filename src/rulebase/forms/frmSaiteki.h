#pragma once
// データベース最適化: compacts a company's data file.

#include <QDialog>

class QLabel;
class QListWidget;

namespace normaris {

class frmSaiteki : public QDialog {
    Q_OBJECT
public:
    explicit frmSaiteki(QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    void optimise();
    QListWidget *m_list = nullptr;
    QLabel *m_message = nullptr;
};

} // namespace normaris
