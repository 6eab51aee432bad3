#include "export/DictionaryTexts.h"

#include "base/Database.h"

#include <QSqlQuery>

namespace normaris {

DictionaryTexts::DictionaryTexts(QSqlDatabase db, const QString &style, const QString &document)
{
    for (Level level : {Level::Document, Level::Chapter, Level::Article, Level::Paragraph, Level::Item, Level::Maru,
                        Level::Iroha, Level::Preamble})
        load(db, level, style, document);
}

QString DictionaryTexts::key(Level level, const QStringList &place, const QString &join)
{
    return levelCode(level) + u'|' + place.join(u'|') + u'|' + join;
}

void DictionaryTexts::load(QSqlDatabase db, Level level, const QString &style, const QString &document)
{
    // Each level: its place columns, its text column, and whether it has segments.
    QStringList place;
    QString text;
    QString filter = QStringLiteral("文章形式Code = ? AND ");
    QVariantList binds = {style, document};
    bool segmented = true;
    switch (level) {
    case Level::Document:
        text = QStringLiteral("正式名称");
        filter += QStringLiteral("Code = ?");
        segmented = false;
        break;
    case Level::Preamble:
        text = QStringLiteral("前文");
        filter += QStringLiteral("規程Code = ? AND Code = '01'");
        break;
    case Level::Chapter:
        place = QStringList{QStringLiteral("Code")};
        text = QStringLiteral("章");
        filter += QStringLiteral("規程Code = ?");
        segmented = false;
        break;
    case Level::Article:
        place = QStringList{QStringLiteral("章Code"), QStringLiteral("Code")};
        text = QStringLiteral("正式名称");
        filter += QStringLiteral("規程Code = ?");
        segmented = false;
        break;
    default:
        place = placeColumns().mid(0, placeDepth(level) - 1) << QStringLiteral("Code");
        text = dictionaryTable(level);
        filter += QStringLiteral("規程Code = ?");
        break;
    }
    QStringList columns;
    for (const QString &c : place)
        columns << u'"' + c + u'"';
    columns << u'"' + text + u'"';
    if (segmented)
        columns << QStringLiteral("結合") << QStringLiteral("改行");
    RowReader q = execSql(db, QStringLiteral("SELECT %1 FROM \"%2\" WHERE %3 ORDER BY %4")
                                  .arg(columns.join(u','), dictionaryTable(level), filter,
                                       segmented ? QStringLiteral("CAST(結合 AS INTEGER), ID") : QStringLiteral("ID")),
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
