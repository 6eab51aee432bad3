#pragma once
// The typing operations that a finished document is written with. The renderer
// knows nothing else of the output: it types text at a cursor, ends paragraphs,
// breaks pages and sets the font and the paragraph format as it goes.
//
// The model is that of a word processor's cursor:
// - font settings (name, size, bold, colour, double strike-through) apply to the
//   text typed after them, and stay until changed, also across paragraphs;
// - paragraph settings (alignment, first-line indent) apply to the paragraph the
//   cursor is in, and a new paragraph starts with those of the one it ends.
// A new document starts in ＭＳ 明朝, 10.5 pt, black, left aligned, no indent.
//
// Beside the format, the renderer names what a paragraph is (a chapter heading, a
// 項, an entry of the table of contents …) with setParagraphStyle. A typist that
// keeps styles uses the name to carry the format by a style and to give headings
// their outline level; the format typed stays what the reader sees either way.

#include <QString>

namespace normaris {

struct CompositionRow;

class Typist {
public:
    enum class Alignment { Left = 0, Center = 1, Right = 2 };
    // The colour values a word processor's automation uses: blue in the high byte.
    enum class Color : int { Black = 0, Blue = 16711680, Red = 255 };

    // What a paragraph is. Set like the other paragraph settings: it applies to the
    // paragraph the cursor is in, and a new paragraph takes the style that follows
    // it (see ParagraphStyles.h: after a heading, the body text).
    enum class ParagraphStyle {
        Body,          // text that is none of the below: 付則 lines, blank lines
        Cover,         // the cover page around the title
        Title,         // the document's formal name on the cover
        ContentsTitle, // 目　次
        ContentsName,  // the document's name at the head of the table of contents
        Contents1,     // an entry of the table of contents: a chapter
        Contents2,     // an entry of the table of contents: an article
        DocumentName,  // the document's name above the body
        Chapter,       // 第１章  総則
        Article,       // 第１条（目的）
        Preamble,      // 前文
        Paragraph,     // 項
        Item,          // 号
        Maru,          // ①～⑳
        Iroha,         // イ～ネ
        Form,          // the filing forms and the signature block
    };

    static constexpr double kBaseSize = 10.5;
    static inline const QString kMinchoFont = QStringLiteral("ＭＳ 明朝");

    virtual ~Typist() = default;

    virtual void typeText(const QString &text) = 0;
    virtual void typeParagraph() = 0;
    virtual void insertPageBreak() = 0;

    virtual void setFontName(const QString &name) = 0;
    virtual void setFontSize(double points) = 0;
    virtual void setBold(bool on) = 0;
    virtual void setColor(Color color) = 0;
    virtual void setDoubleStrikeThrough(bool on) = 0;

    virtual void setAlignment(Alignment alignment) = 0;
    // In characters; a negative value is a hanging indent of that many characters:
    // the first line at the margin, the lines after it indented.
    virtual void setCharacterUnitFirstLineIndent(int characters) = 0;
    // A typist that knows no styles ignores it.
    virtual void setParagraphStyle(ParagraphStyle) {}

    // The body of a document announces each row of the work data before the
    // keystrokes that print it, and its own end. Only a typist that keeps the
    // printed text row by row listens; the others type on as before.
    virtual void startRow(const CompositionRow &) {}
    virtual void endRows() {}
};

} // namespace normaris
