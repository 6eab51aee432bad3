#pragma once
// The releases of the dictionary at build time. The seed file's fingerprints must be
// those recorded for its release's name in data/releases/<name>.tsv: a change of the
// dictionary's content without a new release name, a release file missing or damaged
// fails the build. Recording (the build's record-release target) writes the file of a
// new release; it never rewrites a recorded one.

#include "seed/SeedSource.h"

namespace normaris::seed {

enum class ReleaseMode { Check, Record };

// Checks (or first records) the release of the seed file at seedPath against
// sourceFolder/releases, then copies every release file to releases/ of the program folder (above the seed's).
QList<SourceError> settleRelease(const QString &sourceFolder, const QString &seedPath, ReleaseMode mode);

} // namespace normaris::seed
