#pragma once
// A list of 号, ① or イ with a single entry is bad drafting, and the draft says so
// with a red line under it. A list has more than one entry when a row of its level
// under the same parent is numbered above 1. The lists that have are collected once
// from the document's rows, so that the test after each typed row costs nothing.

#include "rulebase/CompositionRow.h"

#include <QSet>

namespace normaris {

class LoneItems {
public:
    explicit LoneItems(const QList<CompositionRow> &rows);

    // True when the list of level under the parent of row (its place columns above
    // the level) has no entry numbered above 1.
    bool isAlone(Level level, const CompositionRow &row) const;

    // The red line, worded for a set of rules or for an agreement.
    static QString warning(Level level, bool agreement);

private:
    static QString listKey(Level level, const CompositionRow &row);
    QSet<QString> m_listsOfMore;
};

} // namespace normaris
