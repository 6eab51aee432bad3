#include "pdf/LegalCheckPdf.h"

#include "fileformats/DocxBody.h"
#include "base/FileOps.h"
#include "pdf/PageLayout.h"
#include "pdf/PdfPages.h"

namespace normaris::legal {

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
    return docx::TableCell{{paragraph(Typist::Alignment::Left, text, font)}};
}

// The share of the text width each column takes, in per mille: 規程, 状態, 法令, 事項, 条・語句, 限度・施行日.
constexpr int kColumnShares[] = {150, 70, 220, 250, 190, 120};

} // namespace

int writeCheckPdf(const QString &path, const QString &company, const QList<CheckResult> &results)
{
    const docx::PageSetup setup{true, true};
    QList<docx::Block> blocks;
    docx::Font titleFont;
    titleFont.bold = true;
    titleFont.size = 14;
    blocks << paragraph(Typist::Alignment::Center, QStringLiteral("法令チェック表"), titleFont);
    if (!company.isEmpty())
        blocks << paragraph(Typist::Alignment::Right, company);
    blocks << paragraph(Typist::Alignment::Left, QString());
    docx::Table table;
    const int width = docx::textWidth(setup);
    for (const int share : kColumnShares)
        table.columnWidths << width * share / 1000;
    docx::Font bold;
    bold.bold = true;
    docx::TableRow header{{}, true};
    for (const QString &heading : resultHeadings())
        header.cells << cell(heading, bold);
    table.rows << header;
    for (const CheckResult &r : results) {
        docx::TableRow row;
        for (const QString &text : r.cells())
            row.cells << cell(text);
        table.rows << row;
    }
    blocks << table;
    const pdf::PageGeometry geometry = pdf::PageGeometry::of(setup);
    // Written under a temporary name and renamed into place only when complete.
    StagedFiles files;
    const int pages = pdf::savePdf(
        files.stage(path), QStringLiteral("法令チェック表"), true,
        [&](QPainter &painter, const std::function<bool()> &newPage) { return pdf::paintBlocks(painter, blocks, newPage, geometry); });
    files.commit();
    return pages;
}

} // namespace normaris::legal
