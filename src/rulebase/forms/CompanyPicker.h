#pragma once
// A company dialog whose action works on the company picked from the list
// (会社指定, 会社削除): the dialogs differ only in their texts and the step.

#include "rulebase/CompanyFiles.h"
#include "rulebase/forms/CompanyWizard.h"

namespace normaris {

class CompanyPicker : public CompanyWizard {
    Q_OBJECT
public:
    using Step = Outcome (CompanyFiles::*)(const QString &name);
    CompanyPicker(const Texts &texts, Step step, QWidget *parent);

protected:
    void act() override;

private:
    Step m_step;
    QListWidget *m_list = nullptr;
};

} // namespace normaris
