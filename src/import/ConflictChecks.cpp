#include "import/ConflictChecks.h"

#include "base/BusyCursor.h"
#include "base/Database.h"

namespace normaris {

namespace {

const QString kRefusedTitle = QStringLiteral("処理不可");
const QString kDuplicateTitle = QStringLiteral("Code重複");

QString caption(Level level) { return levelCaption(level); }

} // namespace

bool ConflictChecks::refuses(const ImportPlace &given, Level level)
{
    BusyCursor busy;
    ImportPlace place = given;
    place.level = level;
    if (level != Level::Document && parentMissing(place))
        return true;
    if (ownCodeTaken(place))
        return true;
    const SourceEntry entry(m_source, place);
    if (m_codes == MarkerCodes::Renumber) {
        if (MarkerRenumbering::plan(m_target, entry))
            return false;
        m_prompt.error(kDuplicateTitle, QStringLiteral("自社データに振り直せる空きCodeがないためデータ取込を中止します。"));
        return true;
    }
    for (const VariableTable &table : kVariableTables)
        if (markerTaken(entry, table))
            return true;
    return false;
}

bool ConflictChecks::parentMissing(const ImportPlace &place)
{
    const Level parent = place.parent();
    const KeyFilter filter = keyFilter(parent, place.style, place.codes.mid(0, place.depth()));
    const bool found =
        scalar(m_target, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(dictionaryTable(parent), filter.where()), filter.values)
            .toInt()
        > 0;
    if (found)
        return false;
    m_prompt.error(kRefusedTitle, QStringLiteral("自社データに") + caption(parent) + QStringLiteral("Code：") + place.code(parent)
                                      + QStringLiteral("が存在しないためデータ取込を中止します。"));
    return true;
}

bool ConflictChecks::ownCodeTaken(const ImportPlace &place)
{
    const KeyFilter filter = keyFilter(place.level, place.style, place.codes);
    const bool found =
        scalar(m_target, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(dictionaryTable(place.level), filter.where()),
               filter.values)
            .toInt()
        > 0;
    if (!found)
        return false;
    const LevelInfo &info = levelInfo(place.level);
    m_prompt.error(kDuplicateTitle, QStringLiteral("自社データに") + caption(place.level)
                                        + QStringLiteral("の重複Codeがあるためデータ取込を中止します。\n")
                                        + QString::fromUtf16(info.duplicateName) + QStringLiteral("の重複Code：") + place.ownCode());
    return true;
}

bool ConflictChecks::markerTaken(const SourceEntry &entry, const VariableTable &table)
{
    const QString document = entry.place().code(Level::Document);
    for (const QSqlRecord &row : entry.usedRows(table)) {
        const QString code = row.value(QStringLiteral("Code")).toString();
        const bool taken =
            scalar(m_target,
                   QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 規程Code = ? AND Code = ?").arg(QString::fromUtf16(table.table)),
                   {document, code})
                .toInt()
            > 0;
        if (!taken)
            continue;
        const QString name = QString::fromUtf16(table.conflictName);
        m_prompt.error(kDuplicateTitle, QStringLiteral("自社データに") + name
                                            + QStringLiteral("の重複Codeがあるためデータ取込を中止します。\n") + name
                                            + QStringLiteral("の重複Code：") + code);
        return true;
    }
    return false;
}

} // namespace normaris
