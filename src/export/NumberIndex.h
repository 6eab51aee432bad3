#pragma once
// The running numbers (番号) of the built rows of documents, looked up by level and
// place, as references need them: the number by which a clause is called in the
// current selection. A document's rows are read once, at the first look-up.

#include "base/Levels.h"

#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QStringList>
#include <optional>

namespace normaris {

class NumberIndex {
public:
    explicit NumberIndex(QSqlDatabase db) : m_db(std::move(db)) {}

    // The number of the row of the level at its place (章Code … its own code). An
    // empty join matches any segment of the clause. Nothing when no row is built there.
    std::optional<int> number(const QString &document, Level level, const QStringList &place, const QString &join = {});

private:
    void load(const QString &document);

    QSqlDatabase m_db;
    QHash<QString, int> m_numbers;
    QSet<QString> m_loaded;
};

} // namespace normaris
