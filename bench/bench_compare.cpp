// 新旧対照表: the comparison of two versions of the seed's work rules with ten
// changed articles, the whole step (reading both versions, matching, the
// character diff, the .docx and the text), and the matching alone on synthetic
// versions of growing length, to show that it grows linearly.

#include "base/RuntimeFolder.h"
#include "BenchCompany.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "versions/VersionOutput.h"
#include "export/Numerals.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/EffectiveDates.h"
#include "versions/ComparisonExport.h"
#include "versions/ComparisonText.h"
#include "versions/VersionComparison.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>
#include <functional>

using namespace normaris;
using namespace normaris::bench;

namespace {

// Ten articles spread over the document, each with a phrase put into its first clause.
// The work rules exported as a .docx, with their version.
void exportWithVersion(QSqlDatabase db, Prompt &prompt, const QString &path)
{
    DocxOutput docx(path);
    VersionOutput version(db, kStyle, QStringLiteral("01"));
    DocumentExport(db, prompt).write(kStyle, QStringLiteral("01"), RenderOptions{}, {&docx, &version});
}

void changeTenArticles(QSqlDatabase db)
{
    Transaction transaction(db);
    RowReader q =
        execSql(db, QStringLiteral("SELECT DISTINCT 条Code FROM 作成データ WHERE 規程Code = '01' AND 種別 = '4' ORDER BY 条Code"));
    QStringList articles;
    while (q.next())
        articles << q.value(0).toString();
    for (int i = 0; i < 10; ++i) {
        const QString article = articles.value(i * articles.size() / 10);
        execSql(db,
                QStringLiteral("UPDATE 作成データ SET 文章 = substr(文章, 1, 8) || '、原則として、' || substr(文章, 9) "
                               "WHERE ID = (SELECT min(ID) FROM 作成データ WHERE 規程Code = '01' AND 種別 = '4' AND 条Code = ?)"),
                {article});
    }
    transaction.commit();
}

// A version of `articles` articles of four clauses each; every hundredth article's
// third clause differs between the two made from the same seed.
Version synthetic(int articles, bool changed)
{
    Version v;
    v.header.id = changed ? 2 : 1;
    v.header.name = QStringLiteral("合成規程");
    for (int a = 1; a <= articles; ++a) {
        const QString code = QStringLiteral("%1").arg(a, 4, 10, QLatin1Char('0'));
        PrintedRow heading;
        heading.level = Level::Article;
        heading.codes = {QStringLiteral("01"), code, QString(), QString(), QString(), QString()};
        heading.label = u'第' + fullWidthDigits(a) + u'条';
        heading.text = QStringLiteral("（見出し%1）").arg(a);
        v.rows << heading;
        for (int p = 1; p <= 4; ++p) {
            PrintedRow clause = heading;
            clause.level = Level::Paragraph;
            clause.codes[2] = QStringLiteral("%1").arg(p, 2, 10, QLatin1Char('0'));
            clause.label = p == 1 ? QString() : fullWidthDigits(p);
            clause.text = QStringLiteral("会社は、第%1条の定めにより、従業員の労働条件その他就業に関する事項を定め、これを誠実に運用する。")
                              .arg(fullWidthDigits(a));
            if (changed && a % 100 == 0 && p == 3)
                clause.text.replace(QStringLiteral("誠実に"), QStringLiteral("適正かつ誠実に"));
            v.rows << clause;
        }
    }
    return v;
}

} // namespace

int main(int argc, char **argv)
{
    settleRuntimeFolder();
    QCoreApplication app(argc, argv);
    BenchCompany company;
    if (!company.open())
        return 1;
    QSqlDatabase db = company.db();
    QuietPrompt &prompt = company.prompt;
    const QDir dir(company.folder());
    for (const QString &d : {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")}) {
        EffectiveDates(db, d).add(kStyle, QDate(2026, 4, 1));
        WorkDataBuild(db, prompt).build(kStyle, d);
    }
    SettingSubstitution(db, prompt).run(kStyle, QStringLiteral("01"));
    exportWithVersion(db, prompt, dir.filePath(QStringLiteral("v1.docx")));
    changeTenArticles(db);
    EffectiveDates(db, QStringLiteral("01")).add(kStyle, QDate(2027, 4, 1));
    exportWithVersion(db, prompt, dir.filePath(QStringLiteral("v2.docx")));

    ComparisonRequest request{kStyle, QStringLiteral("01"), std::nullopt, std::nullopt, QStringLiteral("ベンチ")};
    Outcome outcome = Outcome::Failed;
    const double whole = timed([&] {
        outcome =
            ComparisonExport(db, prompt).write(request, dir.filePath(QStringLiteral("t.docx")), dir.filePath(QStringLiteral("t.txt")));
    });
    const int rows = scalar(db, QStringLiteral("SELECT count(*) FROM 改訂履歴行 WHERE 改訂履歴ID = 2")).toInt();
    const std::optional<ComparisonTable> table = ComparisonExport(db, prompt).table(request);
    const long long entries = table ? static_cast<long long>(table->entries.size()) : 0;
    std::printf("新旧対照表 (times of one run)\n");
    std::printf("seed work rules (01)  %5d printed rows  %2lld rows in the table  whole step %7.1f ms%s\n", rows, entries, whole,
                outcome == Outcome::Done ? "" : qUtf8Printable(QStringLiteral("  (") + prompt.m_last + u')'));
    for (const int articles : {1000, 10000, 100000}) {
        const Version older = synthetic(articles, false);
        const Version newer = synthetic(articles, true);
        qsizetype changed = 0;
        const double matching = timed([&] { changed = compareVersions(older, newer).entries.size(); });
        std::printf("synthetic %6d articles %7lld rows  %4lld rows in the table  matching and diff %8.1f ms\n", articles,
                    static_cast<long long>(newer.rows.size()), static_cast<long long>(changed), matching);
    }
    return 0;
}
