#include "fileformats/DocxTypist.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxParts.h"
#include "fileformats/ZipPackage.h"

namespace normaris {

void DocxTypist::save(const QString &path) const
{
    const QList<docx::Paragraph> all = paragraphs();
    // [Content_Types].xml first, where readers that sniff a package look for it.
    writeZipFile(path, {
                           {QStringLiteral("[Content_Types].xml"), docx::contentTypesXml(true)},
                           {QStringLiteral("_rels/.rels"), docx::packageRelationsXml()},
                           {QStringLiteral("word/document.xml"), docx::documentXml(all)},
                           {QStringLiteral("word/_rels/document.xml.rels"), docx::documentRelationsXml(true)},
                           {QStringLiteral("word/styles.xml"), docx::stylesXml()},
                           {QStringLiteral("word/settings.xml"), docx::settingsXml()},
                           {QStringLiteral("word/footer1.xml"), docx::pageNumberFooterXml()},
                       });
}

} // namespace normaris
