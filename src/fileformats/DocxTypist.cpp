#include "fileformats/DocxTypist.h"

#include "fileformats/DocxPackage.h"

namespace normaris {

// Every page numbered; documentXml leaves the number off a cover.
void DocxTypist::save(const QString &path) const
{
    const QList<docx::Paragraph> all = paragraphs();
    docx::saveDocx(path, QList<docx::Block>(all.cbegin(), all.cend()), docx::PageSetup{false, true});
}

} // namespace normaris
