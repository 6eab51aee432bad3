// Two programs on one company: the CLI as a second process beside this one.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "rulebase/CompanyNames.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>
#include <QThread>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kCompany = QStringLiteral("甲");

QProcess *startCli(const TestRoot &root, const QStringList &args, int lockWaitMs)
{
    auto *process = new QProcess;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("NORMARIS_LOCK_WAIT_MS"), QString::number(lockWaitMs));
    process->setProcessEnvironment(env);
    QStringList all{QStringLiteral("--root"), root.path(), QStringLiteral("--yes")};
    if (!root.layout().store.isEmpty())
        all << QStringLiteral("--store") << root.layout().store;
    process->start(QStringLiteral(NORMARIS_APP_DIR "/normaris-cli"), all + args);
    return process;
}

struct Finished {
    int status;
    QString err;
};

Finished finish(QProcess *process)
{
    if (!process->waitForFinished(60000))
        qFatal("the CLI did not finish");
    Finished f{process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1,
               QString::fromUtf8(process->readAllStandardError())};
    delete process;
    return f;
}

} // namespace

class TwoProgramsTest : public QObject {
    Q_OBJECT
private slots:
    // The company open here holds its lock: the CLI waits, then stops with exit 1 and
    // a message that names the company; once it is closed here, the CLI works.
    void secondProgramWaitsThenStops()
    {
        TestRoot root;
        root.openCompany(kCompany);
        const QString inUse = QStringLiteral("『甲』は他のプログラムが使用中です。");
        const QStringList commands[] = {
            {QStringLiteral("settings"), QStringLiteral("show"), QStringLiteral("--company"), kCompany},
            {QStringLiteral("company"), QStringLiteral("compact"), kCompany},
            {QStringLiteral("company"), QStringLiteral("backup"), kCompany},
            {QStringLiteral("company"), QStringLiteral("delete"), kCompany},
            {QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("乙"), QStringLiteral("--from"), kCompany},
        };
        for (const QStringList &command : commands) {
            const Finished f = finish(startCli(root, command, 300));
            QVERIFY2(f.status == 1, qUtf8Printable(command.join(u' ') + u'\n' + f.err));
            QVERIFY2(f.err.contains(inUse), qUtf8Printable(f.err));
        }
        QCOMPARE(companiesOf(root.layout()), QStringList{kCompany});

        AppState::instance().closeCompany(AppState::ClosedBy::MainWindow);
        const Finished f = finish(startCli(root, commands[0], 300));
        QCOMPARE(f.status, 0);
    }

    // A writer elsewhere (not one of our programs) holds a write transaction while the
    // compaction starts: its commit is in the file afterwards, whatever the compaction did.
    void compactionLosesNothingOfAnotherWriter()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP("SQLite's write lock on a company file: only the folder store keeps its companies in files");
        root.makeCompany(kCompany);
        const QString file = root.layout().companyFile(kCompany);
        const QString other = QStringLiteral("other_writer");
        {
            QSqlDatabase db = openDatabase(file, other);
            execSql(db, QStringLiteral("BEGIN IMMEDIATE"));
            execSql(db, QStringLiteral("UPDATE 規程 SET 規程 = '書き換えた規程' WHERE rowid = 1"));
            QProcess *compaction = startCli(root, {QStringLiteral("company"), QStringLiteral("compact"), kCompany}, 300);
            QVERIFY(compaction->waitForStarted());
            QThread::msleep(800);
            execSql(db, QStringLiteral("COMMIT"));
            const Finished f = finish(compaction);
            QVERIFY2(f.status == 0 || f.status == 2, qUtf8Printable(f.err));
        }
        closeDatabase(other);
        QCOMPARE(valueIn(file, QStringLiteral("SELECT 規程 FROM 規程 WHERE rowid = 1")).toString(), QStringLiteral("書き換えた規程"));
        QCOMPARE(valueIn(file, QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        QVERIFY(!QFile::exists(workFileOf(file)));
    }
};

QTEST_GUILESS_MAIN(TwoProgramsTest)
#include "tst_twoprograms.moc"
