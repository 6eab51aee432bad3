#pragma once
// A report as a page of the program's PDF: a title, the company, lines before the table,
// the table (A4 lying, the header row on every page) and lines after it. The 法令チェック表
// and the report of a dictionary update are laid out so.
//
// It needs a QGuiApplication: the fonts come from the platform.

#include <QList>
#include <QString>
#include <QStringList>

namespace normaris::pdf {

struct ReportTable {
    QString title;
    QString company;  // right-aligned below the title; none when empty
    QStringList lead; // a paragraph each, before the table
    QStringList headings;
    QList<int> shares;       // the share of the text width each column takes, in per mille
    QList<QStringList> rows; // a cell's text; each of its lines is a paragraph of its own
    QStringList trail;       // a paragraph each, after the table
};

// Writes the PDF at path (staged, renamed into place only when complete) and answers its
// number of pages. Throws Failure.
int writeReportPdf(const QString &path, const ReportTable &report);

} // namespace normaris::pdf
