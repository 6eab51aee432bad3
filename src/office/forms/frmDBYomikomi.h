#pragma once
// 会社データの読込: a company file put into the store as a company.

#include "office/forms/TransferDialog.h"

namespace normaris {

class frmDBYomikomi : public TransferDialog {
public:
    explicit frmDBYomikomi(QWidget *parent = nullptr) : TransferDialog(Kind::ImportFile, parent) {}
};

} // namespace normaris
