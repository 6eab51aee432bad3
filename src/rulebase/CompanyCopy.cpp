#include "rulebase/CompanyCopy.h"

#include "base/Database.h"
#include "base/FileOps.h"
#include "base/SqlDialect.h"
#include "rulebase/Schema.h"

#include <QFile>
#include <QRegularExpression>

namespace normaris {

namespace {

const QString kFileConnection = QStringLiteral("normaris_company_file");

struct CopiedColumn {
    QString name;
    bool integer;
    bool nullable;
    QString defaultValue; // a literal, or empty
};

// A declared default as a literal both databases read: '' or 'x' or a number. The
// server writes its defaults with a cast ('x'::text), which goes.
QString literalDefault(QString written)
{
    written.remove(QRegularExpression(QStringLiteral("::[a-z ]+$")));
    static const QRegularExpression literal(QStringLiteral("^('([^']|'')*'|-?[0-9]+)$"));
    return literal.match(written).hasMatch() ? written : QString();
}

QList<CopiedColumn> columnsOf(QSqlDatabase db, const QString &table)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    QList<CopiedColumn> columns;
    RowReader rows = execSql(db, dialect.columnsSql, {table});
    while (rows.next())
        columns << CopiedColumn{rows.value(0).toString(), rows.value(1).toString().contains(QStringLiteral("int"), Qt::CaseInsensitive),
                                rows.value(2).toInt() == 1, literalDefault(rows.value(3).toString())};
    return columns;
}

bool isIdColumn(const QString &name) { return name.compare(QStringLiteral("ID"), Qt::CaseInsensitive) == 0; }

// A table the program made on demand, declared on target as source declares it.
void createLike(QSqlDatabase target, const QString &table, const QList<CopiedColumn> &columns)
{
    const SqlDialect &dialect = SqlDialect::of(target);
    QStringList defs;
    for (const CopiedColumn &c : columns) {
        if (isIdColumn(c.name)) {
            defs << dialect.identityColumn;
            continue;
        }
        QString def = dialect.quote(c.name) + (c.integer ? QStringLiteral(" INTEGER") : QStringLiteral(" TEXT"));
        if (!c.nullable)
            def += QStringLiteral(" NOT NULL");
        if (!c.defaultValue.isEmpty())
            def += QStringLiteral(" DEFAULT ") + c.defaultValue;
        defs << def;
    }
    execSql(target, QStringLiteral("CREATE TABLE %1 (%2)").arg(dialect.quote(table), defs.join(u',')));
}

void copyRows(QSqlDatabase source, QSqlDatabase target, const QString &table, const QList<CopiedColumn> &columns)
{
    const SqlDialect &from = SqlDialect::of(source);
    const SqlDialect &to = SqlDialect::of(target);
    QStringList read, written, marks;
    bool hasId = false;
    for (const CopiedColumn &c : columns) {
        read << from.quote(c.name);
        written << to.quote(c.name);
        marks << QStringLiteral("?");
        hasId = hasId || isIdColumn(c.name);
    }
    RowReader rows = execSql(
        source,
        QStringLiteral("SELECT %1 FROM %2%3").arg(read.join(u','), from.quote(table), hasId ? QStringLiteral(" ORDER BY ID") : QString()));
    RowWriter insert(target, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(to.quote(table), written.join(u','), marks.join(u',')));
    const int width = int(columns.size());
    QVariantList values;
    values.reserve(width);
    while (rows.next()) {
        values.clear();
        for (int i = 0; i < width; ++i)
            values << rows.value(i);
        insert.write(values);
    }
    if (hasId && !to.afterCopySql.isEmpty())
        execSql(target, to.afterCopySql.arg(to.quote(table)));
}

QStringList tablesOf(QSqlDatabase db)
{
    QStringList tables;
    RowReader rows = execSql(db, SqlDialect::of(db).tablesSql);
    while (rows.next())
        tables << rows.value(0).toString();
    return tables;
}

} // namespace

const QStringList &tablesClearedForNewCompany()
{
    static const QStringList tables = {QStringLiteral("施行日"), QStringLiteral("作成データ置換前"), QStringLiteral("作成データ")};
    return tables;
}

void copyCompany(QSqlDatabase source, QSqlDatabase target)
{
    const SqlDialect &from = SqlDialect::of(source);
    createSchema(target);
    QStringList schemaNames;
    for (const TableDef &table : schemaTables())
        schemaNames << table.name;
    for (const QString &table : tablesOf(source)) {
        const QList<CopiedColumn> columns = columnsOf(source, table);
        if (!schemaNames.contains(table, Qt::CaseInsensitive))
            createLike(target, table, columns);
        copyRows(source, target, table, columns);
    }
    execSql(target, SqlDialect::of(target).writeReleaseSql.arg(scalar(source, from.readReleaseSql).toInt()));
}

void writeCompanyFile(QSqlDatabase db, const QString &path)
{
    const QString partial = path + QStringLiteral(".part");
    removeWithSideFiles(partial);
    try {
        if (!SqlDialect::of(db).server) {
            execSql(db, QStringLiteral("VACUUM INTO ?"), {partial});
        } else {
            {
                QFile made(partial);
                if (!made.open(QIODevice::WriteOnly))
                    throw Failure(QStringLiteral("ファイル「%1」を作成できません。").arg(partial));
            }
            // Read in one transaction (one moment's content) and written in one.
            Transaction reading(db);
            {
                QSqlDatabase file = openDatabase(partial, kFileConnection);
                Transaction writing(file);
                copyCompany(db, file);
                writing.commit();
            }
            closeDatabase(kFileConnection);
            reading.commit();
        }
        syncFile(partial);
        replaceFile(partial, path);
    } catch (...) {
        closeDatabase(kFileConnection);
        removeWithSideFiles(partial);
        throw;
    }
}

} // namespace normaris
