// The dict commands end to end: a document of the user's own with its 前文, composed,
// renumbered and deleted; the refusals; get piped into put.

#include "CompanyProbe.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "cli/Cli.h"
#include "composition/Panels.h"

#include "CliRun.h"

#include <QFile>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

using namespace normaris;

namespace {

const QString kCompany = QStringLiteral("甲");

} // namespace

class DictCliTest : public QObject {
    Q_OBJECT

    CliRun dict(const QStringList &args) { return runCli(m_layout, QStringList{QStringLiteral("--yes")} + args); }
    QString writeFile(const QString &name, const QString &text)
    {
        const QString path = m_dir.path() + u'/' + name;
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qUtf8Printable(path));
        f.write(text.toUtf8());
        return path;
    }
    // The rows of a document, table by table.
    QString rowsOf(const QString &code)
    {
        QStringList counts;
        for (const char *table : {"規程", "前文", "施行日", "変数テーブル語句", "作成データ補助～条", "作成データ補助項～"}) {
            const QString column = QString::fromUtf8(table) == u"規程" ? QStringLiteral("Code") : QStringLiteral("規程Code");
            counts << QString::fromUtf8(table) + u'='
                          + test::valueInCompany(
                                m_layout, kCompany,
                                QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2 = '%3'").arg(QString::fromUtf8(table), column, code))
                                .toString();
        }
        return counts.join(u' ');
    }

    // Every row of the tables that hold a document's entries, in stored order.
    QString dumpOf(const QString &company)
    {
        QString dump;
        test::inCompany(m_layout, company, OpenMode::ReadOnly, [&](QSqlDatabase db) {
            for (const char *table :
                 {"規程", "前文", "章", "条", "項", "号", "号の細分丸", "号の細分イロハ", "変数テーブル語句", "変数テーブル番号"}) {
                auto q = execSql(db, QStringLiteral("SELECT * FROM \"%1\" ORDER BY ID").arg(QString::fromUtf8(table)));
                while (q.next()) {
                    for (int i = 0; i < q.record().count(); ++i)
                        dump += q.value(i).toString() + u'|';
                    dump += u'\n';
                }
            }
        });
        return dump;
    }
    // The next free code of a variable table in document 01.
    QString nextCode(const QString &company, const QString &table)
    {
        const int last =
            test::valueInCompany(m_layout, company,
                                 QStringLiteral("SELECT max(CAST(Code AS INTEGER)) FROM \"%1\" WHERE 規程Code = '01'").arg(table))
                .toInt();
        return QStringLiteral("%1").arg(last + 1, 4, 10, QLatin1Char('0'));
    }
    // The index of the composition row of 条 article in the work rules.
    QString rowOf(const QStringList &company, const QString &article)
    {
        const CliRun r = dict(QStringList{"compose", "rows"} + company + QStringList{"--doc", "01"});
        for (const QString &line : r.out.split(u'\n')) {
            const QStringList fields = line.split(u'\t');
            if (fields.value(2) == u"3" && fields.value(5) == article)
                return fields.value(0);
        }
        return {};
    }

    // dict put of bytes is refused with status 1 and message first, and the company's
    // content stays as it was.
    void putIsRefused(const QByteArray &bytes, const QString &message)
    {
        const QStringList company = {QStringLiteral("--company"), kCompany, QStringLiteral("--style"), QStringLiteral("1")};
        const QByteArray before = test::contentDigest(m_layout, kCompany);
        const QString path = m_dir.path() + QStringLiteral("/bad.txt");
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        f.close();
        const CliRun r = dict(QStringList{"dict", "put"} + company + QStringList{"--doc", "01", path});
        QCOMPARE(r.status, 1);
        QVERIFY2(r.err.startsWith(message), qPrintable(r.err));
        QVERIFY(test::contentDigest(m_layout, kCompany) == before);
    }

private slots:
    void initTestCase()
    {
        m_layout =
            DataLayout(m_dir.path() + QStringLiteral("/r"), test::TestServer::requested() ? test::TestServer::newDatabase() : QString());
        QCOMPARE(dict({QStringLiteral("company"), QStringLiteral("new"), kCompany}).status, 0);
    }
    void cleanupTestCase()
    {
        if (!m_layout.store.isEmpty())
            test::TestServer::dropDatabase(m_layout.store);
    }

    void ownDocumentLifeCycle()
    {
        const QStringList company = {QStringLiteral("--company"), kCompany, QStringLiteral("--style"), QStringLiteral("1")};
        CliRun r = dict(QStringList{"dict", "docs", "add"} + company + QStringList{"--code", "75", "--name", "安全衛生規程"});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.status, 0);
        r = dict(QStringList{"dict", "docs", "list"} + company);
        QVERIFY2(r.out.contains(QStringLiteral("75\t安全衛生規程\tTrue\t安全衛生規程\tFalse\t1\n")), qPrintable(r.out));

        const QString preamble =
            writeFile(QStringLiteral("75.txt"), QStringLiteral("文章形式 1\n規程 75 安全衛生規程\n前文\n= この規程は、\n= ☆0001☆\n"));
        r = dict(QStringList{"dict", "put"} + company + QStringList{"--doc", "75", preamble});
        QCOMPARE(r.status, 0);
        r = dict(QStringList{"dict", "get"} + company + QStringList{"--doc", "75"});
        QCOMPARE(r.out,
                 QStringLiteral("文章形式 1\n規程 75 安全衛生規程\n正式名称 安全衛生規程\n文章種別 1\n前文\n= この規程は、\n= ☆0001☆\n"));
        // get piped into put changes nothing.
        const QString again = writeFile(QStringLiteral("again.txt"), r.out);
        QCOMPARE(dict(QStringList{"dict", "put"} + company + QStringList{"--doc", "75", again}).status, 0);
        QCOMPARE(dict(QStringList{"dict", "get"} + company + QStringList{"--doc", "75"}).out, r.out);

        // On the list and composed with its 前文.
        QCOMPARE(dict(QStringList{"docs", "add"} + company + QStringList{"--doc", "75"}).status, 0);
        r = dict(QStringList{"compose", "add"} + company + QStringList{"--doc", "75", "--row", "0", "--action", "3", "--pick", "01"});
        QCOMPARE(r.status, 0);
        QCOMPARE(dict(QStringList{"dates", "add", "--company", kCompany, "--doc", "75", "2026/4/1"}).status, 0);

        const QString three =
            writeFile(QStringLiteral("three.txt"),
                      QStringLiteral("文章形式 1\n規程 75 安全衛生規程\n前文\n= この規程は、\n= ☆0001☆\n= の規程とする。\n"));
        r = dict(QStringList{"dict", "put"} + company + QStringList{"--doc", "75", three});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("編集制限: 使用中のデータがあるため、分割の数を変更できません。\n"));

        const QString composed = rowsOf(QStringLiteral("75"));
        QVERIFY2(composed.startsWith(QStringLiteral("規程=1 前文=2 施行日=1 変数テーブル語句=0 作成データ補助～条=")),
                 qPrintable(composed));
        r = dict(QStringList{"dict", "docs", "edit"} + company + QStringList{"--code", "75", "--new-code", "76"});
        QCOMPARE(r.status, 0);
        QCOMPARE(rowsOf(QStringLiteral("76")), composed);
        QCOMPARE(rowsOf(QStringLiteral("75")),
                 QStringLiteral("規程=0 前文=0 施行日=0 変数テーブル語句=0 作成データ補助～条=0 作成データ補助項～=0"));

        r = dict(QStringList{"dict", "docs", "delete"} + company + QStringList{"--code", "76"});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("削除制限: 作成データとして使用中なので削除できません。\n"));
        QCOMPARE(dict(QStringList{"docs", "remove"} + company + QStringList{"--doc", "76"}).status, 0);
        r = dict(QStringList{"dict", "docs", "delete"} + company + QStringList{"--code", "76"});
        QCOMPARE(r.status, 0);
        QCOMPARE(rowsOf(QStringLiteral("76")),
                 QStringLiteral("規程=0 前文=0 施行日=0 変数テーブル語句=0 作成データ補助～条=0 作成データ補助項～=0"));

        r = dict(QStringList{"dict", "docs", "delete"} + company + QStringList{"--code", "01"});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("削除制限: ユーザー追加データ以外は削除できません。\n"));
    }

    void badInput_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        QTest::newRow("code out of range") << QStringList{"dict", "docs", "add", "--code", "100", "--name", "x"}
                                           << "入力エラー: 70～99を入力してください。･･･Code\n";
        QTest::newRow("standard code") << QStringList{"dict", "docs", "add", "--code", "5", "--name", "x"}
                                       << "入力エラー: 70～99を入力してください。･･･Code\n";
        QTest::newRow("duplicate") << QStringList{"dict", "docs", "add", "--code", "80", "--name", "x"}
                                   << "入力エラー: Codeが重複しています。\n";
        QTest::newRow("too long") << QStringList{"dict", "docs", "add", "--code", "81", "--name", QString(41, u'規')}
                                  << "入力のエラー: 項目の長さ(82)が制限(80)を越えています。 ･･･表示名称\n";
        QTest::newRow("no name") << QStringList{"dict", "docs", "add", "--code", "81", "--name", ""}
                                 << "入力エラー: 未入力は許されません。･･･表示名称\n";
        QTest::newRow("standard renumbered") << QStringList{"dict", "docs", "edit", "--code", "01", "--new-code", "02"}
                                             << "入力エラー: 01～69は変更できません。･･･Code\n";
    }
    void badInput()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        dict(QStringList{"dict", "docs", "add", "--company", kCompany, "--style", "1", "--code", "80", "--name", "既存"});
        const CliRun r = dict(args + QStringList{"--company", kCompany, "--style", "1"});
        QCOMPARE(r.err, message);
        QCOMPARE(r.status, 1);
        QCOMPARE(test::valueInCompany(m_layout, kCompany, QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = '81'")).toInt(), 0);
    }

    void putRefusesABadFile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown line") << "文章形式 1\n規程 01 就業規則\n前文\n= 甲\n何か\n"
                                      << "読込エラー: bad.txt:5: ";
        QTest::newRow("other document") << "文章形式 1\n規程 02 賃金規程\n前文\n= 甲\n"
                                        << "読込エラー: bad.txt:2: 規程のCodeが --doc と違います\n";
        const QString head = QStringLiteral("文章形式 1\n規程 01 就業規則\n");
        QTest::newRow("standard chapter code")
            << head + "章 60 新しい章\n"
            << "入力エラー: 70～99を入力してください。･･･Code\n読込エラー: bad.txt:3: 章60は書き込めません\n";
        QTest::newRow("standard article code") << head + "章 03 服務規律\n条 0500 新しい条\n"
                                               << "入力エラー: 7000～9999を入力してください。･･･Code\n";
        QTest::newRow("nothing half-written") << head + "章 70 新しい章\n条 0500 新しい条\n"
                                              << "入力エラー: 7000～9999を入力してください。･･･Code\n";
        QTest::newRow("name too long") << head + "章 03 服務規律\n条 7001 " + QString(41, u'長') + "\n"
                                       << "入力のエラー: 項目の長さ(82)が制限(80)を越えています。 ･･･名称\n";
        QTest::newRow("quote in a name") << head + "章 03 服務規律\n条 7001 在宅\"勤務\n"
                                         << "入力のエラー: ";
        QTest::newRow("missing parent") << head + "章 03 服務規律\n条 0016 遵守事項\n  項 99\n    号 70\n    = 甲\n"
                                        << "読込エラー: bad.txt:5: 章03 条0016 項99はありません\n";
        QTest::newRow("missing target") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ◆0151◆\n  参照 0151 条0999 項01\n"
                                        << "読込エラー: bad.txt:7: 参照0151の参照先（規程01 条0999 項01）がありません\n";
        QTest::newRow("word code taken") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ★0001★\n  語句 0001 別の名前 = 甲\n"
                                         << "読込エラー: bad.txt:7: 語句0001は";
        QTest::newRow("marker without row") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = 上限は★0777★とする\n"
                                            << "読込エラー: bad.txt:5: ★0777★に語句の行がありません\n";
        QTest::newRow("segment of a word without its line") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ★9999★\n"
                                                            << "読込エラー: bad.txt:5: ★9999★に語句の行がありません\n";
        QTest::newRow("reference without its line") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ◆0151◆\n"
                                                    << "読込エラー: bad.txt:5: ◆0151◆に参照の行がありません\n";
        QTest::newRow("word line without its marker") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = 甲\n  語句 0777 上限 = 週２日\n"
                                                      << "読込エラー: bad.txt:7: 語句 0777 の記号★0777★が本文にありません\n";
        QTest::newRow("paragraph twice") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = 甲\n  項 70\n  = 乙\n"
                                         << "読込エラー: bad.txt:7: 項「規程01 章03 条7001 項70」が重複しています（5行目と同じです）\n";
        QTest::newRow("article twice") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = 甲\n条 7001 別名\n"
                                       << "読込エラー: bad.txt:7: 条「規程01 章03 条7001」が重複しています（4行目と同じです）\n";
        QTest::newRow("word code twice in a clause")
            << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ★0777★\n  語句 0777 上限 = 甲\n  語句 0777 上限 = 乙\n"
            << "読込エラー: bad.txt:8: 語句 0777 が重複しています\n";
        QTest::newRow("marker in a word") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ★0777★\n  語句 0777 上限 = ☆0005☆\n"
                                          << "入力のエラー: 項目中に ☆ を含むことはできません。 ･･･語句\n";
        QTest::newRow("unknown setting") << head + "章 03 服務規律\n条 7001 在宅\n  項 70\n  = ☆0020☆\n"
                                         << "読込エラー: bad.txt:5: ☆0020☆は基本設定にありません（0001～0016、0030）\n";
        QTest::newRow("eight segments") << "文章形式 1\n規程 01 就業規則\n前文\n= 1\n= 2\n= 3\n= 4\n= 5\n= 6\n= 7\n= 8\n"
                                        << "読込エラー: bad.txt:3: この文章の分割は7までです\n";
    }
    void putRefusesABadFile()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        putIsRefused(text.toUtf8(), message);
    }

    // What no text editor should have written: the line is named, its bytes never shown.
    void putRefusesBytesThatAreNoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("message");
        const QByteArray head = QStringLiteral("文章形式 1\n規程 01 就業規則\n章 03 服務規律\n条 7001 在宅\n  項 70\n").toUtf8();
        QTest::newRow("not UTF-8")
            << head + "  = \xff\xfe\x81\n"
            << "読込エラー: bad.txt:6: UTF-8の文字として読めないバイトがあります（ファイルはUTF-8で保存してください）\n";
        QTest::newRow("Shift_JIS")
            << QByteArray("\x95\xb6\x8f\xcd\x8c\x60\x8e\xae 1\n")
            << "読込エラー: bad.txt:1: UTF-8の文字として読めないバイトがあります（ファイルはUTF-8で保存してください）\n";
        QTest::newRow("binary") << QByteArray("\x7f"
                                              "ELF\x02\x01\x01\x00\x00\x00garbage",
                                              17)
                                << "読込エラー: bad.txt:1: 制御文字があります（U+007F）\n";
        QTest::newRow("NUL in a segment") << head + QByteArray("  = a\0b\n", 8) << "読込エラー: bad.txt:6: 制御文字があります（U+0000）\n";
        QTest::newRow("long unknown line") << head + QString(200, u'謎').toUtf8() + '\n'
                                           << "読込エラー: bad.txt:6: 「" + QString(20, u'謎') + "…」は分からない行です\n";
    }
    void putRefusesBytesThatAreNoText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, message);
        putIsRefused(bytes, message);
    }

    // dict get of the whole work rules piped into dict put changes no row.
    void roundTripOfTheWorkRules()
    {
        const QString company = QStringLiteral("丙");
        QCOMPARE(dict({QStringLiteral("company"), QStringLiteral("new"), company}).status, 0);
        const QStringList place = {QStringLiteral("--company"), company,
                                   QStringLiteral("--style"),   QStringLiteral("1"),
                                   QStringLiteral("--doc"),     QStringLiteral("01")};
        const CliRun got = dict(QStringList{"dict", "get"} + place);
        QCOMPARE(got.status, 0);
        QVERIFY(got.out.contains(QStringLiteral("\n条 0163 テレワーク勤務\n")));
        QVERIFY(got.out.contains(QStringLiteral("  参照 0001 章01 条0002 項01 号01\n")));
        const QString before = dumpOf(company);
        const CliRun put = dict(QStringList{"dict", "put"} + place + QStringList{writeFile(QStringLiteral("01.txt"), got.out)});
        QCOMPARE(put.err, QString());
        QCOMPARE(put.status, 0);
        QCOMPARE(dumpOf(company), before);
        QCOMPARE(dict(QStringList{"dict", "get"} + place).out, got.out);
    }

    // A user's article with a word and a reference goes in, is offered, composed,
    // numbered and worded in the export, and is deleted only once released.
    void ownArticleThroughTheChain()
    {
        const QString company = QStringLiteral("乙");
        QCOMPARE(dict({QStringLiteral("company"), QStringLiteral("new"), company}).status, 0);
        const QStringList on = {QStringLiteral("--company"), company, QStringLiteral("--style"), QStringLiteral("1")};
        const QString word = nextCode(company, QStringLiteral("変数テーブル語句"));
        const QString reference = nextCode(company, QStringLiteral("変数テーブル番号"));
        const QString text =
            QStringLiteral("文章形式 1\n規程 01 就業規則\n\n章 03 服務規律\n\n条 7001 テレワーク勤務\n"
                           "  項 70\n  = 従業員は、所属長の許可を得て、\n  = ★%1★\n  = を上限として在宅で勤務することができる。\n"
                           "  語句 %1 在宅勤務の上限日数 = 週２日\n"
                           "  項 71\n  = テレワーク勤務を行う者は、\n  = ◆%2◆\n  = の従業員に限る。\n"
                           "  参照 %2 条0002 項01 号01\n")
                .arg(word, reference);
        CliRun r = dict(QStringList{"dict", "put"} + on + QStringList{"--doc", "01", writeFile(QStringLiteral("7001.txt"), text)});
        QCOMPARE(r.err, QString());
        QCOMPARE(r.status, 0);
        r = dict(QStringList{"dict", "words", "list"} + on + QStringList{"--doc", "01"});
        QVERIFY(r.out.contains(word + QStringLiteral("\t在宅勤務の上限日数\t週２日\n")));
        r = dict(QStringList{"dict", "refs", "list"} + on + QStringList{"--doc", "01"});
        QVERIFY2(r.out.contains(reference + QStringLiteral("\t03 7001 71\t2\t4\t規程01 章01 条0002 項01 号01\n")), qPrintable(r.out));
        QList<CodeAndName> offered;
        test::inCompany(m_layout, company, OpenMode::ReadOnly, [&](QSqlDatabase db) {
            offered =
                stockList(db, QStringLiteral("1"), QStringLiteral("01"), Level::Article, {QStringLiteral("03")}, StockFilter::UserMade);
        });
        QCOMPARE(offered, (QList<CodeAndName>{{QStringLiteral("7001"), QStringLiteral("テレワーク勤務")}}));

        r = dict(QStringList{"compose", "add"} + on
                 + QStringList{"--doc", "01", "--row", rowOf(on, QStringLiteral("0016")), "--action", "4", "--pick", "7001"});
        QCOMPARE(r.status, 0);
        QCOMPARE(dict(QStringList{"settings", "set", "--company", company, "事業所名=株式会社乙"}).status, 0);
        // The documents the work rules cite are made first.
        for (const QString &doc : {QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"), QStringLiteral("05"),
                                   QStringLiteral("31"), QStringLiteral("01")}) {
            QCOMPARE(dict(QStringList{"dates", "add", "--company", company, "--doc", doc, "--style", "1", "2026/4/1"}).status, 0);
            QCOMPARE(dict(QStringList{"build"} + on + QStringList{"--doc", doc}).status, 0);
        }
        for (const QString &doc : {QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"), QStringLiteral("05"),
                                   QStringLiteral("31"), QStringLiteral("01")})
            QCOMPARE(dict(QStringList{"substitute"} + on + QStringList{"--doc", doc}).status, 0);
        const QString out = m_dir.path() + QStringLiteral("/01");
        r = dict(QStringList{"export"} + on
                 + QStringList{"--doc", "01", "--out", out + QStringLiteral(".docx"), "--text", out + QStringLiteral(".txt")});
        QCOMPARE(r.status, 0);
        QFile printed(out + QStringLiteral(".txt"));
        QVERIFY(printed.open(QIODevice::ReadOnly));
        const QString body = QString::fromUtf8(printed.readAll());
        QVERIFY2(body.contains(QStringLiteral("第１５条（遵守事項）")), qPrintable(body.left(2000)));
        QVERIFY(body.contains(QStringLiteral("<i-2>第１６条（テレワーク勤務）\n"
                                             "<i-1>１  従業員は、所属長の許可を得て、週２日を上限として在宅で勤務することができる。\n"
                                             "<i-1>２  テレワーク勤務を行う者は、第２条第１項第１号の従業員に限る。\n")));
        QVERIFY(body.contains(QStringLiteral(">第１７条（出退勤）\n")));

        const QStringList article = {"--doc", "01", "--chapter", "03", "--article", "7001"};
        r = dict(QStringList{"dict", "delete"} + on + article);
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("削除制限: 作成データとして使用中なので削除できません。\n"));
        QCOMPARE(
            dict(QStringList{"compose", "release"} + on + QStringList{"--doc", "01", "--row", rowOf(on, QStringLiteral("7001"))}).status,
            0);
        r = dict(QStringList{"dict", "delete"} + on + article);
        QCOMPARE(r.status, 0);
        QCOMPARE(dict(QStringList{"dict", "get"} + on + article).status, 1);
        QVERIFY(!dict(QStringList{"dict", "words", "list"} + on + QStringList{"--doc", "01"})
                     .out.contains(QStringLiteral("在宅勤務の上限日数")));
    }

private:
    QTemporaryDir m_dir;
    // The program folder the commands run on, and the store its companies are kept in.
    DataLayout m_layout;
};

QTEST_GUILESS_MAIN(DictCliTest)
#include "tst_dictcli.moc"
