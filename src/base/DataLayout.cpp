#include "base/DataLayout.h"

#include <QCollator>
#include <QDir>
#include <algorithm>

namespace normaris {

QStringList DataLayout::companyList() const
{
    QStringList names = QDir(dataDir()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    QCollator collator(QLocale(QLocale::Japanese, QLocale::Japan));
    collator.setNumericMode(true);
    std::sort(names.begin(), names.end(), collator);
    return names;
}

} // namespace normaris
