#pragma once
// Where things stand beneath the program folder (AppPath):
//   Data/規程原本db.sqlite        the seed file every new company is copied from
//   Data/<N>/<N>.sqlite           the data file of company N; the folder's name is the company's
//   Data/<N>/<N>.sqlitewk         the work file while the data file is being optimised
//   BackupDB/<N>/                 the default place of a backup of company N
//   help/<context>.html           the help pages
// Company names reach these functions only after CheckCompanyName has passed them.

#include <QString>
#include <QStringList>

namespace normaris {

struct DataLayout {
    DataLayout() = default;
    explicit DataLayout(QString programFolder, QString companyStore = {})
        : appPath(std::move(programFolder)), store(std::move(companyStore))
    {
    }

    QString appPath;
    // Where the companies are kept: empty for the Data folder beneath appPath, or the
    // connection string of the office's PostgreSQL database (see rulebase/CompanyStore.h).
    // The seed file, the backups and the help pages stay beneath appPath either way.
    QString store{};

    QString dataDir() const { return appPath + QStringLiteral("/Data"); }
    QString seedFile() const { return dataDir() + QStringLiteral("/規程原本db.sqlite"); }
    QString companyDir(const QString &name) const { return dataDir() + u'/' + name; }
    QString companyFile(const QString &name) const { return companyDir(name) + u'/' + name + QStringLiteral(".sqlite"); }
    QString backupRoot() const { return appPath + QStringLiteral("/BackupDB"); }
    QString backupDir(const QString &name) const { return backupRoot() + u'/' + name; }

    // A company being made, or being deleted, lives in a work folder inside the data
    // folder under this prefix: never listed, and renamed into place (or aside) whole.
    static QString workFolderPrefix() { return QStringLiteral(".normaris-work-"); }
    QString newCompanyWorkDir(const QString &name) const { return dataDir() + u'/' + workFolderPrefix() + QStringLiteral("new-") + name; }
    QString deletedCompanyWorkDir(const QString &name) const
    {
        return dataDir() + u'/' + workFolderPrefix() + QStringLiteral("deleted-") + name;
    }

    // Whether the program keeps the name for itself inside the data folder: a leading "."
    // (the work folders) or the seed file's name. No company takes such a name.
    static bool isReservedName(const QString &name) { return name.startsWith(u'.') || name == QStringLiteral("規程原本db.sqlite"); }

    // The companies: every folder inside the data folder, sorted by name.
    QStringList companyList() const;
    // Removes the work folders a crash left behind (not one another program is still using).
    void removeLeftoverWorkFolders() const;
};

// The work file of a data file: its path with "wk" behind it.
inline QString workFileOf(const QString &dataFile) { return dataFile + QStringLiteral("wk"); }

} // namespace normaris
