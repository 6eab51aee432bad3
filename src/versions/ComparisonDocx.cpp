#include "versions/ComparisonDocx.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxPackage.h"
#include "versions/ComparisonText.h"

namespace normaris {

namespace {

using model::Paragraph;

constexpr int kRemarksWidth = 1400; // twips: （新設） with the cell's margins

Paragraph paragraph(Typist::Alignment alignment, const QString &text, model::Font font = {})
{
    Paragraph p;
    p.alignment = alignment;
    p.mark = font;
    if (!text.isEmpty())
        p.runs.append({font, text, false});
    return p;
}

void appendRun(Paragraph &p, const QString &text, bool underline)
{
    if (text.isEmpty())
        return;
    model::Font font;
    font.underline = underline;
    if (!p.runs.isEmpty() && p.runs.last().font == font)
        p.runs.last().text += text;
    else
        p.runs.append({font, text, false});
}

// A clause below the 項 stands a character further in for each level; its wrapped
// lines hang one character in from where its label starts.
QList<Paragraph> cellParagraphs(const ComparisonCell &cell)
{
    if (!cell.placeholder.isEmpty())
        return {paragraph(Typist::Alignment::Left, cell.placeholder)};
    QList<Paragraph> paragraphs;
    for (const ComparisonLine &line : cell.lines) {
        const int depth = isClauseLevel(line.level) ? clauseDepth(line.level) : 0;
        Paragraph p;
        p.indent = isClauseLevel(line.level) ? -(depth + 1) : 0;
        const QString lead(depth, u'　');
        appendRun(p, lead, false);
        appendRun(p, line.label, line.labelChanged);
        appendRun(p, labelSeparator(line), false);
        for (const MarkedSpan &span : line.text) {
            const QStringList pieces = span.text.split(u'\n');
            for (qsizetype i = 0; i < pieces.size(); ++i) {
                if (i > 0) {
                    paragraphs.append(p);
                    p.runs.clear();
                    appendRun(p, lead, false);
                }
                appendRun(p, pieces[i], span.changed);
            }
        }
        paragraphs.append(p);
    }
    return paragraphs;
}

model::TableCell headerCell(const QString &caption)
{
    model::Font bold;
    bold.bold = true;
    return model::TableCell{{paragraph(Typist::Alignment::Center, caption, bold)}};
}

} // namespace

model::PageSetup comparisonPageSetup() { return model::PageSetup{true, true}; }

QList<model::Block> comparisonBlocks(const ComparisonTable &table)
{
    QList<model::Block> blocks;
    model::Font titleFont;
    titleFont.bold = true;
    titleFont.size = 14;
    blocks << paragraph(Typist::Alignment::Center, table.title(), titleFont);
    if (!table.company.isEmpty())
        blocks << paragraph(Typist::Alignment::Right, table.company);
    blocks << paragraph(Typist::Alignment::Right, QStringLiteral("%1：%2　%3：%4")
                                                      .arg(ComparisonTable::kNewColumn, effectiveCaption(table.newer),
                                                           ComparisonTable::kOldColumn, effectiveCaption(table.older)));
    blocks << paragraph(Typist::Alignment::Left, QString());

    // 備考 takes the width of a few characters; the two sides share the rest.
    const int remarks = table.remarks ? kRemarksWidth : 0;
    const int half = (docx::textWidth(comparisonPageSetup()) - remarks) / 2;
    model::Table grid;
    grid.columnWidths = {half, half};
    model::TableRow header{{headerCell(ComparisonTable::kNewColumn), headerCell(ComparisonTable::kOldColumn)}, true};
    if (table.remarks) {
        grid.columnWidths << remarks;
        header.cells << headerCell(ComparisonTable::kRemarksColumn);
    }
    grid.rows.append(header);
    for (const ComparisonEntry &entry : table.entries) {
        model::TableRow row{{model::TableCell{cellParagraphs(entry.newer)}, model::TableCell{cellParagraphs(entry.older)}}, false};
        if (table.remarks)
            row.cells << model::TableCell{{paragraph(Typist::Alignment::Center, entry.remark())}};
        grid.rows.append(row);
    }
    blocks << grid;

    blocks << paragraph(Typist::Alignment::Right, ComparisonTable::kClosingNote);
    if (!table.renumbered.isEmpty()) {
        blocks << paragraph(Typist::Alignment::Left, QString());
        blocks << paragraph(Typist::Alignment::Left, ComparisonTable::kRenumberedHeading);
        for (const Renumbering &r : table.renumbered)
            blocks << paragraph(Typist::Alignment::Left, QStringLiteral("　") + r.line());
    }
    return blocks;
}

void saveComparisonDocx(const ComparisonTable &table, const QString &path)
{
    docx::saveDocx(path, comparisonBlocks(table), comparisonPageSetup());
}

} // namespace normaris
