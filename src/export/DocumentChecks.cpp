#include "export/DocumentChecks.h"

#include "export/DocumentTexts.h"

#include <algorithm>

namespace normaris {

bool hasClauses(const QList<CompositionRow> &rows)
{
    return std::any_of(rows.begin(), rows.end(),
                       [](const CompositionRow &row) { return isClauseLevel(row.level) || row.level == Level::Preamble; });
}

const CompositionRow *firstOutOfOrder(const QList<CompositionRow> &rows)
{
    // Chapters and articles each count through the whole document.
    const Level numbered[] = {Level::Chapter, Level::Article};
    int expected[std::size(numbered)] = {};
    for (const CompositionRow &row : rows) {
        if (isChapterless(row))
            continue;
        for (std::size_t i = 0; i < std::size(numbered); ++i) {
            if (row.level == numbered[i] && row.number != ++expected[i])
                return &row;
        }
    }
    return nullptr;
}

} // namespace normaris
