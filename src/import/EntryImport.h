#pragma once
// データ取込 of one entry: the level's check, the test of the source's values, then
// the level's copy. The current company is never written unless all have passed.

#include "import/ImportPlace.h"
#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

Outcome importEntry(QSqlDatabase target, QSqlDatabase source, Prompt &prompt, const ImportPlace &place);

} // namespace normaris
