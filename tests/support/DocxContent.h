#pragma once
// Reads a .docx back for checks: its parts out of the zip, and the paragraphs
// of word/document.xml with their properties and runs.

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace normaris::test {

// The entries of a zip by name; empty when the file is no zip.
QMap<QString, QByteArray> zipEntries(const QString &path);

// The properties under a pPr or rPr, flattened: "b" for an element without
// attributes, "sz@val" = "28" for each attribute (local names).
using Properties = QMap<QString, QString>;

struct DocxRun {
    Properties props;
    QString text; // the w:t texts, a w:tab as '\t'
    bool pageBreak = false;
    // Every w:t with blanks at its ends or two in a row says xml:space="preserve".
    bool preserved = true;
};

struct DocxParagraph {
    Properties props;     // pPr, without the mark's font
    Properties markProps; // pPr/rPr
    QList<DocxRun> runs;
    QString text() const;
};

struct DocxBody {
    QList<DocxParagraph> paragraphs;
    QString error; // the reader's error, empty when well-formed
};

DocxBody readBody(const QByteArray &documentXml);

// The reader's error for an XML text, empty when it is well-formed.
QString xmlError(const QByteArray &xml);

// Every pPr and rPr whose children are out of the order the schema requires, or
// hold an element not known here, described for the failure message.
QStringList propertyOrderErrors(const QByteArray &xml);

} // namespace normaris::test
