#include "rulebase/CompanyNames.h"

#include "base/FieldChecks.h"
#include "rulebase/CompanyStore.h"

namespace normaris {

QStringList companiesOf(const DataLayout &layout) { return CompanyStore::of(layout)->companyList(); }

bool refuseUnknownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name)
{
    if (CheckCompanyName(prompt, name))
        return true;
    QStringList companies;
    try {
        companies = companiesOf(layout);
    } catch (const Failure &e) {
        prompt.failure(e.text());
        return true;
    }
    if (!companies.contains(name)) {
        prompt.plain(title, quotedName(name) + QStringLiteral("という会社はありません。"));
        return true;
    }
    return false;
}

} // namespace normaris
