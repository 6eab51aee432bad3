#pragma once
// The lists of the import's third step, read from the source: at each level the
// entries under the chosen parents, and at the level being imported only the
// user's own (codes from 70, for 条 from 7000), each clause in segments once.

#include "import/ImportPlace.h"
#include "base/CodeAndName.h"

#include <QSqlDatabase>

namespace normaris {

// The entries of `level` under parents (規程Code first, one per level above it).
// With ownLevel, only the user's own codes.
QList<CodeAndName> importChoices(QSqlDatabase source, const QString &style, Level level, const QStringList &parents, bool ownLevel);

// The name of the style in the source's 文章形式 table.
QString styleName(QSqlDatabase source, const QString &style);

// The captions and guard texts of the third step, by level.
QString importLevelCaption(Level level);
QString importLevelPrompt(Level level); // Label11
QString importGuardText(Level level);

} // namespace normaris
