#include "import/EntryImport.h"

#include "import/ConflictChecks.h"
#include "import/RecordCopy.h"
#include "import/SourceValues.h"

namespace normaris {

Outcome importEntry(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, const ImportPlace &place)
{
    try {
        if (ConflictChecks(target, source, prompt).refuses(place))
            return Outcome::Stopped;
        if (!sourceValuesAcceptable(SourceEntry(source, place), prompt))
            return Outcome::Stopped;
    } catch (const std::exception &e) {
        prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return RecordCopy(target, source, prompt).copy(place) ? Outcome::Done : Outcome::Failed;
}

} // namespace normaris
