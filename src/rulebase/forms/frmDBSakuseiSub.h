#pragma once
// 新規データ作成, first step: the source of the new company's data.

#include "rulebase/forms/CompanyWizard.h"

class QRadioButton;

namespace normaris {

class frmDBSakuseiSub : public CompanyWizard {
    Q_OBJECT
public:
    explicit frmDBSakuseiSub(QWidget *parent = nullptr);

protected:
    void act() override;

private:
    QRadioButton *m_standard = nullptr;
};

} // namespace normaris
