#pragma once
// The parts of a .docx that do not depend on what was typed: the content types,
// the relationships, the styles with the document's base font, and the settings.

#include <QByteArray>

namespace normaris::docx {

QByteArray contentTypesXml();      // [Content_Types].xml
QByteArray packageRelationsXml();  // _rels/.rels
QByteArray documentRelationsXml(); // word/_rels/document.xml.rels
QByteArray stylesXml();            // word/styles.xml
QByteArray settingsXml();          // word/settings.xml

} // namespace normaris::docx
