#include "base/DataLayout.h"

#include <QCollator>
#include <QDir>
#include <QLockFile>
#include <algorithm>

namespace normaris {

QStringList DataLayout::companyList() const
{
    QStringList names = QDir(dataDir()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    names.removeIf([](const QString &name) { return name.startsWith(workFolderPrefix()); });
    sortCompanyNames(names);
    return names;
}

void sortCompanyNames(QStringList &names)
{
    QCollator collator(QLocale(QLocale::Japanese, QLocale::Japan));
    collator.setNumericMode(true);
    std::sort(names.begin(), names.end(), collator);
}

void DataLayout::removeLeftoverWorkFolders() const
{
    const QStringList names = QDir(dataDir()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString &name : names) {
        if (!name.startsWith(workFolderPrefix()))
            continue;
        const QString folder = dataDir() + u'/' + name;
        // The program making or deleting the company holds this lock; a dead one does not.
        QLockFile lock(folder + QStringLiteral("/work.lock"));
        lock.setStaleLockTime(0);
        if (!lock.tryLock(0))
            continue;
        lock.unlock();
        QDir(folder).removeRecursively();
    }
}

} // namespace normaris
