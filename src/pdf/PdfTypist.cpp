#include "pdf/PdfTypist.h"

#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris {

namespace {

pdf::PagePainter documentPainter(const QList<docx::Paragraph> &paragraphs)
{
    return
        [&paragraphs](QPainter &painter, const std::function<bool()> &newPage) { return pdf::paintDocument(painter, paragraphs, newPage); };
}

} // namespace

int PdfTypist::paint(QPagedPaintDevice &device) const { return pdf::paintPages(device, false, documentPainter(paragraphs())); }

int PdfTypist::save(const QString &path, const QString &title) const
{
    return pdf::savePdf(path, title, false, documentPainter(paragraphs()));
}

} // namespace normaris
