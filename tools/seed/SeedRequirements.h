#pragma once
// The table of legal requirements (data/法令要件.tsv) checked against the dictionary
// it speaks of: every document, place and word it names must be in both prose styles.
// A problem fails the build with the table's file and line.

#include "seed/SeedSource.h"

namespace normaris::seed {

inline const QString kRequirementsFile = QStringLiteral("法令要件.tsv");

// Checks the table's text (read from file) against the dictionary.
QList<SourceError> checkRequirements(const Dictionary &dictionary, const QString &file, const QString &text);

} // namespace normaris::seed
