// build, substitute, export: the export chain, step by step as on the console.

#include "cli/Cli.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "shell/AppState.h"

namespace normaris::cli {

namespace {

// The console's choosing step: a style, and a document of the list.
bool chooseStyleAndDocument(Context &c)
{
    const QString style = c.args.option(QStringLiteral("--style"));
    if (style != u"1" && style != u"2") {
        c.prompt.error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return false;
    }
    if (c.args.option(QStringLiteral("--doc")).isEmpty()) {
        c.prompt.error(QStringLiteral("データ指定の確認"), QStringLiteral("処理するデータを指定してください。"));
        return false;
    }
    AppState &state = AppState::instance();
    state.CurBunshoKeishikiCode = style;
    state.CurKiteiCode = c.args.option(QStringLiteral("--doc"));
    return true;
}

template<typename Step>
int runStep(Context &c)
{
    if (!chooseStyleAndDocument(c))
        return ExitStopped;
    const AppState &state = AppState::instance();
    return exitCodeOf(Step(AppState::cn(), c.prompt).run(state.CurBunshoKeishikiCode, state.CurKiteiCode));
}

struct BuildStep {
    BuildStep(QSqlDatabase db, Prompt &prompt) : build(std::move(db), prompt) {}
    Outcome run(const QString &style, const QString &document) { return build.build(style, document); }
    WorkDataBuild build;
};

} // namespace

void addExportCommands(QList<Command> &commands)
{
    const QString chosen = QStringLiteral("--style S --doc CODE");
    commands << companyCommand({QStringLiteral("build")}, chosen, 0, 0, runStep<BuildStep>, true);
    commands << companyCommand({QStringLiteral("substitute")}, chosen, 0, 0, runStep<SettingSubstitution>, true);
}

} // namespace normaris::cli
