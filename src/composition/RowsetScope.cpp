#include "composition/RowsetScope.h"

#include "rulebase/CompositionRow.h"
#include "base/Database.h"
#include "base/SqlDialect.h"

namespace normaris {

RowsetScope RowsetScope::document(QSqlDatabase db, const QString &style, const QString &document)
{
    return RowsetScope(std::move(db), kArticleRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ?"), {style, document});
}

RowsetScope RowsetScope::documentClauses(QSqlDatabase db, const QString &style, const QString &document)
{
    return RowsetScope(std::move(db), kClauseRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ?"), {style, document});
}

RowsetScope RowsetScope::article(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                                 const QString &article)
{
    return RowsetScope(std::move(db), kClauseRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                       {style, document, chapter, article});
}

std::pair<QString, QVariantList> RowsetScope::within(Level level, const QStringList &codes) const
{
    QString where = m_where + QStringLiteral(" AND 種別 = ?");
    QVariantList keys = m_keys;
    keys << levelCode(level);
    for (qsizetype i = 0; i < codes.size(); ++i) {
        where += QStringLiteral(" AND %1 = ?").arg(placeColumns()[i]);
        keys << codes[i];
    }
    return {where, keys};
}

void RowsetScope::shiftOrder(int from, int n) const
{
    execSql(m_db, QStringLiteral("UPDATE %1 SET 順番 = 順番 + ? WHERE %2 AND 順番 >= ?").arg(m_table, m_where),
            QVariantList{n} + m_keys + QVariantList{from});
}

void RowsetScope::closeOrder(int after) const
{
    execSql(m_db,
            QStringLiteral("UPDATE %1 AS t SET 順番 = ? + r.n FROM (SELECT ID, row_number() OVER (ORDER BY 順番, ID) AS n "
                           "FROM %1 WHERE %2 AND 順番 > ?) AS r WHERE t.ID = r.ID")
                .arg(m_table, m_where),
            QVariantList{after} + m_keys + QVariantList{after});
}

void RowsetScope::renumber(Level level, const QStringList &parent, int above, int base, bool segmentsShare) const
{
    const auto [where, keys] = within(level, parent);
    // A continuation segment (結合 2, 3 …) keeps the number of the clause it continues.
    const QString counter =
        segmentsShare
            ? QStringLiteral("sum(CASE WHEN 結合 IN ('0','1') THEN 1 ELSE 0 END) OVER (ORDER BY 番号, %1, ID ROWS UNBOUNDED PRECEDING)")
                  .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("結合")))
            : QStringLiteral("row_number() OVER (ORDER BY 番号, ID)");
    execSql(m_db,
            QStringLiteral("UPDATE %1 AS t SET 番号 = ? + r.n FROM (SELECT ID, %2 AS n FROM %1 WHERE %3 AND 番号 > ?) AS r "
                           "WHERE t.ID = r.ID")
                .arg(m_table, counter, where),
            QVariantList{base} + keys + QVariantList{above});
}

void RowsetScope::bumpNumbers(Level level, const QStringList &parent, int above) const
{
    const auto [where, keys] = within(level, parent);
    execSql(m_db, QStringLiteral("UPDATE %1 SET 番号 = 番号 + 1 WHERE %2 AND 番号 > ?").arg(m_table, where), keys + QVariantList{above});
}

int RowsetScope::numberAfter(Level level, const QStringList &parent, int order) const
{
    const auto [where, keys] = within(level, parent);
    return scalar(m_db, QStringLiteral("SELECT 番号 FROM %1 WHERE %2 AND 順番 > ? ORDER BY 順番 LIMIT 1").arg(m_table, where),
                  keys + QVariantList{order})
        .toInt();
}

int RowsetScope::numberBefore(Level level, const QStringList &parent, int orderBelow) const
{
    const auto [where, keys] = within(level, parent);
    return scalar(m_db, QStringLiteral("SELECT 番号 FROM %1 WHERE %2 AND 順番 < ? ORDER BY 順番 DESC LIMIT 1").arg(m_table, where),
                  keys + QVariantList{orderBelow})
        .toInt();
}

void RowsetScope::deleteRows(Level level, const QStringList &codes) const
{
    QString where = m_where;
    QVariantList keys = m_keys;
    if (level == Level::Preamble) {
        where += QStringLiteral(" AND 種別 = '10'");
    }
    for (qsizetype i = 0; i < codes.size(); ++i) {
        where += QStringLiteral(" AND %1 = ?").arg(placeColumns()[i]);
        keys << codes[i];
    }
    execSql(m_db, QStringLiteral("DELETE FROM %1 WHERE %2").arg(m_table, where), keys);
}

bool RowsetScope::hasRow(Level level, const QStringList &codes) const
{
    const auto [where, keys] = within(level, codes);
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(m_table, where), keys).toInt() > 0;
}

void setSubtreeWords(QSqlDatabase db, const QString &document, Level level, const QStringList &place, bool selected)
{
    QString where = QStringLiteral("規程Code = ? AND 選択フラグ = ?");
    QVariantList keys = {document, selected ? 0 : 1};
    QStringList levels;
    if (level == Level::Preamble) {
        levels << QStringLiteral("'10'");
    } else {
        for (qsizetype i = 0; i < place.size(); ++i) {
            where += QStringLiteral(" AND %1 = ?").arg(placeColumns()[i]);
            keys << place[i];
        }
        for (int l = std::max(int(level), int(Level::Paragraph)); l <= int(Level::Iroha); ++l)
            levels << u'\'' + QString::number(l) + u'\'';
    }
    execSql(db, QStringLiteral("UPDATE 変数テーブル語句 SET 選択フラグ = ? WHERE %1 AND 種別 IN (%2)").arg(where, levels.join(u',')),
            QVariantList{selected ? 1 : 0} + keys);
}

} // namespace normaris
