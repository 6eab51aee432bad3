// The office: companies in and out of the store as company files (会社データの読込,
// 持ち出し, 持ち帰り), and who works on a company when several programs run: a second
// program on the same company waits and says so, two programs on two companies never
// wait, and a program killed while it holds a company leaves it to the next at once.
//
// The programs that hold a company are this test's own executable started again with
// NORMARIS_TEST_HOLD set: it opens the company as the desktop program does, says
// "held" and keeps it until it is killed.

#include "CompanyDump.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "base/RuntimeFolder.h"
#include "office/CompanyTransfer.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/Maintenance.h"
#include "rulebase/ServerStore.h"
#include "versions/VersionStore.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <csignal>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kCompany = QStringLiteral("甲社");
const QString kOther = QStringLiteral("乙社");
const QString kHoldVariable = QStringLiteral("NORMARIS_TEST_HOLD");
const QString kInUse =
    QStringLiteral("『甲社』は他のプログラムが使用中です。そのプログラムで会社を閉じてから、もう一度やり直してください。");

bool onServer(const TestRoot &root) { return !root.layout().store.isEmpty(); }

// A change of the company's settings through its store, as a user's step makes it.
void changeCompany(const DataLayout &layout, const QString &name, const QString &value)
{
    const QString connection = QStringLiteral("test_office_change");
    {
        QSqlDatabase db = CompanyStore::of(layout)->open(name, connection, OpenMode::ReadWrite);
        Transaction transaction(db);
        execSql(db, QStringLiteral("UPDATE 規程 SET 規程 = ? WHERE Code = '01'"), {value});
        transaction.commit();
    }
    closeDatabase(connection);
}

// The company's file, as a backup into folder writes it.
QString backupOf(const DataLayout &layout, const QString &name, const QString &folder)
{
    ScriptedPrompt prompt;
    prompt.answer({true});
    if (Maintenance(layout, prompt).backup(name, folder) != Outcome::Done)
        qFatal("backup: %s", qUtf8Printable(prompt.lines().join(u'\n')));
    return folder + u'/' + name + QStringLiteral(".sqlite");
}

// A program that holds company name of the root until it is killed.
class Holder {
public:
    Holder(const TestRoot &root, const QString &name)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(kHoldVariable, name);
        env.insert(QStringLiteral("NORMARIS_TEST_ROOT"), root.path());
        env.insert(QStringLiteral("NORMARIS_TEST_HOLD_STORE"), root.layout().store);
        m_process.setProcessEnvironment(env);
        m_process.start(QCoreApplication::applicationFilePath(), {});
        if (!m_process.waitForReadyRead(60000) || !m_process.readAllStandardOutput().startsWith("held"))
            qFatal("the holder did not take the company: %s", m_process.readAllStandardError().constData());
    }
    ~Holder() { kill(); }
    void kill()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        ::kill(pid_t(m_process.processId()), SIGKILL);
        m_process.waitForFinished(60000);
    }

private:
    QProcess m_process;
};

struct Finished {
    int status;
    QString err;
};

// The CLI as another program on the root's store, waiting waitMs for a held company.
Finished runOtherCli(const TestRoot &root, const QStringList &args, int waitMs)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("NORMARIS_LOCK_WAIT_MS"), QString::number(waitMs));
    env.remove(QStringLiteral("NORMARIS_STORE"));
    process.setProcessEnvironment(env);
    QStringList all{QStringLiteral("--root"), root.path(), QStringLiteral("--yes")};
    if (onServer(root))
        all << QStringLiteral("--store") << root.layout().store;
    process.start(QStringLiteral(NORMARIS_APP_DIR "/normaris-cli"), all + args);
    if (!process.waitForFinished(120000))
        qFatal("the CLI did not finish");
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardError())};
}

// Holds the company named by the environment, as the desktop program holds its open
// company, until killed (or a minute has passed).
int holdCompany()
{
    settleRuntimeFolder();
    AppState::instance().AppPath = qEnvironmentVariable("NORMARIS_TEST_ROOT");
    AppState::instance().Store = qEnvironmentVariable("NORMARIS_TEST_HOLD_STORE");
    ScriptedPrompt prompt;
    if (CompanyFiles(AppState::instance().layout(), prompt).open(qEnvironmentVariable(kHoldVariable.toLatin1().constData()))
        != Outcome::Done) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(prompt.lines().join(u'\n')));
        return 2;
    }
    std::printf("held\n");
    std::fflush(stdout);
    QThread::sleep(60);
    return 0;
}

// A version of a document kept in a company file, as the export keeps one.
void keepVersion(const QString &file, const QString &text)
{
    const QString connection = QStringLiteral("test_office_version");
    {
        QSqlDatabase db = openDatabase(file, connection);
        VersionHeader header;
        header.style = QStringLiteral("1");
        header.document = QStringLiteral("01");
        header.name = QStringLiteral("就業規則");
        header.made = QDateTime(QDate(2026, 4, 1), QTime(9, 0));
        header.effective = QDate(2026, 4, 1);
        PrintedRow row;
        row.level = Level::Article;
        row.codes = QStringList{QStringLiteral("01"), QStringLiteral("0001"), QString(), QString(), QString(), QString()};
        row.label = QStringLiteral("第１条");
        row.text = text;
        VersionStore(db).keep(header, {row});
    }
    closeDatabase(connection);
}

} // namespace

class OfficeTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { AppState::instance().reset(); }

    // A company file into the store: a name of its own, the file's name by default; a name
    // that exists is replaced only after a question, and then wholly.
    void importFileMakesAndReplaces()
    {
        TestRoot root;
        root.makeCompany(kCompany);
        changeCompany(root.layout(), kCompany, QStringLiteral("読込前の就業規則"));
        QTemporaryDir away;
        const QString file = backupOf(root.layout(), kCompany, away.path());
        const QStringList original = dumpCompany(root.layout(), kCompany);

        ScriptedPrompt prompt;
        CompanyTransfer transfer(root.layout(), prompt);
        prompt.answer({true});
        QCOMPARE(transfer.importFile(file, kOther), Outcome::Done);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("会社データの読込: ファイル「%1」を『乙社』として読み込みます。").arg(file),
                                              QStringLiteral("会社データの読込: 『乙社』を読み込みました。")}));
        QCOMPARE(dumpCompany(root.layout(), kOther), original);

        // The file's own name, which is taken: no.
        changeCompany(root.layout(), kCompany, QStringLiteral("サーバーで変えた就業規則"));
        const QStringList changed = dumpCompany(root.layout(), kCompany);
        prompt.clear();
        prompt.answer({false});
        QCOMPARE(transfer.importFile(file), Outcome::Stopped);
        QCOMPARE(prompt.lines(),
                 QStringList{QStringLiteral("会社データの読込: 『甲社』は既にあります。ファイル「%1」の内容で置き換えますか？").arg(file)});
        QVERIFY(prompt.shown().first().noByDefault);
        QCOMPARE(dumpCompany(root.layout(), kCompany), changed);

        // Yes: the company is the file's again.
        prompt.clear();
        prompt.answer({true});
        QCOMPARE(transfer.importFile(file), Outcome::Done);
        QCOMPARE(prompt.lines().last(), QStringLiteral("会社データの読込: 『甲社』を読み込みました。"));
        QCOMPARE(dumpCompany(root.layout(), kCompany), original);
        QCOMPARE(companiesOf(root.layout()), (QStringList{kOther, kCompany}));
    }

    void importFileRefuses_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("said");
        QTest::newRow("no file") << "missing" << QString() << QStringLiteral("会社データの読込: ファイル「%1」が見つかりません。");
        QTest::newRow("not a company file") << "text" << QString()
                                            << QStringLiteral(
                                                   "ハルモニアワークス【ノルマリス】: 「%1」は本システムの会社データではありません。");
        QTest::newRow("a name with a slash") << "company" << QStringLiteral("甲/乙") << QStringLiteral("名前の変更: ");
        QTest::newRow("the open company") << "open" << QString()
                                          << QStringLiteral("会社データの読込: 『甲社』は現在使用中なので置き換えられません。");
    }

    void importFileRefuses()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, said);
        TestRoot root;
        root.makeCompany(kCompany);
        QTemporaryDir away;
        QString file = away.path() + QStringLiteral("/甲社.sqlite");
        if (kind == u"text") {
            QFile text(file);
            QVERIFY(text.open(QIODevice::WriteOnly));
            text.write("not a company\n");
        } else if (kind != u"missing") {
            file = backupOf(root.layout(), kCompany, away.path());
        }
        if (kind == u"open") {
            ScriptedPrompt quiet;
            QCOMPARE(CompanyFiles(root.layout(), quiet).open(kCompany), Outcome::Done);
        }
        const QStringList before = dumpCompany(root.layout(), kCompany);
        ScriptedPrompt prompt;
        QCOMPARE(CompanyTransfer(root.layout(), prompt).importFile(file, name), Outcome::Stopped);
        QVERIFY2(prompt.lines().join(u'\n').startsWith(said.contains(QStringLiteral("%1")) ? said.arg(file) : said),
                 qUtf8Printable(prompt.lines().join(u'\n')));
        QCOMPARE(prompt.unansweredQuestions(), 0);
        AppState::instance().reset();
        QCOMPARE(companiesOf(root.layout()), QStringList{kCompany});
        QCOMPARE(dumpCompany(root.layout(), kCompany), before);
    }

    // Server → file → server: the company comes back as it went, row for row.
    void checkoutAndCheckinRoundTrip()
    {
        TestRoot root;
        root.makeCompany(kCompany);
        QTemporaryDir away;
        const QString file = away.path() + QStringLiteral("/持ち出し.sqlite");
        ScriptedPrompt prompt;
        CompanyTransfer transfer(root.layout(), prompt);
        if (!onServer(root)) {
            QCOMPARE(transfer.checkout(kCompany, file), Outcome::Stopped);
            QCOMPARE(transfer.checkin(kCompany, file), Outcome::Stopped);
            QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("持ち出し: 持ち出しはサーバーの会社だけができます。"),
                                                  QStringLiteral("持ち帰り: 持ち帰りはサーバーの会社だけができます。")}));
            QVERIFY(!QFile::exists(file));
            return;
        }
        changeCompany(root.layout(), kCompany, QStringLiteral("持ち出す就業規則"));
        const QStringList before = dumpCompany(root.layout(), kCompany);

        prompt.answer({true});
        QCOMPARE(transfer.checkout(kCompany, file), Outcome::Done);
        QCOMPARE(
            prompt.lines(),
            (QStringList{
                QStringLiteral("持ち出し: 『甲社』をファイル「%1」に持ち出します。持ち帰るまで、サーバーでは変更できません。").arg(file),
                QStringLiteral("持ち出し: 『甲社』を持ち出しました。\n保存先：") + file}));
        const std::optional<TakenOut> mark = ServerStore(root.layout()).takenOut(kCompany);
        QVERIFY(mark);
        QVERIFY(!mark->by.isEmpty());
        QCOMPARE(dumpCompanyFile(file).mid(0, 50), before.mid(0, 50));

        // On the server it can be read but not changed; a second checkout says by whom.
        QVERIFY_THROWS_EXCEPTION(DbError, changeCompany(root.layout(), kCompany, QStringLiteral("変えられない")));
        prompt.clear();
        prompt.answer({true});
        QCOMPARE(transfer.checkout(kCompany, away.path() + QStringLiteral("/二度目.sqlite")), Outcome::Stopped);
        QCOMPARE(prompt.lines().last(),
                 QStringLiteral("持ち出し: 『甲社』は既に持ち出されています。（持ち出した人：%1、日時：%2）").arg(mark->by, mark->at));
        QVERIFY(!QFile::exists(away.path() + QStringLiteral("/二度目.sqlite")));
        // Nor is it replaced by a company file read in: it comes back through 持ち帰り only.
        prompt.clear();
        prompt.answer({true});
        QCOMPARE(transfer.importFile(file, kCompany), Outcome::Stopped);
        QCOMPARE(prompt.lines().last(),
                 QStringLiteral("会社データの読込: 『甲社』は持ち出し中なので置き換えられません。（持ち出した人：%1、日時：%2）")
                     .arg(mark->by, mark->at));

        // Changed at the client's office, brought back: the server holds the change, unmarked.
        {
            const QString connection = QStringLiteral("test_office_file");
            {
                QSqlDatabase db = openDatabase(file, connection);
                execSql(db, QStringLiteral("UPDATE 規程 SET 規程 = '持ち帰った就業規則' WHERE Code = '01'"));
            }
            closeDatabase(connection);
        }
        const QStringList brought = dumpCompanyFile(file);
        prompt.clear();
        prompt.answer({true});
        QCOMPARE(transfer.checkin(kCompany, file), Outcome::Done);
        QCOMPARE(prompt.lines(),
                 (QStringList{QStringLiteral("持ち帰り: 『甲社』をファイル「%1」の内容で置き換え、持ち出しを終わります。").arg(file),
                              QStringLiteral("持ち帰り: 『甲社』を持ち帰りました。")}));
        QVERIFY(!ServerStore(root.layout()).takenOut(kCompany));
        QCOMPARE(valueInCompany(root.layout(), kCompany, QStringLiteral("SELECT 規程 FROM 規程 WHERE Code = '01'")).toString(),
                 QStringLiteral("持ち帰った就業規則"));

        // Server → file → server again, unchanged on the way: the same dump on both ends.
        const QStringList now = dumpCompany(root.layout(), kCompany);
        const QString again = away.path() + QStringLiteral("/二回目.sqlite");
        prompt.clear();
        prompt.answer({true, true});
        QCOMPARE(transfer.checkout(kCompany, again), Outcome::Done);
        QCOMPARE(transfer.checkin(kCompany, again), Outcome::Done);
        const QStringList after = dumpCompany(root.layout(), kCompany);
        QVERIFY2(after == now, qUtf8Printable(firstDifference(now, after)));
        // And nothing is taken back that was not taken out.
        prompt.clear();
        QCOMPARE(transfer.checkin(kCompany, again), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("持ち帰り: 『甲社』は持ち出されていません。")});
        Q_UNUSED(brought);
    }

    // Changed on the server meanwhile (an administrator lifted the guard): the file stays
    // out, the server keeps its copy, and the 新旧対照表 of the document lies beside the file.
    void checkinRefusedAfterAChangeOnTheServer()
    {
        TestRoot root;
        if (!onServer(root))
            QSKIP("持ち出し and 持ち帰り are the server store's: the folder store refuses them (checkoutAndCheckinRoundTrip)");
        root.makeCompany(kCompany);
        QTemporaryDir away;
        const QString file = away.path() + QStringLiteral("/持ち出し.sqlite");
        ScriptedPrompt prompt;
        CompanyTransfer transfer(root.layout(), prompt);
        prompt.answer({true});
        QCOMPARE(transfer.checkout(kCompany, file), Outcome::Done);
        keepVersion(file, QStringLiteral("この規則は、従業員の労働条件を定める。"));

        const QString store = root.layout().store;
        const QString schema =
            TestServer::value(store, QStringLiteral("SELECT スキーマ FROM normaris.会社 WHERE 名前 = ?"), {kCompany}).toString();
        TestServer::value(store, QStringLiteral("ALTER TABLE %1.\"規程\" DISABLE TRIGGER \"持ち出し中\"; "
                                                "UPDATE %1.\"規程\" SET \"規程\" = '管理者が変えた' WHERE code = '01'; "
                                                "ALTER TABLE %1.\"規程\" ENABLE TRIGGER \"持ち出し中\"")
                                     .arg(schema));
        const QStringList server = dumpCompany(root.layout(), kCompany);
        const std::optional<TakenOut> mark = ServerStore(root.layout()).takenOut(kCompany);
        QVERIFY(mark);

        prompt.clear();
        QCOMPARE(transfer.checkin(kCompany, file), Outcome::Stopped);
        const QString written = QStringLiteral("甲社_就業規則新旧対照表.docx");
        QCOMPARE(prompt.lines(),
                 QStringList{QStringLiteral("持ち帰り: 『甲社』は持ち出しの後にサーバーで変更されたので、持ち帰れません。"
                                            "（持ち出した人：%1、日時：%2）\n"
                                            "規程ごとの新旧対照表（改正前：サーバー、改正後：ファイル）を作成しました。\n保存先：%3\n%4")
                                 .arg(mark->by, mark->at, away.path(), written)});
        QCOMPARE(int(prompt.shown().first().icon), int(Prompt::Icon::Warning));
        QVERIFY(QFileInfo(away.path() + u'/' + written).size() > 0);
        QCOMPARE(dumpCompany(root.layout(), kCompany), server);
        QVERIFY(ServerStore(root.layout()).takenOut(kCompany));

        // Nothing kept differs: said so, and no file.
        QFile::remove(away.path() + u'/' + written);
        TestServer::value(store, QStringLiteral("UPDATE normaris.会社 SET 持ち出し時の内容 = 'changed' WHERE 名前 = ?"), {kCompany});
        const QString plain = away.path() + QStringLiteral("/そのまま.sqlite");
        QVERIFY(QFile::copy(backupOf(root.layout(), kCompany, away.path() + QStringLiteral("/b")), plain));
        prompt.clear();
        QCOMPARE(transfer.checkin(kCompany, plain), Outcome::Stopped);
        QVERIFY2(prompt.lines().value(0).endsWith(QStringLiteral("\n出力済みの規程の版には違いがありません。")),
                 qUtf8Printable(prompt.lines().join(u'\n')));
        QCOMPARE(QDir(away.path()).entryList({QStringLiteral("*.docx")}), QStringList());
    }

    // A backup of a server company is a company file: the folder store opens it as it was.
    void backupOpensInTheFolderStore()
    {
        TestRoot root;
        if (!onServer(root))
            QSKIP("a backup of the folder store is a copy of its file: tst_maintenance");
        root.makeCompany(kCompany);
        changeCompany(root.layout(), kCompany, QStringLiteral("バックアップした就業規則"));
        QTemporaryDir away;
        const QString file = backupOf(root.layout(), kCompany, away.path());
        const DataLayout folder{root.path()};
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyTransfer(folder, prompt).importFile(file), Outcome::Done);
        QCOMPARE(folder.companyList(), QStringList{kCompany});
        const QStringList onTheServer = dumpCompany(root.layout(), kCompany);
        const QStringList inTheFolder = dumpCompany(folder, kCompany);
        QVERIFY2(inTheFolder == onTheServer, qUtf8Printable(firstDifference(onTheServer, inTheFolder)));
    }

    // A second program on a held company waits, then says who keeps it.
    void secondProgramOnOneCompanyIsTold()
    {
        TestRoot root;
        root.makeCompany(kCompany);
        Holder holder(root, kCompany);
        const Finished f =
            runOtherCli(root, {QStringLiteral("settings"), QStringLiteral("show"), QStringLiteral("--company"), kCompany}, 300);
        QCOMPARE(f.status, 1);
        QVERIFY2(f.err.contains(kInUse), qUtf8Printable(f.err));
    }

    // Two programs on two companies: neither waits (the second is given no time to).
    void twoCompaniesNeverWait()
    {
        TestRoot root;
        root.makeCompany(kCompany);
        root.makeCompany(kOther);
        Holder holder(root, kCompany);
        const Finished f = runOtherCli(root, {QStringLiteral("settings"), QStringLiteral("show"), QStringLiteral("--company"), kOther}, 0);
        QVERIFY2(f.status == 0, qUtf8Printable(f.err));
    }

    // A program killed while it holds a company: the next one takes it.
    void killedProgramLeavesTheCompany()
    {
        TestRoot root;
        root.makeCompany(kCompany);
        Holder holder(root, kCompany);
        holder.kill();
        const Finished f =
            runOtherCli(root, {QStringLiteral("settings"), QStringLiteral("show"), QStringLiteral("--company"), kCompany}, 10000);
        QVERIFY2(f.status == 0, qUtf8Printable(f.err));
    }
};

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet("NORMARIS_TEST_HOLD")) {
        QCoreApplication app(argc, argv);
        return holdCompany();
    }
    QCoreApplication app(argc, argv);
    OfficeTest test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_office.moc"
