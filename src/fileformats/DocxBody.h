#pragma once
// The main part of a .docx, word/document.xml: the paragraphs in their styles
// with what they have of their own, the table of contents as a field over its
// entries, then the page set-up (A4, the margins a Japanese word processor starts
// with, the footer with the page number, none on a cover).

#include "fileformats/DocxModel.h"

#include <QByteArray>

namespace normaris::docx {

QByteArray documentXml(const QList<Paragraph> &paragraphs);

} // namespace normaris::docx
