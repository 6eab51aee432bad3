#pragma once
// What a document's work rows must show before it is typed: some text to type,
// and chapters and articles numbered 1, 2, 3 … in document order.

#include "rulebase/CompositionRow.h"

namespace normaris {

// Whether any row is a clause (前文, 項 and below): the text of the document.
bool hasClauses(const QList<CompositionRow> &rows);

// The first 章 or 条 whose number is not the next of its level in document order
// (a 章 of code 00 has none); null when all run 1, 2, 3 ….
const CompositionRow *firstOutOfOrder(const QList<CompositionRow> &rows);

} // namespace normaris
