#include "fileformats/DocxBody.h"

#include "fileformats/DocxXml.h"

#include <QXmlStreamWriter>

namespace normaris::docx {

namespace {

// A colour value of the Typist (blue in the high byte) as RRGGBB.
QString hexColor(Typist::Color color)
{
    const int v = static_cast<int>(color);
    return QString::asprintf("%02X%02X%02X", v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF);
}

// Font sizes are written in half-points, within what a word processor accepts
// (1 to 1638 pt).
int halfPoints(double points)
{
    return qBound(2, qRound(points * 2), 3276);
}

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

// The font where it differs from the document's defaults (word/styles.xml):
// the base font, the base size, black, neither bold nor struck through. The
// children stand in the order the schema gives them (rFonts, b, bCs, dstrike,
// color, sz, szCs, u); another order makes a word processor call the file corrupt.
void writeFont(QXmlStreamWriter &xml, const Font &font)
{
    const Font base;
    if (font == base)
        return;
    xml.writeStartElement(kWordNs, QStringLiteral("rPr"));
    if (font.name != base.name) {
        xml.writeEmptyElement(kWordNs, QStringLiteral("rFonts"));
        xml.writeAttribute(kWordNs, QStringLiteral("ascii"), font.name);
        xml.writeAttribute(kWordNs, QStringLiteral("eastAsia"), font.name);
        xml.writeAttribute(kWordNs, QStringLiteral("hAnsi"), font.name);
    }
    if (font.bold) {
        xml.writeEmptyElement(kWordNs, QStringLiteral("b"));
        xml.writeEmptyElement(kWordNs, QStringLiteral("bCs"));
    }
    if (font.doubleStrike)
        xml.writeEmptyElement(kWordNs, QStringLiteral("dstrike"));
    if (font.color != base.color)
        writeVal(xml, QStringLiteral("color"), hexColor(font.color));
    if (halfPoints(font.size) != halfPoints(base.size)) {
        const QString size = QString::number(halfPoints(font.size));
        writeVal(xml, QStringLiteral("sz"), size);
        writeVal(xml, QStringLiteral("szCs"), size);
    }
    if (font.underline)
        writeVal(xml, QStringLiteral("u"), QStringLiteral("single"));
    xml.writeEndElement();
}

// The indent in characters, with the same distance in twips beside it for a
// reader that goes by the absolute values. A hanging indent of n characters is a
// left indent of n with the first line pulled back by n: the label stands at the
// margin and the wrapped lines n characters in.
void writeIndent(QXmlStreamWriter &xml, int characters)
{
    if (characters == 0)
        return;
    const int n = qAbs(characters);
    const QString chars = QString::number(n * 100), twips = QString::number(n * kTwipsPerCharacter);
    xml.writeEmptyElement(kWordNs, QStringLiteral("ind"));
    if (characters < 0) {
        xml.writeAttribute(kWordNs, QStringLiteral("leftChars"), chars);
        xml.writeAttribute(kWordNs, QStringLiteral("left"), twips);
        xml.writeAttribute(kWordNs, QStringLiteral("hangingChars"), chars);
        xml.writeAttribute(kWordNs, QStringLiteral("hanging"), twips);
    } else {
        xml.writeAttribute(kWordNs, QStringLiteral("firstLineChars"), chars);
        xml.writeAttribute(kWordNs, QStringLiteral("firstLine"), twips);
    }
}

QString alignmentValue(Typist::Alignment alignment)
{
    switch (alignment) {
    case Typist::Alignment::Center:
        return QStringLiteral("center");
    case Typist::Alignment::Right:
        return QStringLiteral("right");
    case Typist::Alignment::Left:
        break;
    }
    return QStringLiteral("left");
}

// In the schema's order: ind, jc, then the paragraph mark's font.
void writeParagraphProperties(QXmlStreamWriter &xml, const Paragraph &paragraph)
{
    xml.writeStartElement(kWordNs, QStringLiteral("pPr"));
    writeIndent(xml, paragraph.indent);
    writeVal(xml, QStringLiteral("jc"), alignmentValue(paragraph.alignment));
    writeFont(xml, paragraph.mark);
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

void writeRun(QXmlStreamWriter &xml, const Run &run)
{
    xml.writeStartElement(kWordNs, QStringLiteral("r"));
    writeFont(xml, run.font);
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

// The page, in twips: A4 with the margins of a Japanese word processor's blank
// document (35 mm at the top, 30 mm elsewhere) upright; lying, 20 mm at top and
// bottom and 25 mm at the sides, which leaves two columns of text room enough.
struct PageSize {
    int width, height, top, right, bottom, left;
};
constexpr PageSize kPortrait{11906, 16838, 1985, 1701, 1701, 1701};
constexpr PageSize kLandscape{16838, 11906, 1134, 1418, 1134, 1418};

const PageSize &pageSize(const PageSetup &setup) { return setup.landscape ? kLandscape : kPortrait; }

// The line grid of 18 pt gives 10.5-point text its customary line spacing. The
// footer, when there is one, is the relationship rId3 of the document part.
void writePageSetup(QXmlStreamWriter &xml, const PageSetup &setup)
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
    xml.writeAttribute(kWordNs, QStringLiteral("footer"), QStringLiteral("992"));
    xml.writeAttribute(kWordNs, QStringLiteral("gutter"), QStringLiteral("0"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("cols"));
    xml.writeAttribute(kWordNs, QStringLiteral("space"), QStringLiteral("425"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("docGrid"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("lines"));
    xml.writeAttribute(kWordNs, QStringLiteral("linePitch"), QStringLiteral("360"));
    xml.writeEndElement();
}

void writeParagraph(QXmlStreamWriter &xml, const Paragraph &paragraph)
{
    xml.writeStartElement(kWordNs, QStringLiteral("p"));
    writeParagraphProperties(xml, paragraph);
    for (const Run &run : paragraph.runs)
        writeRun(xml, run);
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
    return documentXml(QList<Block>(paragraphs.cbegin(), paragraphs.cend()), PageSetup{});
}

QByteArray documentXml(const QList<Block> &blocks, const PageSetup &setup)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("document"));
    if (setup.pageNumbers)
        xml.writeNamespace(kRelationshipsNs, QStringLiteral("r"));
    xml.writeStartElement(kWordNs, QStringLiteral("body"));
    for (const Block &block : blocks) {
        if (const Paragraph *paragraph = std::get_if<Paragraph>(&block))
            writeParagraph(xml, *paragraph);
        else
            writeTable(xml, std::get<Table>(block));
    }
    writePageSetup(xml, setup);
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
