#include "import/SourceEntry.h"

#include "base/Database.h"

#include <QSqlError>
#include <QSqlQuery>

namespace normaris {

QList<Level> SourceEntry::clauseLevels() const
{
    // kLevels is in document order, with 前文 right after 規程: from the entry's own
    // level down, 前文 is taken only with its document.
    QList<Level> levels;
    bool reached = false;
    for (const LevelInfo &info : kLevels) {
        reached = reached || info.level == m_place.level;
        if (reached && info.level != Level::Closing)
            levels << info.level;
    }
    return levels;
}

QList<QSqlRecord> SourceEntry::clauseRows(Level level) const
{
    const KeyFilter filter = keyFilter(level, m_place.style, m_place.codes);
    return select(dictionaryTable(level), filter.where(), filter.values);
}

QList<QSqlRecord> SourceEntry::usedRows(const VariableTable &table) const
{
    // The table has no style column: its rows are selected by the place codes alone.
    QStringList terms;
    QVariantList binds;
    for (qsizetype i = 0; i < m_place.codes.size(); ++i) {
        terms << keyColumn(kImportLevels.at(i)) + QStringLiteral(" = ?");
        binds << m_place.codes.at(i);
    }
    QList<QSqlRecord> used;
    for (const QSqlRecord &row : select(QString::fromUtf16(table.table), terms.join(QStringLiteral(" AND ")), binds))
        if (isUsed(row, table))
            used << row;
    return used;
}

bool SourceEntry::isUsed(const QSqlRecord &row, const VariableTable &table) const
{
    const QString marker = table.marker + row.value(QStringLiteral("Code")).toString() + table.marker;
    const QString kind = row.value(QStringLiteral("種別")).toString();
    for (const LevelInfo &info : kLevels) {
        if (kind.isEmpty() || kind != QString::fromUtf16(info.holderKind))
            continue;
        // The holder's own keys, down to its level, as the row records them.
        QStringList codes;
        for (Level at : kImportLevels) {
            codes << row.value(keyColumn(at)).toString();
            if (at == info.level)
                break;
        }
        const KeyFilter filter = keyFilter(info.level, m_place.style, codes);
        for (const QSqlRecord &holder : select(dictionaryTable(info.level), filter.where(), filter.values))
            if (holder.value(textColumn(info.level)).toString().contains(marker))
                return true;
    }
    return false;
}

QList<QSqlRecord> SourceEntry::select(const QString &table, const QString &where, const QVariantList &binds) const
{
    RowReader q = execSql(m_source, QStringLiteral("SELECT * FROM \"%1\" WHERE %2 ORDER BY ID").arg(table, where), binds);
    QList<QSqlRecord> rows;
    while (q.next())
        rows << q.record();
    return rows;
}

} // namespace normaris
