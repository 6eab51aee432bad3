#pragma once
// Making a folder ready to serve as AppPath: a root given on the command line
// gets the seed file and the help pages of the program's own folder.

#include <QString>

namespace normaris {

// Lays out root from programDir when root has no seed file yet. Throws Failure.
void prepareProgramFolder(const QString &root, const QString &programDir);

} // namespace normaris
