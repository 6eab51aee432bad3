#include "pdf/PdfTypist.h"

#include "document/ParagraphStyles.h"
#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

#include <QBuffer>
#include <QPdfWriter>

#include <algorithm>

namespace normaris {

namespace {

// The page of each entry of the table of contents: the document laid out once
// without them, the headings' pages read off that layout. The numbers take no room
// of their own, so the second layout puts every line where the first one did.
QList<int> contentsPages(const QList<model::Paragraph> &typed)
{
    if (std::none_of(typed.cbegin(), typed.cend(),
                     [](const model::Paragraph &p) { return paragraphStyleInfo(p.style).part == DocumentPart::Entry; }))
        return {};
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(1200); // as the file and the printer: the same line breaks
    QList<pdf::OutlineEntry> outline;
    pdf::paintPages(writer, false, [&](QPainter &painter, const std::function<bool()> &newPage) {
        return pdf::paintDocument(painter, typed, newPage, pdf::PageGeometry::of({}), &outline);
    });
    return pdf::contentsPagesOf(typed, outline);
}

} // namespace

int PdfTypist::paint(QPagedPaintDevice &device) const
{
    const QList<model::Paragraph> typed = paragraphs();
    const QList<int> pages = contentsPages(typed);
    return pdf::paintPages(device, false, [&](QPainter &painter, const std::function<bool()> &newPage) {
        return pdf::paintDocument(painter, typed, newPage, pdf::PageGeometry::of({}), nullptr, pages);
    });
}

int PdfTypist::save(const QString &path, const QString &title) const
{
    // The headings found while the pages are painted become the file's bookmarks.
    const QList<model::Paragraph> typed = paragraphs();
    const QList<int> pages = contentsPages(typed);
    QList<pdf::OutlineEntry> outline;
    return pdf::savePdf(
        path, title, false,
        [&](QPainter &painter, const std::function<bool()> &newPage) {
            return pdf::paintDocument(painter, typed, newPage, pdf::PageGeometry::of({}), &outline, pages);
        },
        &outline);
}

} // namespace normaris
