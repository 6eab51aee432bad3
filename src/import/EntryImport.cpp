#include "import/EntryImport.h"

#include "import/ConflictChecks.h"
#include "import/RecordCopy.h"
#include "import/SourceValues.h"
#include "base/BusyCursor.h"
#include "base/Database.h"

namespace normaris {

namespace {

// The checks asked without a word to the user.
class SilentPrompt : public Prompt {
public:
    void message(Icon, const QString &, const QString &) override {}
    bool question(const QString &, const QString &) override { return false; }
};

} // namespace

Outcome importEntry(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, const ImportPlace &place, MarkerCodes codes)
{
    BusyCursor busy;
    QStringList renumbered;
    // The checks read the current company inside the write, so that nothing can come
    // between them and the copy.
    const Outcome outcome = runStep(prompt, target, [&] {
        if (ConflictChecks(target, source, prompt, codes).refuses(place))
            return Outcome::Stopped;
        const SourceEntry entry(source, place);
        if (!sourceValuesAcceptable(entry, prompt))
            return Outcome::Stopped;
        MarkerRenumbering renumbering;
        if (codes == MarkerCodes::Renumber)
            renumbering = *MarkerRenumbering::plan(target, entry); // the checks made sure there is one
        renumbered = renumbering.changes();
        RecordCopy(target, source, renumbering).copy(place);
        return Outcome::Done;
    });
    if (outcome == Outcome::Done)
        prompt.plain(QStringLiteral("処理完了"), (QStringList{QStringLiteral("データ取込処理が完了しました。")} + renumbered).join(u'\n'));
    return outcome;
}

bool importRenumberable(QSqlDatabase target, QSqlDatabase source, const ImportPlace &place)
{
    SilentPrompt silent;
    return ConflictChecks(target, source, silent, MarkerCodes::Keep).refuses(place)
           && !ConflictChecks(target, source, silent, MarkerCodes::Renumber).refuses(place);
}

} // namespace normaris
