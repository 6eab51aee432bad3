#pragma once
// A test's look into a company of its TestRoot, in whichever store the run keeps it: a
// connection of the probe's own, opened through the store, closed again before the call
// returns. The statements are those both databases understand; a list of values is
// joined in C++ rather than by the database.

#include "base/DataLayout.h"
#include "base/Database.h"
#include "base/ServerMessages.h"
#include "base/SqlDialect.h"
#include "base/SqliteMessages.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/Schema.h"
#include "rulebase/ServerStore.h"

#include <QCryptographicHash>
#include <QStringList>
#include <QVariant>
#include <functional>

namespace normaris::test {

inline const QString kProbeConnection = QStringLiteral("test_company_probe");

// Runs work on company name with a connection of its own.
inline void inCompany(const DataLayout &layout, const QString &name, OpenMode mode, const std::function<void(QSqlDatabase)> &work)
{
    {
        QSqlDatabase db = CompanyStore::of(layout)->open(name, kProbeConnection, mode);
        try {
            work(db);
        } catch (...) {
            db = QSqlDatabase();
            closeDatabase(kProbeConnection);
            throw;
        }
    }
    closeDatabase(kProbeConnection);
}

// The first value of the first row of sql in company name.
inline QVariant valueInCompany(const DataLayout &layout, const QString &name, const QString &sql, const QVariantList &binds = {})
{
    QVariant value;
    inCompany(layout, name, OpenMode::ReadOnly, [&](QSqlDatabase db) { value = scalar(db, sql, binds); });
    return value;
}

// The first value of every row of sql on db, as text: what the database would join.
inline QStringList columnIn(QSqlDatabase db, const QString &sql, const QVariantList &binds = {})
{
    QStringList values;
    RowReader q = execSql(db, sql, binds);
    while (q.next())
        values << q.value(0).toString();
    return values;
}

// The first value of every row of sql in company name, as text.
inline QStringList columnInCompany(const DataLayout &layout, const QString &name, const QString &sql, const QVariantList &binds = {})
{
    QStringList values;
    inCompany(layout, name, OpenMode::ReadOnly, [&](QSqlDatabase db) { values = columnIn(db, sql, binds); });
    return values;
}

// Runs one statement on company name, outside `cn`.
inline void execInCompany(const DataLayout &layout, const QString &name, const QString &sql, const QVariantList &binds = {})
{
    inCompany(layout, name, OpenMode::ReadWrite, [&](QSqlDatabase db) { execSql(db, sql, binds); });
}

// Every row of every table of the company's schema, in ID order, as one digest: equal
// digests mean the same content in either store.
inline QByteArray contentDigest(QSqlDatabase db)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const SqlDialect &dialect = SqlDialect::of(db);
    for (const TableDef &table : schemaTables()) {
        hash.addData(table.name.toUtf8() + '\n');
        RowReader q = execSql(db, QStringLiteral("SELECT * FROM %1 ORDER BY ID").arg(dialect.quote(table.name)));
        while (q.next()) {
            const int columns = q.record().count();
            for (int i = 0; i < columns; ++i)
                hash.addData(q.value(i).toString().toUtf8() + '|');
            hash.addData("\n");
        }
    }
    return hash.result();
}

// Makes every `event` (INSERT, UPDATE or DELETE) on table of company name (open as db) fail
// as a broken constraint would, and returns what the user is then told.
inline QString refuseEvery(QSqlDatabase db, const QString &name, const QString &event, const QString &table)
{
    if (!SqlDialect::of(db).server) {
        execSql(db, QStringLiteral("CREATE TRIGGER refuse BEFORE %1 ON \"%2\" BEGIN SELECT RAISE(ABORT, 'no'); END").arg(event, table));
        return sqliteMessage(SqliteConstraint, db.databaseName());
    }
    execSql(db, QStringLiteral("CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
                               "'BEGIN RAISE EXCEPTION ''no'' USING ERRCODE = ''23514''; END'"));
    execSql(db, QStringLiteral("CREATE TRIGGER refuse BEFORE %1 ON \"%2\" FOR EACH ROW EXECUTE FUNCTION refuse()").arg(event, table));
    return serverMessage(QStringLiteral("23514"), ServerStore::placeOf(name));
}

inline QByteArray contentDigest(const DataLayout &layout, const QString &name)
{
    QByteArray digest;
    inCompany(layout, name, OpenMode::ReadOnly, [&](QSqlDatabase db) { digest = contentDigest(db); });
    return digest;
}

} // namespace normaris::test
