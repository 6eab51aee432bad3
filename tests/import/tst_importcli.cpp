// `normaris-cli import`: the whole import from the command line, its refusals and
// exit statuses, on companies made in the test.

#include "TestRoot.h"
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

QByteArray digestOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256) : QByteArray();
}

QString paragraphText(const QString &file)
{
    return valueIn(file, QStringLiteral("SELECT group_concat(項, '') FROM (SELECT 項 FROM 項 WHERE 規程Code = '75' "
                                        "ORDER BY CAST(結合 AS INTEGER))"))
        .toString();
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
        addUserChain(layout.companyFile(QStringLiteral("B")));

        Run r = runCli(root.path(), importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.err, QStringLiteral("処理完了: データ取込処理が完了しました。\n"));
        QCOMPARE(r.status, 0);
        QCOMPARE(paragraphText(layout.companyFile(QStringLiteral("A"))), paragraphText(layout.companyFile(QStringLiteral("B"))));
        QCOMPARE(paragraphText(layout.companyFile(QStringLiteral("A"))), QStringLiteral("従業員は、★7501★を守り、◆7502◆に従う。"));

        r = runCli(root.path(), importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("Code重複: 自社データに規則・規程・労使協定の重複Codeがあるためデータ取込を中止します。 "
                                       "規則・規程・労使協定の重複Code：75\n"));

        r = runCli(root.path(), importArgs(QStringLiteral("C"), QStringLiteral("B"), {QStringLiteral("--chapter"), QStringLiteral("70")}));
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("処理不可: 自社データに規則・規程・労使協定Code：75が存在しないためデータ取込を中止します。\n"));
    }

    // A company is never its own source: that is said before anything else is looked at.
    void refusesTheCompanyItself()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("A"));
        addUserChain(root.layout().companyFile(QStringLiteral("A")));
        const QByteArray before = digestOf(root.layout().companyFile(QStringLiteral("A")));
        const Run r =
            runCli(root.path(),
                   importArgs(QStringLiteral("A"), QStringLiteral("A"),
                              {QStringLiteral("--chapter"), QStringLiteral("70"), QStringLiteral("--article"), QStringLiteral("7001")}));
        QCOMPARE(r.err,
                 QStringLiteral(
                     "会社指定の確認: 『A』のデータは取り込めません。取込先の会社と同じです。取込元には別の会社を指定してください。\n"));
        QCOMPARE(r.status, 1);
        QCOMPARE(digestOf(root.layout().companyFile(QStringLiteral("A"))), before);
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
            addUserChain(root.layout().companyFile(QStringLiteral("B")));
        QStringList args = importArgs(QStringLiteral("A"), QStringLiteral("B"), more);
        if (more.isEmpty())
            args.replace(args.indexOf(QStringLiteral("75")), QStringLiteral("01"));
        const Run r = runCli(root.path(), args);
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
        TestRoot root;
        const DataLayout layout = root.layout();
        root.makeCompany(QStringLiteral("A"));
        root.makeCompany(QStringLiteral("B"));
        const QString source = layout.companyFile(QStringLiteral("B"));
        addUserChain(source);
        if (kind == QStringLiteral("trigger")) {
            execIn(source, QStringLiteral("CREATE TRIGGER watch AFTER INSERT ON 章 BEGIN DELETE FROM 章; END"));
        } else if (kind == QStringLiteral("schema")) {
            execIn(source, QStringLiteral("ALTER TABLE 規程 RENAME COLUMN 正式名称 TO 別名"));
        } else {
            QFile f(source);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write("PK\x03\x04 not a database");
        }
        const QByteArray target = digestOf(layout.companyFile(QStringLiteral("A")));
        const QFileInfo before(source);
        const Run r = runCli(root.path(), importArgs(QStringLiteral("A"), QStringLiteral("B")));
        QCOMPARE(r.err, message);
        QCOMPARE(r.status, 1);
        QCOMPARE(digestOf(layout.companyFile(QStringLiteral("A"))), target);
        const QFileInfo after(source);
        QCOMPARE(after.lastModified(), before.lastModified());
        QCOMPARE(after.size(), before.size());
    }
};

QTEST_GUILESS_MAIN(ImportCliTest)
#include "tst_importcli.moc"
