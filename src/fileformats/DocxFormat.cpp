#include "fileformats/DocxFormat.h"

#include "fileformats/DocxXml.h"

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

} // namespace

const QList<CharacterStyle> &characterStyles()
{
    static const QList<CharacterStyle> styles = {
        {QStringLiteral("Unsettled"), QStringLiteral("未処理"), Typist::Color::Blue},
        {QStringLiteral("Warning"), QStringLiteral("警告"), Typist::Color::Red},
    };
    return styles;
}

const CharacterStyle *characterStyleOf(Typist::Color color)
{
    for (const CharacterStyle &style : characterStyles())
        if (style.color == color)
            return &style;
    return nullptr;
}

void writeFontSlots(QXmlStreamWriter &xml, const QString &font)
{
    xml.writeEmptyElement(kWordNs, QStringLiteral("rFonts"));
    xml.writeAttribute(kWordNs, QStringLiteral("ascii"), font);
    xml.writeAttribute(kWordNs, QStringLiteral("eastAsia"), font);
    xml.writeAttribute(kWordNs, QStringLiteral("hAnsi"), font);
    xml.writeAttribute(kWordNs, QStringLiteral("cs"), font);
    // Characters that both scripts have (quotes, dashes) in the East Asian font too.
    xml.writeAttribute(kWordNs, QStringLiteral("hint"), QStringLiteral("eastAsia"));
}

// The children stand in the order the schema gives them (rStyle, rFonts, b, bCs,
// dstrike, color, sz, szCs, u); another order makes a word processor call the file
// corrupt.
void writeFont(QXmlStreamWriter &xml, const Font &font, const Font &base, const CharacterStyle *style)
{
    Font styled = base;
    if (style)
        styled.color = style->color;
    if (font == styled && !style)
        return;
    xml.writeStartElement(kWordNs, QStringLiteral("rPr"));
    if (style)
        writeVal(xml, QStringLiteral("rStyle"), style->id);
    if (font.name != styled.name)
        writeFontSlots(xml, font.name);
    if (font.bold != styled.bold) {
        writeFlag(xml, QStringLiteral("b"), font.bold);
        writeFlag(xml, QStringLiteral("bCs"), font.bold);
    }
    if (font.doubleStrike != styled.doubleStrike)
        writeFlag(xml, QStringLiteral("dstrike"), font.doubleStrike);
    if (font.color != styled.color)
        writeVal(xml, QStringLiteral("color"), hexColor(font.color));
    if (halfPoints(font.size) != halfPoints(styled.size)) {
        const QString size = QString::number(halfPoints(font.size));
        writeVal(xml, QStringLiteral("sz"), size);
        writeVal(xml, QStringLiteral("szCs"), size);
    }
    if (font.underline != styled.underline)
        writeVal(xml, QStringLiteral("u"), font.underline ? QStringLiteral("single") : QStringLiteral("none"));
    xml.writeEndElement();
}

// The distance in characters, with the same distance in twips beside it for a
// reader that goes by the absolute values.
void writeIndent(QXmlStreamWriter &xml, int characters, int base)
{
    if (characters == base)
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
        // Over a hanging style the left indent goes back to the margin as well.
        if (base < 0) {
            xml.writeAttribute(kWordNs, QStringLiteral("leftChars"), QStringLiteral("0"));
            xml.writeAttribute(kWordNs, QStringLiteral("left"), QStringLiteral("0"));
        }
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

} // namespace normaris::docx
