#include "base/SqliteMessages.h"

#include <QDir>
#include <QFileInfo>

namespace normaris {

namespace {

// %1 is the file's path; %2 the backup (only for a damaged file).
struct SqliteMessage {
    int code;
    const char16_t *text;
};

constexpr SqliteMessage kSqliteMessages[] = {
    {SqliteFull, u"ディスクがいっぱいのため、「%1」に書き込めません。ディスクに空きを作ってから、やり直してください。"},
    {SqliteIoErr, u"「%1」の読み書きでディスクのエラーが起きました。ディスクの状態と空きを確かめてから、やり直してください。"},
    {SqliteBusy, u"「%1」は他のプログラムが使用中です。他のプログラムの処理が終わってから、やり直してください。"},
    {SqliteLocked, u"「%1」は他のプログラムが使用中です。他のプログラムの処理が終わってから、やり直してください。"},
    {SqliteCorrupt, u"「%1」は壊れています。%2"},
    {SqliteNotADb, u"「%1」は壊れているか、会社データのファイルではありません。%2"},
    {SqliteReadOnly, u"「%1」に書き込めません（読み取り専用です）。ファイルとフォルダに書き込みの許可があるか確かめてください。"},
    {SqliteCantOpen, u"「%1」を開けません。ファイルとフォルダがあるか、読み書きの許可があるか確かめてください。"},
    {SqliteNoMem, u"メモリが足りないため、「%1」の処理を続けられません。他のプログラムを閉じてから、やり直してください。"},
};

constexpr const char16_t *kOtherFailure =
    u"「%1」の処理中にエラーが発生しました（エラー番号 %3）。やり直しても同じときは、バックアップから戻してください。";

} // namespace

QString defaultBackupOf(const QString &path)
{
    const QFileInfo file(path);
    const QDir companyDir = file.absoluteDir();
    const QString name = companyDir.dirName();
    QDir dataDir = companyDir;
    if (file.completeBaseName() != name || file.suffix() != u"sqlite" || !dataDir.cdUp() || dataDir.dirName() != u"Data")
        return {};
    QDir appDir = dataDir;
    if (!appDir.cdUp())
        return {};
    return appDir.absolutePath() + QStringLiteral("/BackupDB/") + name;
}

QString sqliteMessage(int code, const QString &path)
{
    const int primary = code & 0xff;
    const QString shown = path.isEmpty() ? QStringLiteral("データファイル") : path;
    const QString backup = defaultBackupOf(path);
    const QString restore = backup.isEmpty() ? QStringLiteral("バックアップから戻してください。")
                                             : QStringLiteral("バックアップ「%1」の中のファイルを「%2」へ写して戻してください。")
                                                   .arg(backup, QFileInfo(path).absolutePath());
    for (const SqliteMessage &m : kSqliteMessages) {
        if (m.code == primary) {
            const QString text = QString::fromUtf16(m.text);
            return text.contains(QStringLiteral("%2")) ? text.arg(shown, restore) : text.arg(shown);
        }
    }
    return QString::fromUtf16(kOtherFailure).arg(shown).replace(QStringLiteral("%3"), QString::number(primary));
}

} // namespace normaris
