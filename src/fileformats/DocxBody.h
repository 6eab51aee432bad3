#pragma once
// The main part of a .docx, word/document.xml: the paragraphs with their runs,
// then the page set-up (A4, the margins a Japanese word processor starts with).

#include "fileformats/DocxModel.h"

#include <QByteArray>

namespace normaris::docx {

// One character of the base size (10.5 pt) in twentieths of a point: the unit of
// the character-based indents.
inline constexpr int kTwipsPerCharacter = 210;

QByteArray documentXml(const QList<Paragraph> &paragraphs);

} // namespace normaris::docx
