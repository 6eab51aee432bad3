#pragma once
// The formats of WordprocessingML that the styles and the body share: a run's
// font and a paragraph's indent and alignment, each written as what differs from
// a base (the document's defaults, or the style the paragraph is in), and the
// character styles that carry the colours of the marks.

#include "document/DocumentModel.h"

#include <QXmlStreamWriter>

namespace normaris::docx {

// The document model's parts by their own names.
using namespace model;

// One character of the base size (10.5 pt) in twentieths of a point: the unit of
// the character-based indents.
inline constexpr int kTwipsPerCharacter = 210;

// A character style: text in a colour that says something to the reader.
struct CharacterStyle {
    QString id;
    QString name;
    Typist::Color color;
};
// Blue for a marker the user must still deal with, red for a warning line.
const QList<CharacterStyle> &characterStyles();
// The character style of a colour; null for black.
const CharacterStyle *characterStyleOf(Typist::Color color);

// <w:rFonts> naming the font for every slot: Latin, East Asian and complex script.
void writeFontSlots(QXmlStreamWriter &xml, const QString &font);

// <w:rPr> with what font has that base has not, nothing when they agree. A run
// in a character style names it (rStyle) and takes its colour from it.
void writeFont(QXmlStreamWriter &xml, const Font &font, const Font &base, const CharacterStyle *style = nullptr);

// <w:ind> for an indent in characters where it differs from the base's. A
// hanging indent of n characters is a left indent of n with the first line pulled
// back by n: the label stands at the margin and the wrapped lines n characters in.
void writeIndent(QXmlStreamWriter &xml, int characters, int base);

QString alignmentValue(Typist::Alignment alignment);

} // namespace normaris::docx
