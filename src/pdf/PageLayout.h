#pragma once
// Lays paragraphs out onto pages and paints them: one pass over the document, with
// a look ahead over the paragraphs that a heading keeps together.

#include "fileformats/DocxModel.h"

#include <QPainter>

#include <functional>

namespace normaris::pdf {

// The page of a Japanese word processor's blank document, in points.
struct PageGeometry {
    double width = 595.3, height = 841.9;                            // A4
    double top = 99.25, right = 85.05, bottom = 85.05, left = 85.05; // as the .docx: 35 mm and 30 mm
    double footer = 49.6;                                            // from the page's foot to the footer
    double linePitch = 18;                                           // the line grid
};

// Paints every paragraph onto the painter's device, which must be at its first
// page; starts a new page through newPage. Returns the number of pages.
int paintDocument(QPainter &painter, const QList<docx::Paragraph> &paragraphs, const std::function<bool()> &newPage,
                  const PageGeometry &geometry = {});

} // namespace normaris::pdf
