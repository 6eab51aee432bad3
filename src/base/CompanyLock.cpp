#include "base/CompanyLock.h"

#include <QFileInfo>

namespace normaris {

namespace {

const QString kSuffix = QStringLiteral(".lock");

} // namespace

QString CompanyLock::fileName(const QString &name) { return name + kSuffix; }

bool CompanyLock::isLockFile(const QString &fileName)
{
    // QLockFile also leaves "<lock>.rmlock" for a moment while it takes over a stale lock.
    return fileName.endsWith(kSuffix) || fileName.endsWith(kSuffix + QStringLiteral(".rmlock"));
}

int CompanyLock::waitMs()
{
    // Tests of two programs shorten the wait through the environment.
    bool ok = false;
    const int ms = qEnvironmentVariableIntValue("NORMARIS_LOCK_WAIT_MS", &ok);
    return ok && ms >= 0 ? ms : 3000;
}

CompanyLock::CompanyLock(const QString &folder, const QString &name) : m_file(folder + u'/' + fileName(name))
{
    // A lock is stale only when its program is gone (QLockFile checks the process);
    // never by age, since the desktop program keeps its company for hours.
    m_file.setStaleLockTime(0);
    if (m_file.tryLock(waitMs()))
        return;
    if (m_file.error() == QLockFile::LockFailedError)
        throw CompanyInUse(
            QStringLiteral("『%1』は他のプログラムが使用中です。そのプログラムで会社を閉じてから、もう一度やり直してください。").arg(name));
    throw Failure(QStringLiteral("『%1』のロックファイル「%2」を作成できません。").arg(name, folder + u'/' + fileName(name)));
}

} // namespace normaris
