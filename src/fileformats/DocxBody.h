#pragma once
// The main part of a .docx, word/document.xml: the paragraphs with their runs,
// then the page set-up (A4, the margins a Japanese word processor starts with).

#include "fileformats/DocxModel.h"

#include <QByteArray>

class QXmlStreamWriter;

namespace normaris::docx {

// One character of the base size (10.5 pt) in twentieths of a point: the unit of
// the character-based indents.
inline constexpr int kTwipsPerCharacter = 210;

QByteArray documentXml(const QList<Paragraph> &paragraphs);
// Paragraphs and tables under the page set-up given. A footer with the page number
// is the part word/footer1.xml, related as rId3 (see DocxParts.h).
QByteArray documentXml(const QList<Block> &blocks, const PageSetup &setup);

// The width of the text on a page of the set-up, in twips.
int textWidth(const PageSetup &setup);

} // namespace normaris::docx
