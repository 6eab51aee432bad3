#pragma once
// The company settings that a 基本語句 segment can stand for, and the record of the
// choice in 基本語句更新後 (the clause row itself is written by the segment update).

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

const QList<BasicPhrase> &basicPhrases();
// The name of a code, or empty for a code outside the list.
QString basicPhraseName(const QString &code);

// 更新 of the chooser: refuses an empty choice, then records it for the segment in one
// transaction. code holds the code chosen so far and takes the new one.
Outcome chooseBasicPhrase(Prompt &prompt, QSqlDatabase db, const QString &segmentNumber, QString &code, const QString &choice);

} // namespace normaris::dictionary
