#include "base/Database.h"

#include "base/ErrorLog.h"
#include "base/Prompt.h"
#include "base/ServerMessages.h"
#include "base/SqlDialect.h"
#include "base/SqliteMessages.h"

#include <QFileInfo>
#include <QHash>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QUrl>
#include <QUrlQuery>

namespace normaris {

namespace {

// What the messages call the place behind each server connection (a company on the server).
QHash<QString, QString> &serverPlaces()
{
    static QHash<QString, QString> places;
    return places;
}

// The file behind a connection: its name, or the path of a "file:…?…" URI; for a server
// connection, the place it was opened for.
QString fileOf(QSqlDatabase db)
{
    if (const auto place = serverPlaces().constFind(db.connectionName()); place != serverPlaces().constEnd())
        return *place;
    QString name = db.databaseName();
    if (name.startsWith(QStringLiteral("file:"))) {
        name = name.mid(5);
        name = QUrl::fromPercentEncoding(name.left(name.indexOf(u'?')).toUtf8());
    }
    return name;
}

int nativeCode(const QSqlError &error)
{
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    return ok ? code : 0;
}

} // namespace

DbError::DbError(int sqliteCode, const QString &path, const QString &detail)
    : Failure(sqliteMessage(sqliteCode, path)), m_sqliteCode(sqliteCode)
{
    ErrorLog::write(QStringLiteral("SQLite %1\t%2\t").arg(sqliteCode).arg(path) + detail);
}

DbError::DbError(const QString &serverState, const QString &place, const QString &detail, ServerTag)
    : Failure(serverMessage(serverState, place))
{
    ErrorLog::write(QStringLiteral("PostgreSQL %1\t%2\t").arg(serverState, place) + detail);
}

DbError statementError(QSqlDatabase db, const QSqlError &error, const QString &sql)
{
    if (SqlDialect::of(db).server) {
        // A connection the server dropped says so in its type rather than in a state.
        const QString state = error.nativeErrorCode().isEmpty() && error.type() == QSqlError::ConnectionError ? QStringLiteral("08006")
                                                                                                              : error.nativeErrorCode();
        // A connection the server ended or lost is closed here, so that the next use of a
        // connection the program keeps (the catalog's) opens it afresh rather than failing on.
        if (state.startsWith(QStringLiteral("08")) || state.startsWith(QStringLiteral("57P")))
            db.close();
        return DbError(state, fileOf(db), error.text() + u'\t' + sql, DbError::ServerTag{});
    }
    return DbError(nativeCode(error), fileOf(db), error.text() + u'\t' + sql);
}

namespace {

// A libpq connection string in its key=value form: a URI (postgresql://user@host:port/db?k=v)
// is taken apart, since Qt's driver hands the options to libpq without expanding one.
QString keyValueForm(const QString &store)
{
    if (!store.startsWith(QStringLiteral("postgresql://")) && !store.startsWith(QStringLiteral("postgres://")))
        return store;
    const QUrl url(store);
    const auto quoted = [](QString value) {
        value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("\\'"));
        return u'\'' + value + u'\'';
    };
    QStringList pairs;
    if (!url.host().isEmpty())
        pairs << QStringLiteral("host=") + quoted(url.host());
    if (url.port() > 0)
        pairs << QStringLiteral("port=") + QString::number(url.port());
    if (!url.userName().isEmpty())
        pairs << QStringLiteral("user=") + quoted(url.userName());
    if (!url.password().isEmpty())
        pairs << QStringLiteral("password=") + quoted(url.password());
    const QString database = url.path().mid(1);
    if (!database.isEmpty())
        pairs << QStringLiteral("dbname=") + quoted(database);
    for (const auto &[key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded))
        pairs << key + u'=' + quoted(value);
    return pairs.join(u' ');
}

} // namespace

QSqlDatabase openServerDatabase(const QString &store, const QString &schema, const QString &connectionName, OpenMode mode,
                                const QString &place)
{
    closeDatabase(connectionName);
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        throw DbError(
            QStringLiteral("サーバーに接続するためのドライバー（QPSQL）がありません。パッケージ libqt6sql6-psql を入れてください。"));
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
    // The program's name shows in the server's list of sessions; the password is libpq's
    // own business (~/.pgpass or PGPASSWORD), never the program's.
    db.setConnectOptions(keyValueForm(store) + QStringLiteral(" application_name=normaris connect_timeout=10"));
    serverPlaces().insert(connectionName, place);
    if (!db.open()) {
        const QSqlError reason = db.lastError();
        db = QSqlDatabase();
        closeDatabase(connectionName);
        const QString state = reason.nativeErrorCode().isEmpty() ? QStringLiteral("08001") : reason.nativeErrorCode();
        throw DbError(state, place, reason.text(), DbError::ServerTag{});
    }
    try {
        // Notices (a table that is there already) are no news to the user.
        execSql(db, QStringLiteral("SET client_min_messages = warning"));
        if (!schema.isEmpty())
            execSql(db, QStringLiteral("SET search_path TO ") + SqlDialect::postgres().quote(schema));
        if (mode == OpenMode::ReadOnly)
            execSql(db, QStringLiteral("SET default_transaction_read_only = on"));
    } catch (...) {
        db = QSqlDatabase();
        closeDatabase(connectionName);
        throw;
    }
    return db;
}

QSqlDatabase openDatabase(const QString &path, const QString &connectionName, OpenMode mode)
{
    closeDatabase(connectionName);
    if (!QFileInfo(path).isFile())
        throw DbError(QStringLiteral("ファイル「%1」が見つかりません。").arg(path));
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    db.setDatabaseName(path);
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=3000");
    if (mode == OpenMode::ReadOnly)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    db.setConnectOptions(options);
    if (!db.open()) {
        const QSqlError reason = db.lastError();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw DbError(nativeCode(reason) ? nativeCode(reason) : int(SqliteCantOpen), path, reason.text());
    }
    // Functions named in the file's own schema never run: only our statements do.
    QSqlQuery pragma(db);
    if (!pragma.exec(QStringLiteral("PRAGMA trusted_schema = OFF"))) {
        const QSqlError reason = pragma.lastError();
        pragma = QSqlQuery();
        db = QSqlDatabase();
        closeDatabase(connectionName);
        throw DbError(nativeCode(reason) ? nativeCode(reason) : int(SqliteCantOpen), path, reason.text());
    }
    return db;
}

void closeDatabase(const QString &connectionName)
{
    if (!QSqlDatabase::contains(connectionName))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
    serverPlaces().remove(connectionName);
}

namespace {

struct FaultState {
    int failStatement = 0;
    int failRowRead = 0;
    int statements = 0;
    int rowReads = 0;
    bool fired = false;
};

FaultState &faults()
{
    static FaultState state;
    return state;
}

// The failure a disk error on db would have been.
DbError injectedError(QSqlDatabase db, const QString &detail)
{
    if (SqlDialect::of(db).server)
        return DbError(kServerIoError, fileOf(db), detail, DbError::ServerTag{});
    return DbError(SqliteIoErr, fileOf(db), detail);
}

// Counts a statement about to run and fails it when it is the armed one.
void countStatement(QSqlDatabase db, const QString &sql)
{
    FaultState &f = faults();
    if (++f.statements == f.failStatement) {
        f.fired = true;
        throw injectedError(db, QStringLiteral("disk I/O error (injected at statement %1)\t").arg(f.statements) + sql);
    }
}

} // namespace

void FaultInjection::arm(int failStatement, int failRowRead) { faults() = FaultState{failStatement, failRowRead, 0, 0, false}; }

void FaultInjection::disarm() { faults() = FaultState{}; }
bool FaultInjection::fired() { return faults().fired; }
int FaultInjection::statementsSeen() { return faults().statements; }
int FaultInjection::rowReadsSeen() { return faults().rowReads; }

RowReader::RowReader(QSqlDatabase db, QSqlQuery query, QString sql) : m_db(std::move(db)), m_query(std::move(query)), m_sql(std::move(sql))
{
}

bool RowReader::next()
{
    FaultState &f = faults();
    if (++f.rowReads == f.failRowRead) {
        f.fired = true;
        throw injectedError(m_db, QStringLiteral("disk I/O error (injected at row read %1)\t").arg(f.rowReads) + m_sql);
    }
    if (m_query.next())
        return true;
    // The driver answers false both after the last row and when the step fails.
    if (m_query.lastError().type() != QSqlError::NoError)
        throw statementError(m_db, m_query.lastError(), m_sql);
    return false;
}

namespace {

// sql with each placeholder ? (outside quotes) replaced by its value as the driver escapes
// it. Every value but a byte array goes in as a quoted literal, which the server types from
// where it stands (a code compared with a text column, a number with an integer column),
// as it types the parameters of a prepared statement.
QString withLiterals(QSqlDatabase db, const QString &sql, const QVariantList &binds)
{
    const QSqlDriver *driver = db.driver();
    const auto literal = [&](const QVariant &bound) {
        const QVariant value = boundValue(bound);
        QSqlField field;
        if (value.isNull()) {
            field.setMetaType(QMetaType::fromType<QString>());
            field.clear();
        } else if (value.typeId() == QMetaType::QByteArray) {
            field.setMetaType(value.metaType());
            field.setValue(value);
        } else {
            field.setMetaType(QMetaType::fromType<QString>());
            field.setValue(value.toString());
        }
        return driver->formatValue(field);
    };
    QString out;
    out.reserve(sql.size() + 16 * binds.size());
    qsizetype next = 0;
    QChar quote;
    for (const QChar c : sql) {
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'?') {
            if (next >= binds.size())
                throw DbError(QStringLiteral("文の値が足りません。"));
            out += literal(binds[next++]);
            continue;
        }
        out += c;
    }
    if (next != binds.size())
        throw DbError(QStringLiteral("文の値が多すぎます。"));
    return out;
}

} // namespace

RowReader execSql(QSqlDatabase db, const QString &sql, const QVariantList &binds)
{
    countStatement(db, sql);
    const SqlDialect &dialect = SqlDialect::of(db);
    QSqlQuery q(db);
    q.setForwardOnly(dialect.streamsRows);
    // On the server a statement runs in one round trip: its values go in as the driver's
    // own escaped literals, exactly as Qt's driver writes them into the EXECUTE of a
    // prepared statement, without the PREPARE and DEALLOCATE around it (two more round
    // trips for every statement of a step). A statement run for many rows is a RowWriter,
    // prepared once.
    if (dialect.server) {
        const QString statement = binds.isEmpty() ? sql : withLiterals(db, sql, binds);
        if (!q.exec(statement))
            throw statementError(db, q.lastError(), sql);
        return RowReader(db, std::move(q), sql);
    }
    if (!q.prepare(sql))
        throw statementError(db, q.lastError(), sql);
    for (const QVariant &v : binds)
        q.addBindValue(boundValue(v));
    if (!q.exec())
        throw statementError(db, q.lastError(), sql);
    return RowReader(db, std::move(q), sql);
}

// Counted as one statement, as the fault tests see a bulk write.
RowWriter::RowWriter(QSqlDatabase db, QString sql) : m_db(db), m_query(db), m_sql(std::move(sql))
{
    countStatement(db, m_sql);
    m_query.setForwardOnly(SqlDialect::of(db).streamsRows);
    if (!m_query.prepare(m_sql))
        throw statementError(db, m_query.lastError(), m_sql);
}

void RowWriter::write(const QVariantList &binds)
{
    for (qsizetype i = 0; i < binds.size(); ++i)
        m_query.bindValue(int(i), boundValue(binds[i]));
    if (!m_query.exec())
        throw statementError(m_db, m_query.lastError(), m_sql);
}

QVariant boundValue(const QVariant &value)
{
    // Flags are integer columns on both databases; the server takes no boolean for one.
    if (value.typeId() == QMetaType::Bool)
        return int(value.toBool());
    return value.typeId() == QMetaType::QString && value.toString().isNull() ? QVariant(QStringLiteral("")) : value;
}

QVariant scalar(QSqlDatabase db, const QString &sql, const QVariantList &binds)
{
    RowReader rows = execSql(db, sql, binds);
    return rows.next() ? rows.value(0) : QVariant();
}

namespace {

// How many transactions are open on each connection.
QHash<QString, int> &openTransactions()
{
    static QHash<QString, int> depth;
    return depth;
}

} // namespace

Transaction::Transaction(QSqlDatabase db) : m_db(std::move(db))
{
    int &depth = openTransactions()[m_db.connectionName()];
    if (depth == 0) {
        // IMMEDIATE takes the write lock now (waiting out the busy timeout), so that
        // what the step reads stays true until it commits.
        execSql(m_db, SqlDialect::of(m_db).beginWrite);
    } else {
        m_savepoint = QStringLiteral("step%1").arg(depth);
        execSql(m_db, QStringLiteral("SAVEPOINT ") + m_savepoint);
    }
    ++depth;
}

Transaction::~Transaction()
{
    if (m_done)
        return;
    --openTransactions()[m_db.connectionName()];
    if (m_savepoint.isEmpty()) {
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
    } else {
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK TO ") + m_savepoint);
        QSqlQuery(m_db).exec(QStringLiteral("RELEASE ") + m_savepoint);
    }
}

void Transaction::commit()
{
    execSql(m_db, m_savepoint.isEmpty() ? QStringLiteral("COMMIT") : QStringLiteral("RELEASE ") + m_savepoint);
    --openTransactions()[m_db.connectionName()];
    m_done = true;
}

void showCancelled(Prompt &prompt, Prompt::Icon icon, const std::exception &e)
{
    // The user sees the fixed text and what happened, in Japanese; an error of SQLite has
    // left its detail in the error log, any other cause is written there now.
    QString text = QStringLiteral("処理中にエラーが発生しました。処理を取り消します。");
    if (const auto *failure = dynamic_cast<const Failure *>(&e))
        text += u'\n' + failure->text();
    else
        ErrorLog::write(QStringLiteral("取消\t") + QString::fromUtf8(e.what()));
    prompt.message(icon, QStringLiteral("取消"), text);
}

bool runInTransaction(Prompt &prompt, QSqlDatabase db, const std::function<void()> &work, Prompt::Icon icon)
{
    return runStep(
               prompt, db,
               [&] {
                   work();
                   return Outcome::Done;
               },
               icon)
           == Outcome::Done;
}

Outcome runStep(Prompt &prompt, QSqlDatabase db, const std::function<Outcome()> &step, Prompt::Icon icon)
{
    try {
        Transaction transaction(db);
        const Outcome outcome = step();
        if (outcome == Outcome::Done)
            transaction.commit();
        return outcome;
    } catch (const std::exception &e) {
        showCancelled(prompt, icon, e);
        return Outcome::Failed;
    }
}

Outcome runRefusableTransaction(Prompt &prompt, QSqlDatabase db, const std::function<bool()> &work)
{
    return runStep(prompt, db, [&] { return work() ? Outcome::Done : Outcome::Stopped; });
}

} // namespace normaris
