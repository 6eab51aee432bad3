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
int halfPoints(double points) { return qBound(2, qRound(points * 2), 3276); }

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
// color, sz, szCs); another order makes a word processor call the file corrupt.
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
    case Typist::Alignment::Center: return QStringLiteral("center");
    case Typist::Alignment::Right: return QStringLiteral("right");
    case Typist::Alignment::Left: break;
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

// A4 portrait with the margins of a Japanese word processor's blank document
// (35 mm at the top, 30 mm elsewhere), and its line grid of 18 pt that gives
// 10.5-point text its customary line spacing.
void writePageSetup(QXmlStreamWriter &xml)
{
    xml.writeStartElement(kWordNs, QStringLiteral("sectPr"));
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
    xml.writeEmptyElement(kWordNs, QStringLiteral("docGrid"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("lines"));
    xml.writeAttribute(kWordNs, QStringLiteral("linePitch"), QStringLiteral("360"));
    xml.writeEndElement();
}

} // namespace

QByteArray documentXml(const QList<Paragraph> &paragraphs)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("document"));
    xml.writeStartElement(kWordNs, QStringLiteral("body"));
    for (const Paragraph &paragraph : paragraphs) {
        xml.writeStartElement(kWordNs, QStringLiteral("p"));
        writeParagraphProperties(xml, paragraph);
        for (const Run &run : paragraph.runs)
            writeRun(xml, run);
        xml.writeEndElement();
    }
    writePageSetup(xml);
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
