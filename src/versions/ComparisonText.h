#pragma once
// The plain rendering of a 新旧対照表, for tests and scripts: the title lines, then
// per row of the table the side after the change and the side before it, the
// changed characters in braces "{u:…}" as the text records of finished documents
// mark their formats, then the closing note and the renumbered articles.

#include "versions/ComparisonTable.h"

namespace normaris {

QString comparisonText(const ComparisonTable &table);

// The lines of one cell, a clause indented a full-width blank for each level
// below the 項; a text over several lines continues at the same indent.
QStringList cellLines(const ComparisonCell &cell, QString (*mark)(const QString &text, bool changed));

// 「令和８年４月１日施行」, or 「施行日なし」.
QString effectiveCaption(const VersionHeader &version);

} // namespace normaris
