// The test harness's own server: it comes up on its socket, every TestRoot gets a database of
// its own that goes with it, text sorts as in SQLite and Japanese names work unquoted. In the
// run on the Data folder nothing of it starts.

#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

QString serverFolderPrefix() { return QStringLiteral("normaris-pg-%1-").arg(QCoreApplication::applicationPid()); }

// The folders of this process's server: in memory or in /tmp.
QStringList serverFolders()
{
    QStringList folders;
    for (const QString &parent : {QStringLiteral("/dev/shm"), QStringLiteral("/tmp")}) {
        for (const QString &name : QDir(parent).entryList({serverFolderPrefix() + u'*'}, QDir::Dirs))
            folders << parent + u'/' + name;
    }
    return folders;
}

// The server's maintenance database, beside the test's own.
QString maintenanceOf(const QString &store)
{
    return QString(store).replace(QRegularExpression(QStringLiteral("dbname=\\S+")), QStringLiteral("dbname=postgres"));
}

QString databaseOf(const QString &store) { return QRegularExpression(QStringLiteral("dbname=(\\S+)")).match(store).captured(1); }

// The words sorted as SQLite sorts them, joined with '|'.
QString sqliteOrder(const QStringList &words)
{
    const QString name = QStringLiteral("sqlite_order");
    QStringList sorted;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(QStringLiteral(":memory:"));
        if (!db.open())
            qFatal("no SQLite in memory");
        QSqlQuery query(db);
        query.exec(QStringLiteral("CREATE TABLE w (s text)"));
        for (const QString &word : words) {
            query.prepare(QStringLiteral("INSERT INTO w (s) VALUES (?)"));
            query.addBindValue(word);
            query.exec();
        }
        query.exec(QStringLiteral("SELECT s FROM w ORDER BY s"));
        while (query.next())
            sorted << query.value(0).toString();
    }
    QSqlDatabase::removeDatabase(name);
    return sorted.join(u'|');
}

} // namespace

class TestServerTest : public QObject {
    Q_OBJECT
private slots:
    void storeFollowsTheRun()
    {
        TestRoot root;
        const QString store = root.layout().store;
        QCOMPARE(AppState::instance().Store, store);
        if (!TestServer::requested()) {
            QVERIFY(store.isEmpty());
            return;
        }
        const QStringList folders = serverFolders();
        QCOMPARE(folders.size(), 1);
        QVERIFY2(store.startsWith(QStringLiteral("host=") + folders.first() + u' '), qPrintable(store));
        QCOMPARE(TestServer::value(store, QStringLiteral("SELECT current_database()")).toString(), databaseOf(store));
    }

    void serverComesUp_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("expected");
        QTest::newRow("on the socket only") << QStringLiteral("SELECT current_setting('listen_addresses')") << QString();
        QTest::newRow("no fsync") << QStringLiteral("SELECT current_setting('fsync')") << QStringLiteral("off");
        QTest::newRow("UTF-8") << QStringLiteral("SELECT pg_encoding_to_char(encoding) FROM pg_database WHERE datname = current_database()")
                               << QStringLiteral("UTF8");
        QTest::newRow("C collation") << QStringLiteral("SELECT datcollate FROM pg_database WHERE datname = current_database()")
                                     << QStringLiteral("C");
        QTest::newRow("C character classes") << QStringLiteral("SELECT datctype FROM pg_database WHERE datname = current_database()")
                                             << QStringLiteral("C");
        QTest::newRow("empty") << QStringLiteral(
            "SELECT count(*) FROM pg_tables WHERE schemaname NOT IN ('pg_catalog', 'information_schema')")
                               << QStringLiteral("0");
    }
    void serverComesUp()
    {
        QFETCH(QString, sql);
        QFETCH(QString, expected);
        if (!TestServer::requested())
            QSKIP("the run on the Data folder");
        TestRoot root;
        QCOMPARE(TestServer::value(root.layout().store, sql).toString(), expected);
    }

    void databasesAreSeparate()
    {
        if (!TestServer::requested())
            QSKIP("the run on the Data folder");
        TestRoot first;
        TestRoot second;
        QVERIFY(first.layout().store != second.layout().store);
        TestServer::value(first.layout().store, QStringLiteral("CREATE TABLE 会社 (名称 text)"));
        const QString count = QStringLiteral("SELECT count(*) FROM information_schema.tables WHERE table_name = ?");
        QCOMPARE(TestServer::value(first.layout().store, count, {QStringLiteral("会社")}).toInt(), 1);
        QCOMPARE(TestServer::value(second.layout().store, count, {QStringLiteral("会社")}).toInt(), 0);
    }

    void databaseGoesWithItsRoot()
    {
        if (!TestServer::requested())
            QSKIP("the run on the Data folder");
        QString store;
        {
            TestRoot root;
            store = root.layout().store;
            // A connection left open does not keep the database.
            QSqlDatabase open = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("left_open"));
            open.setConnectOptions(store);
            QVERIFY(open.open());
        }
        QSqlDatabase::removeDatabase(QStringLiteral("left_open"));
        QCOMPARE(TestServer::value(maintenanceOf(store), QStringLiteral("SELECT count(*) FROM pg_database WHERE datname = ?"),
                                   {databaseOf(store)})
                     .toInt(),
                 0);
    }

    void textSortsByCodePoint_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<QString>("sorted");
        QTest::newRow("capitals first") << QStringList{QStringLiteral("a"), QStringLiteral("B")} << QStringLiteral("B|a");
        QTest::newRow("hiragana before katakana") << QStringList{QStringLiteral("ア"), QStringLiteral("あ")} << QStringLiteral("あ|ア");
        QTest::newRow("mixed") << QStringList{QStringLiteral("規程"), QStringLiteral("Ａ"), QStringLiteral("ア"), QStringLiteral("a"),
                                              QStringLiteral("あ"),   QStringLiteral("B"),  QStringLiteral("10"), QStringLiteral("9")}
                               << QStringLiteral("10|9|B|a|あ|ア|規程|Ａ");
    }
    void textSortsByCodePoint()
    {
        QFETCH(QStringList, words);
        QFETCH(QString, sorted);
        QCOMPARE(sqliteOrder(words), sorted);
        if (!TestServer::requested())
            QSKIP("the run on the Data folder");
        TestRoot root;
        QCOMPARE(TestServer::value(root.layout().store,
                                   QStringLiteral("SELECT string_agg(s, '|' ORDER BY s) FROM unnest(string_to_array(?, '|')) AS s"),
                                   {words.join(u'|')})
                     .toString(),
                 sorted);
    }

    void japaneseNamesUnquoted()
    {
        if (!TestServer::requested())
            QSKIP("the run on the Data folder");
        TestRoot root;
        const QString store = root.layout().store;
        TestServer::value(store, QStringLiteral("CREATE TABLE 規程 (規程Code text)"));
        TestServer::value(store, QStringLiteral("INSERT INTO 規程 (規程Code) VALUES (?)"), {QStringLiteral("01")});
        QCOMPARE(TestServer::value(store, QStringLiteral("SELECT 規程Code FROM 規程")).toString(), QStringLiteral("01"));
        // Unquoted names match whatever the case of their ASCII letters, as in SQLite.
        QCOMPARE(TestServer::value(store, QStringLiteral("SELECT 規程CODE FROM 規程")).toString(), QStringLiteral("01"));
    }

    // Last: in the run on the Data folder, no test above started a server.
    void noServerUnlessAsked() { QCOMPARE(serverFolders().size(), TestServer::requested() ? 1 : 0); }
};

QTEST_GUILESS_MAIN(TestServerTest)
#include "tst_testserver.moc"
