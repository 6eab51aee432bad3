#pragma once
// The fields of the dictionary's record forms, the document master and the editors of
// the levels below it: a code checked against the level's ranges, and names. One set
// of checks and messages serves every level; what differs comes from the level table.

#include "base/Levels.h"
#include "base/Prompt.h"

#include <QString>
#include <functional>

namespace normaris::dictionary {

inline const QString kCodeLabel = QStringLiteral("･･･Code");
inline const QString kEmptyField = QStringLiteral("未入力は許されません。");
inline const QString kFormalNameLabel = QStringLiteral("･･･正式名称");

// "70～99" or "7000～9999": the user's codes of the level.
QString userCodeRange(Level level);
// "01～69" or "0001～6999": the codes that came with the dictionary.
QString standardCodeRange(Level level);

// The code field: not empty, a short code padded with zeros to the level's width ("7"
// becomes "07", for a 条 "0007"), digits only, a new code in the user's range, a
// standard code unchanged on an edit (code then goes back to savedCode), and not taken
// by another entry. code holds the result.
bool checkCodeField(Prompt &prompt, Level level, QString &code, bool editing, const QString &savedCode,
                    const std::function<bool(const QString &code)> &taken);

// A name or formal name: no control characters, not empty, at most 80 bytes.
bool checkNameField(Prompt &prompt, const QString &name, const QString &label);

} // namespace normaris::dictionary
