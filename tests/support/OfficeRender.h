#pragma once
// A real word processor's reading of a produced document: LibreOffice converts
// it to PDF (headless, with a profile of its own), poppler's tools read the PDF
// back. A missing tool is an error, not a reason to skip: CI installs both.

#include <QList>
#include <QString>

namespace normaris::test {

// Converts file to PDF in workDir and returns the PDF's path. On failure the
// path is empty and *error says why.
QString convertToPdf(const QString &file, const QString &workDir, QString *error);

// What one of poppler's tools (pdfinfo, pdffonts) says of a PDF.
QString pdfReport(const QString &tool, const QString &pdf, QString *error);

// The PDF's text, pages separated by form feeds; with layout, each line as it
// stands on the page, in the order of the page's lines.
QString pdfText(const QString &pdf, QString *error, bool layout = false);

// One line of text as laid out on its page, in points from the top left.
struct PdfLine {
    int page = 0; // from 1
    double xMin = 0, yMin = 0;
    QString text;
};
QList<PdfLine> pdfLines(const QString &pdf, QString *error);

} // namespace normaris::test
