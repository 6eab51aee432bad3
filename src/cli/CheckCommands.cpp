// check: the legal check of one document or of every document on the company's list.

#include "cli/Cli.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "base/Failure.h"
#include "legal/LegalCheck.h"
#include "pdf/LegalCheckPdf.h"

#include <QSaveFile>

namespace normaris::cli {

namespace {

void writeTextFile(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」を書き込めません。").arg(path));
}

int check(Context &c)
{
    QDate date;
    if (c.args.has(QStringLiteral("--date"))) {
        date = QDate::fromString(c.args.option(QStringLiteral("--date")), Qt::ISODate);
        if (!date.isValid()) {
            c.prompt.error(QStringLiteral("日付の確認"), QStringLiteral("日付は YYYY-MM-DD で指定してください。"));
            return ExitStopped;
        }
    }
    if (c.args.has(QStringLiteral("--pdf")) && !canLayOutPdf(c))
        return ExitFailure;
    const QString style = c.args.has(QStringLiteral("--style")) ? c.args.option(QStringLiteral("--style")) : QStringLiteral("1");
    const QString document = c.args.option(QStringLiteral("--doc"));
    const QList<legal::Requirement> &table = legal::shippedRequirements();
    QList<legal::CheckResult> results;
    if (document.isEmpty()) {
        results = legal::checkCompany(AppState::cn(), table, style, date);
    } else {
        if (scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = ?"), {document}).toInt() == 0) {
            c.prompt.plain(QStringLiteral("データ指定の確認"), QStringLiteral("規程「%1」はありません。").arg(document));
            return ExitStopped;
        }
        legal::CheckRequest request;
        request.style = style;
        request.document = document;
        request.date = date;
        results = legal::checkDocument(AppState::cn(), table, request);
    }
    const QString text = legal::checkText(results);
    c.out << text;
    if (c.args.has(QStringLiteral("--text")))
        writeTextFile(c.args.option(QStringLiteral("--text")), text);
    if (c.args.has(QStringLiteral("--xlsx")))
        legal::writeCheckXlsx(c.args.option(QStringLiteral("--xlsx")), results);
    if (c.args.has(QStringLiteral("--pdf")))
        legal::writeCheckPdf(c.args.option(QStringLiteral("--pdf")), c.args.option(QStringLiteral("--company")), results);
    return legal::hasFindings(results) ? ExitStopped : ExitDone;
}

} // namespace

void addCheckCommands(QList<Command> &commands)
{
    commands << companyCommand(
        {QStringLiteral("check")},
        {optionalStyle(), optional(QStringLiteral("--doc"), QStringLiteral("CODE")),
         optional(QStringLiteral("--date"), QStringLiteral("YYYY-MM-DD")), optional(QStringLiteral("--xlsx"), QStringLiteral("FILE.xlsx")),
         optional(QStringLiteral("--text"), QStringLiteral("FILE")), optional(QStringLiteral("--pdf"), QStringLiteral("FILE.pdf"))},
        {}, 0, 0, check, false);
}

} // namespace normaris::cli
