#include "fileformats/DocxParts.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxFormat.h"
#include "fileformats/DocxXml.h"
#include "document/ParagraphStyles.h"

#include <QXmlStreamWriter>

namespace normaris::docx {

namespace {

const QString kContentTypesNs = QStringLiteral("http://schemas.openxmlformats.org/package/2006/content-types");
const QString kPackageRelationshipsNs = QStringLiteral("http://schemas.openxmlformats.org/package/2006/relationships");
const QString kMainType = QStringLiteral("application/vnd.openxmlformats-officedocument.wordprocessingml.");

struct Relation {
    const char *type; // the last step of the relationship type
    const char *target;
};

QByteArray relationsXml(const QList<Relation> &relations)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startPart(xml);
    xml.writeDefaultNamespace(kPackageRelationshipsNs);
    xml.writeStartElement(kPackageRelationshipsNs, QStringLiteral("Relationships"));
    int id = 0;
    for (const Relation &r : relations) {
        xml.writeEmptyElement(kPackageRelationshipsNs, QStringLiteral("Relationship"));
        xml.writeAttribute(QStringLiteral("Id"), QStringLiteral("rId%1").arg(++id));
        xml.writeAttribute(QStringLiteral("Type"), kRelationshipsNs + u'/' + QLatin1String(r.type));
        xml.writeAttribute(QStringLiteral("Target"), QLatin1String(r.target));
    }
    xml.writeEndDocument();
    return out;
}

} // namespace

QByteArray contentTypesXml(bool withFooter)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startPart(xml);
    xml.writeDefaultNamespace(kContentTypesNs);
    xml.writeStartElement(kContentTypesNs, QStringLiteral("Types"));
    const auto byExtension = [&](const QString &extension, const QString &type) {
        xml.writeEmptyElement(kContentTypesNs, QStringLiteral("Default"));
        xml.writeAttribute(QStringLiteral("Extension"), extension);
        xml.writeAttribute(QStringLiteral("ContentType"), type);
    };
    const auto byPart = [&](const QString &part, const QString &type) {
        xml.writeEmptyElement(kContentTypesNs, QStringLiteral("Override"));
        xml.writeAttribute(QStringLiteral("PartName"), part);
        xml.writeAttribute(QStringLiteral("ContentType"), kMainType + type);
    };
    byExtension(QStringLiteral("rels"), QStringLiteral("application/vnd.openxmlformats-package.relationships+xml"));
    byExtension(QStringLiteral("xml"), QStringLiteral("application/xml"));
    byPart(QStringLiteral("/word/document.xml"), QStringLiteral("document.main+xml"));
    byPart(QStringLiteral("/word/styles.xml"), QStringLiteral("styles+xml"));
    byPart(QStringLiteral("/word/settings.xml"), QStringLiteral("settings+xml"));
    if (withFooter)
        byPart(QStringLiteral("/word/footer1.xml"), QStringLiteral("footer+xml"));
    xml.writeEndDocument();
    return out;
}

QByteArray packageRelationsXml() { return relationsXml({{"officeDocument", "word/document.xml"}}); }

QByteArray documentRelationsXml(bool withFooter)
{
    // In this order: the footer's id is rId3.
    QList<Relation> relations{{"styles", "styles.xml"}, {"settings", "settings.xml"}};
    if (withFooter)
        relations.append(Relation{"footer", "footer1.xml"});
    return relationsXml(relations);
}

namespace {

// The document's defaults are the base font of every Typist: ＭＳ 明朝 for
// Japanese and Latin text alike, 10.5 pt, black. The Latin language stays en-US
// beside Japanese, as a Japanese word processor writes it, so that the ASCII
// labels are not taken for Japanese by spelling and hyphenation.
void writeDefaults(QXmlStreamWriter &xml)
{
    xml.writeStartElement(kWordNs, QStringLiteral("docDefaults"));
    xml.writeStartElement(kWordNs, QStringLiteral("rPrDefault"));
    xml.writeStartElement(kWordNs, QStringLiteral("rPr"));
    writeFontSlots(xml, Typist::kMinchoFont);
    writeVal(xml, QStringLiteral("color"), QStringLiteral("000000"));
    writeVal(xml, QStringLiteral("kern"), QStringLiteral("2"));
    const QString size = QString::number(qRound(Typist::kBaseSize * 2));
    writeVal(xml, QStringLiteral("sz"), size);
    writeVal(xml, QStringLiteral("szCs"), size);
    xml.writeEmptyElement(kWordNs, QStringLiteral("lang"));
    xml.writeAttribute(kWordNs, QStringLiteral("val"), QStringLiteral("en-US"));
    xml.writeAttribute(kWordNs, QStringLiteral("eastAsia"), QStringLiteral("ja-JP"));
    xml.writeAttribute(kWordNs, QStringLiteral("bidi"), QStringLiteral("ar-SA"));
    xml.writeEndElement(); // rPr
    xml.writeEndElement(); // rPrDefault
    xml.writeStartElement(kWordNs, QStringLiteral("pPrDefault"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("pPr"));
    xml.writeEndElement();
    xml.writeEndElement(); // docDefaults
}

void startStyle(QXmlStreamWriter &xml, const QString &type, const QString &id, const QString &name, bool isDefault)
{
    xml.writeStartElement(kWordNs, QStringLiteral("style"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), type);
    if (isDefault)
        xml.writeAttribute(kWordNs, QStringLiteral("default"), QStringLiteral("1"));
    xml.writeAttribute(kWordNs, QStringLiteral("styleId"), id);
    writeVal(xml, QStringLiteral("name"), name);
}

// A paragraph style of the table, in the schema's order: name, basedOn, next,
// qFormat, pPr (keepNext, widowControl, ind, jc, outlineLvl), rPr. Every style
// but Normal is based on Normal and says only what it changes. Normal names the
// Japanese font for every slot, half-width letters and digits included, so that
// the labels and dates are set in the face of the text around them.
void writeParagraphStyle(QXmlStreamWriter &xml, const ParagraphStyleInfo &info)
{
    const bool normal = info.style == Typist::ParagraphStyle::Body;
    startStyle(xml, QStringLiteral("paragraph"), QString::fromUtf16(info.id), QString::fromUtf16(info.name), normal);
    if (!normal)
        writeVal(xml, QStringLiteral("basedOn"), QStringLiteral("Normal"));
    writeVal(xml, QStringLiteral("next"), QString::fromUtf16(paragraphStyleInfo(info.next).id));
    xml.writeEmptyElement(kWordNs, QStringLiteral("qFormat"));
    xml.writeStartElement(kWordNs, QStringLiteral("pPr"));
    if (info.keepWithNext)
        xml.writeEmptyElement(kWordNs, QStringLiteral("keepNext"));
    if (normal)
        xml.writeEmptyElement(kWordNs, QStringLiteral("widowControl"));
    writeIndent(xml, info.indent, 0);
    if (info.alignment != Typist::Alignment::Left)
        writeVal(xml, QStringLiteral("jc"), alignmentValue(info.alignment));
    if (info.outlineLevel > 0)
        writeVal(xml, QStringLiteral("outlineLvl"), QString::number(info.outlineLevel - 1));
    xml.writeEndElement(); // pPr
    Font font;
    font.size = info.size;
    font.bold = info.bold;
    if (normal) {
        xml.writeStartElement(kWordNs, QStringLiteral("rPr"));
        writeFontSlots(xml, Typist::kMinchoFont);
        xml.writeEndElement();
    } else {
        writeFont(xml, font, Font());
    }
    xml.writeEndElement(); // style
}

void writeCharacterStyle(QXmlStreamWriter &xml, const CharacterStyle &style)
{
    startStyle(xml, QStringLiteral("character"), style.id, style.name, false);
    writeVal(xml, QStringLiteral("basedOn"), QStringLiteral("DefaultParagraphFont"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("qFormat"));
    Font font;
    font.color = style.color;
    writeFont(xml, font, Font());
    xml.writeEndElement();
}

} // namespace

// The paragraph styles of the renderer's table, the default character style and
// the character styles of the coloured marks.
QByteArray stylesXml()
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("styles"));
    writeDefaults(xml);
    for (const ParagraphStyleInfo &info : kParagraphStyles)
        writeParagraphStyle(xml, info);

    startStyle(xml, QStringLiteral("character"), QStringLiteral("DefaultParagraphFont"), QStringLiteral("Default Paragraph Font"), true);
    writeVal(xml, QStringLiteral("uiPriority"), QStringLiteral("1"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("semiHidden"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("unhideWhenUsed"));
    xml.writeEndElement();
    for (const CharacterStyle &style : characterStyles())
        writeCharacterStyle(xml, style);

    xml.writeEndDocument();
    return out;
}

// A tab stop every four characters; punctuation compressed as in Japanese
// typesetting; and the layout rules of current word processors (mode 15), so
// that an opened file is not shown in a compatibility mode.
QByteArray settingsXml()
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("settings"));
    writeVal(xml, QStringLiteral("defaultTabStop"), QString::number(4 * kTwipsPerCharacter));
    writeVal(xml, QStringLiteral("characterSpacingControl"), QStringLiteral("compressPunctuation"));
    // The table of contents is a field whose stored result has no page numbers:
    // the word processor fills them in when it opens the document.
    writeVal(xml, QStringLiteral("updateFields"), QStringLiteral("true"));
    xml.writeStartElement(kWordNs, QStringLiteral("compat"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("compatSetting"));
    xml.writeAttribute(kWordNs, QStringLiteral("name"), QStringLiteral("compatibilityMode"));
    xml.writeAttribute(kWordNs, QStringLiteral("uri"), QStringLiteral("http://schemas.microsoft.com/office/word"));
    xml.writeAttribute(kWordNs, QStringLiteral("val"), QStringLiteral("15"));
    xml.writeEndElement();
    xml.writeEndDocument();
    return out;
}

// One centred paragraph with the number of the page, as a PAGE field whose
// stored result is 1 until the word processor lays the pages out.
QByteArray pageNumberFooterXml()
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("ftr"));
    xml.writeStartElement(kWordNs, QStringLiteral("p"));
    xml.writeStartElement(kWordNs, QStringLiteral("pPr"));
    writeVal(xml, QStringLiteral("jc"), QStringLiteral("center"));
    xml.writeEndElement();
    beginField(xml, QStringLiteral("PAGE"));
    xml.writeStartElement(kWordNs, QStringLiteral("r"));
    xml.writeTextElement(kWordNs, QStringLiteral("t"), QStringLiteral("1"));
    xml.writeEndElement();
    endField(xml);
    xml.writeEndElement(); // p
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
