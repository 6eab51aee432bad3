#pragma once
// SQLite through Qt SQL: named connections, statements with bound parameters
// only, and the transaction guard for every step that changes several rows.
//
// Reading rows: execSql returns a RowReader. Loop with `while (rows.next())`;
// next() throws DbError when SQLite fails to step (an I/O error, a damaged page,
// a lock), so a failed read is never taken for the end of the rows. Never loop
// over a QSqlQuery of your own: its next() answers false for both.
//
//     RowReader rows = execSql(db, QStringLiteral("SELECT Code, 語句 FROM ... WHERE 規程Code = ?"), {document});
//     while (rows.next())
//         words.insert(rows.value(0).toString(), rows.value(1).toString());
//
// Writing: every step that changes several rows runs in one Transaction (or
// runInTransaction), taken before the step reads what it decides on; the outermost
// one is BEGIN IMMEDIATE, so no other connection writes between its checks and
// its writes.
//
// Tests: FaultInjection fails the Nth statement or the Nth row read, so that each
// step can be shown to leave the file as it was when any one of them fails.

#include "base/Failure.h"
#include "base/Prompt.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariantList>
#include <functional>

namespace normaris {

// A failure of the data file. Made from SQLite's error, its text is the Japanese message
// of base/SqliteMessages.h for the result code and the file's path; SQLite's own text
// and the statement go to the error log as the error is made.
class DbError : public Failure {
public:
    using Failure::Failure;
    DbError(int sqliteCode, const QString &path, const QString &detail);
    // Made from the server's error: its SQLSTATE and the place (base/ServerMessages.h).
    struct ServerTag {};
    DbError(const QString &serverState, const QString &place, const QString &detail, ServerTag);
    // SQLite's result code (extended where SQLite gives one); 0 for an error of our own
    // or of the server.
    int sqliteCode() const { return m_sqliteCode; }

private:
    int m_sqliteCode = 0;
};

// The DbError of a failed statement on db: its code, the file's path and, for the log,
// SQLite's text and the statement.
DbError statementError(QSqlDatabase db, const QSqlError &error, const QString &sql);

enum class OpenMode { ReadWrite, ReadOnly };

// Opens path under the connection name. Throws DbError when the file can't be opened.
QSqlDatabase openDatabase(const QString &path, const QString &connectionName, OpenMode mode = OpenMode::ReadWrite);
// Opens a connection to the office's server (store: a libpq connection string or a
// postgresql:// URI) whose unqualified names are those of schema (none: the catalog's
// own work). ReadOnly refuses every change on the server's side. place names the
// connection in messages. Throws DbError when the server can't be reached.
QSqlDatabase openServerDatabase(const QString &store, const QString &schema, const QString &connectionName, OpenMode mode,
                                const QString &place);
// Closes and forgets the connection; nothing happens when it is not there.
void closeDatabase(const QString &connectionName);

// The rows of a statement that ran. next() steps to the next row and answers false
// after the last one; a step that fails throws DbError instead.
class RowReader {
public:
    RowReader(QSqlDatabase db, QSqlQuery query, QString sql);
    bool next();
    QVariant value(int index) const { return m_query.value(index); }
    QVariant value(const QString &name) const { return m_query.value(name); }
    QSqlRecord record() const { return m_query.record(); }
    QVariant lastInsertId() const { return m_query.lastInsertId(); }

private:
    QSqlDatabase m_db;
    QSqlQuery m_query;
    QString m_sql;
};

// Prepares sql, binds the values in order and runs it. Throws DbError on failure.
RowReader execSql(QSqlDatabase db, const QString &sql, const QVariantList &binds = {});
// One statement prepared once and run once per row: the bulk writes of a step, inside
// its transaction. A statement of many rows' values would cost SQLite a lookup per bound
// value by name; one row per run keeps a write linear in its rows. write() throws
// DbError on failure.
//
//     RowWriter insert(db, QStringLiteral("INSERT INTO 改訂履歴行 (改訂履歴ID, 順番, 文章) VALUES (?,?,?)"));
//     for (const PrintedRow &r : rows)
//         insert.write({id, ++order, r.text});
class RowWriter {
public:
    RowWriter(QSqlDatabase db, QString sql);
    void write(const QVariantList &binds);

private:
    QSqlDatabase m_db;
    QSqlQuery m_query;
    QString m_sql;
};

// A value as it is bound: a null QString becomes '' (text columns hold '' rather than NULL),
// a bool 0 or 1.
QVariant boundValue(const QVariant &value);

// The first column of the first row, or an invalid QVariant when there is no row.
QVariant scalar(QSqlDatabase db, const QString &sql, const QVariantList &binds = {});

// Holds one transaction: rolls back when it goes out of scope uncommitted. The
// outermost one is BEGIN IMMEDIATE: it waits for (or fails on) another writer at
// its start, never between a step's reads and its writes. Inside another one on the
// same connection it is a savepoint, so that steps compose: the inner step undoes
// only itself, and nothing is kept unless the outer one commits.
class Transaction {
public:
    explicit Transaction(QSqlDatabase db);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();

private:
    QSqlDatabase m_db;
    QString m_savepoint; // empty for the outermost transaction
    bool m_done = false;
};

// Runs work in one transaction. On any failure rolls back, shows "取消" with
// "処理中にエラーが発生しました。処理を取り消します。" and, on a line below, the
// failure's own text (with the icon given: the information icon unless the step's own
// messages say otherwise), and returns false.
bool runInTransaction(Prompt &prompt, QSqlDatabase db, const std::function<void()> &work, Prompt::Icon icon = Prompt::Icon::Information);

// Shows "取消" as runInTransaction does for a failure e that stopped a step.
void showCancelled(Prompt &prompt, Prompt::Icon icon, const std::exception &e);

// A step whose checks belong inside its write: runs step in one transaction and
// commits when it answers Done. Stopped (a check refused, and has said why) rolls
// back quietly; a failure rolls back and shows "取消" as runInTransaction does.
Outcome runStep(Prompt &prompt, QSqlDatabase db, const std::function<Outcome()> &step, Prompt::Icon icon = Prompt::Icon::Information);

// A test hook: the Nth statement (execSql, a RowWriter, BEGIN, COMMIT) or the Nth row
// read after arm() fails as SQLite's would, with SQLITE_IOERR (disk I/O error).
// 0 leaves that kind alone.
struct FaultInjection {
    static void arm(int failStatement, int failRowRead);
    static void disarm();
    static bool fired();         // whether the armed failure happened
    static int statementsSeen(); // since arm(): how far a step got
    static int rowReadsSeen();
};

// runStep for a step that answers yes or no: work returns false after it has told the
// user why, and the transaction is rolled back without the "取消" box.
Outcome runRefusableTransaction(Prompt &prompt, QSqlDatabase db, const std::function<bool()> &work);

} // namespace normaris
