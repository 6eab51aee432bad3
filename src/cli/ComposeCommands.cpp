// docs list|add|remove, compose rows|add|release

#include "cli/Cli.h"
#include "composition/PanelStep.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "composition/ExcelLists.h"
#include "composition/Panels.h"
#include "base/AppState.h"

namespace normaris::cli {

namespace {

const QString kDocs = QStringLiteral("docs");
const QString kCompose = QStringLiteral("compose");

QString styleOf(Context &c) { return c.args.option(QStringLiteral("--style")); }
QString documentOf(Context &c) { return c.args.option(QStringLiteral("--doc")); }

int docsList(Context &c)
{
    DocumentList list(AppState::cn());
    const QStringList styles =
        c.args.has(QStringLiteral("--style")) ? QStringList{styleOf(c)} : QStringList{QStringLiteral("1"), QStringLiteral("2")};
    for (const QString &style : styles) {
        for (const bool selected : {true, false}) {
            if ((selected && c.args.has(QStringLiteral("--unselected"))) || (!selected && c.args.has(QStringLiteral("--selected"))))
                continue;
            for (const CodeAndName &d : list.documents(style, selected))
                c.out << style << '\t' << d.code << '\t' << d.name << '\t' << (selected ? "選択" : "未選択") << '\n';
        }
    }
    return ExitDone;
}

// リストに追加 and リストから外す pick from the documents off or on the list.
int docsChange(Context &c, bool add)
{
    DocumentList list(AppState::cn());
    const QString document = documentOf(c);
    const bool offered = list.exists(styleOf(c), document) && list.isOnList(styleOf(c), document) != add;
    if (!offered) {
        c.prompt.error(QStringLiteral("データ指定の確認"), QStringLiteral("処理するデータを指定してください。"));
        return ExitStopped;
    }
    if (!add)
        return exitCodeOf(list.takeOffList(styleOf(c), document, c.prompt));
    list.addToList(styleOf(c), document);
    return ExitDone;
}

bool onParagraphPanel(Context &c) { return c.args.has(QStringLiteral("--article")); }

QList<PanelRow> panelOf(Context &c)
{
    QSqlDatabase db = AppState::cn();
    return onParagraphPanel(c) ? paragraphPanel(db, styleOf(c), documentOf(c), c.args.option(QStringLiteral("--chapter")),
                                                c.args.option(QStringLiteral("--article")))
                               : articlePanel(db, styleOf(c), documentOf(c));
}

int composeRows(Context &c)
{
    QSqlDatabase db = AppState::cn();
    const QList<CompositionRow> rows = onParagraphPanel(c)
                                           ? readClauseRows(db, styleOf(c), documentOf(c), c.args.option(QStringLiteral("--chapter")),
                                                            c.args.option(QStringLiteral("--article")))
                                           : readArticleRows(db, styleOf(c), documentOf(c));
    const QList<PanelRow> panel = panelOf(c);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const CompositionRow &r = rows[i];
        c.out << i << '\t' << r.order << '\t' << levelCode(r.level) << '\t' << r.number << '\t' << r.codes.join(u'\t') << '\t' << r.join
              << '\t' << panel.value(i).text << '\n';
    }
    return ExitDone;
}

// The panel's step for one row, as on the panels: the position rule, the question,
// then the add or release with the clause named by --pick.
int composeAction(Context &c, const QString &action)
{
    QSqlDatabase db = AppState::cn();
    const QList<PanelRow> panel = panelOf(c);
    bool ok = false;
    const int i = c.args.option(QStringLiteral("--row")).toInt(&ok);
    if (!ok || i < 0 || i >= panel.size()) {
        c.prompt.failure(QStringLiteral("--row には 0 から %1 までの行番号を指定してください。").arg(panel.size() - 1));
        return ExitFailure;
    }
    const PanelChoice choice = choosePanelStep(db, c.prompt, {styleOf(c), documentOf(c), onParagraphPanel(c), panel, i, action});
    switch (choice.kind) {
    case PanelChoice::Kind::Nothing:
        c.prompt.error(QStringLiteral("処理方法の指定"), QStringLiteral("この行では、その処理は選べません。"));
        return ExitStopped;
    case PanelChoice::Kind::Stopped: return ExitStopped;
    case PanelChoice::Kind::OpenParagraphs:
        c.prompt.information(
            QStringLiteral("処理方法の指定"),
            QStringLiteral("項以下は --chapter %1 --article %2 で指定してください。").arg(panel[i].codes[0], panel[i].codes[1]));
        return ExitStopped;
    case PanelChoice::Kind::Release: return exitCodeOf(carryOutRelease(db, c.prompt, choice.release));
    case PanelChoice::Kind::Add: break;
    }
    return exitCodeOf(carryOutAdd(db, c.prompt, choice.add, c.args.option(QStringLiteral("--pick"))));
}

int writeList(Context &c, ListKind kind)
{
    return exitCodeOf(ExcelLists(AppState::cn(), c.prompt).write(kind, styleOf(c), documentOf(c), c.args.option(QStringLiteral("--out"))));
}

} // namespace

void addComposeCommands(QList<Command> &commands)
{
    const QList<Option> panel = {requiredStyle(), optional(QStringLiteral("--chapter"), QStringLiteral("C")),
                                 optional(QStringLiteral("--article"), QStringLiteral("A"))};
    const Option row = required(QStringLiteral("--row"), QStringLiteral("I"));
    commands << companyCommand({kDocs, QStringLiteral("list")},
                               {optionalStyle(), optional(QStringLiteral("--selected")), optional(QStringLiteral("--unselected"))}, {}, 0,
                               0, docsList, false);
    commands << companyCommand(
        {kDocs, QStringLiteral("add")}, {requiredStyle()}, {}, 0, 0, [](Context &c) { return docsChange(c, true); }, true);
    commands << companyCommand(
        {kDocs, QStringLiteral("remove")}, {requiredStyle()}, {}, 0, 0, [](Context &c) { return docsChange(c, false); }, true);
    commands << companyCommand({kCompose, QStringLiteral("rows")}, panel, {}, 0, 0, composeRows, true);
    commands << companyCommand(
        {kCompose, QStringLiteral("add")},
        panel
            + QList<Option>{row, required(QStringLiteral("--action"), QStringLiteral("CODE")),
                            optional(QStringLiteral("--pick"), QStringLiteral("CODE"))},
        {}, 0, 0, [](Context &c) { return composeAction(c, c.args.option(QStringLiteral("--action"))); }, true);
    commands << companyCommand(
        {kCompose, QStringLiteral("release")}, panel + QList<Option>{row}, {}, 0, 0,
        [](Context &c) { return composeAction(c, QStringLiteral("2")); }, true);
    const std::pair<const char *, ListKind> lists[] = {{"basic", ListKind::BasicWords},
                                                       {"words", ListKind::EmbeddedWords},
                                                       {"refs", ListKind::References},
                                                       {"templates", ListKind::Templates}};
    for (const auto &[name, kind] : lists) {
        commands << companyCommand(
            {QStringLiteral("lists"), QString::fromLatin1(name)},
            {requiredStyle(), required(QStringLiteral("--out"), QStringLiteral("FILE.xlsx"))}, {}, 0, 0,
            [kind = kind](Context &c) { return writeList(c, kind); }, true);
    }
}

} // namespace normaris::cli
