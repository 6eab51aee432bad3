#include "CompanyDump.h"

#include "base/Database.h"
#include "base/SqlDialect.h"
#include "rulebase/CompanyStore.h"

#include <QSqlField>

namespace normaris::test {

namespace {

const QString kDumpConnection = QStringLiteral("test_company_dump");

bool hasId(const QSqlRecord &record)
{
    for (int i = 0; i < record.count(); ++i) {
        if (record.fieldName(i).compare(QStringLiteral("ID"), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

QStringList dumpCompany(QSqlDatabase db)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    QStringList tables;
    {
        RowReader names = execSql(db, dialect.tablesSql);
        while (names.next())
            tables << names.value(0).toString();
    }
    // The server keeps unquoted names folded: compare them as one name.
    std::sort(tables.begin(), tables.end(), [](const QString &a, const QString &b) { return a.toLower() < b.toLower(); });
    QStringList lines;
    for (const QString &table : tables) {
        QStringList columns;
        {
            RowReader described = execSql(db, dialect.columnsSql, {table});
            while (described.next())
                columns << described.value(0).toString();
        }
        lines << table.toLower() + u'|' + columns.join(u',').toLower();
        RowReader rows = execSql(db, QStringLiteral("SELECT * FROM %1").arg(dialect.quote(table)));
        QStringList content;
        const bool ordered = hasId(rows.record());
        QList<std::pair<qint64, QString>> byId;
        while (rows.next()) {
            QString line = table.toLower();
            const QSqlRecord record = rows.record();
            qint64 id = 0;
            for (int c = 0; c < record.count(); ++c) {
                const QVariant value = rows.value(c);
                if (record.fieldName(c).compare(QStringLiteral("ID"), Qt::CaseInsensitive) == 0)
                    id = value.toLongLong();
                line += u'\x1f' + value.toString();
            }
            byId.append({id, line});
        }
        if (ordered)
            std::sort(byId.begin(), byId.end());
        for (const auto &[id, line] : byId)
            content << line;
        if (!ordered)
            content.sort();
        lines += content;
    }
    lines << QStringLiteral("release|") + scalar(db, dialect.readReleaseSql).toString();
    return lines;
}

QStringList dumpCompany(const DataLayout &layout, const QString &name)
{
    QStringList lines;
    {
        QSqlDatabase db = CompanyStore::of(layout)->open(name, kDumpConnection, OpenMode::ReadOnly);
        lines = dumpCompany(db);
    }
    closeDatabase(kDumpConnection);
    return lines;
}

QStringList dumpCompanyFile(const QString &file)
{
    QStringList lines;
    {
        QSqlDatabase db = openDatabase(file, kDumpConnection, OpenMode::ReadOnly);
        lines = dumpCompany(db);
    }
    closeDatabase(kDumpConnection);
    return lines;
}

QString firstDifference(const QStringList &a, const QStringList &b)
{
    for (qsizetype i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (a.value(i) != b.value(i))
            return QStringLiteral("line %1:\n  before: %2\n  after:  %3").arg(i).arg(a.value(i).left(200), b.value(i).left(200));
    }
    return {};
}

} // namespace normaris::test
