// import: データ取込 of one entry of another company's dictionary

#include "cli/Cli.h"
#include "base/AppState.h"
#include "import/EntryImport.h"
#include "import/ImportLists.h"
#include "import/SourceCompany.h"

#include <algorithm>

namespace normaris::cli {

namespace {

// The option that names the code of each import level, 規程 first.
const std::array<QString, kImportLevels.size()> kLevelOptions = {
    QStringLiteral("--doc"),  QStringLiteral("--chapter"), QStringLiteral("--article"), QStringLiteral("--paragraph"),
    QStringLiteral("--item"), QStringLiteral("--maru"),    QStringLiteral("--iroha"),
};

// The place named on the line: the deepest option given is the level, and every
// level above it must be given too. False (with a message) otherwise.
bool placeFromOptions(Context &c, ImportPlace &place)
{
    place.style = c.args.option(QStringLiteral("--style"));
    const auto deepest = std::find_if(kLevelOptions.rbegin(), kLevelOptions.rend(), [&c](const QString &o) { return c.args.has(o); });
    const int depth = int(kLevelOptions.rend() - deepest) - 1;
    for (int i = 0; i <= depth; ++i) {
        if (!c.args.has(kLevelOptions.at(i))) {
            c.prompt.error(QStringLiteral("未指定"), importGuardText(kImportLevels.at(i)));
            return false;
        }
        place.codes << c.args.option(kLevelOptions.at(i));
    }
    if (depth < 0) {
        c.prompt.error(QStringLiteral("未指定"), importGuardText(Level::Document));
        return false;
    }
    place.level = kImportLevels.at(depth);
    return true;
}

// Each code must be one the wizard's lists would offer: any entry above the level,
// the user's own at it.
bool placeOffered(Context &c, QSqlDatabase source, const ImportPlace &place)
{
    for (int i = 0; i <= place.depth(); ++i) {
        const Level level = kImportLevels.at(i);
        const QList<CodeAndName> choices = importChoices(source, place.style, level, place.codes.mid(0, i), i == place.depth());
        const bool offered = std::any_of(choices.begin(), choices.end(), [&](const CodeAndName &e) { return e.code == place.codes.at(i); });
        if (!offered) {
            c.prompt.error(QStringLiteral("未指定"), importGuardText(level));
            return false;
        }
    }
    return true;
}

int importCommand(Context &c)
{
    ImportPlace place;
    if (!placeFromOptions(c, place))
        return ExitStopped;
    const Outcome opened = SourceCompany::open(c.prompt, c.layout, c.args.option(QStringLiteral("--from")));
    if (opened != Outcome::Done)
        return exitCodeOf(opened);
    struct CloseSource {
        ~CloseSource() { SourceCompany::close(); }
    } closeSource;
    if (!placeOffered(c, SourceCompany::connection(), place))
        return ExitStopped;
    const MarkerCodes codes = c.args.has(QStringLiteral("--renumber")) ? MarkerCodes::Renumber : MarkerCodes::Keep;
    return exitCodeOf(importEntry(AppState::cn(), SourceCompany::connection(), c.prompt, place, codes));
}

} // namespace

void addImportCommands(QList<Command> &commands)
{
    // The deepest place given is the level; every place above it must be given too.
    QList<Option> options = {required(QStringLiteral("--from"), QStringLiteral("SOURCE")), requiredStyle(),
                             required(kLevelOptions[0], QStringLiteral("NN"))};
    const QString values[] = {QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("P"),
                              QStringLiteral("I"), QStringLiteral("M"), QStringLiteral("R")};
    for (size_t i = 1; i < kLevelOptions.size(); ++i)
        options << optional(kLevelOptions[i], values[i - 1]);
    // Word and reference codes the document has already get its next free codes.
    options << optional(QStringLiteral("--renumber"));
    // Not needsDocument: the document is the source's, and the current company may lack it.
    commands << companyCommand({QStringLiteral("import")}, options, {}, 0, 0, importCommand, false);
}

} // namespace normaris::cli
