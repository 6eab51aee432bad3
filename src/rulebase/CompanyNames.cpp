#include "rulebase/CompanyNames.h"

#include "base/FieldChecks.h"

namespace normaris {

bool refuseUnknownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name)
{
    if (CheckCompanyName(prompt, name))
        return true;
    if (!layout.companyList().contains(name)) {
        prompt.plain(title, quotedName(name) + QStringLiteral("という会社はありません。"));
        return true;
    }
    return false;
}

} // namespace normaris
