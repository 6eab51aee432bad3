#include "shell/SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

namespace normaris {

SingleInstance::SingleInstance(const QString &lockPath)
{
    QString path = lockPath;
    if (path.isEmpty()) {
        QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        if (folder.isEmpty())
            folder = QDir::tempPath();
        path = folder + QStringLiteral("/normaris.lock");
    }
    m_lock = std::make_unique<QLockFile>(path);
    // A lock left by a crashed copy is taken over: QLockFile checks that its owner is gone.
    m_first = m_lock->tryLock(0);
}

} // namespace normaris
