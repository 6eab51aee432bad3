#include "base/RuntimeFolder.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace normaris {

void settleRuntimeFolder()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QString folder = QDir::tempPath() + QStringLiteral("/runtime-") + QString::number(::getuid());
    if (!QDir().mkpath(folder))
        return;
    // Qt takes the folder only when it is the user's alone.
    if (!QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser | QFile::WriteUser
                                           | QFile::ExeUser))
        return;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
}

} // namespace normaris
