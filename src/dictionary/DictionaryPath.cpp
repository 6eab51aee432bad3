#include "dictionary/DictionaryPath.h"

#include "base/Database.h"

#include <QSqlQuery>

namespace normaris::dictionary {

namespace {

// "文章形式Code = ? AND 規程Code = ? AND 章Code = ? …" for the parents of a level.
QString parentWhere(Level level, const QStringList &parents, QVariantList &values, const QString &style)
{
    QStringList where = {QStringLiteral("文章形式Code = ?")};
    values << style;
    for (qsizetype i = 0; i < parents.size(); ++i) {
        where << (i == 0 ? QStringLiteral("規程Code") : placeColumns()[i - 1]) + QStringLiteral(" = ?");
        values << parents[i];
    }
    // Only the head of a chain, or a clause of one row, stands for a split clause.
    if (levelInfo(level).segmented)
        where << QStringLiteral("結合 <= '1'");
    return where.join(QStringLiteral(" AND "));
}

} // namespace

QList<CodeAndName> DictionaryPath::choices(Level level, const QStringList &parents) const
{
    QVariantList values;
    const QString where = parentWhere(level, parents, values, m_style);
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT Code, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(Code AS INTEGER)")
                              .arg(textColumn(level), dictionaryTable(level), where),
                          values);
    QList<CodeAndName> list;
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

bool DictionaryPath::stands(Level level, const QStringList &parents, const QString &code, const QString &name) const
{
    QVariantList values;
    const QString where = parentWhere(level, parents, values, m_style);
    values << code << name;
    return scalar(m_db,
                  QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2 AND Code = ? AND \"%3\" = ?")
                      .arg(dictionaryTable(level), where, textColumn(level)),
                  values)
               .toInt()
           > 0;
}

} // namespace normaris::dictionary
