#pragma once
// The few places where the two databases a company can live in speak differently:
// SQLite (a company file) and PostgreSQL (the office's server, a schema per company).
// Every statement of the subsystems is written once, in the SQL both understand; what
// differs is one row of the table in SqlDialect.cpp, found from the connection's driver.

#include <QSqlDatabase>
#include <QString>

namespace normaris {

struct SqlDialect {
    QString driver; // Qt's driver name
    bool server;    // the office's server rather than a company file
    // Starts the outermost transaction of a step. SQLite's IMMEDIATE takes the write lock
    // before the step reads; on the server the company's advisory lock already keeps every
    // other program out, so a plain BEGIN keeps what the step reads true until it commits.
    QString beginWrite;
    // The row counter `ID` of every table, as it is declared.
    QString identityColumn;
    QString integerColumn; // 順番, 番号 and the flags
    QString textColumn;    // codes, texts and ISO dates
    // Unquoted names fold to lower case on the server: a quoted name must fold the same
    // way to meet the statements that do not quote it.
    bool foldsNames;
    // Whether rows are read one by one from the database as the caller steps. The server's
    // driver can't run a statement while another one's rows are still arriving on the same
    // connection, and the steps read inside their reading loops: there the rows come whole.
    bool streamsRows;
    // The tables of the connection's company, by name (one column: the name).
    QString tablesSql;
    // The columns of the table bound as the one parameter, in order: name, declared
    // type, whether it may be null (0 / 1), and the default as written ('' for none).
    QString columnsSql;
    // The dictionary release a company records (year*100+month), read and written.
    QString readReleaseSql;
    QString writeReleaseSql; // %1: the number
    // After rows were copied in with their own IDs: the next ID follows the largest (%1: table).
    QString afterCopySql;
    // A code or 結合 (text) read as a number to sort or compare by (%1: the expression): its
    // leading digits, 0 when there are none. The server refuses to cast '' to a number.
    QString textAsInteger;

    // textAsInteger of the expression.
    QString integerOf(const QString &expression) const { return textAsInteger.arg(expression); }

    static const SqlDialect &of(const QSqlDatabase &db);
    static const SqlDialect &sqlite();
    static const SqlDialect &postgres();

    // The name as the database keeps it, and as a statement quotes it.
    QString keptName(const QString &identifier) const;
    QString quote(const QString &identifier) const;
};

// The office's catalog of companies on the server: its schema and table.
inline const QString kCatalogSchema = QStringLiteral("normaris");
inline const QString kCatalogTable = QStringLiteral("normaris.会社");

} // namespace normaris
