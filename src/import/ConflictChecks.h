#pragma once
// Before anything is copied, the checks that the chosen entry can be placed in the
// current company. They read both companies and change nothing. Each refusal is
// shown and makes the check return true.
//
// The seven entry points differ only by level, through the level table:
//
//   syori01_check  規程             own-code test only
//   syori02_check  章               parent 規程 first
//   syori03_check  条               parent 章
//   syori04_check  項               parent 条
//   syori05_check  号               parent 項
//   syori06_check  ①～⑳            parent 号
//   syori07_check  イ～ネ           parent ①～⑳
//
// then, for every level, the words and the references that the entry's text uses
// and the current company's document already has.

#include "import/MarkerRenumbering.h"
#include "import/SourceEntry.h"
#include "base/Prompt.h"

namespace normaris {

class ConflictChecks {
public:
    // With MarkerCodes::Renumber, codes of words and references that the document has
    // already are no refusal as long as free codes are left for them.
    ConflictChecks(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, MarkerCodes codes = MarkerCodes::Keep)
        : m_target(std::move(target)), m_source(std::move(source)), m_prompt(prompt), m_codes(codes)
    {
    }

    // Each is true when the import is refused (ImportRefused).
    bool syori01_check(const ImportPlace &place) { return refuses(place, Level::Document); }
    bool syori02_check(const ImportPlace &place) { return refuses(place, Level::Chapter); }
    bool syori03_check(const ImportPlace &place) { return refuses(place, Level::Article); }
    bool syori04_check(const ImportPlace &place) { return refuses(place, Level::Paragraph); }
    bool syori05_check(const ImportPlace &place) { return refuses(place, Level::Item); }
    bool syori06_check(const ImportPlace &place) { return refuses(place, Level::Maru); }
    bool syori07_check(const ImportPlace &place) { return refuses(place, Level::Iroha); }

    // The entry point by the place's own level.
    bool refuses(const ImportPlace &place) { return refuses(place, place.level); }

private:
    bool refuses(const ImportPlace &place, Level level);
    bool parentMissing(const ImportPlace &place);
    bool ownCodeTaken(const ImportPlace &place);
    bool markerTaken(const SourceEntry &entry, const VariableTable &table);

    QSqlDatabase m_target;
    QSqlDatabase m_source;
    Prompt &m_prompt;
    MarkerCodes m_codes;
};

} // namespace normaris
