#include "fileformats/DocxPackage.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxParts.h"
#include "fileformats/ZipPackage.h"

namespace normaris::docx {

void saveDocx(const QString &path, const QList<Block> &blocks, const PageSetup &setup)
{
    QList<ZipEntry> entries{
        {QStringLiteral("[Content_Types].xml"), contentTypesXml(setup.pageNumbers)},
        {QStringLiteral("_rels/.rels"), packageRelationsXml()},
        {QStringLiteral("word/document.xml"), documentXml(blocks, setup)},
        {QStringLiteral("word/_rels/document.xml.rels"), documentRelationsXml(setup.pageNumbers)},
        {QStringLiteral("word/styles.xml"), stylesXml()},
        {QStringLiteral("word/settings.xml"), settingsXml()},
    };
    if (setup.pageNumbers)
        entries.append({QStringLiteral("word/footer1.xml"), pageNumberFooterXml()});
    writeZipFile(path, entries);
}

} // namespace normaris::docx
