#pragma once
// The 新旧対照表 as a .docx: A4 lying, the title, the company and the two effective
// dates, then the table of 改正後 and 改正前 with its header row repeated on every
// page, the changed characters underlined, the closing note, the renumbered
// articles, and the page number at the foot.

#include "document/DocumentModel.h"
#include "versions/ComparisonTable.h"

namespace normaris {

// The blocks of the document, under comparisonPageSetup().
QList<model::Block> comparisonBlocks(const ComparisonTable &table);
model::PageSetup comparisonPageSetup();

// Throws Failure when the file can't be written.
void saveComparisonDocx(const ComparisonTable &table, const QString &path);

} // namespace normaris
