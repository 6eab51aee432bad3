#include "rulebase/CompanyNames.h"

#include "base/FieldChecks.h"
#include "rulebase/CompanyStore.h"

namespace normaris {

QStringList companiesOf(const DataLayout &layout) { return CompanyStore::of(layout)->companyList(); }

std::optional<Outcome> checkKnownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name)
{
    if (CheckCompanyName(prompt, name))
        return Outcome::Stopped;
    QStringList companies;
    try {
        companies = companiesOf(layout);
    } catch (const Failure &e) {
        prompt.failure(e.text());
        return Outcome::Failed;
    }
    if (!companies.contains(name)) {
        prompt.plain(title, quotedName(name) + QStringLiteral("という会社はありません。"));
        return Outcome::Stopped;
    }
    return std::nullopt;
}

} // namespace normaris
