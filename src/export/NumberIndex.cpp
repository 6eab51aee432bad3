#include "export/NumberIndex.h"

#include "rulebase/CompositionRow.h"
#include "base/Database.h"

#include <QSqlQuery>

namespace normaris {

namespace {

QString keyOf(const QString &document, Level level, const QStringList &place, const QString &join)
{
    return document + u'|' + levelCode(level) + u'|' + place.mid(0, placeDepth(level)).join(u'|') + u'|' + join;
}

} // namespace

void NumberIndex::load(const QString &document)
{
    m_loaded.insert(document);
    // Every style: a code is built in one style only.
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT 種別, 番号, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合 "
                                         "FROM %1 WHERE 規程Code = ? ORDER BY ID")
                              .arg(kOutputRowsTable),
                          {document});
    while (q.next()) {
        const Level level = levelOf(q.value(0).toString());
        QStringList place;
        for (int i = 2; i < 8; ++i)
            place << q.value(i).toString();
        const int number = q.value(1).toInt();
        // The first row at a place answers for the clause; all its segments share one number.
        const QString any = keyOf(document, level, place, QString());
        if (!m_numbers.contains(any))
            m_numbers.insert(any, number);
        const QString segment = keyOf(document, level, place, q.value(8).toString());
        if (!m_numbers.contains(segment))
            m_numbers.insert(segment, number);
    }
}

std::optional<int> NumberIndex::number(const QString &document, Level level, const QStringList &place, const QString &join)
{
    if (!m_loaded.contains(document))
        load(document);
    const auto it = m_numbers.constFind(keyOf(document, level, place, join));
    if (it == m_numbers.cend())
        return std::nullopt;
    return *it;
}

} // namespace normaris
