#include "rulebase/CompanyDatabase.h"

#include "rulebase/Schema.h"

namespace normaris {

QSqlDatabase openCompanyDatabase(const QString &path, const QString &connectionName, OpenMode mode)
{
    QSqlDatabase db = openDatabase(path, connectionName, mode);
    QString mismatch;
    try {
        mismatch = schemaMismatch(db);
    } catch (const DbError &) {
        mismatch = QStringLiteral("データベースとして読めません。");
    }
    if (!mismatch.isEmpty()) {
        db = QSqlDatabase();
        closeDatabase(connectionName);
        throw DbError(QStringLiteral("「%1」は本システムの会社データではありません。（%2）").arg(path, mismatch));
    }
    return db;
}

} // namespace normaris
