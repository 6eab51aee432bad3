#include "dictionary/EntryCascade.h"

#include "base/Database.h"
#include "rulebase/CompositionRow.h"

#include <QSqlRecord>

namespace normaris::dictionary {

namespace {

const QString kWords = QStringLiteral("変数テーブル語句");
const QString kReferences = QStringLiteral("変数テーブル番号");
const QString kTargetPrefix = QStringLiteral("変換参照■");
const QStringList kCompositionTables = {kArticleRowsTable, kClauseRowsTable, kFrozenRowsTable, kOutputRowsTable};

// The dictionary tables of the entry's level and of every level below it.
QList<Level> levelsFrom(Level level)
{
    QList<Level> levels;
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth >= placeDepth(level) && info.placeDepth > 0)
            levels << info.level;
    }
    return levels;
}

// "c1 = ? AND c2 = ? …" over the place columns (with a prefix) that name the entry. The names
// go unquoted, as the tables were made: the server folds them to the names it keeps.
QString prefixWhere(const ClausePlace &entry, const QString &columnPrefix)
{
    QStringList parts;
    for (qsizetype i = 0; i < entry.codes.size(); ++i)
        parts << columnPrefix + placeColumns()[i] + QStringLiteral(" = ?");
    return parts.join(QStringLiteral(" AND "));
}

QVariantList codeValues(const ClausePlace &entry)
{
    QVariantList values;
    for (const QString &code : entry.codes)
        values << code;
    return values;
}

// A row of a word or reference table: the place of the clause that holds its marker.
struct MarkerRow {
    qint64 id = 0;
    QString marker;
    ClausePlace holder;
};

// Whether the clause of the style at the holder's place holds the marker. Only the
// clause levels have text that can; any other level holds nothing.
bool holds(QSqlDatabase db, const ClausePlace &holder, const QString &marker)
{
    if (!isClauseLevel(holder.level))
        return false;
    auto q = execSql(db, QStringLiteral("SELECT \"%1\" FROM \"%2\" WHERE %3").arg(holder.textColumn(), holder.table(), holder.whereSql()),
                     holder.whereValues());
    while (q.next()) {
        if (q.value(0).toString().contains(marker))
            return true;
    }
    return false;
}

// The rows of table whose column set (prefix) names a place inside the entry, with the
// place of their referring clause.
QList<MarkerRow> markerRows(QSqlDatabase db, const QString &table, const QString &columnPrefix, const ClausePlace &entry)
{
    const QChar mark = table == kWords ? u'★' : u'◆';
    auto q = execSql(
        db, QStringLiteral("SELECT * FROM \"%1\" WHERE %2規程Code = ? AND %3").arg(table, columnPrefix, prefixWhere(entry, columnPrefix)),
        QVariantList{entry.document} + codeValues(entry));
    QList<MarkerRow> rows;
    while (q.next()) {
        const QSqlRecord r = q.record();
        MarkerRow row;
        row.id = r.value(QStringLiteral("ID")).toLongLong();
        row.marker = mark + r.value(QStringLiteral("Code")).toString() + mark;
        row.holder.level = levelOf(r.value(QStringLiteral("種別")).toString());
        row.holder.style = entry.style;
        row.holder.document = r.value(QStringLiteral("規程Code")).toString();
        for (int i = 0; i < placeDepth(row.holder.level); ++i)
            row.holder.codes << r.value(placeColumns()[i]).toString();
        rows << row;
    }
    return rows;
}

bool inside(const ClausePlace &place, const ClausePlace &entry)
{
    return place.document == entry.document && place.codes.mid(0, entry.codes.size()) == entry.codes;
}

} // namespace

void EntryCascade::changeCode(const QString &newCode)
{
    const int depth = int(m_entry.codes.size());
    const QString keyColumn = placeColumns()[depth - 1];
    // The marker rows are told by their clauses: find them before the clauses move.
    QList<qint64> words, references, targets;
    for (const MarkerRow &row : markerRows(m_db, kWords, QString(), m_entry)) {
        if (holds(m_db, row.holder, row.marker))
            words << row.id;
    }
    for (const MarkerRow &row : markerRows(m_db, kReferences, QString(), m_entry)) {
        if (holds(m_db, row.holder, row.marker))
            references << row.id;
    }
    for (const MarkerRow &row : markerRows(m_db, kReferences, kTargetPrefix, m_entry)) {
        if (holds(m_db, row.holder, row.marker))
            targets << row.id;
    }
    for (const Level level : levelsFrom(m_entry.level)) {
        // The entry's own table keys it by Code, the tables below by its place column.
        const QString column = level == m_entry.level ? QStringLiteral("Code") : keyColumn;
        QStringList where = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
        for (int i = 0; i < depth - 1; ++i)
            where << placeColumns()[i] + QStringLiteral(" = ?");
        where << column + QStringLiteral(" = ?");
        execSql(
            m_db,
            QStringLiteral("UPDATE \"%1\" SET %2 = ? WHERE %3").arg(dictionaryTable(level), column, where.join(QStringLiteral(" AND "))),
            QVariantList{newCode} + m_entry.whereValues());
    }
    for (const qint64 id : words)
        execSql(m_db, QStringLiteral("UPDATE 変数テーブル語句 SET %1 = ? WHERE ID = ?").arg(keyColumn), {newCode, id});
    for (const qint64 id : references)
        execSql(m_db, QStringLiteral("UPDATE 変数テーブル番号 SET %1 = ? WHERE ID = ?").arg(keyColumn), {newCode, id});
    for (const qint64 id : targets)
        execSql(m_db, QStringLiteral("UPDATE 変数テーブル番号 SET %1%2 = ? WHERE ID = ?").arg(kTargetPrefix, keyColumn), {newCode, id});
    for (const QString &table : kCompositionTables)
        execSql(m_db,
                QStringLiteral("UPDATE \"%1\" SET %2 = ? WHERE 文章形式Code = ? AND 規程Code = ? AND %3")
                    .arg(table, keyColumn, prefixWhere(m_entry, QString())),
                QVariantList{newCode} + m_entry.whereValues());
}

void EntryCascade::deleteRows()
{
    const int depth = int(m_entry.codes.size());
    QList<qint64> words, references;
    for (const MarkerRow &row : markerRows(m_db, kWords, QString(), m_entry)) {
        if (holds(m_db, row.holder, row.marker))
            words << row.id;
    }
    for (const MarkerRow &row : markerRows(m_db, kReferences, QString(), m_entry)) {
        if (holds(m_db, row.holder, row.marker))
            references << row.id;
    }
    for (const qint64 id : words)
        execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル語句 WHERE ID = ?"), {id});
    for (const qint64 id : references)
        execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル番号 WHERE ID = ?"), {id});
    for (const Level level : levelsFrom(m_entry.level)) {
        const QString column = level == m_entry.level ? QStringLiteral("Code") : placeColumns()[depth - 1];
        QStringList where = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
        for (int i = 0; i < depth - 1; ++i)
            where << placeColumns()[i] + QStringLiteral(" = ?");
        where << column + QStringLiteral(" = ?");
        execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(dictionaryTable(level), where.join(QStringLiteral(" AND "))),
                m_entry.whereValues());
    }
    // The built work data of the entry goes with it; the composition itself is refused
    // before a delete.
    for (const QString &table : kCompositionTables)
        execSql(
            m_db,
            QStringLiteral("DELETE FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ? AND %2").arg(table, prefixWhere(m_entry, QString())),
            m_entry.whereValues());
}

bool EntryCascade::isComposed() const
{
    for (const QString &table : {kArticleRowsTable, kClauseRowsTable}) {
        if (scalar(m_db,
                   QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ? AND %2")
                       .arg(table, prefixWhere(m_entry, QString())),
                   m_entry.whereValues())
                .toInt()
            > 0)
            return true;
    }
    return false;
}

bool EntryCascade::citedFromOutside() const
{
    for (const MarkerRow &row : markerRows(m_db, kReferences, kTargetPrefix, m_entry)) {
        if (!inside(row.holder, m_entry) && holds(m_db, row.holder, row.marker))
            return true;
    }
    return false;
}

} // namespace normaris::dictionary
