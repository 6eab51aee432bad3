#include "shell/ProgramFolder.h"

#include "base/DataLayout.h"
#include "base/FileOps.h"
#include "base/Failure.h"

#include <QDir>
#include <QFileInfo>

namespace normaris {

void prepareProgramFolder(const QString &root, const QString &programDir)
{
    const DataLayout target{root};
    target.removeLeftoverWorkFolders();
    // The releases of the dictionary go with the seed file.
    const QString releases = QStringLiteral("/releases");
    if (!QFileInfo(root + releases).isDir() && QFileInfo(programDir + releases).isDir())
        copyFolderContents(programDir + releases, root + releases);
    if (QFileInfo(target.seedFile()).isFile())
        return;
    const DataLayout own{programDir};
    if (!QFileInfo(own.seedFile()).isFile())
        throw Failure(QStringLiteral("プログラムのフォルダに標準データ「%1」がありません。").arg(own.seedFile()));
    if (!QDir().mkpath(target.dataDir()))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(target.dataDir()));
    copyFileAtomically(own.seedFile(), target.seedFile());
    if (QFileInfo(programDir + QStringLiteral("/help")).isDir())
        copyFolderContents(programDir + QStringLiteral("/help"), root + QStringLiteral("/help"));
}

} // namespace normaris
