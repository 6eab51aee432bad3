#pragma once
// The foot of a dialog that acts once and closes: OK, キャンセル and ヘルプ.

#include <functional>

class QDialog;
class QHBoxLayout;

namespace normaris {

// The row of OK (cmdOK, the default: runs ok), キャンセル (cmdCancel: rejects) and
// ヘルプ(&H) (Command1: the dialog's help page), at the right.
QHBoxLayout *okCancelHelpRow(QDialog *dialog, const std::function<void()> &ok);

} // namespace normaris
