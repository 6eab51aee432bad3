// build, substitute, export: the export chain, step by step as on the console.

#include "cli/Cli.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "fileformats/TextOutput.h"
#include "versions/VersionOutput.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "pdf/PdfOutput.h"
#include "base/Database.h"
#include "base/AppState.h"

#include <optional>

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

// The named values of an option, in one table each: the first is the default. The
// declaration of the option takes its names from the same table.
template<typename T>
using Choices = QList<std::pair<QString, T>>;

const Choices<ExportKind> kKinds = {{QStringLiteral("rules"), ExportKind::Rules},
                                    {QStringLiteral("agreement"), ExportKind::Agreement},
                                    {QStringLiteral("filing"), ExportKind::Filing}};
const Choices<CoverChoice> kCovers = {{QStringLiteral("both"), CoverChoice::Both},
                                      {QStringLiteral("cover"), CoverChoice::CoverOnly},
                                      {QStringLiteral("toc"), CoverChoice::TocOnly},
                                      {QStringLiteral("none"), CoverChoice::None}};
const Choices<bool> kNumberFirst = {{QStringLiteral("show"), true}, {QStringLiteral("hide"), false}};
const Choices<bool> kFiling = {{QStringLiteral("new"), false}, {QStringLiteral("change"), true}};

template<typename T>
Option choiceOption(const QString &name, const Choices<T> &choices)
{
    QStringList names;
    for (const auto &choice : choices)
        names << choice.first;
    return optional(name, names.join(u'|'), names);
}

// The value of a choice option, which the command line has already checked.
template<typename T>
T pick(Context &c, const QString &option, const Choices<T> &choices)
{
    const QString given = c.args.option(option);
    for (const auto &[name, v] : choices) {
        if (name == given)
            return v;
    }
    return choices.first().second;
}

// データをWordへ送る: the rendering alone, of work data built and substituted before.
int exportDocument(Context &c)
{
    RenderOptions options;
    options.kind = pick(c, QStringLiteral("--kind"), kKinds);
    options.cover = pick(c, QStringLiteral("--cover"), kCovers);
    options.showFirstParagraphNumber = pick(c, QStringLiteral("--number-first"), kNumberFirst);
    options.filingIsChange = pick(c, QStringLiteral("--filing"), kFiling);
    const QString out = c.args.option(QStringLiteral("--out"));
    const QString pdf = c.args.option(QStringLiteral("--pdf"));
    if (!checkDocumentOutputs(c, out, pdf))
        return ExitFailure;
    const bool filing = options.kind == ExportKind::Filing;
    if (!filing && !chooseStyleAndDocument(c))
        return ExitStopped;
    const AppState &state = AppState::instance();
    // Without --kind, a document prints as what it is: an agreement or a set of rules.
    if (!c.args.has(QStringLiteral("--kind"))
        && scalar(AppState::cn(), QStringLiteral("SELECT 文章種別 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"),
                  {state.CurBunshoKeishikiCode, state.CurKiteiCode})
                   .toString()
               == u"2")
        options.kind = ExportKind::Agreement;
    const QString style = filing ? QString() : state.CurBunshoKeishikiCode;
    const QString document = filing ? QString() : state.CurKiteiCode;
    const QString text = c.args.option(QStringLiteral("--text"));
    std::optional<DocxOutput> docxOutput;
    std::optional<TextOutput> textOutput;
    std::optional<PdfOutput> pdfOutput;
    std::optional<VersionOutput> versionOutput;
    DocumentOutputs outputs;
    if (!out.isEmpty())
        outputs << &docxOutput.emplace(out);
    if (!text.isEmpty())
        outputs << &textOutput.emplace(text);
    if (!pdf.isEmpty())
        outputs << &pdfOutput.emplace(pdf);
    // Only a whole document of rules or an agreement is a version; the filing forms are not.
    if (!filing)
        outputs << &versionOutput.emplace(AppState::cn(), style, document);
    return exitCodeOf(DocumentExport(AppState::cn(), c.prompt).write(style, document, options, outputs));
}

} // namespace

void addExportCommands(QList<Command> &commands)
{
    const QList<Option> chosen = {requiredStyle()};
    commands << companyCommand({QStringLiteral("build")}, chosen, {}, 0, 0, runStep<BuildStep>, true);
    commands << companyCommand({QStringLiteral("substitute")}, chosen, {}, 0, 0, runStep<SettingSubstitution>, true);
    commands << companyCommand(
        {QStringLiteral("export")},
        {optionalStyle(), optional(QStringLiteral("--doc"), QStringLiteral("CODE")), choiceOption(QStringLiteral("--kind"), kKinds),
         choiceOption(QStringLiteral("--cover"), kCovers), choiceOption(QStringLiteral("--number-first"), kNumberFirst),
         choiceOption(QStringLiteral("--filing"), kFiling), optional(QStringLiteral("--out"), QStringLiteral("FILE.docx")),
         optional(QStringLiteral("--pdf"), QStringLiteral("FILE.pdf")), optional(QStringLiteral("--text"), QStringLiteral("FILE.txt"))},
        {}, 0, 0, exportDocument, false);
}

} // namespace normaris::cli
