#pragma once
// Copies the chosen entry and everything under it from the source into the current
// company, in one transaction: the dictionary tables from the entry's level down,
// then the words and references that the copied text uses. Nothing is renumbered.
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

#include "import/SourceEntry.h"
#include "base/Prompt.h"

namespace normaris {

class RecordCopy {
public:
    RecordCopy(QSqlDatabase target, QSqlDatabase source, Prompt &prompt)
        : m_target(std::move(target)), m_source(std::move(source)), m_prompt(prompt)
    {
    }

    bool syori01_copy(const ImportPlace &place) { return copy(place, Level::Document); }
    bool syori02_copy(const ImportPlace &place) { return copy(place, Level::Chapter); }
    bool syori03_copy(const ImportPlace &place) { return copy(place, Level::Article); }
    bool syori04_copy(const ImportPlace &place) { return copy(place, Level::Paragraph); }
    bool syori05_copy(const ImportPlace &place) { return copy(place, Level::Item); }
    bool syori06_copy(const ImportPlace &place) { return copy(place, Level::Maru); }
    bool syori07_copy(const ImportPlace &place) { return copy(place, Level::Iroha); }

    // The entry point by the place's own level. True when copied and reported; false
    // when rolled back (the user has been told).
    bool copy(const ImportPlace &place) { return copy(place, place.level); }

private:
    bool copy(const ImportPlace &place, Level level);
    void copyClauses(const SourceEntry &entry, Level level);
    void copyMarkers(const SourceEntry &entry, const VariableTable &table);

    QSqlDatabase m_target;
    QSqlDatabase m_source;
    Prompt &m_prompt;
};

} // namespace normaris
