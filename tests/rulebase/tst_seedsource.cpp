// The dictionary sources: what the generator accepts, what it refuses with file
// and line, and what it writes for split clauses, words and references.

#include "SeedChecks.h"
#include "TestRoot.h"
#include "base/Database.h"
#include "base/Levels.h"
#include "rulebase/CompanyDatabase.h"
#include "seed/SeedParser.h"
#include "seed/SeedValidator.h"
#include "seed/SeedWriter.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::seed;

namespace {

// A small document, the same in both styles but for the wording.
QString source(int style)
{
    const QString end = style == 1 ? QStringLiteral("する。") : QStringLiteral("します。");
    return QStringLiteral("文章形式 %1\n"
                          "規程 01 就業規則\n"
                          "前文\n"
                          "= 前文の文章です。\n"
                          "章 01 総則\n"
                          "条 0001 目的\n"
                          "項 01\n"
                          "= 目的を定め%2\n"
                          "条 0002 定義\n"
                          "項 01\n"
                          "= 期間は\n"
                          "= ★0001★\n"
                          "=↵ とし、◆0001◆を準用%2\n"
                          "語句 0001 期間 = ３か月\n"
                          "参照 0001 条0001 項01\n")
        .arg(style)
        .arg(end);
}

// Writes the two styles as document sources in dir and generates the seed there.
QString generateFrom(const QTemporaryDir &dir, const QString &style1, const QString &style2)
{
    QDir().mkpath(dir.path() + QStringLiteral("/documents"));
    const QString texts[] = {style1, style2};
    for (int style : {1, 2}) {
        QFile f(dir.path() + QStringLiteral("/documents/01-%1.txt").arg(style));
        if (!f.open(QIODevice::WriteOnly))
            qFatal("cannot write the source");
        f.write(texts[style - 1].toUtf8());
    }
    const QString seed = dir.path() + QStringLiteral("/seed.sqlite");
    const auto errors = generateSeed(dir.path(), seed);
    if (!errors.isEmpty())
        qFatal("%s", qUtf8Printable(errors.first().toString()));
    return seed;
}

QStringList check(const QString &style1, const QString &style2)
{
    QList<SourceError> errors;
    Dictionary d;
    d.documents << parseDocument(QStringLiteral("01-1.txt"), style1, errors);
    d.documents << parseDocument(QStringLiteral("01-2.txt"), style2, errors);
    resolveReferences(d, errors);
    errors += validate(d);
    QStringList lines;
    for (const SourceError &e : errors)
        lines << e.toString();
    return lines;
}

} // namespace

class SeedSourceTest : public QObject {
    Q_OBJECT
private slots:
    void theBaseSourceIsGood() { QCOMPARE(check(source(1), source(2)), QStringList()); }

    // Each case changes one style's source; the first problem must name file, line and cause.
    void refusals_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("error");
        QTest::newRow("word marker without its row")
            << QStringLiteral("語句 0001 期間 = ３か月\n") << QString() << QStringLiteral("01-1.txt:10: ★0001★に語句の行がありません");
        QTest::newRow("word row without its marker") << QStringLiteral("= ★0001★\n") << QStringLiteral("= 三か月\n")
                                                     << QStringLiteral("01-1.txt:14: 語句 0001 の記号★0001★が本文にありません");
        QTest::newRow("reference without its row")
            << QStringLiteral("参照 0001 条0001 項01\n") << QString() << QStringLiteral("01-1.txt:10: ◆0001◆に参照の行がありません");
        QTest::newRow("reference to a missing clause")
            << QStringLiteral("条0001 項01") << QStringLiteral("条0001 項09")
            << QStringLiteral("01-1.txt:15: 参照 0001 の参照先「規程01 章01 条0001 項09」がありません");
        QTest::newRow("reference to a missing document") << QStringLiteral("条0001 項01") << QStringLiteral("規程05 条0001")
                                                         << QStringLiteral("01-1.txt:15: 参照 0001 の参照先「規程05 条0001」がありません");
        QTest::newRow("chapter code in the user range") << QStringLiteral("章 01") << QStringLiteral("章 70")
                                                        << QStringLiteral("01-1.txt:5: 章のCode「70」は01～69の2桁にしてください");
        QTest::newRow("article code in the user range") << QStringLiteral("条 0002") << QStringLiteral("条 7000")
                                                        << QStringLiteral("01-1.txt:9: 条のCode「7000」は0001～6999の4桁にしてください");
        QTest::newRow("paragraph code of one digit") << QStringLiteral("項 01\n= 目的") << QStringLiteral("項 1\n= 目的")
                                                     << QStringLiteral("01-1.txt:7: 項のCode「1」は01～69の2桁にしてください");
        QTest::newRow("duplicate article") << QStringLiteral("条 0002") << QStringLiteral("条 0001")
                                           << QStringLiteral("01-1.txt:9: 条「規程01 章01 条0001」が重複しています");
        QTest::newRow("segment over 250 bytes")
            << QStringLiteral("= 期間は") << QStringLiteral("= ") + QString(126, QChar(u'長'))
            << QStringLiteral("01-1.txt:10: 文章が252バイトあり、制限(250)を越えています: ") + QString(20, QChar(u'長'));
        QTest::newRow("loose marker sign") << QStringLiteral("= 期間は") << QStringLiteral("= 期間は★")
                                           << QStringLiteral(
                                                  "01-1.txt:10: 記号（★☆◆）は「★0001★」のように4桁の数字を挟んで使ってください: 期間は★");
        QTest::newRow("unknown setting") << QStringLiteral("= 前文の文章です。") << QStringLiteral("= ☆0017☆の文章です。")
                                         << QStringLiteral("01-1.txt:3: ☆0017☆は基本設定にありません（0001～0016、0030）");
        QTest::newRow("unknown line") << QStringLiteral("前文\n") << QStringLiteral("前書き\n")
                                      << QStringLiteral("01-1.txt:3: 「前書き」は分からない行です");
        QTest::newRow("template as a clause of its own")
            << QStringLiteral("項 01\n= 目的を定めする。\n") << QStringLiteral("項 01\n= 目的を定めする。\nテンプレート 01\n")
            << QStringLiteral("01-1.txt:7: テンプレート01は条項の続き（「=↵」の区切り）に置いてください。"
                              "それだけで一つの条項にはできません: 規程01 章01 条0001 項01");
        QTest::newRow("styles differ in structure")
            << QStringLiteral("条 0002 定義\n") << QStringLiteral("条 0003 定義\n") << QStringLiteral("01-2.txt:0:");
    }
    void refusals()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, error);
        QString changed = source(1);
        QVERIFY2(changed.contains(from), qUtf8Printable(from));
        changed.replace(from, to);
        const QStringList errors = check(changed, source(2));
        QVERIFY2(!errors.isEmpty(), "the change was accepted");
        if (error.endsWith(u':')) {
            // Structure differences are reported against the second style, with both lines.
            QVERIFY2(
                std::any_of(errors.begin(), errors.end(), [](const QString &e) { return e.contains(QStringLiteral("と構成が違います")); }),
                qUtf8Printable(errors.join(u'\n')));
        } else {
            QCOMPARE(errors.first(), error);
        }
    }

    // An agreement's dates follow the date the user gives it: no calendar date in its text or
    // in a word's default. An empty error: the change is accepted.
    void agreementDates_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("error");
        QTest::newRow("date in the text")
            << QStringLiteral("= 期間は") << QStringLiteral("= 令和８年４月１日から期間は")
            << QStringLiteral(
                   "01-1.txt:11: 協定の本文に日付「令和８年４月１日」があります。☆0030☆（有効期間起算日）か埋込語句にしてください");
        QTest::newRow("filled-in date word")
            << QStringLiteral("期間 = ３か月") << QStringLiteral("期間 = 令和８年４月１日")
            << QStringLiteral(
                   "01-1.txt:15: 語句 0001 の既定の語句が日付「令和８年４月１日」です。「令和　年　月　日」のように空けてください");
        QTest::newRow("the effective date") << QStringLiteral("= 期間は") << QStringLiteral("= ☆0030☆から期間は") << QString();
        QTest::newRow("blank date word") << QStringLiteral("期間 = ３か月") << QStringLiteral("期間 = 令和　年　月　日") << QString();
        QTest::newRow("template inside its clause")
            << QStringLiteral("語句 0001 期間") << QStringLiteral("テンプレート 01\n語句 0001 期間") << QString();
    }
    void agreementDates()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, error);
        const auto agreement = [&](int style) {
            QString text = source(style);
            text.replace(QStringLiteral("規程 01 就業規則\n"), QStringLiteral("規程 01 就業規則\n文章種別 2\n"));
            return text.replace(from, to);
        };
        const QStringList errors = check(agreement(1), agreement(2));
        if (error.isEmpty())
            QCOMPARE(errors, QStringList());
        else
            QVERIFY2(errors.contains(error), qUtf8Printable(errors.join(u'\n')));
    }

    // Word and reference rows carry no style, so both styles must put them in the same 結合.
    void markersMustShareTheirSegment()
    {
        QString moved = source(2);
        moved.replace(QStringLiteral("= 期間は\n= ★0001★\n"), QStringLiteral("= 期間は★0001★\n= 。\n"));
        const QStringList errors = check(source(1), moved);
        QVERIFY(!errors.isEmpty());
        QVERIFY2(errors.first().startsWith(QStringLiteral("01-2.txt:")) && errors.first().contains(QStringLiteral("構成が違います")),
                 qUtf8Printable(errors.join(u'\n')));
    }

    void writtenRows()
    {
        QTemporaryDir dir;
        const QString seed = generateFrom(dir, source(1), source(2));
        using test::valueIn;
        // A split clause: 結合 1..3, the word segment of kind 1, the line break on the third.
        QCOMPARE(valueIn(seed, QStringLiteral(
                                   "SELECT group_concat(結合 || ':' || 結合種別 || ':' || 改行 || ':' || 変数語句 || 変数番号, ' ') "
                                   "FROM (SELECT * FROM 項 WHERE 文章形式Code = '1' AND 条Code = '0002' ORDER BY CAST(結合 AS INTEGER))"))
                     .toString(),
                 QStringLiteral("1:0:0:00 2:1:0:10 3:0:1:01"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 結合 FROM 項 WHERE 条Code = '0001'")).toString(), QStringLiteral("0"));
        // One word row and one reference row for both styles, keyed by place and segment.
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(Code || '|' || 語句 || '|' || 条Code || '|' || 項Code || '|' || 結合 || "
                                              "'|' || 種別 || '|' || 表示名称) FROM 変数テーブル語句"))
                     .toString(),
                 QStringLiteral("0001|３か月|0002|01|2|4|期間"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(Code || '|' || 結合 || '|' || 変換参照■規程Code || 変換参照■章Code || "
                                              "変換参照■条Code || 変換参照■項Code || '|' || 変換参照■種別) FROM 変数テーブル番号"))
                     .toString(),
                 QStringLiteral("0001|3|01010001"
                                "01|4"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT count(*) FROM 前文")).toInt(), 2);
    }

    // The generated seed, read back without trusting the writer: the draft obeys the
    // composition invariants and every marker of the dictionary has its row.
    void theShippedSeedIsConsistent()
    {
        test::TestRoot root;
        const QString connection = QStringLiteral("seedcheck");
        {
            QSqlDatabase db = openCompanyDatabase(root.layout().seedFile(), connection, OpenMode::ReadOnly);
            RowReader drafts = execSql(db, QStringLiteral("SELECT 文章形式Code, Code FROM 規程 WHERE 選択フラグ = 1"));
            int composed = 0;
            while (drafts.next()) {
                ++composed;
                QCOMPARE(test::compositionProblems(db, drafts.value(0).toString(), drafts.value(1).toString()), QStringList());
            }
            QVERIFY(composed >= 1);
            QCOMPARE(test::markerProblems(db), QStringList());
        }
        closeDatabase(connection);
    }

    // The model work rules hold what a labour consultant expects of them, in both styles.
    void theWorkRulesAreComplete_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<int>("least");
        const auto row = [](const char *name, const char *sql, int least) { QTest::newRow(name) << QString::fromUtf8(sql) << least; };
        row("chapters, である調", "SELECT count(*) FROM 章 WHERE 規程Code = '01' AND 文章形式Code = '1'", 10);
        row("chapters, ですます調", "SELECT count(*) FROM 章 WHERE 規程Code = '01' AND 文章形式Code = '2'", 10);
        row("articles, である調", "SELECT count(*) FROM 条 WHERE 規程Code = '01' AND 文章形式Code = '1'", 70);
        row("articles, ですます調", "SELECT count(*) FROM 条 WHERE 規程Code = '01' AND 文章形式Code = '2'", 70);
        row("preamble", "SELECT count(DISTINCT 文章形式Code) FROM 前文 WHERE 規程Code = '01'", 2);
        row("items", "SELECT count(*) FROM 号 WHERE 規程Code = '01'", 20);
        row("①～⑳", "SELECT count(*) FROM 号の細分丸 WHERE 規程Code = '01'", 4);
        row("イ～ネ", "SELECT count(*) FROM 号の細分イロハ WHERE 規程Code = '01'", 4);
        row("templates", "SELECT count(*) FROM 項 WHERE 規程Code = '01' AND 文章形式Code = '1' AND テンプレート <> '0'", 2);
        row("segments after a line break", "SELECT count(*) FROM 項 WHERE 規程Code = '01' AND 改行 = 1", 1);
        row("segments without a break", "SELECT count(*) FROM 項 WHERE 規程Code = '01' AND CAST(結合 AS INTEGER) > 1 AND 改行 = 0", 1);
        row("words", "SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = '01'", 20);
        row("settings markers", "SELECT count(*) FROM 前文 WHERE 規程Code = '01' AND 前文 LIKE '%☆0001☆%'", 2);
        row("references to articles", "SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND 変換参照■種別 = '3'", 1);
        row("references to paragraphs", "SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND 変換参照■種別 = '4'", 1);
        row("references to items", "SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND 変換参照■種別 = '5'", 1);
        row("references to 賃金規程", "SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND 変換参照■規程Code = '02'", 2);
        row("stock left out of the draft", "SELECT count(*) FROM 条 WHERE 規程Code = '01' AND 文章形式Code = '1' AND 選択フラグ = 0", 3);
        row("composed articles", "SELECT count(*) FROM 作成データ補助～条 WHERE 規程Code = '01' AND 種別 = '3'", 70);
    }
    void theWorkRulesAreComplete()
    {
        QFETCH(QString, sql);
        QFETCH(int, least);
        test::TestRoot root;
        const int found = test::valueIn(root.layout().seedFile(), sql).toInt();
        QVERIFY2(found >= least, qUtf8Printable(QStringLiteral("%1 found, at least %2 wanted").arg(found).arg(least)));
    }

    // Every document of the dictionary in both styles, with the formal name others cite.
    void theNineDocuments()
    {
        test::TestRoot root;
        const QString seed = root.layout().seedFile();
        QCOMPARE(test::valueIn(
                     seed,
                     QStringLiteral(
                         "SELECT group_concat(Code, ' ') FROM (SELECT Code FROM 規程 GROUP BY Code HAVING count(DISTINCT 文章形式Code) = 2 "
                         "AND min(正式名称) <> '' ORDER BY Code)"))
                     .toString(),
                 QStringLiteral("01 02 03 04 05 31 32 33 34 35"));
        QCOMPARE(test::valueIn(seed, QStringLiteral("SELECT group_concat(Code, ' ') FROM (SELECT Code FROM 規程 WHERE 文章形式Code = '1' "
                                                    "AND 選択フラグ = 1 ORDER BY Code)"))
                     .toString(),
                 QStringLiteral("01 02 03 04 05 31"));
        // 01 cites 02 and 03, and 02 cites 01.
        QVERIFY(
            test::valueIn(seed, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND 変換参照■規程Code = '03'"))
                .toInt()
            >= 1);
        QVERIFY(
            test::valueIn(seed, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '02' AND 変換参照■規程Code = '01'"))
                .toInt()
            >= 1);
    }

    // What the agreements must hold for the workers' side to be named.
    void agreementShape_data()
    {
        QTest::addColumn<QString>("document");
        for (const char *code : {"31", "32", "33", "34", "35"})
            QTest::newRow(code) << QString::fromLatin1(code);
    }
    void agreementShape()
    {
        QFETCH(QString, document);
        test::TestRoot root;
        const QString seed = root.layout().seedFile();
        const auto count = [&](const char *sql) { return test::valueIn(seed, QString::fromUtf8(sql).arg(document)).toInt(); };
        QCOMPARE(count("SELECT count(DISTINCT 文章種別) FROM 規程 WHERE Code = '%1' AND 文章種別 = '2'"), 1);
        // The third segment of the preamble names the side by a representative's marker, in both styles.
        QCOMPARE(count("SELECT count(*) FROM 前文 WHERE 規程Code = '%1' AND 結合 = '3' AND (前文 LIKE '%☆0008☆%' OR 前文 LIKE '%☆0010☆%' "
                       "OR 前文 LIKE '%☆0012☆%')"),
                 2);
        // One 項 holds ★0009★, the short name of that side.
        QCOMPARE(count("SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = '%1' AND Code = '0009'"), 1);
        QCOMPARE(count("SELECT count(*) FROM 項 WHERE 規程Code = '%1' AND 文章形式Code = '1' AND 項 LIKE '%★0009★%'"), 1);
        // The body has no chapters of its own.
        QCOMPARE(count("SELECT count(*) FROM 章 WHERE 規程Code = '%1' AND Code <> '00'"), 0);
        // The person in charge is one word, set once for the whole agreement.
        QVERIFY(count("SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = '%1' AND 表示名称 = '担当者'") <= 1);
    }

    void stockStaysOutOfTheDraft()
    {
        QString withStock = source(1);
        withStock.replace(QStringLiteral("文章形式 1\n"), QStringLiteral("文章形式 1\n標準案\n"));
        withStock.replace(QStringLiteral("条 0001 目的\n"), QStringLiteral("条 0001 目的\n標準外\n"));
        QTemporaryDir dir;
        const QString seed = generateFrom(dir, withStock, source(2));
        using test::valueIn;
        // The stock article is neither composed nor selected; its paragraph keeps its default choice.
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(条Code) FROM 作成データ補助～条 WHERE 種別 = '3'")).toString(),
                 QStringLiteral("0002"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 番号 FROM 作成データ補助～条 WHERE 条Code = '0002'")).toInt(), 1);
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(選択フラグ) FROM 条 WHERE 文章形式Code = '1' ORDER BY Code")).toString(),
                 QStringLiteral("0,1"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 選択フラグ FROM 項 WHERE 文章形式Code = '1' AND 条Code = '0001'")).toInt(), 1);
        // Only the である調 file is composed; the other style's chapters wait on the shelf.
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(文章形式Code || ':' || 選択フラグ) FROM 規程")).toString(),
                 QStringLiteral("1:1,2:0"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 選択フラグ FROM 章 WHERE 文章形式Code = '2'")).toInt(), 0);
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 選択フラグ FROM 変数テーブル語句")).toInt(), 1);
    }

    // What a labour-law reader must not find in the shipped texts: the ですます調 keeps the
    // statute's terms (故意, 虚偽, 過失) and writes 又は as every other file does; the
    // part-time rules give the size of a 特定適用事業所 as the law sets it, not as a number.
    void wordingTheTextsAvoid_data()
    {
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("wordsWhere");
        QTest::addColumn<QString>("pattern");
        // Words have no style: their defaults print in both.
        const QString style2 = QStringLiteral("文章形式Code = '2'");
        const QString part = QStringLiteral("規程Code = '04' AND 条Code = '0062'");
        QTest::newRow("ですます調, colloquial terms") << style2 << QStringLiteral("1 = 1") << QStringLiteral("わざと|嘘|不注意");
        QTest::newRow("ですます調, または") << style2 << QStringLiteral("1 = 1") << QStringLiteral("または");
        QTest::newRow("part-time rules' social insurance, a number of employees") << part << part << QStringLiteral("[0-9０-９]+人");
    }
    void wordingTheTextsAvoid()
    {
        QFETCH(QString, where);
        QFETCH(QString, wordsWhere);
        QFETCH(QString, pattern);
        const QRegularExpression forbidden(pattern);
        test::TestRoot root;
        const QString connection = QStringLiteral("wordingcheck");
        QStringList found;
        int texts = 0;
        {
            QSqlDatabase db = openCompanyDatabase(root.layout().seedFile(), connection, OpenMode::ReadOnly);
            const auto scan = [&](const QString &table, const QString &column, const QString &filter) {
                RowReader q = execSql(db, QStringLiteral("SELECT \"%1\" FROM \"%2\" WHERE %3").arg(column, table, filter));
                while (q.next()) {
                    ++texts;
                    const QString text = q.value(0).toString();
                    if (text.contains(forbidden))
                        found << table + u':' + text;
                }
            };
            for (Level level : {Level::Paragraph, Level::Item, Level::Maru, Level::Iroha})
                scan(dictionaryTable(level), textColumn(level), where);
            if (!where.contains(QStringLiteral("条Code"))) {
                for (Level level : {Level::Preamble, Level::Chapter, Level::Article})
                    scan(dictionaryTable(level), textColumn(level), where);
            }
            // A word's default is printed in either style.
            scan(QStringLiteral("変数テーブル語句"), QStringLiteral("語句"), wordsWhere);
        }
        closeDatabase(connection);
        QVERIFY(texts > 0);
        QCOMPARE(found, QStringList());
    }

    void theShippedSourcesAreGood()
    {
        QList<SourceError> errors;
        Dictionary d = readDictionary(QStringLiteral(NORMARIS_SOURCE_DIR) + QStringLiteral("/data"), errors);
        resolveReferences(d, errors);
        errors += validate(d);
        QStringList lines;
        for (const SourceError &e : errors)
            lines << e.toString();
        QCOMPARE(lines, QStringList());
        QVERIFY(d.documents.size() >= 2);
    }
};

QTEST_GUILESS_MAIN(SeedSourceTest)
#include "tst_seedsource.moc"
