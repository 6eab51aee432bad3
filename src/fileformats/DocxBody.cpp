#include "fileformats/DocxBody.h"

#include "fileformats/DocxFormat.h"
#include "fileformats/DocxXml.h"
#include "document/ParagraphStyles.h"

#include <QXmlStreamWriter>

namespace normaris::docx {

namespace {

// The instruction of the table of contents: the paragraphs of outline levels 1
// and 2 (章 and 条), as links, without page numbers in the web view.
const QString kContentsField = QStringLiteral("TOC \\o \"1-2\" \\h \\z \\u");

// Blanks at the ends or two in a row, such as the blanks after a clause's label
// or the indent of a continued line: where a reader may fold or drop them.
bool hasSignificantBlanks(const QString &text)
{
    if (text.isEmpty())
        return false;
    if (text.front().isSpace() || text.back().isSpace())
        return true;
    for (qsizetype i = 1; i < text.size(); ++i)
        if (text[i].isSpace() && text[i - 1].isSpace())
            return true;
    return false;
}

// The font a paragraph's style gives its text.
Font styleFont(const ParagraphStyleInfo &style)
{
    Font font;
    font.size = style.size;
    font.bold = style.bold;
    return font;
}

// In the schema's order: pStyle, keepNext, ind, jc, then the paragraph mark's
// font. keepNext of its own is for a blank line after a heading, which must not
// end a page where the heading's text does not follow.
void writeParagraphProperties(QXmlStreamWriter &xml, const Paragraph &paragraph, bool keepWithNext)
{
    const ParagraphStyleInfo &style = paragraphStyleInfo(paragraph.style);
    xml.writeStartElement(kWordNs, QStringLiteral("pPr"));
    if (paragraph.style != Typist::ParagraphStyle::Body)
        writeVal(xml, QStringLiteral("pStyle"), QString::fromUtf16(style.id));
    if (keepWithNext && !style.keepWithNext)
        xml.writeEmptyElement(kWordNs, QStringLiteral("keepNext"));
    writeIndent(xml, paragraph.indent, style.indent);
    if (paragraph.alignment != style.alignment)
        writeVal(xml, QStringLiteral("jc"), alignmentValue(paragraph.alignment));
    writeFont(xml, paragraph.mark, styleFont(style));
    xml.writeEndElement();
}

void writeText(QXmlStreamWriter &xml, const QString &text)
{
    if (text.isEmpty())
        return;
    xml.writeStartElement(kWordNs, QStringLiteral("t"));
    if (hasSignificantBlanks(text))
        xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml.writeCharacters(text);
    xml.writeEndElement();
}

void writeRun(QXmlStreamWriter &xml, const Run &run, const Font &base)
{
    xml.writeStartElement(kWordNs, QStringLiteral("r"));
    writeFont(xml, run.font, base, characterStyleOf(run.font.color));
    if (run.pageBreak) {
        xml.writeEmptyElement(kWordNs, QStringLiteral("br"));
        xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("page"));
    }
    // A tab is an element of its own between the texts.
    const QStringList pieces = run.text.split(u'\t');
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            xml.writeEmptyElement(kWordNs, QStringLiteral("tab"));
        writeText(xml, pieces[i]);
    }
    xml.writeEndElement();
}

// The line grid of 18 pt gives 10.5-point text its customary line spacing. The
// footer, when there is one, is the relationship rId3 of the document part; a
// document that opens with its cover shows none on that first page.
void writePageSetup(QXmlStreamWriter &xml, const PageSetup &setup, bool cover)
{
    const PageSize &page = pageSize(setup);
    xml.writeStartElement(kWordNs, QStringLiteral("sectPr"));
    if (setup.pageNumbers) {
        xml.writeEmptyElement(kWordNs, QStringLiteral("footerReference"));
        xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("default"));
        xml.writeAttribute(kRelationshipsNs, QStringLiteral("id"), QStringLiteral("rId3"));
    }
    xml.writeEmptyElement(kWordNs, QStringLiteral("pgSz"));
    xml.writeAttribute(kWordNs, QStringLiteral("w"), QString::number(page.width));
    xml.writeAttribute(kWordNs, QStringLiteral("h"), QString::number(page.height));
    if (setup.landscape)
        xml.writeAttribute(kWordNs, QStringLiteral("orient"), QStringLiteral("landscape"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("pgMar"));
    xml.writeAttribute(kWordNs, QStringLiteral("top"), QString::number(page.top));
    xml.writeAttribute(kWordNs, QStringLiteral("right"), QString::number(page.right));
    xml.writeAttribute(kWordNs, QStringLiteral("bottom"), QString::number(page.bottom));
    xml.writeAttribute(kWordNs, QStringLiteral("left"), QString::number(page.left));
    xml.writeAttribute(kWordNs, QStringLiteral("header"), QStringLiteral("851"));
    xml.writeAttribute(kWordNs, QStringLiteral("footer"), QString::number(page.footer));
    xml.writeAttribute(kWordNs, QStringLiteral("gutter"), QStringLiteral("0"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("cols"));
    xml.writeAttribute(kWordNs, QStringLiteral("space"), QStringLiteral("425"));
    if (cover && setup.pageNumbers)
        xml.writeEmptyElement(kWordNs, QStringLiteral("titlePg"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("docGrid"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("lines"));
    xml.writeAttribute(kWordNs, QStringLiteral("linePitch"), QStringLiteral("360"));
    xml.writeEndElement();
}

bool isEntry(const Paragraph &paragraph) { return paragraphStyleInfo(paragraph.style).part == DocumentPart::Entry; }

bool isEmpty(const Paragraph &paragraph)
{
    for (const Run &run : paragraph.runs)
        if (!run.text.isEmpty())
            return false;
    return true;
}

// A paragraph; a field may begin before its runs or end after them.
enum FieldEdge { NoField = 0, BeginsField = 1, EndsField = 2 };

void writeParagraph(QXmlStreamWriter &xml, const Paragraph &paragraph, bool keepWithNext = false, int field = NoField)
{
    xml.writeStartElement(kWordNs, QStringLiteral("p"));
    writeParagraphProperties(xml, paragraph, keepWithNext);
    if (field & BeginsField)
        beginField(xml, kContentsField);
    const Font base = styleFont(paragraphStyleInfo(paragraph.style));
    for (const Run &run : paragraph.runs)
        writeRun(xml, run, base);
    if (field & EndsField)
        endField(xml);
    xml.writeEndElement();
}

void writeWidth(QXmlStreamWriter &xml, const QString &element, int twips)
{
    xml.writeEmptyElement(kWordNs, element);
    xml.writeAttribute(kWordNs, QStringLiteral("w"), QString::number(twips));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("dxa"));
}

// Single lines around and between all cells, fixed column widths. The children of
// tblPr and trPr stand in the schema's order.
void writeTable(QXmlStreamWriter &xml, const Table &table)
{
    int total = 0;
    for (int w : table.columnWidths)
        total += w;
    xml.writeStartElement(kWordNs, QStringLiteral("tbl"));
    xml.writeStartElement(kWordNs, QStringLiteral("tblPr"));
    writeWidth(xml, QStringLiteral("tblW"), total);
    xml.writeStartElement(kWordNs, QStringLiteral("tblBorders"));
    for (const char *side : {"top", "left", "bottom", "right", "insideH", "insideV"}) {
        xml.writeEmptyElement(kWordNs, QString::fromLatin1(side));
        xml.writeAttribute(kWordNs, QStringLiteral("val"), QStringLiteral("single"));
        xml.writeAttribute(kWordNs, QStringLiteral("sz"), QStringLiteral("4"));
        xml.writeAttribute(kWordNs, QStringLiteral("space"), QStringLiteral("0"));
        xml.writeAttribute(kWordNs, QStringLiteral("color"), QStringLiteral("000000"));
    }
    xml.writeEndElement();
    writeVal(xml, QStringLiteral("tblLayout"), QStringLiteral("fixed"));
    xml.writeEndElement(); // tblPr
    xml.writeStartElement(kWordNs, QStringLiteral("tblGrid"));
    for (int w : table.columnWidths) {
        xml.writeEmptyElement(kWordNs, QStringLiteral("gridCol"));
        xml.writeAttribute(kWordNs, QStringLiteral("w"), QString::number(w));
    }
    xml.writeEndElement();
    for (const TableRow &row : table.rows) {
        xml.writeStartElement(kWordNs, QStringLiteral("tr"));
        if (row.header) {
            xml.writeStartElement(kWordNs, QStringLiteral("trPr"));
            xml.writeEmptyElement(kWordNs, QStringLiteral("cantSplit"));
            xml.writeEmptyElement(kWordNs, QStringLiteral("tblHeader"));
            xml.writeEndElement();
        }
        for (qsizetype c = 0; c < row.cells.size(); ++c) {
            xml.writeStartElement(kWordNs, QStringLiteral("tc"));
            xml.writeStartElement(kWordNs, QStringLiteral("tcPr"));
            writeWidth(xml, QStringLiteral("tcW"), table.columnWidths.value(c));
            xml.writeEndElement();
            const QList<Paragraph> &paragraphs = row.cells[c].paragraphs;
            for (const Paragraph &p : paragraphs)
                writeParagraph(xml, p);
            if (paragraphs.isEmpty())
                writeParagraph(xml, Paragraph{});
            xml.writeEndElement(); // tc
        }
        xml.writeEndElement(); // tr
    }
    xml.writeEndElement(); // tbl
}

} // namespace

int textWidth(const PageSetup &setup)
{
    const PageSize &page = pageSize(setup);
    return page.width - page.left - page.right;
}

QByteArray documentXml(const QList<Paragraph> &paragraphs)
{
    return documentXml(QList<Block>(paragraphs.cbegin(), paragraphs.cend()), PageSetup{false, true});
}

QByteArray documentXml(const QList<Block> &blocks, const PageSetup &setup)
{
    // The entries of the table of contents, as the renderer typed them, are the
    // stored result of a field that a word processor can make again from the
    // headings, with page numbers.
    qsizetype firstEntry = -1, lastEntry = -1;
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const Paragraph *p = std::get_if<Paragraph>(&blocks[i]);
        if (p && isEntry(*p) && !isEmpty(*p)) {
            if (firstEntry < 0)
                firstEntry = i;
            lastEntry = i;
        }
    }
    const Paragraph *first = blocks.isEmpty() ? nullptr : std::get_if<Paragraph>(&blocks.first());
    const bool cover = first && paragraphStyleInfo(first->style).part == DocumentPart::Cover;

    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("document"));
    if (setup.pageNumbers)
        xml.writeNamespace(kRelationshipsNs, QStringLiteral("r"));
    xml.writeStartElement(kWordNs, QStringLiteral("body"));
    bool keep = false; // the paragraph before keeps with this one
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const Paragraph *paragraph = std::get_if<Paragraph>(&blocks[i]);
        if (!paragraph) {
            writeTable(xml, std::get<Table>(blocks[i]));
            keep = false;
            continue;
        }
        const bool blankAfterHeading = keep && paragraph->runs.isEmpty();
        writeParagraph(xml, *paragraph, blankAfterHeading,
                       (i == firstEntry ? BeginsField : NoField) | (i == lastEntry ? EndsField : NoField));
        keep = paragraphStyleInfo(paragraph->style).keepWithNext || blankAfterHeading;
    }
    writePageSetup(xml, setup, cover);
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
