#pragma once
// 会社指定: the only place that opens a company for work.

#include "rulebase/forms/CompanyPicker.h"

namespace normaris {

class frmDBSentaku : public CompanyPicker {
public:
    explicit frmDBSentaku(QWidget *parent = nullptr)
        : CompanyPicker({QStringLiteral("frmDBSentaku"), QStringLiteral("会社指定"), QStringLiteral("指定(&S)"),
                         QStringLiteral("処理する会社を指定します。"), QStringLiteral("会社名を選択し、［指定］を押してください。")},
                        &CompanyFiles::select, parent)
    {
    }
};

} // namespace normaris
