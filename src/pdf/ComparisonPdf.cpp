#include "pdf/ComparisonPdf.h"

#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris {

namespace {

pdf::PagePainter blocksPainter(const QList<model::Block> &blocks, const model::PageSetup &setup)
{
    return [&blocks, setup](QPainter &painter, const std::function<bool()> &newPage) {
        return pdf::paintBlocks(painter, blocks, newPage, pdf::PageGeometry::of(setup));
    };
}

} // namespace

void ComparisonPdf::save(StagedFiles &files, const ComparisonTable &table, const QList<model::Block> &blocks, const model::PageSetup &setup)
{
    // A bookmark for each row of the table: an article changed, added or deleted.
    QList<pdf::OutlineEntry> outline;
    m_pages = pdf::savePdf(
        files.stage(m_path), table.title(), setup.landscape,
        [&](QPainter &painter, const std::function<bool()> &newPage) {
            return pdf::paintBlocks(painter, blocks, newPage, pdf::PageGeometry::of(setup), &outline);
        },
        &outline);
}

int ComparisonPdf::paint(QPagedPaintDevice &device, const QList<model::Block> &blocks, const model::PageSetup &setup)
{
    return pdf::paintPages(device, setup.landscape, blocksPainter(blocks, setup));
}

} // namespace normaris
