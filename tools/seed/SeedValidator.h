#pragma once
// Checks the dictionary sources before anything is written: every marker has its
// row and every row its marker, references point at clauses that exist, codes are
// in the standard range and unique, segments fit their column, and the two prose
// styles of a document have the same structure and the same codes in the same places.

#include "seed/SeedSource.h"

namespace normaris::seed {

// Fills in the chapter of a reference target given by its article alone.
void resolveReferences(Dictionary &dictionary, QList<SourceError> &errors);

QList<SourceError> validate(const Dictionary &dictionary);

// The checks that hold for one document's text on its own (a text given to the
// dictionary, user codes included): no place given twice, and every marker with its
// 語句 or 参照 line in its clause and every such line with its marker.
QList<SourceError> checkEntries(const Document &document);

// The limit of one segment, in CP932 bytes.
constexpr int kSegmentLimit = 250;

} // namespace normaris::seed
