#include "export/LoneItems.h"

namespace normaris {

LoneItems::LoneItems(const QList<CompositionRow> &rows)
{
    for (const CompositionRow &row : rows) {
        if (row.level >= Level::Item && row.level <= Level::Iroha && row.number > 1)
            m_listsOfMore.insert(listKey(row.level, row));
    }
}

bool LoneItems::isAlone(Level level, const CompositionRow &row) const { return !m_listsOfMore.contains(listKey(level, row)); }

QString LoneItems::listKey(Level level, const CompositionRow &row)
{
    const int parentColumns = placeDepth(level) - 1;
    return levelCode(level) + u'|' + row.codes.mid(0, parentColumns).join(u'|');
}

QString LoneItems::warning(Level level, bool agreement)
{
    const QString entry = level == Level::Item ? QStringLiteral("号") : level == Level::Maru ? QStringLiteral("①") : QStringLiteral("イ");
    const QString opening = agreement ? QStringLiteral("          ◆◆") : QStringLiteral("          ◆◆◆");
    return opening + QStringLiteral("「") + entry + QStringLiteral("」が１つだけです（本行は必ず削除してください）◆◆ ");
}

} // namespace normaris
