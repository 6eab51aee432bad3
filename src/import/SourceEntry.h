#pragma once
// What an import takes from the source: the rows of the chosen entry and of all
// below it, table by table, and the word and reference rows that its text uses.
// Checks, value tests and the copy all read the source through this one class, so
// that they agree on what is taken.

#include "import/ImportPlace.h"
#include "import/VariableTables.h"

#include <QList>
#include <QSqlDatabase>
#include <QSqlRecord>

namespace normaris {

struct SourceTable {
    Level level;
    QList<QSqlRecord> rows;
};

class SourceEntry {
public:
    SourceEntry(QSqlDatabase source, ImportPlace place) : m_source(std::move(source)), m_place(std::move(place)) {}

    const ImportPlace &place() const { return m_place; }

    // The dictionary levels copied for the entry, its own first: 規程 takes its 前文 with it.
    QList<Level> clauseLevels() const;
    // The source rows of one of those levels, every segment of each clause.
    QList<QSqlRecord> clauseRows(Level level) const;
    // The rows of the table of markers under the entry whose marker the text of their
    // holder uses, in stored order.
    QList<QSqlRecord> usedRows(const VariableTable &table) const;

private:
    bool isUsed(const QSqlRecord &row, const VariableTable &table) const;
    QList<QSqlRecord> select(const QString &table, const QString &where, const QVariantList &binds) const;

    QSqlDatabase m_source;
    ImportPlace m_place;
};

} // namespace normaris
