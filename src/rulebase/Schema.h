#pragma once
// The tables of a company data file, each with its columns in order. Columns are
// read by ordinal as well as by name elsewhere, so this order is part of the
// contract; ordinal 0 is always the row counter `ID`, which nothing reads.

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace normaris {

enum class ColumnType {
    Text,    // codes and texts; codes are compared as text
    Integer, // 順番 and 番号 of the composition tables
    Flag,    // 0 / 1
    Date,    // ISO text YYYY-MM-DD
};

struct ColumnDef {
    QString name;
    ColumnType type;
};

struct TableDef {
    QString name;
    QList<ColumnDef> columns; // ordinal 1 onwards
    QStringList indexes;      // column lists of the lookup indexes, e.g. "文章形式Code,規程Code"

    QStringList columnNames() const;
};

// All tables a company file holds (the spreadsheet work tables are made on demand).
const QList<TableDef> &schemaTables();
const TableDef &schemaTable(const QString &name);

// Creates every table and index in an empty database.
void createSchema(QSqlDatabase db);
// A table made on demand (the work tables of a step, the kept versions): created with its
// indexes, in the database's own types, when the company does not have it yet.
void ensureTable(QSqlDatabase db, const TableDef &table);
// Whether the company has the table.
bool hasTable(QSqlDatabase db, const QString &name);

// Inserts one row, the values in column order from ordinal 1 (fewer values leave
// the last columns at their defaults).
void insertRow(QSqlDatabase db, const QString &table, const QVariantList &values);
// Inserts one row into the columns named, the others at their defaults; returns its rowid.
qlonglong insertInto(QSqlDatabase db, const QString &table, const QStringList &columns, const QVariantList &values);

// Files of the older form lack the last column 結合種別 of 前文, 項, 号 and 号の細分丸.
enum class SchemaForms { CurrentOnly, OlderAccepted };
// The column that the older form lacks.
inline const QString kSegmentKindColumn = QStringLiteral("結合種別");

// Empty when db has every table of the schema with its columns in order;
// otherwise a description of the first difference.
QString schemaMismatch(QSqlDatabase db, SchemaForms forms = SchemaForms::CurrentOnly);
// Whether the table has the column, asked of the table itself.
bool tableHasColumn(QSqlDatabase db, const QString &table, const QString &column);

} // namespace normaris
