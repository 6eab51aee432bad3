#include "dictionary/ClausePlace.h"

#include "base/Database.h"
#include "rulebase/CompositionRow.h"

namespace normaris::dictionary {

namespace {

// The key columns of a clause table below the document: the place columns of the
// levels above the clause, then its own Code.
QStringList ownKeyColumns(const ClausePlace &place)
{
    QStringList columns = placeColumns().mid(0, qMax(0, int(place.codes.size()) - 1));
    columns << QStringLiteral("Code");
    return columns;
}

} // namespace

QStringList ClausePlace::keyColumns() const
{
    return QStringList{QStringLiteral("文章形式Code"), QStringLiteral("規程Code")} + ownKeyColumns(*this);
}

QString ClausePlace::whereSql() const
{
    QStringList parts;
    for (const QString &column : keyColumns())
        parts << column + QStringLiteral(" = ?");
    return parts.join(QStringLiteral(" AND "));
}

QString ClausePlace::siblingsWhereSql() const
{
    QStringList parts;
    const QStringList keys = keyColumns();
    for (qsizetype i = 0; i + 1 < keys.size(); ++i)
        parts << keys[i] + QStringLiteral(" = ?");
    return parts.join(QStringLiteral(" AND "));
}

QVariantList ClausePlace::siblingsWhereValues() const
{
    QVariantList values = whereValues();
    values.removeLast();
    return values;
}

bool ClausePlace::isComposed(QSqlDatabase db) const
{
    const QString table = workingTable(level);
    QStringList where = {QStringLiteral("種別 = ?"), QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
    QVariantList values = {levelCode(level), style, document};
    for (int i = 0; i < placeDepth(level); ++i) {
        where << placeColumns()[i] + QStringLiteral(" = ?");
        values << codes.value(i);
    }
    return scalar(db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(table, where.join(QStringLiteral(" AND "))), values)
               .toInt()
           > 0;
}

QVariantList ClausePlace::whereValues() const
{
    QVariantList values = {style, document};
    for (const QString &code : codes)
        values << code;
    return values;
}

QString ClausePlace::variableWhereSql() const
{
    // The word table names the places of the clause with the place columns; a 前文
    // has none (its rows are told by 種別 alone).
    QStringList parts = {QStringLiteral("規程Code = ?")};
    for (int i = 0; i < placeDepth(level); ++i)
        parts << placeColumns()[i] + QStringLiteral(" = ?");
    parts << QStringLiteral("種別 = ?");
    return parts.join(QStringLiteral(" AND "));
}

QVariantList ClausePlace::variableWhereValues() const
{
    QVariantList values = {document};
    for (int i = 0; i < placeDepth(level); ++i)
        values << codes.value(i);
    values << levelCode(level);
    return values;
}

} // namespace normaris::dictionary
