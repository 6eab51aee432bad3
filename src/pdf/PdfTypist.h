#pragma once
// A Typist that lays a finished document out on A4 pages itself and writes it as a
// PDF, or prints it: the same pages as the .docx (its margins, its line grid of
// 18 pt, its page numbers in the footer and none on a cover), with the Japanese
// font embedded, the labels and hanging indents, the colours and the page breaks.
// Headings are kept with the text that follows them, and a paragraph leaves
// neither its first line alone at a page's foot nor its last at a page's head.
//
// It needs a QGuiApplication: the fonts come from the platform.

#include "document/RecordingTypist.h"

class QPagedPaintDevice;

namespace normaris {

class PdfTypist : public RecordingTypist {
public:
    // Writes what was typed so far as a PDF at path, replacing a file there only
    // once the new one is complete. Returns the number of pages. Throws Failure.
    int save(const QString &path, const QString &title = {}) const;

    // Paints the pages onto a printer or another paged device, set to A4 with no
    // margins of its own. Returns the number of pages. Throws Failure.
    int paint(QPagedPaintDevice &device) const;
};

} // namespace normaris
