#include "fileformats/DocxTypist.h"

#include "fileformats/DocxPackage.h"

namespace normaris {

// Every page numbered; documentXml leaves the number off a cover.
void DocxTypist::save(const QString &path) const
{
    const QList<model::Paragraph> all = paragraphs();
    docx::saveDocx(path, QList<model::Block>(all.cbegin(), all.cend()), model::PageSetup{false, true});
}

} // namespace normaris
