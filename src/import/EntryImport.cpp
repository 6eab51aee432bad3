#include "import/EntryImport.h"

#include "import/ConflictChecks.h"
#include "import/RecordCopy.h"
#include "import/SourceValues.h"
#include "base/BusyCursor.h"
#include "base/Database.h"

namespace normaris {

Outcome importEntry(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, const ImportPlace &place)
{
    BusyCursor busy;
    // The checks read the current company inside the write, so that nothing can come
    // between them and the copy.
    const Outcome outcome = runStep(prompt, target, [&] {
        if (ConflictChecks(target, source, prompt).refuses(place))
            return Outcome::Stopped;
        if (!sourceValuesAcceptable(SourceEntry(source, place), prompt))
            return Outcome::Stopped;
        RecordCopy(target, source).copy(place);
        return Outcome::Done;
    });
    if (outcome == Outcome::Done)
        prompt.plain(QStringLiteral("処理完了"), QStringLiteral("データ取込処理が完了しました。"));
    return outcome;
}

} // namespace normaris
