#pragma once
// Writes a zip file from named parts, the container of a .docx.

#include <QByteArray>
#include <QList>
#include <QString>

namespace normaris {

struct ZipEntry {
    QString name; // the path inside the zip, with '/' between folders
    QByteArray data;
};

// Writes the entries, in their order, to a zip file at path. The file appears
// only complete: it is written beside path under another name and renamed over
// it, so a failure leaves what was at path untouched. Throws Failure.
void writeZipFile(const QString &path, const QList<ZipEntry> &entries);

} // namespace normaris
