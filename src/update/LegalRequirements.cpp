#include "update/LegalRequirements.h"

#include "base/Failure.h"
#include "legal/Requirements.h"

namespace normaris {

QString legalRequirementFor(QSqlDatabase, const EntryKey &key)
{
    try {
        return legal::requirementsBehind(legal::shippedRequirements(), key.document(), key.level, key.codes()).join(QStringLiteral("、"));
    } catch (const Failure &) {
        // A program folder without the table proposes the entry without its law.
        return {};
    }
}

} // namespace normaris
