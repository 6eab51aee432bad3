#pragma once
// A one-sheet workbook: a title, a row of headings with their widths, and data
// rows, every cell written as text so that a code such as 0001 keeps its zeros.

#include <QList>
#include <QString>
#include <QStringList>

namespace normaris {

struct XlsxColumn {
    QString heading;
    double width;
};

// Writes the workbook to path. Throws Failure when it can't be written.
void writeXlsxSheet(const QString &path, const QString &title, const QList<XlsxColumn> &columns, const QList<QStringList> &rows);

} // namespace normaris
