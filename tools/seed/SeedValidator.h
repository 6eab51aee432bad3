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

// The limit of one segment, in CP932 bytes.
constexpr int kSegmentLimit = 250;

} // namespace normaris::seed
