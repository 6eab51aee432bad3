#pragma once
// 他社データ取込（会社指定）: the company to import from. It owns the source
// connection `cnSource` for as long as it is open, so that several entries can be
// imported in a row through the steps after it.

#include "rulebase/forms/CompanyWizard.h"

namespace normaris {

class frmCopy01 : public CompanyWizard {
    Q_OBJECT
public:
    explicit frmCopy01(QWidget *parent = nullptr);
    ~frmCopy01() override;

protected:
    void act() override;
    void done(int result) override;

private:
    QListWidget *m_list = nullptr;
};

} // namespace normaris
