#pragma once
// 結合種別 of a clause segment, read from its text: a segment that is exactly one
// marker holds an embedded word (1), a reference (2) or a basic word (3); anything
// else is text (0).
// Files of the older form have no 結合種別 column, so a segment taken from one gets
// its kind this way.

#include <QString>

namespace normaris {

QString segmentKind(const QString &text);

} // namespace normaris
