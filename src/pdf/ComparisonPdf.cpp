#include "pdf/ComparisonPdf.h"

#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris {

namespace {

pdf::PagePainter blocksPainter(const QList<docx::Block> &blocks, const docx::PageSetup &setup)
{
    return [&blocks, setup](QPainter &painter, const std::function<bool()> &newPage) {
        return pdf::paintBlocks(painter, blocks, newPage, pdf::PageGeometry::of(setup));
    };
}

} // namespace

void ComparisonPdf::save(const ComparisonTable &table, const QList<docx::Block> &blocks, const docx::PageSetup &setup)
{
    m_pages = pdf::savePdf(m_path, table.title(), setup.landscape, blocksPainter(blocks, setup));
}

int ComparisonPdf::paint(QPagedPaintDevice &device, const QList<docx::Block> &blocks, const docx::PageSetup &setup)
{
    return pdf::paintPages(device, setup.landscape, blocksPainter(blocks, setup));
}

} // namespace normaris
