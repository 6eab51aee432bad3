#pragma once
// 会社削除: deletes a company's folder with everything in it.

#include "rulebase/forms/CompanyPicker.h"

namespace normaris {

class frmDBSakujyo : public CompanyPicker {
public:
    explicit frmDBSakujyo(QWidget *parent = nullptr)
        : CompanyPicker({QStringLiteral("frmDBSakujyo"), QStringLiteral("会社削除"), QStringLiteral("削除(&D)"),
                         QStringLiteral("選択した会社データをすべて削除します。"),
                         QStringLiteral("会社名を選択し、［削除］を押してください。")},
                        &CompanyFiles::remove, parent)
    {
    }
};

} // namespace normaris
