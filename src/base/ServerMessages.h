#pragma once
// What the user is told when the office's server fails: one Japanese text per kind of
// failure (PostgreSQL's SQLSTATE, by its class where the class says enough), saying what
// happened and what to do. The server's own text and the statement go to the error log.

#include <QString>

namespace normaris {

// The message for SQLSTATE state on place (a company on the server, or the server itself).
QString serverMessage(const QString &state, const QString &place);

// The SQLSTATE of a disk failure on the server, which the fault tests inject.
inline const QString kServerIoError = QStringLiteral("58030");

} // namespace normaris
