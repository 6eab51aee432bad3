#pragma once
// Compares two versions of one document. Articles are matched by their 条 codes
// and, within an article, clauses by their 項, 号, ① and イ codes, so that a
// number that moved is no change: an article whose text is the same under a new
// number is listed as renumbered, not as a row of the table. The preamble and the
// chapter headings are matched the same way, by 前文 and by 章 code.

#include "versions/ComparisonTable.h"

namespace normaris {

ComparisonTable compareVersions(const Version &older, const Version &newer);

} // namespace normaris
