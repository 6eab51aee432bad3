#pragma once
// The paragraph styles of a finished document, one row each: the format the
// renderer types for paragraphs of the style (so that a typist that keeps styles
// carries it by the style and writes only what differs), the outline level of the
// headings, and how the style holds a page together.

#include "document/Typist.h"

#include <array>

namespace normaris {

// Where a paragraph of the style stands in the document.
enum class DocumentPart {
    Cover,    // the cover page, which shows no page number
    Contents, // the table of contents around its entries
    Entry,    // an entry of the table of contents, which a word processor can make again from the headings
    Text,     // the body, the closing lines and the forms
};

struct ParagraphStyleInfo {
    Typist::ParagraphStyle style;
    const char16_t *id;          // the style's identifier in a document file
    const char16_t *name;        // the name a word processor shows
    Typist::ParagraphStyle next; // the style of the paragraph that follows one of this style
    Typist::Alignment alignment;
    int indent;  // in characters, as Typist::setCharacterUnitFirstLineIndent
    double size; // in points
    bool bold;
    int outlineLevel;  // 1 for 章, 2 for 条, 0 for text
    bool keepWithNext; // never the last line of a page
    DocumentPart part;
};

// Widow and orphan control holds for every style: a paragraph of several lines
// leaves neither its first line alone at a page's foot nor its last at the head.
// The names of the table of contents are those a word processor gives the entries
// of the table it makes itself, so that an update of the table keeps their format.
// The 章 and 条 headings are the word processor's own "heading 1" and "heading 2"
// (a Japanese word processor shows them as 見出し 1 and 見出し 2) with the format of
// the rules, so that other readers of the file (converters, screen readers) find them
// as headings.
inline constexpr std::array<ParagraphStyleInfo, 16> kParagraphStyles = {{
    // style, id, name, next, alignment, indent, size, bold, outline level, keep with next, part
    {Typist::ParagraphStyle::Body, u"Normal", u"Normal", Typist::ParagraphStyle::Body, Typist::Alignment::Left, 0, 10.5, false, 0, false,
     DocumentPart::Text},
    {Typist::ParagraphStyle::Cover, u"Cover", u"表紙", Typist::ParagraphStyle::Cover, Typist::Alignment::Center, 0, 10.5, false, 0, false,
     DocumentPart::Cover},
    {Typist::ParagraphStyle::Title, u"CoverTitle", u"表題", Typist::ParagraphStyle::Cover, Typist::Alignment::Center, 0, 10.5, false, 0,
     false, DocumentPart::Cover},
    {Typist::ParagraphStyle::ContentsTitle, u"ContentsTitle", u"目次見出し", Typist::ParagraphStyle::ContentsTitle,
     Typist::Alignment::Center, 0, 18, false, 0, true, DocumentPart::Contents},
    {Typist::ParagraphStyle::ContentsName, u"ContentsName", u"目次表題", Typist::ParagraphStyle::Contents1, Typist::Alignment::Left, 0, 12,
     false, 0, true, DocumentPart::Contents},
    {Typist::ParagraphStyle::Contents1, u"TOC1", u"toc 1", Typist::ParagraphStyle::Contents1, Typist::Alignment::Left, 0, 10.5, false, 0,
     false, DocumentPart::Entry},
    {Typist::ParagraphStyle::Contents2, u"TOC2", u"toc 2", Typist::ParagraphStyle::Contents2, Typist::Alignment::Left, 0, 10.5, false, 0,
     false, DocumentPart::Entry},
    {Typist::ParagraphStyle::DocumentName, u"DocumentName", u"規程名", Typist::ParagraphStyle::Body, Typist::Alignment::Center, 0, 14, true,
     0, true, DocumentPart::Text},
    {Typist::ParagraphStyle::Chapter, u"Heading1", u"heading 1", Typist::ParagraphStyle::Body, Typist::Alignment::Center, 0, 10.5, true, 1,
     true, DocumentPart::Text},
    {Typist::ParagraphStyle::Article, u"Heading2", u"heading 2", Typist::ParagraphStyle::Body, Typist::Alignment::Left, 0, 10.5, false, 2,
     true, DocumentPart::Text},
    {Typist::ParagraphStyle::Preamble, u"Preamble", u"前文", Typist::ParagraphStyle::Preamble, Typist::Alignment::Left, 0, 10.5, false, 0,
     false, DocumentPart::Text},
    {Typist::ParagraphStyle::Paragraph, u"Paragraph", u"項", Typist::ParagraphStyle::Paragraph, Typist::Alignment::Left, -1, 10.5, false, 0,
     false, DocumentPart::Text},
    {Typist::ParagraphStyle::Item, u"Item", u"号", Typist::ParagraphStyle::Item, Typist::Alignment::Left, -2, 10.5, false, 0, false,
     DocumentPart::Text},
    {Typist::ParagraphStyle::Maru, u"Maru", u"号の細分①", Typist::ParagraphStyle::Maru, Typist::Alignment::Left, -3, 10.5, false, 0, false,
     DocumentPart::Text},
    {Typist::ParagraphStyle::Iroha, u"Iroha", u"号の細分イ", Typist::ParagraphStyle::Iroha, Typist::Alignment::Left, -4, 10.5, false, 0,
     false, DocumentPart::Text},
    {Typist::ParagraphStyle::Form, u"Form", u"届出様式", Typist::ParagraphStyle::Form, Typist::Alignment::Left, 0, 10.5, false, 0, false,
     DocumentPart::Text},
}};

// The row of a style. Every style has one.
inline const ParagraphStyleInfo &paragraphStyleInfo(Typist::ParagraphStyle style)
{
    for (const ParagraphStyleInfo &info : kParagraphStyles)
        if (info.style == style)
            return info;
    return kParagraphStyles.front();
}

} // namespace normaris
