#pragma once
// 持ち出し: a company of the server written to a file and kept unchanged until it comes back.

#include "office/forms/TransferDialog.h"

namespace normaris {

class frmMochidashi : public TransferDialog {
public:
    explicit frmMochidashi(QWidget *parent = nullptr) : TransferDialog(Kind::Checkout, parent) {}
};

} // namespace normaris
