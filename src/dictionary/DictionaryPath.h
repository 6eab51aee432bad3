#pragma once
// The position in the dictionary that the navigator chooses: a document, then a 章,
// 条, 項, 号 and ①～⑳ under it. Each level's choices are its rows under the chosen
// parents, a split clause once (the head of its chain).

#include "base/CodeAndName.h"
#include "base/Levels.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>

namespace normaris::dictionary {

class DictionaryPath {
public:
    DictionaryPath(QSqlDatabase db, QString style) : m_db(std::move(db)), m_style(std::move(style)) {}

    // The rows of level (規程 … 号の細分丸) under the parents' codes, from the document down.
    QList<CodeAndName> choices(Level level, const QStringList &parents) const;
    // Whether the row of that code and name still stands under the parents.
    bool stands(Level level, const QStringList &parents, const QString &code, const QString &name) const;

private:
    QSqlDatabase m_db;
    QString m_style;
};

// The level of the navigator's picker i (0 for the document, 5 for ①～⑳), which is
// also the level of option i.
inline Level pickerLevel(int i) { return Level(i + 1); }

} // namespace normaris::dictionary
