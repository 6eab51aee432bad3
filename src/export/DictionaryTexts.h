#pragma once
// The current dictionary text of every clause of one document and style, read in
// one query per level, for the work data build: a clause row is looked up by its
// place codes and its segment number (結合).

#include "base/Levels.h"

#include <QHash>
#include <QSqlDatabase>
#include <QStringList>
#include <optional>

namespace normaris {

struct DictionaryText {
    QString text;
    bool lineBreak = false; // 改行
};

class DictionaryTexts {
public:
    DictionaryTexts(QSqlDatabase db, const QString &style, const QString &document);

    // The dictionary row of a level at its place (章Code … its own code; for 前文 none).
    // An empty join takes the clause's first row. Nothing when the dictionary lacks it.
    std::optional<DictionaryText> find(Level level, const QStringList &place, const QString &join) const;

private:
    void load(QSqlDatabase db, Level level, const QString &style, const QString &document);
    static QString key(Level level, const QStringList &place, const QString &join);

    QHash<QString, DictionaryText> m_rows;
};

} // namespace normaris
