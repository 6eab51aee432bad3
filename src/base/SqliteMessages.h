#pragma once
// What the user is told when SQLite fails: one Japanese text per result code, saying
// what happened and what to do, with the file's path and, for a damaged company file,
// the backup to restore. SQLite's own English text and the statement never reach the
// message: they go to the error log (base/ErrorLog.h).

#include <QString>

namespace normaris {

// SQLite's primary result codes that have a text of their own (sqlite3.h), and the
// constraint failure (a trigger's RAISE), which is told with its number.
enum SqliteCode : int {
    SqliteBusy = 5,
    SqliteLocked = 6,
    SqliteNoMem = 7,
    SqliteReadOnly = 8,
    SqliteIoErr = 10,
    SqliteCorrupt = 11,
    SqliteFull = 13,
    SqliteCantOpen = 14,
    SqliteConstraint = 19,
    SqliteNotADb = 26,
};

// The message for SQLite's result code (extended codes are taken by their primary
// code) on the file at path (empty when there is none).
QString sqliteMessage(int code, const QString &path);

// Where the backup of the company file at path stands by default (<AppPath>/BackupDB/<N>),
// or empty when path is no company file of the data folder.
QString defaultBackupOf(const QString &path);

} // namespace normaris
