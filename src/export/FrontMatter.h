#pragma once
// The pages before the body of a set of rules: the cover with the document's
// formal name and the company's name, and the table of contents of its
// chapters and articles (with no page numbers).

#include "rulebase/CompositionRow.h"
#include "document/Typist.h"

namespace normaris {

// The title's size shrinks as the formal name grows, so that it stays on one line.
void typeCover(Typist &typist, const QString &formalName, const QString &companyName);

// rows: the document's rows; those of 規程, 章 and 条 make the table.
void typeTableOfContents(Typist &typist, const QList<CompositionRow> &rows, const QString &formalName);

} // namespace normaris
