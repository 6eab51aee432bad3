#pragma once
// The two tables of markers that an import carries along with the clauses: the
// embedded words and the reference numbers. The import treats them alike but for
// this table.

#include <QString>
#include <array>

namespace normaris {

struct VariableTable {
    const char16_t *table;
    char16_t marker;              // ★nnnn★ or ◆nnnn◆
    const char16_t *conflictName; // in the duplicate-code message
    int copiedColumns;            // ordinals 1 to this are copied; later ones take the table's defaults
};

inline constexpr std::array<VariableTable, 2> kVariableTables = {{
    {u"変数テーブル語句", u'★', u"埋込語句", 12},
    {u"変数テーブル番号", u'◆', u"参照条文番号", 19},
}};

} // namespace normaris
