#pragma once
// 基本設定: the company's 16 basic settings and its workers' representative.

#include <QDialog>
#include <QList>

class QLineEdit;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmKihon : public QDialog {
    Q_OBJECT
public:
    explicit frmKihon(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    // Leaving the form, by any button, Escape or the close box, checks no field.
    void done(int result) override;

private:
    void update();
    void cancel();
    // Runs the check of field i; on a refusal the focus goes back to it.
    bool checkField(int index);

    QList<QLineEdit *> m_fields;
    QList<QRadioButton *> m_representative;
    QPushButton *m_cancel = nullptr;
    bool m_checking = false;
    bool m_leaving = false;
};

} // namespace normaris
