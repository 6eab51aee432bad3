#pragma once
// The dialogs that move a company between a company file and the store: 会社データの読込,
// 持ち出し and 持ち帰り. One frame, one row of kTransfers each (TransferDialog.cpp): a company
// (typed for a file coming in, else picked from the store's), a file (opened, or saved to)
// and the step of CompanyTransfer that gets both.

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace normaris {

class TransferDialog : public QDialog {
    Q_OBJECT
public:
    enum class Kind { ImportFile, Checkout, Checkin };
    TransferDialog(Kind kind, QWidget *parent);

private:
    void pickFile();
    void run();
    QString company() const;

    Kind m_kind;
    QComboBox *m_company = nullptr; // the store's companies (持ち出し, 持ち帰り)
    QLineEdit *m_name = nullptr;    // the name a file comes in as (会社データの読込)
    QLineEdit *m_file = nullptr;
    // The name the file's base name gave, replaced again while the user keeps it.
    QString m_offeredName;
};

} // namespace normaris
