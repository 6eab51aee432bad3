#include "fileformats/DocxParts.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxXml.h"

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

QByteArray relationsXml(std::initializer_list<Relation> relations)
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

QByteArray contentTypesXml()
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
    xml.writeEndDocument();
    return out;
}

QByteArray packageRelationsXml() { return relationsXml({{"officeDocument", "word/document.xml"}}); }

QByteArray documentRelationsXml() { return relationsXml({{"styles", "styles.xml"}, {"settings", "settings.xml"}}); }

// The document's defaults are the base font of every Typist: ＭＳ 明朝 for
// Japanese and Latin text alike, 10.5 pt, black. The Latin language stays en-US
// beside Japanese, as a Japanese word processor writes it, so that the ASCII
// labels are not taken for Japanese by spelling and hyphenation.
QByteArray stylesXml()
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startWordPart(xml, QStringLiteral("styles"));

    xml.writeStartElement(kWordNs, QStringLiteral("docDefaults"));
    xml.writeStartElement(kWordNs, QStringLiteral("rPrDefault"));
    xml.writeStartElement(kWordNs, QStringLiteral("rPr"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("rFonts"));
    xml.writeAttribute(kWordNs, QStringLiteral("ascii"), Typist::kMinchoFont);
    xml.writeAttribute(kWordNs, QStringLiteral("eastAsia"), Typist::kMinchoFont);
    xml.writeAttribute(kWordNs, QStringLiteral("hAnsi"), Typist::kMinchoFont);
    xml.writeAttribute(kWordNs, QStringLiteral("cs"), Typist::kMinchoFont);
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

    // The default paragraph style. Widow control is off, as in Japanese
    // documents, where a lone line at a page's foot is normal.
    xml.writeStartElement(kWordNs, QStringLiteral("style"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("paragraph"));
    xml.writeAttribute(kWordNs, QStringLiteral("default"), QStringLiteral("1"));
    xml.writeAttribute(kWordNs, QStringLiteral("styleId"), QStringLiteral("Normal"));
    writeVal(xml, QStringLiteral("name"), QStringLiteral("Normal"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("qFormat"));
    xml.writeStartElement(kWordNs, QStringLiteral("pPr"));
    writeVal(xml, QStringLiteral("widowControl"), QStringLiteral("0"));
    xml.writeEndElement();
    xml.writeEndElement();

    xml.writeStartElement(kWordNs, QStringLiteral("style"));
    xml.writeAttribute(kWordNs, QStringLiteral("type"), QStringLiteral("character"));
    xml.writeAttribute(kWordNs, QStringLiteral("default"), QStringLiteral("1"));
    xml.writeAttribute(kWordNs, QStringLiteral("styleId"), QStringLiteral("DefaultParagraphFont"));
    writeVal(xml, QStringLiteral("name"), QStringLiteral("Default Paragraph Font"));
    writeVal(xml, QStringLiteral("uiPriority"), QStringLiteral("1"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("semiHidden"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("unhideWhenUsed"));
    xml.writeEndElement();

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
    xml.writeStartElement(kWordNs, QStringLiteral("compat"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("compatSetting"));
    xml.writeAttribute(kWordNs, QStringLiteral("name"), QStringLiteral("compatibilityMode"));
    xml.writeAttribute(kWordNs, QStringLiteral("uri"), QStringLiteral("http://schemas.microsoft.com/office/word"));
    xml.writeAttribute(kWordNs, QStringLiteral("val"), QStringLiteral("15"));
    xml.writeEndElement();
    xml.writeEndDocument();
    return out;
}

} // namespace normaris::docx
