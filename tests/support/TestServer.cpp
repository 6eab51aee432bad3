#include "TestServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QVersionNumber>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <pwd.h>
#include <unistd.h>

namespace normaris::test {

namespace {

// The server programs: those of the highest version Debian's packages put beneath
// /usr/lib/postgresql, else those on PATH. Empty when initdb or pg_ctl is missing.
QString serverBinDir()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QVersionNumber best;
    QString bestDir;
    for (const QString &entry : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString bin = versions.filePath(entry) + QStringLiteral("/bin");
        const QVersionNumber version = QVersionNumber::fromString(entry);
        if (!version.isNull() && version > best && QFileInfo(bin + QStringLiteral("/initdb")).isExecutable()
            && QFileInfo(bin + QStringLiteral("/pg_ctl")).isExecutable()) {
            best = version;
            bestDir = bin;
        }
    }
    if (!bestDir.isEmpty())
        return bestDir;
    const QString initdb = QStandardPaths::findExecutable(QStringLiteral("initdb"));
    const QString pgCtl = QStandardPaths::findExecutable(QStringLiteral("pg_ctl"));
    if (initdb.isEmpty() || pgCtl.isEmpty() || QFileInfo(initdb).path() != QFileInfo(pgCtl).path())
        return {};
    return QFileInfo(pgCtl).path();
}

// Where the server's folder goes: in memory where there is room, for a database made on disk
// costs about 250 ms and one in memory 10 ms (a container's /dev/shm is often 64 MB: too
// small); else /tmp. Never TMPDIR: the socket's path must stay short (107 bytes at most)
// and the postgres user must be able to reach it.
QString serverParent()
{
    const QString memory = QStringLiteral("/dev/shm");
    const QStorageInfo storage(memory);
    if (QFileInfo(memory).isDir() && storage.isValid() && !storage.isReadOnly() && storage.bytesAvailable() >= (qint64(1) << 30))
        return memory;
    return QStringLiteral("/tmp");
}

// The server refuses to run as root: as root (CI, the development machine) its programs run
// as the postgres user Debian's package made, in a folder that user owns.
bool runningAsRoot() { return geteuid() == 0; }

void asServerUser(QProcess &process, const QString &program, const QStringList &arguments)
{
    if (runningAsRoot()) {
        process.setProgram(QStringLiteral("runuser"));
        process.setArguments(QStringList{QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--"), program} + arguments);
    } else {
        process.setProgram(program);
        process.setArguments(arguments);
    }
}

// Runs a server program to its end; its output when it failed, empty when it succeeded.
QString runServerProgram(const QString &folder, const QString &program, const QStringList &arguments)
{
    QProcess process;
    asServerUser(process, program, arguments);
    // The postgres user may not enter the test's own working folder.
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start();
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString output = QString::fromLocal8Bit(process.readAll());
        return program + u' ' + arguments.join(u' ') + u'\n' + (output.isEmpty() ? process.errorString() : output);
    }
    return {};
}

class Server {
public:
    Server();
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    QString connectionString(const QString &database) const
    {
        return QStringLiteral("host=%1 port=5432 user=postgres dbname=%2").arg(m_folder, database);
    }
    QString nextDatabaseName() { return QStringLiteral("normaris_%1").arg(++m_databases); }

private:
    QString dataDir() const { return m_folder + QStringLiteral("/data"); }

    QString m_binDir;
    QString m_folder;
    int m_databases = 0;
};

Server::Server() : m_binDir(serverBinDir())
{
    if (m_binDir.isEmpty()) {
        std::fputs("PostgreSQL のサーバープログラムが見つからないので、サーバーでの試験を飛ばします。\n", stderr);
        std::exit(77);
    }
    // The process id in the name tells whose server it is.
    QTemporaryDir dir(QStringLiteral("%1/normaris-pg-%2-XXXXXX").arg(serverParent()).arg(QCoreApplication::applicationPid()));
    if (!dir.isValid())
        qFatal("could not make the server's folder: %s", qUtf8Printable(dir.errorString()));
    dir.setAutoRemove(false);
    m_folder = dir.path();
    if (runningAsRoot()) {
        const passwd *user = getpwnam("postgres");
        if (!user || chown(QFile::encodeName(m_folder).constData(), user->pw_uid, user->pw_gid) != 0)
            qFatal("the postgres user is missing or cannot be given %s", qUtf8Printable(m_folder));
    }

    // The watchdog, started before the server: when this process dies without ending (a crash,
    // abort(), SIGKILL from ctest's timeout), it stops the server and removes the folder within
    // a second. It is detached, so a kill of this process's children does not reach it. Should
    // the process die while pg_ctl is still starting the server, the server finds its lock file
    // gone at its next check and ends itself within a minute.
    QProcess watchdog;
    asServerUser(watchdog, QStringLiteral("/bin/sh"),
                 {QStringLiteral("-c"),
                  QStringLiteral("while [ -d /proc/\"$1\" ]; do sleep 1; done; \"$2\" -D \"$3/data\" -m immediate -s stop; rm -rf \"$3\""),
                  QStringLiteral("watchdog"), QString::number(QCoreApplication::applicationPid()), m_binDir + QStringLiteral("/pg_ctl"),
                  m_folder});
    watchdog.setWorkingDirectory(m_folder);
    watchdog.setStandardInputFile(QProcess::nullDevice());
    watchdog.setStandardOutputFile(QProcess::nullDevice());
    watchdog.setStandardErrorFile(QProcess::nullDevice());
    if (!watchdog.startDetached())
        qFatal("could not start the server's watchdog: %s", qUtf8Printable(watchdog.errorString()));

    // --no-sync and fsync=off: a test's server never outlives a crash of the machine.
    QString failure = runServerProgram(m_folder, m_binDir + QStringLiteral("/initdb"),
                                       {QStringLiteral("-D"), dataDir(), QStringLiteral("-U"), QStringLiteral("postgres"),
                                        QStringLiteral("-A"), QStringLiteral("trust"), QStringLiteral("-E"), QStringLiteral("UTF8"),
                                        QStringLiteral("--no-locale"), QStringLiteral("--no-sync")});
    if (!failure.isEmpty())
        qFatal("initdb failed: %s", qUtf8Printable(failure));
    // A Unix socket in the server's folder and no TCP port: servers of tests running side by
    // side never meet.
    QFile conf(dataDir() + QStringLiteral("/postgresql.conf"));
    if (!conf.open(QIODevice::Append | QIODevice::Text)
        || conf.write(
               QStringLiteral("\nlisten_addresses = ''\nunix_socket_directories = '%1'\nport = 5432\nfsync = off\n").arg(m_folder).toUtf8())
               < 0)
        qFatal("could not set up the server: %s", qUtf8Printable(conf.errorString()));
    conf.close();
    failure = runServerProgram(m_folder, m_binDir + QStringLiteral("/pg_ctl"),
                               {QStringLiteral("-D"), dataDir(), QStringLiteral("-l"), m_folder + QStringLiteral("/server.log"),
                                QStringLiteral("-w"), QStringLiteral("-s"), QStringLiteral("start")});
    if (!failure.isEmpty())
        qFatal("the server did not start: %s", qUtf8Printable(failure));
}

Server::~Server()
{
    runServerProgram(m_folder, m_binDir + QStringLiteral("/pg_ctl"),
                     {QStringLiteral("-D"), dataDir(), QStringLiteral("-m"), QStringLiteral("fast"), QStringLiteral("-w"),
                      QStringLiteral("-s"), QStringLiteral("stop")});
    QDir(m_folder).removeRecursively();
}

// The process's server, made at first use and stopped when the process ends.
Server &server()
{
    static const std::unique_ptr<Server> instance = std::make_unique<Server>();
    return *instance;
}

// Runs statements on one connection that is closed again before it returns.
template<typename Work>
void withConnection(const QString &store, Work work)
{
    const QString name = QStringLiteral("normaris_test_server");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        // The driver passes these key=value pairs on to the client library as they are.
        db.setConnectOptions(store);
        if (!db.open())
            qFatal("could not connect to %s: %s", qUtf8Printable(store), qUtf8Printable(db.lastError().text()));
        work(db);
    }
    QSqlDatabase::removeDatabase(name);
}

QSqlQuery execOrFail(QSqlDatabase &db, const QString &sql, const QVariantList &bound = {})
{
    QSqlQuery query(db);
    // The server prepares no CREATE DATABASE and no CREATE TABLE: statements without
    // bound values go as they are.
    bool done = true;
    if (bound.isEmpty()) {
        done = query.exec(sql);
    } else {
        done = query.prepare(sql);
        for (const QVariant &v : bound)
            query.addBindValue(v);
        done = done && query.exec();
    }
    if (!done)
        qFatal("%s: %s", qUtf8Printable(sql), qUtf8Printable(query.lastError().text()));
    return query;
}

QString databaseOf(const QString &store)
{
    const QString key = QStringLiteral("dbname=");
    return store.mid(store.lastIndexOf(key) + key.size());
}

} // namespace

bool TestServer::requested() { return qEnvironmentVariable("NORMARIS_TEST_STORE") == QStringLiteral("server"); }

QString TestServer::newDatabase()
{
    Server &s = server();
    const QString name = s.nextDatabaseName();
    // template0 and the C collation: text sorts by code point, as SQLite sorts it.
    withConnection(s.connectionString(QStringLiteral("postgres")), [&](QSqlDatabase &db) {
        execOrFail(db, QStringLiteral("CREATE DATABASE %1 ENCODING 'UTF8' TEMPLATE template0 LC_COLLATE 'C' LC_CTYPE 'C'").arg(name));
    });
    return s.connectionString(name);
}

void TestServer::dropDatabase(const QString &store)
{
    Server &s = server();
    withConnection(s.connectionString(QStringLiteral("postgres")), [&](QSqlDatabase &db) {
        execOrFail(db, QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(databaseOf(store)));
    });
}

QVariant TestServer::value(const QString &store, const QString &sql, const QVariantList &bound)
{
    QVariant result;
    withConnection(store, [&](QSqlDatabase &db) {
        QSqlQuery query = execOrFail(db, sql, bound);
        if (query.next())
            result = query.value(0);
    });
    return result;
}

} // namespace normaris::test
