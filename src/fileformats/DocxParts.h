#pragma once
// The parts of a .docx that do not depend on what was typed: the content types,
// the relationships, the styles with the document's base font, the settings and
// the footer with the page number.

#include <QByteArray>

namespace normaris::docx {

// With withFooter the package holds word/footer1.xml, related to the document as rId3.
QByteArray contentTypesXml(bool withFooter = false);      // [Content_Types].xml
QByteArray packageRelationsXml();                         // _rels/.rels
QByteArray documentRelationsXml(bool withFooter = false); // word/_rels/document.xml.rels
QByteArray pageNumberFooterXml();                         // word/footer1.xml: the page number, centred
QByteArray stylesXml();                                   // word/styles.xml
QByteArray settingsXml();                                 // word/settings.xml

} // namespace normaris::docx
