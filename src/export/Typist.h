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

#include <QString>

namespace normaris {

struct CompositionRow;

class Typist {
public:
    enum class Alignment { Left = 0, Center = 1, Right = 2 };
    // The colour values a word processor's automation uses: blue in the high byte.
    enum class Color : int { Black = 0, Blue = 16711680, Red = 255 };

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

    // The body of a document announces each row of the work data before the
    // keystrokes that print it, and its own end. Only a typist that keeps the
    // printed text row by row listens; the others type on as before.
    virtual void startRow(const CompositionRow &) {}
    virtual void endRows() {}
};

} // namespace normaris
