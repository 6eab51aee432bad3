#pragma once
// データ取込 of one entry: the level's check, the test of the source's values, then
// the level's copy. The current company is never written unless all have passed.

#include "import/ImportPlace.h"
#include "import/MarkerRenumbering.h"
#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

// With MarkerCodes::Renumber the conflicting word and reference codes get new ones,
// and the message of completion lists them.
Outcome importEntry(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, const ImportPlace &place,
                    MarkerCodes codes = MarkerCodes::Keep);

// Whether the import is refused only for word and reference codes that renumbering
// would free: what コードを振り直して取り込む offers to do. Shows nothing, changes nothing.
bool importRenumberable(QSqlDatabase target, QSqlDatabase source, const ImportPlace &place);

} // namespace normaris
