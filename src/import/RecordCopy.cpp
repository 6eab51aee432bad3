#include "import/RecordCopy.h"

#include "base/Database.h"
#include "rulebase/Schema.h"
#include "rulebase/SegmentKind.h"

#include <QSqlError>
#include <QSqlQuery>

namespace normaris {

namespace {

// Table names are quoted; column names are not, as the tables were made: the server
// folds them to the names it keeps.
QString quoted(const QString &name) { return u'"' + name + u'"'; }

} // namespace

void RecordCopy::copy(const ImportPlace &given, Level level)
{
    ImportPlace place = given;
    place.level = level;
    const SourceEntry entry(m_source, place);
    for (Level at : entry.clauseLevels())
        copyClauses(entry, at);
    for (const VariableTable &table : kVariableTables)
        copyMarkers(entry, table);
}

void RecordCopy::copyClauses(const SourceEntry &entry, Level level)
{
    const LevelInfo &info = levelInfo(level);
    const QString table = dictionaryTable(level);
    // The target is a company of the current form: its columns after ID are the schema's.
    const QStringList columns = schemaTable(table).columnNames();
    // A row is already there when its keys (down to its Code) and, for a clause in
    // segments, its segment are.
    QStringList keys = columns.mid(0, columns.indexOf(QStringLiteral("Code")) + 1);
    if (info.segmented)
        keys << QStringLiteral("結合");
    QStringList terms;
    for (const QString &k : keys)
        terms << k + QStringLiteral(" = ?");
    const QString there = QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(quoted(table), terms.join(QStringLiteral(" AND ")));
    const QString text = textColumn(level);

    for (const QSqlRecord &row : entry.clauseRows(level)) {
        QVariantList keyValues;
        for (const QString &k : keys)
            keyValues << row.value(k);
        if (scalar(m_target, there, keyValues).toInt() > 0)
            continue;
        QVariantList values;
        for (const QString &c : columns) {
            if (c == QStringLiteral("選択フラグ") && info.unselectedOnImport)
                values << 0;
            else if (c == text)
                values << m_renumbering.rewrite(row.value(c).toString());
            else if (row.contains(c))
                values << row.value(c);
            else if (c == kSegmentKindColumn)
                values << segmentKind(row.value(textColumn(level)).toString());
            else
                throw DbError(QStringLiteral("取込元の表「%1」に列「%2」がありません。").arg(table, c));
        }
        insertInto(m_target, table, columns, values);
    }
}

void RecordCopy::copyMarkers(const SourceEntry &entry, const VariableTable &table)
{
    const QString name = QString::fromUtf16(table.table);
    const QStringList columns = schemaTable(name).columnNames().mid(0, table.copiedColumns);
    // The row this run added last: a code met a second time overwrites it, so that
    // the later of two source rows with one code wins.
    qlonglong lastAdded = -1;
    for (const QSqlRecord &row : entry.usedRows(table)) {
        const QString code = m_renumbering.code(table, row.value(QStringLiteral("Code")).toString());
        QVariantList values;
        for (const QString &c : columns)
            values << (c == u"Code" ? QVariant(code) : row.value(c));
        const bool exists = scalar(m_target, QStringLiteral("SELECT count(*) FROM %1 WHERE Code = ? AND 規程Code = ?").arg(quoted(name)),
                                   {code, row.value(QStringLiteral("規程Code"))})
                                .toInt()
                            > 0;
        if (!exists) {
            lastAdded = insertInto(m_target, name, columns, values);
            continue;
        }
        // The checks made sure the document had none of the codes the text uses before
        // the run, so the row found is one of this run's.
        if (lastAdded < 0)
            throw DbError(QStringLiteral("表「%1」のCode：%2は取込の前からあります。").arg(name, code));
        QStringList sets;
        for (const QString &c : columns)
            sets << c + QStringLiteral(" = ?");
        execSql(m_target, QStringLiteral("UPDATE %1 SET %2 WHERE ID = ?").arg(quoted(name), sets.join(u',')),
                values + QVariantList{lastAdded});
    }
}

} // namespace normaris
