#pragma once
// The PDF file and the paged device that the program's PDF writers share: A4 with
// no margins of the device's own (the layout places everything itself), and a file
// that replaces an earlier one only once it is complete.

#include <QPagedPaintDevice>
#include <QPainter>
#include <QString>

#include "pdf/PdfOutline.h"

#include <functional>

namespace normaris::pdf {

// Paints onto the page: newPage starts the next one. Answers the number of pages.
using PagePainter = std::function<int(QPainter &painter, const std::function<bool()> &newPage)>;

// Sets the device to A4, upright or lying, and paints. Throws Failure.
int paintPages(QPagedPaintDevice &device, bool landscape, const PagePainter &paint);

// The same into a PDF file at path, with the title in its properties and, when the
// painting filled outline, its bookmarks. Throws Failure.
int savePdf(const QString &path, const QString &title, bool landscape, const PagePainter &paint,
            const QList<OutlineEntry> *outline = nullptr);

} // namespace normaris::pdf
