#pragma once
// One row of a finished document as it was printed: where it stands in the
// document (its level and place codes, and its segment in a chain), the label it
// was printed with (第５条, ２, (3), ①…) and its final text after the label.

#include "base/Levels.h"

#include <QList>
#include <QStringList>

namespace normaris {

struct PrintedRow {
    Level level = Level::Document;
    QStringList codes = QStringList(6); // 章Code … 号の細分イロハCode
    QString segment;                    // 結合: empty for a clause of one row
    bool newLine = false;               // the row started a line of its own within its clause
    QString label;
    QString text;

    bool operator==(const PrintedRow &) const = default;
};

using PrintedRows = QList<PrintedRow>;

} // namespace normaris
