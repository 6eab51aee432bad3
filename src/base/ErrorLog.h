#pragma once
// The error log of the program folder: <AppPath>/log/normaris.log, one line a failure
// with the time (UTC), the command that ran, SQLite's result code and text, and the
// statement. What the user is told stays Japanese and short (base/SqliteMessages.h);
// the detail for whoever looks into a failure is here. The file is rotated at about
// 1 MB (normaris.log.1 … .3); writing the log never fails a step.

#include <QString>

namespace normaris {

struct ErrorLog {
    // The program folder whose log/ is written (AppPath); empty: no log is kept.
    static void setFolder(const QString &appPath);
    // The command that runs now (the CLI's command line, the desktop's dialog).
    static void setCommand(const QString &command);
    // Appends one line: the time, the command, then detail (line breaks as " | ").
    static void write(const QString &detail);
    // The log file of the program folder.
    static QString fileOf(const QString &appPath);
};

} // namespace normaris
