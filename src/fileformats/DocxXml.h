#pragma once
// Shared pieces of the XML parts of a .docx: the namespaces and the
// one-attribute elements that WordprocessingML is mostly made of.

#include <QString>
#include <QXmlStreamWriter>

namespace normaris::docx {

inline const QString kWordNs = QStringLiteral("http://schemas.openxmlformats.org/wordprocessingml/2006/main");
inline const QString kRelationshipsNs = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");

// Both slots of a flag, on or off: <w:b/><w:bCs/> or <w:b w:val="0"/><w:bCs w:val="0"/>.
inline void writeFlag(QXmlStreamWriter &xml, const QString &name, bool on)
{
    xml.writeEmptyElement(kWordNs, name);
    if (!on)
        xml.writeAttribute(kWordNs, QStringLiteral("val"), QStringLiteral("0"));
}

// <w:name w:val="value"/>
inline void writeVal(QXmlStreamWriter &xml, const QString &name, const QString &value)
{
    xml.writeEmptyElement(kWordNs, name);
    xml.writeAttribute(kWordNs, QStringLiteral("val"), value);
}

// Starts a part with the XML declaration; a part depends on no outside
// definitions, so it says standalone, as word processors write it.
inline void startPart(QXmlStreamWriter &xml) { xml.writeStartDocument(QStringLiteral("1.0"), true); }

// A WordprocessingML part: the declaration, then its root element in the w namespace.
inline void startWordPart(QXmlStreamWriter &xml, const QString &root)
{
    startPart(xml);
    xml.writeNamespace(kWordNs, QStringLiteral("w"));
    xml.writeStartElement(kWordNs, root);
}

// A field in runs: its start, the instruction, the separator before its stored
// result. The result follows as ordinary runs, then endField.
inline void beginField(QXmlStreamWriter &xml, const QString &instruction)
{
    const auto fieldChar = [&](const QString &type) {
        xml.writeStartElement(kWordNs, QStringLiteral("r"));
        xml.writeEmptyElement(kWordNs, QStringLiteral("fldChar"));
        xml.writeAttribute(kWordNs, QStringLiteral("fldCharType"), type);
        xml.writeEndElement();
    };
    fieldChar(QStringLiteral("begin"));
    xml.writeStartElement(kWordNs, QStringLiteral("r"));
    xml.writeStartElement(kWordNs, QStringLiteral("instrText"));
    xml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml.writeCharacters(u' ' + instruction + u' ');
    xml.writeEndElement();
    xml.writeEndElement();
    fieldChar(QStringLiteral("separate"));
}

inline void endField(QXmlStreamWriter &xml)
{
    xml.writeStartElement(kWordNs, QStringLiteral("r"));
    xml.writeEmptyElement(kWordNs, QStringLiteral("fldChar"));
    xml.writeAttribute(kWordNs, QStringLiteral("fldCharType"), QStringLiteral("end"));
    xml.writeEndElement();
}

} // namespace normaris::docx
