// company update: the dictionary update of one company or of all.

#include "cli/Cli.h"
#include "base/Failure.h"
#include "pdf/ReportPdf.h"
#include "update/CompanyUpdate.h"
#include "update/UpdateReport.h"

#include <QFileInfo>

namespace normaris::cli {

namespace {

// With --all each company's report is named after it: report.xlsx → report_甲.xlsx.
QString reportPath(const QString &path, const QString &company, bool many)
{
    if (path.isEmpty() || !many)
        return path;
    const QFileInfo info(path);
    return info.path() + u'/' + info.completeBaseName() + u'_' + company + u'.' + info.suffix();
}

// The report as a page of the program's PDF.
void writeUpdatePdf(const QString &path, const UpdateResult &result)
{
    pdf::ReportTable report;
    report.title = CompanyUpdate::kTitle;
    report.company = result.company;
    report.lead << result.summary();
    for (const UpdateReportColumn &column : updateReportColumns()) {
        report.headings << column.heading;
        report.shares << column.pdfShare;
    }
    report.rows = updateReportRows(result);
    report.trail = updateComparisonLines(result);
    pdf::writeReportPdf(path, report);
}

int runUpdate(Context &c)
{
    const bool all = c.args.has(QStringLiteral("--all"));
    if (all == !c.args.words.isEmpty()) {
        c.prompt.plain(CompanyUpdate::kTitle, QStringLiteral("会社名か --all のどちらかを指定してください。"));
        return ExitFailure;
    }
    UpdateOptions options;
    options.dryRun = c.args.has(QStringLiteral("--dry-run"));
    options.take = c.args.values(QStringLiteral("--take"));
    const QString xlsx = c.args.option(QStringLiteral("--report"));
    const QString text = c.args.option(QStringLiteral("--text"));
    const QString pdf = c.args.option(QStringLiteral("--pdf"));
    if (!pdf.isEmpty() && !canLayOutPdf(c))
        return ExitFailure;
    bool writeFailed = false;
    auto report = [&](const QString &name, Outcome outcome, const UpdateResult &result) {
        if (outcome != Outcome::Done)
            return;
        c.out << result.summary() << '\n';
        const QString reportText = updateReportText(result);
        if (!all && text.isEmpty())
            c.out << reportText;
        try {
            if (!xlsx.isEmpty())
                writeUpdateReport(reportPath(xlsx, name, all), result);
            if (!text.isEmpty())
                writeUpdateText(reportPath(text, name, all), reportText);
            if (!pdf.isEmpty())
                writeUpdatePdf(reportPath(pdf, name, all), result);
        } catch (const Failure &f) {
            c.prompt.failure(f.text());
            writeFailed = true;
        }
    };
    CompanyUpdate update(c.layout, c.prompt);
    Outcome outcome;
    if (all) {
        outcome = update.updateAll(options, [&](int, int, const QString &name, Outcome o, const UpdateResult &result) {
            if (o != Outcome::Done)
                c.out << name << QStringLiteral(": 更新しませんでした") << '\n';
            report(name, o, result);
        });
    } else {
        UpdateResult result;
        outcome = update.update(c.args.words[0], options, result);
        report(c.args.words[0], outcome, result);
    }
    return writeFailed ? int(ExitFailure) : exitCodeOf(outcome);
}

} // namespace

void addUpdateCommands(QList<Command> &commands)
{
    commands << Command{
        {QStringLiteral("company"), QStringLiteral("update")},
        {optional(QStringLiteral("--all")), optional(QStringLiteral("--dry-run")),
         optional(QStringLiteral("--take"), QStringLiteral("PLACE")), optional(QStringLiteral("--report"), QStringLiteral("F.xlsx")),
         optional(QStringLiteral("--text"), QStringLiteral("F.txt")), optional(QStringLiteral("--pdf"), QStringLiteral("F.pdf"))},
        QStringLiteral("NAME"),
        0,
        1,
        runUpdate};
}

} // namespace normaris::cli
