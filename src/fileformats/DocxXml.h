#pragma once
// Shared pieces of the XML parts of a .docx: the namespaces and the
// one-attribute elements that WordprocessingML is mostly made of.

#include <QString>
#include <QXmlStreamWriter>

namespace normaris::docx {

inline const QString kWordNs = QStringLiteral("http://schemas.openxmlformats.org/wordprocessingml/2006/main");
inline const QString kRelationshipsNs = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships");

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

} // namespace normaris::docx
