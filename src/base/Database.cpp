#include "base/Database.h"

#include "base/Prompt.h"

#include <QFileInfo>
#include <QHash>
#include <QSqlError>

namespace normaris {

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
        const QString reason = db.lastError().text();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connectionName);
        throw DbError(QStringLiteral("データファイル「%1」を開けません。%2").arg(path, reason));
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
}

QSqlQuery execSql(QSqlDatabase db, const QString &sql, const QVariantList &binds)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.prepare(sql))
        throw DbError(q.lastError().text() + QStringLiteral("\n") + sql);
    for (const QVariant &v : binds)
        q.addBindValue(boundValue(v));
    if (!q.exec())
        throw DbError(q.lastError().text() + QStringLiteral("\n") + sql);
    return q;
}

QVariant boundValue(const QVariant &value)
{
    return value.typeId() == QMetaType::QString && value.toString().isNull() ? QVariant(QStringLiteral("")) : value;
}

QVariant scalar(QSqlDatabase db, const QString &sql, const QVariantList &binds)
{
    QSqlQuery q = execSql(db, sql, binds);
    return q.next() ? q.value(0) : QVariant();
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
        if (!m_db.transaction())
            throw DbError(m_db.lastError().text());
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
        m_db.rollback();
    } else {
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK TO ") + m_savepoint);
        QSqlQuery(m_db).exec(QStringLiteral("RELEASE ") + m_savepoint);
    }
}

void Transaction::commit()
{
    if (m_savepoint.isEmpty()) {
        if (!m_db.commit())
            throw DbError(m_db.lastError().text());
    } else {
        execSql(m_db, QStringLiteral("RELEASE ") + m_savepoint);
    }
    --openTransactions()[m_db.connectionName()];
    m_done = true;
}

bool runInTransaction(Prompt &prompt, QSqlDatabase db, const std::function<void()> &work)
{
    return runRefusableTransaction(prompt, db,
                                   [&] {
                                       work();
                                       return true;
                                   })
           == Outcome::Done;
}

Outcome runRefusableTransaction(Prompt &prompt, QSqlDatabase db, const std::function<bool()> &work)
{
    try {
        Transaction transaction(db);
        if (!work())
            return Outcome::Stopped; // the guard rolls back
        transaction.commit();
        return Outcome::Done;
    } catch (const std::exception &e) {
        // The user sees the fixed text; the cause goes to the terminal for whoever looks.
        qWarning("transaction rolled back: %s", e.what());
        prompt.information(QStringLiteral("取消"), QStringLiteral("処理中にエラーが発生しました。処理を取り消します。"));
        return Outcome::Failed;
    }
}

} // namespace normaris
