#pragma once
// 持ち帰り: the file of a company taken out put back in its place.

#include "office/forms/TransferDialog.h"

namespace normaris {

class frmMochikaeri : public TransferDialog {
public:
    explicit frmMochikaeri(QWidget *parent = nullptr) : TransferDialog(Kind::Checkin, parent) {}
};

} // namespace normaris
