#pragma once
// The standard draft a new company starts from: the rows a user would have made by
// adding every clause of the draft, and the selection flags those adds leave.
//
// Only the である調 file of a document marked 標準案 comes composed. The flags also
// remember a default choice below each clause, as a release would leave them: a
// clause below 章 is selected unless it is stock (標準外), so that adding it later
// brings its usual paragraphs and items along.

#include "seed/SeedSource.h"

#include <QSqlDatabase>

namespace normaris::seed {

bool composesStandardDraft(const Document &doc);
// The dictionary's 選択フラグ of the clause in the seed.
bool selectedInSeed(const Document &doc, const Clause &clause);
// Writes the composition rows of the draft and selects the words of its clauses.
void writeStandardDraft(QSqlDatabase db, const Document &doc);

} // namespace normaris::seed
