#include "export/DictionaryTexts.h"

#include "base/Database.h"
#include "base/SqlDialect.h"

#include <QSqlQuery>

namespace normaris {

DictionaryTexts::DictionaryTexts(QSqlDatabase db, const QString &style, const QString &document)
{
    for (const LevelInfo &info : kLevels) {
        if (*info.table)
            load(db, info.level, style, document);
    }
}

QString DictionaryTexts::key(Level level, const QStringList &place, const QString &join)
{
    return levelCode(level) + u'|' + place.join(u'|') + u'|' + join;
}

void DictionaryTexts::load(QSqlDatabase db, Level level, const QString &style, const QString &document)
{
    // The level's row of the level table: its place columns, its text column, and
    // whether it has segments.
    const LevelInfo &info = levelInfo(level);
    QStringList place;
    if (info.placeDepth > 0)
        place = placeColumns().mid(0, info.placeDepth - 1) << QStringLiteral("Code");
    const QString text = QString::fromUtf16(info.bodyColumn);
    QString filter = QStringLiteral("文章形式Code = ? AND %1 = ?").arg(QString::fromUtf16(info.documentKey));
    QVariantList binds = {style, document};
    if (*info.fixedCode) {
        filter += QStringLiteral(" AND Code = ?");
        binds << QString::fromUtf16(info.fixedCode);
    }
    const bool segmented = info.segmented;
    QStringList columns = place;
    columns << text;
    if (segmented)
        columns << QStringLiteral("結合") << QStringLiteral("改行");
    RowReader q =
        execSql(db,
                QStringLiteral("SELECT %1 FROM %2 WHERE %3 ORDER BY %4")
                    .arg(columns.join(u','), dictionaryTable(level), filter,
                         segmented ? SqlDialect::of(db).integerOf(QStringLiteral("結合")) + QStringLiteral(", ID") : QStringLiteral("ID")),
                binds);
    const int n = int(place.size());
    while (q.next()) {
        QStringList codes;
        for (int i = 0; i < n; ++i)
            codes << q.value(i).toString();
        DictionaryText row{q.value(n).toString(), segmented && q.value(n + 2).toBool()};
        // A clause in one piece is looked up without its segment number; so is a
        // chain, which then gives its first row (the rows come in segment order).
        const QString whole = key(level, codes, QString());
        if (!m_rows.contains(whole))
            m_rows.insert(whole, row);
        if (segmented)
            m_rows.insert(key(level, codes, q.value(n + 1).toString()), row);
    }
}

std::optional<DictionaryText> DictionaryTexts::find(Level level, const QStringList &place, const QString &join) const
{
    const auto it = m_rows.constFind(key(level, place, join));
    if (it == m_rows.cend())
        return std::nullopt;
    return *it;
}

} // namespace normaris
