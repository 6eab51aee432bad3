#include "rulebase/CompanyDatabase.h"

#include "base/SqliteMessages.h"

#include "rulebase/Schema.h"

namespace normaris {

namespace {

// Triggers and views run code of the file's own: our schema has none, so a file that
// carries one is not ours, however well its tables match.
QString foreignContent(QSqlDatabase db)
{
    RowReader rows =
        execSql(db, QStringLiteral("SELECT type, name FROM sqlite_master WHERE type IN ('trigger', 'view') ORDER BY type, name"));
    if (!rows.next())
        return {};
    return QStringLiteral("%1「%2」があります。")
        .arg(rows.value(0).toString() == u"trigger" ? QStringLiteral("トリガー") : QStringLiteral("ビュー"), rows.value(1).toString());
}

} // namespace

QSqlDatabase openCompanyDatabase(const QString &path, const QString &connectionName, OpenMode mode)
{
    QSqlDatabase db = openDatabase(path, connectionName, mode);
    QString mismatch;
    try {
        mismatch = foreignContent(db);
        if (mismatch.isEmpty())
            mismatch = schemaMismatch(db);
    } catch (const DbError &e) {
        db = QSqlDatabase();
        closeDatabase(connectionName);
        // A file SQLite does not recognise is foreign; any other failure (an I/O error, a
        // lock) says nothing about whose file it is, and its own message tells what happened.
        if ((e.sqliteCode() & 0xff) == SqliteNotADb)
            throw DbError(QStringLiteral("「%1」は本システムの会社データではありません。（データベースとして読めません。）").arg(path));
        throw;
    }
    if (!mismatch.isEmpty()) {
        db = QSqlDatabase();
        closeDatabase(connectionName);
        throw DbError(QStringLiteral("「%1」は本システムの会社データではありません。（%2）").arg(path, mismatch));
    }
    return db;
}

} // namespace normaris
