#pragma once
// The bookmarks (the outline) of a PDF: the headings of a document, each pointing at
// the place of its page where it stands. QPdfWriter writes none, so they are added to
// the finished file as an incremental update: new objects for the outline, the
// catalog again with the outline named in it, their cross-reference section and a
// trailer that points back at the file's own. The file's bytes before it stay as they
// were.

#include <QByteArray>
#include <QList>
#include <QString>

namespace normaris::pdf {

struct OutlineEntry {
    int level = 1; // 1 at the top; a level 2 entry belongs to the level 1 entry before it
    QString title;
    int page = 1;   // from 1
    double top = 0; // in points from the page's top edge
};

// The PDF with the outline appended; the PDF itself when entries is empty. pageHeight
// is in points. Throws Failure when the file is not one QPdfWriter writes.
QByteArray withOutline(const QByteArray &pdf, const QList<OutlineEntry> &entries, double pageHeight);

} // namespace normaris::pdf
