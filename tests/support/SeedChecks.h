#pragma once
// Checks on a written seed or company file that do not trust the code that wrote it:
// the composition invariants of every composed document, and that every marker in
// the dictionary has its row. Each returns the problems found, empty when none.

#include <QSqlDatabase>
#include <QStringList>

namespace normaris::test {

QStringList compositionProblems(QSqlDatabase db, const QString &style, const QString &document);
QStringList markerProblems(QSqlDatabase db);

} // namespace normaris::test
