#include "seed/SeedRelease.h"
#include "seed/SeedParser.h"

#include "base/Database.h"
#include "base/FileOps.h"
#include "update/DictionaryRelease.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace normaris::seed {

namespace {

const QString kConnection = QStringLiteral("normaris_seed_release");
const QString kReleasesFolder = QStringLiteral("releases");

Release seedRelease(const QString &seedPath)
{
    Release release;
    try {
        QSqlDatabase db = openDatabase(seedPath, kConnection, OpenMode::ReadOnly);
        release.name = recordedRelease(db);
        release.prints = dictionaryPrints(db);
    } catch (...) {
        closeDatabase(kConnection);
        throw;
    }
    closeDatabase(kConnection);
    return release;
}

void writeFile(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
}

// How many entries the recorded release and the sources differ in, by kind.
QString difference(const ReleasePrints &recorded, const ReleasePrints &now)
{
    int changed = 0, added = 0, removed = 0;
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!recorded.contains(it.key()))
            ++added;
        else if (recorded.value(it.key()) != it.value())
            ++changed;
    }
    for (auto it = recorded.cbegin(); it != recorded.cend(); ++it)
        removed += now.contains(it.key()) ? 0 : 1;
    return QStringLiteral("変更 %1、追加 %2、削除 %3").arg(changed).arg(added).arg(removed);
}

} // namespace

QList<SourceError> settleRelease(const QString &sourceFolder, const QString &seedPath, ReleaseMode mode)
{
    const QString folder = sourceFolder + u'/' + kReleasesFolder;
    const Release now = seedRelease(seedPath);
    if (now.name.isEmpty())
        return {SourceError{kReleaseNameFile, 0, QStringLiteral("辞書の版の名前（2026.11 の形）を書いてください")}};
    const QString shown = kReleasesFolder + u'/' + now.name + QStringLiteral(".tsv");
    const QString file = sourceFolder + u'/' + shown;
    QList<SourceError> errors;
    if (mode == ReleaseMode::Record && !QFileInfo::exists(file)) {
        QDir().mkpath(folder);
        writeFile(file, releaseFileText(now));
    }
    QList<Release> releases;
    try {
        releases = readReleases(folder);
    } catch (const Failure &f) {
        return {SourceError{kReleasesFolder, 0, f.text()}};
    }
    const auto recorded = std::find_if(releases.cbegin(), releases.cend(), [&](const Release &r) { return r.name == now.name; });
    if (recorded == releases.cend()) {
        errors << SourceError{
            shown, 0,
            QStringLiteral("版 %1 の指紋が記録されていません。cmake --build build --target record-release で記録してください")
                .arg(now.name)};
    } else if (recorded->prints != now.prints) {
        errors << SourceError{shown, 0,
                              QStringLiteral("辞書の内容が記録された版 %1 と違います（%2）。%3 に新しい版の名前を書き、"
                                             "cmake --build build --target record-release で記録してください")
                                  .arg(now.name, difference(recorded->prints, now.prints), kReleaseNameFile)};
    } else if (releaseNumber(releases.last().name) > releaseNumber(now.name)) {
        errors << SourceError{kReleaseNameFile, 1,
                              QStringLiteral("版 %1 より新しい版 %2 が記録されています").arg(now.name, releases.last().name)};
    }
    if (!errors.isEmpty())
        return errors;
    // The program reads them in its folder, the one above the seed file's.
    QDir programFolder = QFileInfo(seedPath).absoluteDir();
    programFolder.cdUp();
    const QString installed = releasesFolder(programFolder.absolutePath());
    QDir(installed).removeRecursively();
    QDir().mkpath(installed);
    for (const Release &r : std::as_const(releases)) {
        const QString name = r.name + QStringLiteral(".tsv");
        if (!QFile::copy(folder + u'/' + name, installed + u'/' + name))
            throw Failure(QStringLiteral("ファイル「%1」をコピーできません。").arg(installed + u'/' + name));
    }
    return errors;
}

} // namespace normaris::seed
