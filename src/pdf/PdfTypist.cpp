#include "pdf/PdfTypist.h"

#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris {

namespace {

pdf::PagePainter documentPainter(const QList<model::Paragraph> &paragraphs)
{
    return
        [&paragraphs](QPainter &painter, const std::function<bool()> &newPage) { return pdf::paintDocument(painter, paragraphs, newPage); };
}

} // namespace

int PdfTypist::paint(QPagedPaintDevice &device) const { return pdf::paintPages(device, false, documentPainter(paragraphs())); }

int PdfTypist::save(const QString &path, const QString &title) const
{
    // The headings found while the pages are painted become the file's bookmarks.
    const QList<model::Paragraph> typed = paragraphs();
    QList<pdf::OutlineEntry> outline;
    return pdf::savePdf(
        path, title, false,
        [&](QPainter &painter, const std::function<bool()> &newPage) {
            return pdf::paintDocument(painter, typed, newPage, pdf::PageGeometry::of({}), &outline);
        },
        &outline);
}

} // namespace normaris
