#pragma once
// The report of a dictionary update: as text, and as an .xlsx list of the entries.

#include "update/CompanyUpdate.h"

namespace normaris {

// The summary, every entry with its place (競合 with its three texts), and the 新旧対照表
// of each composed document.
QString updateReportText(const UpdateResult &result);
// One row per entry. Throws Failure when the file can't be written.
void writeUpdateReport(const QString &path, const UpdateResult &result);
// Writes text to path. Throws Failure.
void writeUpdateText(const QString &path, const QString &text);

} // namespace normaris
