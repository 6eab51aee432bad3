#pragma once
// A client's current rules as lines of text, read from the file they keep them in:
// .txt (UTF-8 or CP932, told apart by which one decodes), .docx (its document part,
// with the numbers Word generates written back into the text and tables as rows),
// .pdf (its text in reading order) and .odt, .doc, .rtf (converted to .docx by the
// office suite first). The file is never trusted: a zip past the limits, XML with a
// DTD or nested past reason, a locked or text-less PDF each refuse the file.

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace normaris::intake {

struct RulesLine {
    QString text;
    bool tableRow = false; // the cells of one table row, joined by a full-width space
};

struct RulesLines {
    QList<RulesLine> lines;
    // The lines are the lines of a page layout: a line that continues the one above it
    // is a paragraph wrapped by the page, not a stray line.
    bool laidOut = false;
};

// What the reading found, or the message that refuses the file (naming it).
struct RulesFileResult {
    std::optional<RulesLines> lines;
    QString refusal;
};

// Limits of a .docx package.
constexpr qint64 kDocxUnpackedLimit = 50LL * 1024 * 1024;
constexpr qint64 kDocxEntryLimit = 10000;
constexpr int kXmlDepthLimit = 256;
// How long the office suite may take to convert one file, in milliseconds.
constexpr int kConversionTimeLimit = 120000;

// Whether the file needs the office suite (and so may take a while).
bool needsConversion(const QString &path);

// Reads the file by its name's extension.
RulesFileResult readRulesFile(const QString &path);

// The pieces, each for its own kind of file (path names the file in the messages).
RulesFileResult readTextBytes(const QString &path, const QByteArray &bytes);
RulesFileResult readDocx(const QString &path);
RulesFileResult readPdf(const QString &path);
RulesFileResult readConverted(const QString &path);

} // namespace normaris::intake
