#pragma once
// The document model, in no file's format: what a RecordingTypist (the .docx and the
// PDF typists) holds of the document until it is written: paragraphs of runs, each run
// with the font it was typed in.
// A paragraph's settings may still change while the cursor is in it, so nothing is
// written before the whole document is there.

#include "document/FontKeepingTypist.h"

#include <QList>
#include <QString>
#include <variant>

namespace normaris::model {

using Font = TypedFont;

// Text in one font, or a page break typed in that font.
struct Run {
    Font font;
    QString text; // may hold tabs; never a line end or a character XML can't carry
    bool pageBreak = false;
};

struct Paragraph {
    Typist::ParagraphStyle style = Typist::ParagraphStyle::Body;
    Typist::Alignment alignment = Typist::Alignment::Left;
    int indent = 0; // in characters, as Typist::setCharacterUnitFirstLineIndent
    QList<Run> runs;
    // The font of the paragraph mark: the one in force when the paragraph ended.
    // It gives an empty paragraph its height, so blank lines under a big title
    // keep the size they were typed in.
    Font mark;
};

// A table of fixed column widths; the rows marked as header repeat at the top of
// every page the table runs over.
struct TableCell {
    QList<Paragraph> paragraphs; // at least one is written, as a cell must hold one
};

struct TableRow {
    QList<TableCell> cells;
    bool header = false;
};

struct Table {
    QList<int> columnWidths; // in twips
    QList<TableRow> rows;
};

// What a document's body is made of, in order.
using Block = std::variant<Paragraph, Table>;

// The section of a document: A4 upright with the Japanese blank document's margins,
// or A4 lying; and whether its foot carries the page number.
struct PageSetup {
    bool landscape = false;
    bool pageNumbers = false;
};

// The page, in twips: A4 with the margins of a Japanese word processor's blank
// document (35 mm at the top, 30 mm elsewhere) upright; lying, 20 mm at top and
// bottom and 25 mm at the sides, which leaves two columns of text room enough.
// The footer stands 17.5 mm above the page's foot.
struct PageSize {
    int width, height, top, right, bottom, left, footer;
};
inline constexpr PageSize kPortrait{11906, 16838, 1985, 1701, 1701, 1701, 992};
inline constexpr PageSize kLandscape{16838, 11906, 1134, 1418, 1134, 1418, 992};

inline const PageSize &pageSize(const PageSetup &setup) { return setup.landscape ? kLandscape : kPortrait; }

// A table cell keeps its text this far from its left and right lines, in twips.
inline constexpr int kCellMargin = 108;

} // namespace normaris::model
