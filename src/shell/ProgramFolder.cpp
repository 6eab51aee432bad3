#include "shell/ProgramFolder.h"

#include "base/DataLayout.h"
#include "legal/Requirements.h"
#include "base/FileOps.h"
#include "base/Failure.h"

#include <QDir>
#include <QFileInfo>

namespace normaris {

void prepareProgramFolder(const QString &root, const QString &programDir)
{
    const DataLayout target{root};
    const DataLayout own{programDir};
    target.removeLeftoverWorkFolders();
    // The legal requirements are the program's: a root always checks against those of this program.
    if (QFileInfo(legal::requirementsFile(programDir)).isFile() && QFileInfo(target.dataDir()).isDir()
        && legal::requirementsFile(programDir) != legal::requirementsFile(root))
        copyFileAtomically(legal::requirementsFile(programDir), legal::requirementsFile(root));
    // The releases of the dictionary are the program's too: a root laid out by an older program
    // learns of every release this one knows (release files are never changed, only added).
    const QString releases = QStringLiteral("/releases");
    if (QFileInfo(programDir + releases).isDir() && QDir::cleanPath(programDir) != QDir::cleanPath(root))
        copyFolderContents(programDir + releases, root + releases);
    if (QFileInfo(target.seedFile()).isFile())
        return;
    if (!QFileInfo(own.seedFile()).isFile())
        throw Failure(QStringLiteral("プログラムのフォルダに標準データ「%1」がありません。").arg(own.seedFile()));
    if (!QDir().mkpath(target.dataDir()))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(target.dataDir()));
    copyFileAtomically(own.seedFile(), target.seedFile());
    if (QFileInfo(legal::requirementsFile(programDir)).isFile())
        copyFileAtomically(legal::requirementsFile(programDir), legal::requirementsFile(root));
    if (QFileInfo(programDir + QStringLiteral("/help")).isDir())
        copyFolderContents(programDir + QStringLiteral("/help"), root + QStringLiteral("/help"));
}

} // namespace normaris
