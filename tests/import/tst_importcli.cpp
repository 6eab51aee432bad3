// `normaris-cli import`: the whole import from the command line, its refusals and
// exit statuses, on companies made in the test.

#include "TestRoot.h"
#include "TestServer.h"
#include "UserEntries.h"
#include "base/AppState.h"
#include "cli/Cli.h"

#include "CliRun.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <cstdio>

using namespace normaris;
using namespace normaris::test;

namespace {

using Run = CliRun;

QStringList importArgs(const QString &target, const QString &source, const QStringList &more = {})
{
    return QStringList{QStringLiteral("import"),
                       QStringLiteral("--company"),
                       target,
                       QStringLiteral("--from"),
                       source,
                       QStringLiteral("--style"),
                       QStringLiteral("1"),
                       QStringLiteral("--doc"),
                       QStringLiteral("75")}
           + more;
}

QString paragraphText(const DataLayout &layout, const QString &name)
{
    return columnInCompany(layout, name, QStringLiteral("SELECT 項 FROM 項 WHERE 規程Code = '75' ORDER BY CAST(結合 AS INTEGER)"))
        .join(QString());
}

} // namespace

class ImportCliTest : public QObject {
    Q_OBJECT
private slots:
    void importsOnceAndRefusesAgain()
    {
        TestRoot root;
        const DataLayout layout = root.layout();
        for (const QString &name : {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")})
            root.makeCompany(name);
        addUserChain(layout, QStringLiteral("B"));

        Run r = runCli(root.layout(), importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.err, QStringLiteral("処理完了: データ取込処理が完了しました。\n"));
        QCOMPARE(r.status, 0);
        QCOMPARE(paragraphText(layout, QStringLiteral("A")), paragraphText(layout, QStringLiteral("B")));
        QCOMPARE(paragraphText(layout, QStringLiteral("A")), QStringLiteral("従業員は、★7501★を守り、◆7502◆に従う。"));

        r = runCli(root.layout(), importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("Code重複: 自社データに規則・規程・労使協定の重複Codeがあるためデータ取込を中止します。 "
                                       "規則・規程・労使協定の重複Code：75\n"));

        r = runCli(root.layout(),
                   importArgs(QStringLiteral("C"), QStringLiteral("B"), {QStringLiteral("--chapter"), QStringLiteral("70")}));
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("処理不可: 自社データに規則・規程・労使協定Code：75が存在しないためデータ取込を中止します。\n"));
    }

    // A company is never its own source: that is said before anything else is looked at.
    void refusesTheCompanyItself()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("A"));
        addUserChain(root.layout(), QStringLiteral("A"));
        const QByteArray before = contentDigest(root.layout(), QStringLiteral("A"));
        const Run r =
            runCli(root.layout(),
                   importArgs(QStringLiteral("A"), QStringLiteral("A"),
                              {QStringLiteral("--chapter"), QStringLiteral("70"), QStringLiteral("--article"), QStringLiteral("7001")}));
        QCOMPARE(r.err,
                 QStringLiteral(
                     "会社指定の確認: 『A』のデータは取り込めません。取込先の会社と同じです。取込元には別の会社を指定してください。\n"));
        QCOMPARE(r.status, 1);
        QCOMPARE(contentDigest(root.layout(), QStringLiteral("A")), before);
    }

    // Both companies gave the next free word code of 就業規則 to a word of their own:
    // the import is refused, and with --renumber the source's article comes over with
    // its word under the next code of the target, the marker in its text rewritten.
    void renumbersWordsOfTheirOwn()
    {
        TestRoot root;
        const DataLayout layout = root.layout();
        root.makeCompany(QStringLiteral("A"));
        root.makeCompany(QStringLiteral("B"));
        const QString target = QStringLiteral("A");
        const QString source = QStringLiteral("B");
        const int last =
            valueInCompany(layout, target, QStringLiteral("SELECT max(CAST(Code AS INTEGER)) FROM 変数テーブル語句 WHERE 規程Code = '01'"))
                .toInt();
        auto code = [](int n) { return QStringLiteral("%1").arg(n, 4, 10, QLatin1Char('0')); };
        const QString own = code(last + 1);
        // The target's word of its own, on its first article.
        execInCompany(layout, target,
                      QStringLiteral("INSERT INTO 変数テーブル語句 (Code, 語句, 規程Code, 章Code, 条Code, 項Code, 結合, 種別, 表示名称) "
                                     "VALUES (?, '本社', '01', '01', '0001', '01', '0', '4', '事業場')"),
                      {own});
        // The source's article of its own with its word.
        execInCompany(layout, source,
                      QStringLiteral("INSERT INTO 条 (文章形式Code, 規程Code, 章Code, Code, 条, 正式名称, 選択フラグ) "
                                     "VALUES ('1', '01', '01', '7001', '独自の定め', '独自の定め', 0)"));
        execInCompany(layout, source,
                      QStringLiteral("INSERT INTO 項 (文章形式Code, 規程Code, 章Code, 条Code, Code, 項, 結合, 変数語句, 結合種別) "
                                     "VALUES ('1', '01', '01', '7001', '01', ?, '0', 1, '0')"),
                      {QStringLiteral("従業員は、★%1★を守る。").arg(own)});
        execInCompany(layout, source,
                      QStringLiteral("INSERT INTO 変数テーブル語句 (Code, 語句, 規程Code, 章Code, 条Code, 項Code, 結合, 種別, 表示名称) "
                                     "VALUES (?, '社内規範', '01', '01', '7001', '01', '0', '4', '守るもの')"),
                      {own});
        const QStringList args = {QStringLiteral("import"), QStringLiteral("--company"), QStringLiteral("A"),  QStringLiteral("--from"),
                                  QStringLiteral("B"),      QStringLiteral("--style"),   QStringLiteral("1"),  QStringLiteral("--doc"),
                                  QStringLiteral("01"),     QStringLiteral("--chapter"), QStringLiteral("01"), QStringLiteral("--article"),
                                  QStringLiteral("7001")};
        Run r = runCli(root.layout(), args);
        QCOMPARE(r.status, 1);
        QCOMPARE(
            r.err,
            QStringLiteral("Code重複: 自社データに埋込語句の重複Codeがあるためデータ取込を中止します。 埋込語句の重複Code：%1\n").arg(own));

        const QString renumbered = code(last + 2);
        r = runCli(root.layout(), args + QStringList{QStringLiteral("--renumber")});
        QCOMPARE(r.err, QStringLiteral("処理完了: データ取込処理が完了しました。 埋込語句のCode：%1→%2\n").arg(own, renumbered));
        QCOMPARE(r.status, 0);
        QCOMPARE(valueInCompany(layout, target, QStringLiteral("SELECT 項 FROM 項 WHERE 規程Code = '01' AND 条Code = '7001'")).toString(),
                 QStringLiteral("従業員は、★%1★を守る。").arg(renumbered));
        QCOMPARE(
            valueInCompany(layout, target,
                           QStringLiteral("SELECT 語句 || '/' || 表示名称 || '/' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND "
                                          "Code = '%1'")
                               .arg(renumbered))
                .toString(),
            QStringLiteral("社内規範/守るもの/7001"));
        QCOMPARE(valueInCompany(
                     layout, target,
                     QStringLiteral("SELECT 語句 || '/' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND Code = '%1'").arg(own))
                     .toString(),
                 QStringLiteral("本社/0001"));
    }

    void refusesWhatTheListsWouldNotOffer_data()
    {
        QTest::addColumn<QStringList>("more");
        QTest::addColumn<QString>("message");
        QTest::newRow("a standard document") << QStringList{} << QStringLiteral("未指定: 「規則・規程・労使協定」を指定してください\n");
        QTest::newRow("an article without its 章")
            << QStringList{QStringLiteral("--article"), QStringLiteral("7001")} << QStringLiteral("未指定: 「章」を指定してください\n");
    }
    void refusesWhatTheListsWouldNotOffer()
    {
        QFETCH(QStringList, more);
        QFETCH(QString, message);
        TestRoot root;
        root.makeCompany(QStringLiteral("A"));
        root.makeCompany(QStringLiteral("B"));
        if (!more.isEmpty())
            addUserChain(root.layout(), QStringLiteral("B"));
        QStringList args = importArgs(QStringLiteral("A"), QStringLiteral("B"), more);
        if (more.isEmpty())
            args.replace(args.indexOf(QStringLiteral("75")), QStringLiteral("01"));
        const Run r = runCli(root.layout(), args);
        QCOMPARE(r.err, message);
        QCOMPARE(r.status, 1);
    }

    void hostileSourcesLeaveBothFilesAlone_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("message");
        const QString refused = QStringLiteral("会社指定の確認: 『B』のデータは取り込めません。");
        QTest::newRow("trigger") << QStringLiteral("trigger")
                                 << refused + QStringLiteral("トリガー「watch」を含むファイルは取り込めません。\n");
        QTest::newRow("not SQLite") << QStringLiteral("text") << refused + QStringLiteral("データベースのファイルではありません。\n");
        QTest::newRow("another schema") << QStringLiteral("schema")
                                        << refused + QStringLiteral("本システムの会社データではありません。表「規程」の列が違います。\n");
    }
    void hostileSourcesLeaveBothFilesAlone()
    {
        QFETCH(QString, kind);
        QFETCH(QString, message);
        if (kind != QStringLiteral("schema") && TestServer::requested())
            QSKIP("A source file of its own kind: only the folder store keeps a company in a file");
        TestRoot root;
        const DataLayout layout = root.layout();
        root.makeCompany(QStringLiteral("A"));
        root.makeCompany(QStringLiteral("B"));
        const QString source = layout.companyFile(QStringLiteral("B"));
        addUserChain(layout, QStringLiteral("B"));
        if (kind == QStringLiteral("trigger")) {
            execIn(source, QStringLiteral("CREATE TRIGGER watch AFTER INSERT ON 章 BEGIN DELETE FROM 章; END"));
        } else if (kind == QStringLiteral("schema")) {
            execInCompany(layout, QStringLiteral("B"), QStringLiteral("ALTER TABLE 規程 RENAME COLUMN 正式名称 TO 別名"));
        } else {
            QFile f(source);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write("PK\x03\x04 not a database");
        }
        // On the server the store itself refuses to open such a company, and says so.
        if (!layout.store.isEmpty())
            message = QStringLiteral("会社指定の確認: 『B』のデータは取り込めません。「『B』」は本システムの会社データではありません。"
                                     "（表「規程」の列が違います。）\n");
        const QByteArray target = contentDigest(layout, QStringLiteral("A"));
        const QFileInfo before(source);
        const Run r = runCli(layout, importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.err, message);
        QCOMPARE(r.status, 1);
        QCOMPARE(contentDigest(layout, QStringLiteral("A")), target);
        if (layout.store.isEmpty()) {
            const QFileInfo after(source);
            QCOMPARE(after.lastModified(), before.lastModified());
            QCOMPARE(after.size(), before.size());
        }
    }
};

QTEST_GUILESS_MAIN(ImportCliTest)
#include "tst_importcli.moc"
