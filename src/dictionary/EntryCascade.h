#pragma once
// An entry at any level below the document reaches into the rows below it, into the
// word and reference tables and into the composition. Renumbering a user's entry moves
// all of them to the new code; deleting one removes them; both run inside the caller's
// transaction. What varies by level (the table, the key column of the rows below) comes
// from the level table.
//
// The word and reference tables have no prose style: a row of either belongs to the
// current style when its marker stands in the current style's clause at the row's
// place, and a reference is cited from outside when its referring clause holds it.

#include "dictionary/ClausePlace.h"

#include <QSqlDatabase>

namespace normaris::dictionary {

class EntryCascade {
public:
    // entry: the entry's place (its own Code last).
    EntryCascade(QSqlDatabase db, ClausePlace entry) : m_db(std::move(db)), m_entry(std::move(entry)) {}

    // Moves the entry, everything below it and what hangs on them to newCode.
    void changeCode(const QString &newCode);
    // Deletes the entry, everything below it and what hangs on them.
    void deleteRows();
    // Whether the entry or anything below it is in the composition of its style.
    bool isComposed() const;
    // Whether a clause outside the entry cites the entry or something inside it.
    bool citedFromOutside() const;

private:
    QSqlDatabase m_db;
    ClausePlace m_entry;
};

} // namespace normaris::dictionary
