#pragma once
// A company carried between the two places it can live: a company file (SQLite) and a
// schema of the office's server. The copy is of every table the company has, the
// schema's own and those the program made on demand (version records, the work data's
// record), rows with their IDs, and the dictionary release it records.

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

namespace normaris {

// The tables a new company starts without: its dates and its composed output.
const QStringList &tablesClearedForNewCompany();

// Copies the company on source into target, which has none of its tables yet. Runs
// inside the caller's transaction on target; source is only read.
void copyCompany(QSqlDatabase source, QSqlDatabase target);

// Writes the company on db as a company file at path: made beside it under a partial
// name and renamed into place only when whole and on the disk. A company file is copied
// by SQLite itself (one moment's content); a company on the server is read in one
// transaction, so that the file holds one moment's content as well.
void writeCompanyFile(QSqlDatabase db, const QString &path);

} // namespace normaris
