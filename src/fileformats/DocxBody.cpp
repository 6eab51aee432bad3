#include "fileformats/DocxBody.h"

#include "fileformats/DocxFormat.h"
#include "fileformats/DocxParts.h"
#include "fileformats/DocxXml.h"
#include "export/ParagraphStyles.h"

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

// A4 portrait with the margins of a Japanese word processor's blank document
// (35 mm at the top, 30 mm elsewhere), and its line grid of 18 pt that gives
// 10.5-point text its customary line spacing. The footer holds the page number;
// a document that opens with its cover shows none on that first page.
void writePageSetup(QXmlStreamWriter &xml, bool cover)
{
    xml.writeStartElement(kWordNs, QStringLiteral("sectPr"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("footerReference"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("default"));
    xml.writeAttribute(kRelationshipsNs, QStringLiteral("id"), QString::fromUtf16(kFooterRelation));
    xml.writeEmptyElement(kWordNs, QStringLiteral("pgSz"));
    xml.writeAttribute(kWordNs, QStringLiteral("w"), QStringLiteral("11906"));
    xml.writeAttribute(kWordNs, QStringLiteral("h"), QStringLiteral("16838"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("pgMar"));
    xml.writeAttribute(kWordNs, QStringLiteral("top"), QStringLiteral("1985"));
    xml.writeAttribute(kWordNs, QStringLiteral("right"), QStringLiteral("1701"));
    xml.writeAttribute(kWordNs, QStringLiteral("bottom"), QStringLiteral("1701"));
    xml.writeAttribute(kWordNs, QStringLiteral("left"), QStringLiteral("1701"));
    xml.writeAttribute(kWordNs, QStringLiteral("header"), QStringLiteral("851"));
    xml.writeAttribute(kWordNs, QStringLiteral("footer"), QStringLiteral("992"));
    xml.writeAttribute(kWordNs, QStringLiteral("gutter"), QStringLiteral("0"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("cols"));
    xml.writeAttribute(kWordNs, QStringLiteral("space"), QStringLiteral("425"));
    if (cover)
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

} // namespace

QByteArray documentXml(const QList<Paragraph> &paragraphs)
{
    // The entries of the table of contents, as the renderer typed them, are the
    // stored result of a field that a word processor can make again from the
    // headings, with page numbers.
    qsizetype firstEntry = -1, lastEntry = -1;
    for (qsizetype i = 0; i < paragraphs.size(); ++i) {
        if (isEntry(paragraphs[i]) && !isEmpty(paragraphs[i])) {
            if (firstEntry < 0)
                firstEntry = i;
            lastEntry = i;
        }
    }

    QByteArray out;
    QXmlStreamWriter xml(&out);
    startPart(xml);
    xml.writeNamespace(kWordNs, QStringLiteral("w"));
    xml.writeNamespace(kRelationshipsNs, QStringLiteral("r"));
    xml.writeStartElement(kWordNs, QStringLiteral("document"));
    xml.writeStartElement(kWordNs, QStringLiteral("body"));
    bool keep = false; // the paragraph before keeps with this one
    for (qsizetype i = 0; i < paragraphs.size(); ++i) {
        const Paragraph &paragraph = paragraphs[i];
        const ParagraphStyleInfo &style = paragraphStyleInfo(paragraph.style);
        const bool blankAfterHeading = keep && isEmpty(paragraph) && paragraph.runs.isEmpty();
        xml.writeStartElement(kWordNs, QStringLiteral("p"));
        writeParagraphProperties(xml, paragraph, blankAfterHeading);
        if (i == firstEntry)
            beginField(xml, kContentsField);
        const Font base = styleFont(style);
        for (const Run &run : paragraph.runs)
            writeRun(xml, run, base);
        if (i == lastEntry)
            endField(xml);
        xml.writeEndElement();
        keep = style.keepWithNext || blankAfterHeading;
    }
    writePageSetup(xml, !paragraphs.isEmpty() && paragraphStyleInfo(paragraphs.first().style).part == DocumentPart::Cover);
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
