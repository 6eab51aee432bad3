// ディクショナリ更新: a company made from the previous release (every composed document,
// a hundred entries that the new release changed) brought to the program's release; then
// two hundred such companies one after another.

#include "BenchCompany.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "update/CompanyUpdate.h"
#include "update/DictionaryRelease.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

using namespace normaris;
using namespace normaris::bench;

namespace {

const QString kEarlier = QStringLiteral("2000.01");

// The company as the previous release made it: a hundred clauses read otherwise then, and
// that release recorded beside the program's.
void makeEarlier(QSqlDatabase db, const DataLayout &layout)
{
    // Dated, as a company whose documents were printed.
    QStringList documents;
    RowReader rows = execSql(db, QStringLiteral("SELECT Code FROM 規程 WHERE 文章形式Code = '1' AND 選択フラグ = 1"));
    while (rows.next())
        documents << rows.value(0).toString();
    for (const QString &document : documents)
        EffectiveDates(db, document).add(kStyle, QDate(2026, 4, 1));
    execSql(db,
            QStringLiteral("UPDATE 項 SET 項 = 項 || '（旧）' WHERE rowid IN (SELECT MIN(rowid) FROM 項 WHERE CAST(Code AS INTEGER) < 70 "
                           "GROUP BY 文章形式Code, 規程Code, 条Code, Code ORDER BY 文章形式Code, 規程Code, 条Code, Code LIMIT 100)"));
    const Release earlier{kEarlier, dictionaryPrints(db)};
    QFile file(releasesFolder(layout.appPath) + u'/' + kEarlier + QStringLiteral(".tsv"));
    if (!file.open(QIODevice::WriteOnly) || file.write(releaseFileText(earlier).toUtf8()) < 0)
        std::fprintf(stderr, "cannot write the earlier release\n");
    recordRelease(db, kEarlier);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    BenchCompany company;
    if (!company.open())
        return 1;
    const DataLayout layout{AppState::instance().AppPath};
    makeEarlier(company.db(), layout);
    const int documents = scalar(company.db(), QStringLiteral("SELECT COUNT(*) FROM 規程 WHERE 選択フラグ = 1")).toInt();
    const QString file = layout.companyFile(QStringLiteral("ベンチ"));
    AppState::instance().closeCompany(AppState::ClosedBy::MainWindow);

    // Two hundred copies of it, made before any update.
    const int companies = 200;
    for (int i = 1; i <= companies; ++i) {
        const QString name = QStringLiteral("会社%1").arg(i, 3, 10, QLatin1Char('0'));
        QDir().mkpath(layout.companyDir(name));
        QFile::copy(file, layout.companyFile(name));
    }

    QuietPrompt prompt;
    UpdateResult result;
    UpdateOptions plain;
    plain.compare = false;
    UpdateOptions dry = plain;
    dry.dryRun = true;
    const double without = timed([&] { CompanyUpdate(layout, prompt).update(QStringLiteral("会社001"), dry, result); });
    std::printf("one company, worked out without the 新旧対照表 (dry run): %lld entries: %.0f ms\n",
                static_cast<long long>(result.entries.size()), without);
    const double one = timed([&] { CompanyUpdate(layout, prompt).update(QStringLiteral("ベンチ"), {}, result); });
    std::printf("one company: %d composed documents, %lld entries listed (%d replaced), %lld tables compared: %.0f ms\n", documents,
                static_cast<long long>(result.entries.size()), result.count(UpdateKind::Replaced),
                static_cast<long long>(result.comparisons.size()), one);

    int updated = 0;
    const double all = timed([&] {
        CompanyUpdate(layout, prompt).updateAll(plain, [&](int, int, const QString &, Outcome outcome, const UpdateResult &) {
            updated += outcome == Outcome::Done ? 1 : 0;
        });
    });
    std::printf("%d companies (%d updated, backups taken, without the 新旧対照表): %.1f s\n", companies + 1, updated, all / 1000);
    if (prompt.m_messages)
        std::printf("last message: %s\n", qUtf8Printable(prompt.m_last));
    return 0;
}
