#pragma once
// 会社指定: the only place that opens a company for work. Its title names the store
// the companies of its list are kept in; a company taken out of the server opens for
// reading, and the user is told so.

#include "rulebase/forms/CompanyPicker.h"

namespace normaris {

class frmDBSentaku : public CompanyPicker {
public:
    explicit frmDBSentaku(QWidget *parent = nullptr);

protected:
    void act() override;
};

} // namespace normaris
