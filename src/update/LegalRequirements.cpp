#include "update/LegalRequirements.h"

namespace normaris {

QString legalRequirementFor(QSqlDatabase, const EntryKey &)
{
    // No table of requirements names entries yet.
    return {};
}

} // namespace normaris
