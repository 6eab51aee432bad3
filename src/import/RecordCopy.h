#pragma once
// Copies the chosen entry and everything under it from the source into the current
// company, inside the caller's transaction: the dictionary tables from the entry's level down,
// then the words and references that the copied text uses. Nothing is renumbered but
// the word and reference codes that a MarkerRenumbering gives new codes, in the rows
// and in the markers of the copied text.
//
// The seven entry points differ only in the tables they copy, which the level table
// gives in document order from the entry's level down:
//
//   syori01_copy  規程, 前文, 章, 条, 項, 号, 号の細分丸, 号の細分イロハ
//   syori02_copy  章 … 号の細分イロハ
//   …
//   syori07_copy  号の細分イロハ
//
// each followed by 変数テーブル語句 and 変数テーブル番号.
//
// A clause row already in the current company (same keys and segment) is skipped,
// and the current company keeps its own. An imported 規程 starts unselected. A source
// of the older form, without 結合種別, gets the kind of each segment from its text.

#include "import/MarkerRenumbering.h"
#include "import/SourceEntry.h"

namespace normaris {

class RecordCopy {
public:
    RecordCopy(QSqlDatabase target, QSqlDatabase source, MarkerRenumbering renumbering = {})
        : m_target(std::move(target)), m_source(std::move(source)), m_renumbering(std::move(renumbering))
    {
    }

    void syori01_copy(const ImportPlace &place) { copy(place, Level::Document); }
    void syori02_copy(const ImportPlace &place) { copy(place, Level::Chapter); }
    void syori03_copy(const ImportPlace &place) { copy(place, Level::Article); }
    void syori04_copy(const ImportPlace &place) { copy(place, Level::Paragraph); }
    void syori05_copy(const ImportPlace &place) { copy(place, Level::Item); }
    void syori06_copy(const ImportPlace &place) { copy(place, Level::Maru); }
    void syori07_copy(const ImportPlace &place) { copy(place, Level::Iroha); }

    // The entry point by the place's own level. Throws DbError; the caller's
    // transaction then undoes what was copied.
    void copy(const ImportPlace &place) { copy(place, place.level); }

private:
    void copy(const ImportPlace &place, Level level);
    void copyClauses(const SourceEntry &entry, Level level);
    void copyMarkers(const SourceEntry &entry, const VariableTable &table);

    QSqlDatabase m_target;
    QSqlDatabase m_source;
    MarkerRenumbering m_renumbering;
};

} // namespace normaris
