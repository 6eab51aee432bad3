#include "base/FileOps.h"

#include "base/Failure.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace normaris {

void replaceFile(const QString &source, const QString &dest)
{
    // rename(2) replaces dest at once: there is no moment without a file at dest.
    if (std::rename(QFile::encodeName(source).constData(), QFile::encodeName(dest).constData()) != 0)
        throw Failure(QStringLiteral("「%1」を「%2」に置き換えられません。").arg(source, dest));
}

void copyFileAtomically(const QString &source, const QString &dest)
{
    const QString partial = dest + QStringLiteral(".part");
    QFile::remove(partial);
    if (!QFile::copy(source, partial)) {
        QFile::remove(partial);
        throw Failure(QStringLiteral("「%1」を「%2」にコピーできません。").arg(source, dest));
    }
    QFile(partial).setPermissions(QFile(source).permissions() | QFileDevice::WriteOwner);
    try {
        replaceFile(partial, dest);
    } catch (...) {
        QFile::remove(partial);
        throw;
    }
}

void copyFolderContents(const QString &source, const QString &dest, const std::function<bool(const QString &)> &leaveOut)
{
    if (!QDir().mkpath(dest))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(dest));
    const QDir sourceDir(source);
    QDirIterator it(source, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        const QString relative = sourceDir.relativeFilePath(info.filePath());
        if (leaveOut && leaveOut(relative))
            continue;
        const QString target = dest + u'/' + relative;
        if (info.isDir()) {
            if (!QDir().mkpath(target))
                throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(target));
        } else {
            copyFileAtomically(info.filePath(), target);
        }
    }
}

void writeTextFile(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
}

StagedFiles::~StagedFiles()
{
    for (const auto &[temporary, place] : std::as_const(m_files))
        QFile::remove(temporary);
}

QString StagedFiles::stage(const QString &path)
{
    // Beside its place, so that the rename stays on one file system.
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    file.setAutoRemove(false);
    if (!file.open())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
    const QString temporary = file.fileName();
    file.close();
    m_files.append({temporary, path});
    return temporary;
}

void StagedFiles::commit()
{
    while (!m_files.isEmpty()) {
        const auto [temporary, place] = m_files.first();
        // QTemporaryFile made it readable by its owner alone; the document is an ordinary file.
        QFile(temporary).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther);
        replaceFile(temporary, place);
        m_files.removeFirst();
    }
}

namespace {

bool &syncsFail()
{
    static bool fail = false;
    return fail;
}

} // namespace

void failSyncsForTests(bool fail) { syncsFail() = fail; }

void syncFile(const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool synced = fd >= 0 && ::fsync(fd) == 0 && !syncsFail();
    if (fd >= 0)
        ::close(fd);
    if (!synced)
        throw Failure(
            QStringLiteral("「%1」をディスクに書き込めません。ディスクの状態と空きを確かめてから、やり直してください。").arg(path));
}

void removeWithSideFiles(const QString &path)
{
    for (const QString &suffix : {QString(), QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")})
        QFile::remove(path + suffix);
}

void removeSideFiles(const QString &path)
{
    for (const QString &suffix : {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")}) {
        if (QFile::exists(path + suffix) && !QFile::remove(path + suffix))
            throw Failure(QStringLiteral("「%1」を削除できません。").arg(path + suffix));
    }
}

bool isInsideFolder(const QString &path, const QString &folder)
{
    const QString canonicalFolder = QFileInfo(folder).canonicalFilePath();
    QFileInfo info(path);
    // The path itself may not exist yet: resolve the nearest existing ancestor.
    QString probe = info.absoluteFilePath();
    QString rest;
    while (!QFileInfo::exists(probe) && probe != QStringLiteral("/")) {
        rest = QFileInfo(probe).fileName() + (rest.isEmpty() ? QString() : u'/' + rest);
        probe = QFileInfo(probe).absolutePath();
    }
    QString resolved = QFileInfo(probe).canonicalFilePath();
    if (!rest.isEmpty())
        resolved += u'/' + rest;
    if (canonicalFolder.isEmpty())
        return false;
    return resolved == canonicalFolder || resolved.startsWith(canonicalFolder + u'/');
}

} // namespace normaris
