#pragma once
// SQLite through Qt SQL: named connections, statements with bound parameters
// only, and the transaction guard for every step that changes several rows.

#include "base/Failure.h"
#include "base/Prompt.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <functional>

namespace normaris {

class DbError : public Failure {
public:
    using Failure::Failure;
};

enum class OpenMode { ReadWrite, ReadOnly };

// Opens path under the connection name. Throws DbError when the file can't be opened.
QSqlDatabase openDatabase(const QString &path, const QString &connectionName, OpenMode mode = OpenMode::ReadWrite);
// Closes and forgets the connection; nothing happens when it is not there.
void closeDatabase(const QString &connectionName);

// Prepares sql, binds the values in order and runs it. Throws DbError on failure.
QSqlQuery execSql(QSqlDatabase db, const QString &sql, const QVariantList &binds = {});
// A value as it is bound: a null QString becomes '' (text columns hold '' rather than NULL).
QVariant boundValue(const QVariant &value);

// The first column of the first row, or an invalid QVariant when there is no row.
QVariant scalar(QSqlDatabase db, const QString &sql, const QVariantList &binds = {});

// Holds one transaction: rolls back when it goes out of scope uncommitted. Inside
// another one on the same connection it is a savepoint, so that steps compose: the
// inner step undoes only itself, and nothing is kept unless the outer one commits.
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
// "処理中にエラーが発生しました。処理を取り消します。", and returns false.
bool runInTransaction(Prompt &prompt, QSqlDatabase db, const std::function<void()> &work);

// As runInTransaction, for a step that may refuse on the way: work returns false after
// it has told the user why, and the transaction is rolled back without the "取消" box.
Outcome runRefusableTransaction(Prompt &prompt, QSqlDatabase db, const std::function<bool()> &work);

} // namespace normaris
