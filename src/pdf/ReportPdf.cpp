#include "pdf/ReportPdf.h"

#include "base/FileOps.h"
#include "fileformats/DocxBody.h"
#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris::pdf {

namespace {

docx::Paragraph paragraph(Typist::Alignment alignment, const QString &text, const docx::Font &font = {})
{
    docx::Paragraph p;
    p.alignment = alignment;
    p.runs.append(docx::Run{font, text});
    p.mark = font;
    return p;
}

docx::TableCell cell(const QString &text, const docx::Font &font = {})
{
    docx::TableCell c;
    for (const QString &line : text.split(u'\n'))
        c.paragraphs << paragraph(Typist::Alignment::Left, line, font);
    return c;
}

} // namespace

int writeReportPdf(const QString &path, const ReportTable &report)
{
    const docx::PageSetup setup{true, true};
    QList<docx::Block> blocks;
    docx::Font titleFont;
    titleFont.bold = true;
    titleFont.size = 14;
    blocks << paragraph(Typist::Alignment::Center, report.title, titleFont);
    if (!report.company.isEmpty())
        blocks << paragraph(Typist::Alignment::Right, report.company);
    for (const QString &line : report.lead)
        blocks << paragraph(Typist::Alignment::Left, line);
    blocks << paragraph(Typist::Alignment::Left, QString());
    docx::Table table;
    const int width = docx::textWidth(setup);
    for (const int share : report.shares)
        table.columnWidths << width * share / 1000;
    docx::Font bold;
    bold.bold = true;
    docx::TableRow header{{}, true};
    for (const QString &heading : report.headings)
        header.cells << cell(heading, bold);
    table.rows << header;
    for (const QStringList &texts : report.rows) {
        docx::TableRow row;
        for (const QString &text : texts)
            row.cells << cell(text);
        table.rows << row;
    }
    blocks << table;
    for (const QString &line : report.trail)
        blocks << paragraph(Typist::Alignment::Left, line);
    const PageGeometry geometry = PageGeometry::of(setup);
    StagedFiles files;
    const int pages = savePdf(files.stage(path), report.title, true, [&](QPainter &painter, const std::function<bool()> &newPage) {
        return paintBlocks(painter, blocks, newPage, geometry);
    });
    files.commit();
    return pages;
}

} // namespace normaris::pdf
