#pragma once
// The report of a dictionary update: as text, and as an .xlsx list of the entries.

#include "update/CompanyUpdate.h"

namespace normaris {

// The summary, every entry with its place (競合 with its three texts), and the 新旧対照表
// of each composed document.
QString updateReportText(const UpdateResult &result);

// The columns of the list of entries: the .xlsx sheet's and the PDF page's.
struct UpdateReportColumn {
    QString heading;
    int xlsxWidth; // in characters
    int pdfShare;  // of the page's text width, in per mille
};
const QList<UpdateReportColumn> &updateReportColumns();
// One row per entry, in the order of the columns.
QList<QStringList> updateReportRows(const UpdateResult &result);
// The 新旧対照表 of each composed document, a line each, as the text report ends.
QStringList updateComparisonLines(const UpdateResult &result);
// One row per entry. Throws Failure when the file can't be written.
void writeUpdateReport(const QString &path, const UpdateResult &result);
// Writes text to path. Throws Failure.
void writeUpdateText(const QString &path, const QString &text);

} // namespace normaris
