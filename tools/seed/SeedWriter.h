#pragma once
// Writes a checked dictionary into a new seed file.

#include "seed/SeedSource.h"

namespace normaris::seed {

// Writes the seed file at path (replacing it only once it is complete). Throws Failure.
void writeSeed(const Dictionary &dictionary, const QString &path);

// Reads, checks and writes in one go; the problems found, or none when the file is written.
QList<SourceError> generateSeed(const QString &sourceFolder, const QString &path);

} // namespace normaris::seed
