// versions list|delete, compare: the kept versions of finished documents and the
// 新旧対照表 of two of them.

#include "cli/Cli.h"
#include "base/AppState.h"
#include "pdf/ComparisonPdf.h"
#include "rulebase/JapaneseDate.h"
#include "versions/ComparisonExport.h"
#include "versions/VersionStore.h"

namespace normaris::cli {

namespace {

const QString kVersions = QStringLiteral("versions");

// A version number given as --name N; nothing when the option is absent. False
// after a message when it is not a number.
bool versionOption(Context &c, const QString &name, std::optional<qint64> &value)
{
    if (!c.args.has(name))
        return true;
    bool ok = false;
    const qint64 id = c.args.option(name).toLongLong(&ok);
    if (!ok || id <= 0) {
        c.prompt.error(ComparisonExport::kTitle, QStringLiteral("%1 には版の番号を指定してください。").arg(name));
        return false;
    }
    value = id;
    return true;
}

// One line a version: number, moment of printing, latest effective date.
int versionsList(Context &c)
{
    const QList<VersionHeader> versions =
        VersionStore(AppState::cn()).list(c.args.option(QStringLiteral("--style")), c.args.option(QStringLiteral("--doc")));
    for (const VersionHeader &v : versions)
        c.out << v.id << u'\t' << v.made.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) << u'\t'
              << (v.effective.isValid() ? formatEraDate(v.effective) : QString()) << u'\t' << v.name << u'\n';
    return ExitDone;
}

int versionsDelete(Context &c)
{
    std::optional<qint64> id;
    if (!versionOption(c, QStringLiteral("--version"), id) || !id)
        return ExitStopped;
    VersionStore store(AppState::cn());
    const std::optional<VersionHeader> found = store.header(*id);
    if (!found || found->style != c.args.option(QStringLiteral("--style")) || found->document != c.args.option(QStringLiteral("--doc"))) {
        c.prompt.error(ComparisonExport::kTitle,
                       QStringLiteral("規程「%1」（文章形式 %2）に版 %3 はありません。")
                           .arg(c.args.option(QStringLiteral("--doc")), c.args.option(QStringLiteral("--style")), QString::number(*id)));
        return ExitStopped;
    }
    if (!c.prompt.question(QStringLiteral("版の削除"), QStringLiteral("版 %1 を削除します。").arg(*id)))
        return ExitStopped;
    store.remove(*id);
    return ExitDone;
}

int compare(Context &c)
{
    ComparisonRequest request;
    if (!versionOption(c, QStringLiteral("--old"), request.older) || !versionOption(c, QStringLiteral("--new"), request.newer))
        return ExitStopped;
    const QString out = c.args.option(QStringLiteral("--out"));
    const QString pdf = c.args.option(QStringLiteral("--pdf"));
    if (!checkDocumentOutputs(c, out, pdf))
        return ExitFailure;
    request.style = c.args.option(QStringLiteral("--style"));
    request.document = c.args.option(QStringLiteral("--doc"));
    request.company = c.args.option(QStringLiteral("--company"));
    // The old side from another document: its articles paired with this one's.
    request.against = c.args.option(QStringLiteral("--against"));
    QString wrong;
    // --pair may be given several times, each a comma list.
    const std::optional<QList<PairOverride>> overrides = parseOverrides(c.args.values(QStringLiteral("--pair")).join(u','), &wrong);
    if (!overrides) {
        c.prompt.error(ComparisonExport::kTitle,
                       QStringLiteral("--pair は「旧の条番号=新の条番号」をコンマで区切って指定してください（「%1」）。").arg(wrong));
        return ExitStopped;
    }
    if (request.against.isEmpty() && (c.args.has(QStringLiteral("--pair")) || c.args.has(QStringLiteral("--pairs")))) {
        c.prompt.error(ComparisonExport::kTitle, QStringLiteral("--pair と --pairs は --against と共に指定してください。"));
        return ExitStopped;
    }
    request.overrides = *overrides;
    request.remarks = c.args.has(QStringLiteral("--remarks"));
    QList<ArticlePair> pairing;
    request.pairing = &pairing;
    std::optional<ComparisonPdf> pdfOutput;
    if (!pdf.isEmpty())
        pdfOutput.emplace(pdf);
    const Outcome outcome = ComparisonExport(AppState::cn(), c.prompt)
                                .write(request, out, c.args.option(QStringLiteral("--text")), pdfOutput ? &*pdfOutput : nullptr);
    if (outcome == Outcome::Done && c.args.has(QStringLiteral("--pairs"))) {
        for (const ArticlePair &p : pairing)
            c.out << p.line() << '\n';
    }
    return exitCodeOf(outcome);
}

} // namespace

void addVersionCommands(QList<Command> &commands)
{
    commands << companyCommand({kVersions, QStringLiteral("list")}, {requiredStyle()}, {}, 0, 0, versionsList, true);
    commands << companyCommand({kVersions, QStringLiteral("delete")},
                               {requiredStyle(), required(QStringLiteral("--version"), QStringLiteral("V"))}, {}, 0, 0, versionsDelete,
                               true);
    commands << companyCommand(
        {QStringLiteral("compare")},
        {requiredStyle(), optional(QStringLiteral("--old"), QStringLiteral("V")), optional(QStringLiteral("--new"), QStringLiteral("V")),
         optional(QStringLiteral("--out"), QStringLiteral("FILE.docx")), optional(QStringLiteral("--pdf"), QStringLiteral("FILE.pdf")),
         optional(QStringLiteral("--text"), QStringLiteral("FILE.txt")), optional(QStringLiteral("--against"), QStringLiteral("CODE")),
         optional(QStringLiteral("--pair"), QStringLiteral("OLD=NEW,…")), optional(QStringLiteral("--pairs")),
         optional(QStringLiteral("--remarks"))},
        {}, 0, 0, compare, true);
}

} // namespace normaris::cli
