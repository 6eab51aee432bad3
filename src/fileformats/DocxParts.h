#pragma once
// The parts of a .docx that do not depend on what was typed: the content types,
// the relationships, the styles with the document's base font, the settings and
// the footer with the page number.

#include <QByteArray>

namespace normaris::docx {

QByteArray contentTypesXml();      // [Content_Types].xml
QByteArray packageRelationsXml();  // _rels/.rels
QByteArray documentRelationsXml(); // word/_rels/document.xml.rels
QByteArray stylesXml();            // word/styles.xml
QByteArray settingsXml();          // word/settings.xml
QByteArray footerXml();            // word/footer1.xml

// The relationship by which the page set-up names the footer.
inline constexpr char16_t kFooterRelation[] = u"rId3";

} // namespace normaris::docx
