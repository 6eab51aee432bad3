// 法令チェック: the check of the seed's 就業規則 and of all ten documents of a new
// company, and the check against tables of growing length over documents of growing
// length, to show that it grows with rows × requirements. The whole process (the
// command line `check`) is timed in the README with the shell's time.

#include "BenchCompany.h"
#include "base/Database.h"
#include "composition/DocumentList.h"
#include "legal/LegalCheck.h"

#include <QCoreApplication>
#include <cstdio>

using namespace normaris;
using namespace normaris::bench;
using namespace normaris::legal;

namespace {

// The table with every requirement of 01 repeated `times` times under new codes.
QList<Requirement> grownTable(const QList<Requirement> &table, int times)
{
    QList<Requirement> grown;
    for (const Requirement &r : table) {
        if (r.document != u"01")
            continue;
        for (int i = 0; i < times; ++i) {
            Requirement copy = r;
            copy.code += u'.' + QString::number(i);
            grown << copy;
        }
    }
    return grown;
}

// Copies from..to-1 of every composition row of 01, each copy under chapters of its own.
void growDocument(QSqlDatabase db, int from, int to)
{
    Transaction transaction(db);
    for (const char *table : {"作成データ補助～条", "作成データ補助項～"}) {
        for (int i = from; i < to; ++i) {
            execSql(db,
                    QStringLiteral("INSERT INTO \"%1\" (順番, 種別, 規程Code, 番号, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, "
                                   "号の細分イロハCode, 結合, 改行, テンプレート, 文章, 変数語句, 変数番号, 変更フラグ, "
                                   "文章形式Code, 正式名称) SELECT 順番 + ? , 種別, 規程Code, 番号, printf('%02d', 20 + ?), 条Code, "
                                   "項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合, 改行, テンプレート, 文章, 変数語句, "
                                   "変数番号, 変更フラグ, 文章形式Code, 正式名称 FROM \"%1\" WHERE 規程Code = '01' AND 章Code < '20' "
                                   "AND 文章形式Code = '1'")
                        .arg(QString::fromUtf8(table)),
                    {i * 100000, i});
        }
    }
    transaction.commit();
}

int rowsOf(QSqlDatabase db)
{
    return scalar(db, QStringLiteral("SELECT (SELECT count(*) FROM 作成データ補助～条 WHERE 規程Code = '01' AND 文章形式Code = '1') + "
                                     "(SELECT count(*) FROM 作成データ補助項～ WHERE 規程Code = '01' AND 文章形式Code = '1')"))
        .toInt();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    BenchCompany company;
    if (!company.open())
        return 1;
    QSqlDatabase db = company.db();
    // Every document of the seed on the list (those not in the standard draft with their 規程 row only).
    DocumentList list(db);
    for (const CodeAndName &d : list.documents(kStyle, false))
        list.addToList(kStyle, d.code);
    const QList<Requirement> &table = shippedRequirements();
    CheckRequest request;
    request.document = QStringLiteral("01");
    QList<CheckResult> results;
    const double one = timed([&] { results = checkDocument(db, table, request); });
    std::printf("法令チェック (times of one run)\n");
    std::printf("seed work rules (01)   %5d rows  %3lld results  %7.1f ms\n", rowsOf(db), static_cast<long long>(results.size()), one);
    const double all = timed([&] { results = checkCompany(db, table, kStyle); });
    const int documents = scalar(db, QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = '1' AND 選択フラグ = 1")).toInt();
    std::printf("all %2d documents              %3lld results  %7.1f ms\n", documents, static_cast<long long>(results.size()), all);
    for (const int times : {1, 4, 16}) {
        const QList<Requirement> grown = grownTable(table, times);
        const double t = timed([&] { checkDocument(db, grown, request); });
        std::printf("01 × %2d requirements: %4lld requirements  %5d rows  %7.1f ms\n", times, static_cast<long long>(grown.size()),
                    rowsOf(db), t);
    }
    int copies = 1;
    for (const int times : {4, 16}) {
        growDocument(db, copies, times);
        copies = times;
        const double t = timed([&] { checkDocument(db, table, request); });
        std::printf("01 rows grown:        %4lld requirements  %5d rows  %7.1f ms\n", static_cast<long long>(grownTable(table, 1).size()),
                    rowsOf(db), t);
    }
    return 0;
}
