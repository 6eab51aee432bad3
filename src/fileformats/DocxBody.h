#pragma once
// The main part of a .docx, word/document.xml: the paragraphs with their runs,
// then the page set-up (A4, the margins a Japanese word processor starts with).

#include "fileformats/DocxFormat.h"
#include "document/DocumentModel.h"

#include <QByteArray>

class QXmlStreamWriter;

namespace normaris::docx {

// The document model's parts by their own names.
using namespace model;

QByteArray documentXml(const QList<Paragraph> &paragraphs);
// Paragraphs and tables under the page set-up given. A footer with the page number
// is the part word/footer1.xml, related as rId3 (see DocxParts.h).
QByteArray documentXml(const QList<Block> &blocks, const PageSetup &setup);

// The width of the text on a page of the set-up, in twips.
int textWidth(const PageSetup &setup);

} // namespace normaris::docx
