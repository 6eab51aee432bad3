#pragma once
// Lays paragraphs out onto pages and paints them: one pass over the document, with
// a look ahead over the paragraphs that a heading keeps together.

#include "document/DocumentModel.h"
#include "pdf/PdfOutline.h"

#include <QPainter>

#include <functional>

namespace normaris::pdf {

// A page in points: its size, its margins, where its footer stands and its line grid.
struct PageGeometry {
    double width = 0, height = 0;
    double top = 0, right = 0, bottom = 0, left = 0;
    double footer = 0;     // from the page's foot to the footer
    double linePitch = 18; // the line grid
    double cellMargin = 0; // of a table cell, left and right

    // The page of the .docx of the same set-up.
    static PageGeometry of(const model::PageSetup &setup);
};

// Paints every paragraph onto the painter's device, which must be at its first
// page; starts a new page through newPage. Returns the number of pages. With an
// outline, appends to it every heading (章, 条: the styles of an outline level) where
// its first line stands.
// contentsPages are the page numbers of the entries of the table of contents, in
// order: each is set right-aligned after a dot leader on its entry's last line (an
// entry beyond the list gets none).
int paintDocument(QPainter &painter, const QList<model::Paragraph> &paragraphs, const std::function<bool()> &newPage,
                  const PageGeometry &geometry = PageGeometry::of({}), QList<OutlineEntry> *outline = nullptr,
                  const QList<int> &contentsPages = {});

// The page of each entry of the table of contents: the heading of the same text that
// follows the previous entry's heading in outline; 0 when none is found.
QList<int> contentsPagesOf(const QList<model::Paragraph> &paragraphs, const QList<OutlineEntry> &outline);

// The same for paragraphs and tables. A table row that does not fit on what is
// left of a page goes to the next one, where the header rows stand again; a row
// taller than a page is split between its lines. With an outline, appends to it a
// bookmark for every row of a table (not its header rows) and every heading.
int paintBlocks(QPainter &painter, const QList<model::Block> &blocks, const std::function<bool()> &newPage, const PageGeometry &geometry,
                QList<OutlineEntry> *outline = nullptr);

} // namespace normaris::pdf
