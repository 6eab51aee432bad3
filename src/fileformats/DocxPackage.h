#pragma once
// A .docx package around a document part made elsewhere: the fixed parts, and
// the page-number footer when the set-up asks for it.

#include "document/DocumentModel.h"

#include <QByteArray>
#include <QString>

namespace normaris::docx {

// The document model's parts by their own names.
using namespace model;

// Writes the blocks as a .docx at path, replacing a file there only once the new
// one is complete. Throws Failure.
void saveDocx(const QString &path, const QList<Block> &blocks, const PageSetup &setup);

} // namespace normaris::docx
