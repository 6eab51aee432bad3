#pragma once
// The company settings that a 基本語句 segment can stand for, and the record of the
// choice in 基本語句更新後 (the clause row itself is written by the segment update).

#include "base/Levels.h"
#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace normaris::dictionary {

struct BasicPhrase {
    QString name; // in the chooser
    QString code; // ☆code☆ in the clause
    QString note; // on the form
};

// The three choices of the 前文 editors.
const QList<BasicPhrase> &basicPhrases();
// The name of a code, or empty for a code outside the list.
QString basicPhraseName(const QString &code);

// The choices of a 基本語句 segment at a level: at the levels 章 to イ～ネ every setting
// that substitution knows (☆0001☆ to ☆0016☆, and ☆0030☆ the effective date), by its
// caption; at the 前文 the three above.
const QList<BasicPhrase> &basicPhrasesAt(Level level);
// The name of a code among the choices of the level, or empty.
QString basicPhraseName(Level level, const QString &code);

// 更新 of the chooser: refuses an empty choice, then records it for the segment in one
// transaction. code holds the code chosen so far and takes the new one.
Outcome chooseBasicPhrase(Prompt &prompt, QSqlDatabase db, const QString &segmentNumber, QString &code, const QString &choice);
// The same among the choices of a level.
Outcome chooseBasicPhrase(Prompt &prompt, QSqlDatabase db, Level level, const QString &segmentNumber, QString &code, const QString &choice);

} // namespace normaris::dictionary
