#include "rulebase/FolderStore.h"

#include "base/FileOps.h"
#include "rulebase/CompanyCopy.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/Maintenance.h"
#include "rulebase/ServerStore.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace normaris {

namespace {

const QString kCopySourceConnection = QStringLiteral("normaris_copy_source");
const QString kNewFileConnection = QStringLiteral("normaris_new_file");
const QString kBackupConnection = QStringLiteral("normaris_backup");

// The files SQLite keeps beside a data file while it writes: never copied into a
// backup, where they would roll the snapshot back or forward on its first opening.
const QStringList kSideFileSuffixes = {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")};

// The new file takes its final name only once its tables are cleared. Through SQLite,
// so that the copy is of one moment and a journal beside the source is honoured rather
// than left behind.
void copyAndClear(const QString &sourceFile, const QString &dir, const QString &file, bool cleared)
{
    if (!QFileInfo(sourceFile).isFile())
        throw Failure(QStringLiteral("コピー元のデータファイル「%1」が見つかりません。").arg(sourceFile));
    const QString partial = dir + QStringLiteral("/作成中.sqlite");
    {
        const OpenMode mode = QFileInfo(sourceFile).isWritable() ? OpenMode::ReadWrite : OpenMode::ReadOnly;
        QSqlDatabase source = openCompanyDatabase(sourceFile, kCopySourceConnection, mode);
        execSql(source, QStringLiteral("VACUUM INTO ?"), {partial});
    }
    closeDatabase(kCopySourceConnection);
    QFile(partial).setPermissions(QFile(partial).permissions() | QFileDevice::WriteOwner);
    if (cleared) {
        {
            QSqlDatabase db = openCompanyDatabase(partial, kNewFileConnection);
            Transaction transaction(db);
            for (const QString &table : tablesClearedForNewCompany())
                execSql(db, QStringLiteral("DELETE FROM \"%1\"").arg(table));
            transaction.commit();
        }
        closeDatabase(kNewFileConnection);
    }
    replaceFile(partial, file);
}

} // namespace

std::unique_ptr<CompanyStore> CompanyStore::of(const DataLayout &layout)
{
    if (layout.store.isEmpty())
        return std::make_unique<FolderStore>(layout);
    return std::make_unique<ServerStore>(layout);
}

QString FolderStore::title() const { return QStringLiteral("会社データフォルダ（%1）").arg(QDir::toNativeSeparators(m_layout.dataDir())); }

std::unique_ptr<CompanyHold> FolderStore::hold(const QString &name) const
{
    return std::make_unique<CompanyLock>(m_layout.companyDir(name), name);
}

QSqlDatabase FolderStore::open(const QString &name, const QString &connection, OpenMode mode) const
{
    return openCompanyDatabase(m_layout.companyFile(name), connection, mode);
}

// The company is made in a work folder and renamed into place only when complete: a
// crash on the way leaves no half-made company under its name.
void FolderStore::addFromFile(const QString &name, const QString &file, bool cleared) const
{
    const QString dir = m_layout.companyDir(name);
    const QString work = m_layout.newCompanyWorkDir(name);
    QDir(work).removeRecursively();
    if (!QDir().mkpath(work))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(work));
    try {
        {
            QLockFile workLock(work + QStringLiteral("/work.lock"));
            workLock.setStaleLockTime(0);
            if (!workLock.tryLock(0))
                throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(work));
            copyAndClear(file, work, work + u'/' + QFileInfo(m_layout.companyFile(name)).fileName(), cleared);
        }
        if (QFileInfo::exists(dir))
            throw Failure(QStringLiteral("フォルダ「%1」は既にあります。").arg(dir));
        if (!QDir().rename(work, dir))
            throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(dir));
    } catch (...) {
        QDir(work).removeRecursively();
        throw;
    }
}

void FolderStore::addFromCompany(const QString &name, const QString &source, bool cleared) const
{
    addFromFile(name, m_layout.companyFile(source), cleared);
}

// The file is checked and copied beside the data file, then renamed over it: the
// company is the old one or the new one, never a mixture.
void FolderStore::replaceFromFile(const QString &name, const QString &file) const
{
    const QString dataFile = m_layout.companyFile(name);
    const QString partial = dataFile + QStringLiteral(".part");
    try {
        {
            QSqlDatabase source = openCompanyDatabase(file, kCopySourceConnection, OpenMode::ReadOnly);
            execSql(source, QStringLiteral("VACUUM INTO ?"), {partial});
        }
        closeDatabase(kCopySourceConnection);
        syncFile(partial);
        replaceFile(partial, dataFile);
    } catch (...) {
        closeDatabase(kCopySourceConnection);
        removeWithSideFiles(partial);
        throw;
    }
}

void FolderStore::remove(const QString &name) const
{
    const QString dir = m_layout.companyDir(name);
    const QFileInfo info(dir);
    if (info.isSymLink() || !info.isDir())
        throw Failure(QStringLiteral("「%1」は会社のフォルダではないので削除できません。").arg(dir));
    // Like a delete without force: a read-only file stops the whole deletion.
    QDirIterator it(dir, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo file(it.next());
        if (!file.isWritable())
            throw Failure(QStringLiteral("「%1」は読み取り専用なので削除できません。").arg(file.filePath()));
    }
    // Renamed aside first, in one step: a failure after it leaves no company half
    // deleted under its name, and the next start removes what is left.
    const QString aside = m_layout.deletedCompanyWorkDir(name);
    QDir(aside).removeRecursively();
    if (!QDir().rename(dir, aside))
        throw Failure(QStringLiteral("フォルダ「%1」を削除できません。").arg(dir));
    QDir(aside).removeRecursively();
}

// The data file goes into the backup through SQLite (one read transaction: the
// content of one moment), the rest of the folder as files. What an earlier backup
// left of the data file in the same place is removed first.
void FolderStore::backup(const QString &name, const QString &target) const
{
    const QString dataFile = m_layout.companyFile(name);
    const QString dataName = QFileInfo(dataFile).fileName();
    if (!QDir().mkpath(target))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(target));
    const QString snapshot = target + u'/' + dataName;
    // What an earlier backup left: the side files of the data file, and a snapshot that
    // did not finish with its own.
    QStringList leftovers = kSideFileSuffixes + QStringList{QStringLiteral(".part")};
    for (const QString &suffix : kSideFileSuffixes)
        leftovers << QStringLiteral(".part") + suffix;
    for (const QString &suffix : leftovers) {
        if (QFileInfo::exists(snapshot + suffix) && !QFile::remove(snapshot + suffix))
            throw Failure(QStringLiteral("「%1」を削除できません。").arg(snapshot + suffix));
    }
    const QString workName = QFileInfo(workFileOf(dataFile)).fileName();
    copyFolderContents(m_layout.companyDir(name), target, [&](const QString &relative) {
        if (relative == dataName || relative == workName || CompanyLock::isLockFile(relative))
            return true;
        for (const QString &suffix : kSideFileSuffixes) {
            if (relative == dataName + suffix)
                return true;
        }
        return false;
    });
    try {
        {
            // Read-write, so that a journal a crash left beside the file is rolled back
            // before the snapshot is read.
            QSqlDatabase db = openCompanyDatabase(dataFile, kBackupConnection);
            writeCompanyFile(db, snapshot);
        }
        closeDatabase(kBackupConnection);
        QFile(snapshot).setPermissions(QFile(dataFile).permissions() | QFileDevice::WriteOwner);
    } catch (...) {
        closeDatabase(kBackupConnection);
        throw;
    }
}

Outcome FolderStore::optimise(Prompt &prompt, const QString &name) const { return compactDataFile(prompt, m_layout.companyFile(name)); }

} // namespace normaris
