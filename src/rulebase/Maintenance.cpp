#include "rulebase/Maintenance.h"

#include "base/Database.h"
#include "rulebase/CompanyDatabase.h"
#include "base/FileOps.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/FieldChecks.h"

#include <QFile>
#include <QFileInfo>

namespace normaris {

namespace {

const QString kBackupTitle = QStringLiteral("バックアップの確認");
const QString kOptimiseTitle = QStringLiteral("データ最適化の確認");
const QString kCompactConnection = QStringLiteral("normaris_compact");

QString quotedName(const QString &name) { return u'『' + name + u'』'; }

bool knownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name)
{
    if (CheckCompanyName(prompt, name))
        return false;
    if (!layout.companyList().contains(name)) {
        prompt.plain(title, quotedName(name) + QStringLiteral("という会社はありません。"));
        return false;
    }
    return true;
}

// VACUUM INTO writes a fresh, compact copy; the copy is checked before it replaces anything.
void compactInto(const QString &path, const QString &workPath)
{
    {
        QSqlDatabase db = openCompanyDatabase(path, kCompactConnection);
        execSql(db, QStringLiteral("VACUUM INTO ?"), {workPath});
    }
    closeDatabase(kCompactConnection);
    {
        QSqlDatabase db = openCompanyDatabase(workPath, kCompactConnection, OpenMode::ReadOnly);
        const QString verdict = scalar(db, QStringLiteral("PRAGMA quick_check")).toString();
        if (verdict != QStringLiteral("ok"))
            throw Failure(verdict);
    }
    closeDatabase(kCompactConnection);
}

} // namespace

Outcome compactDataFile(Prompt &prompt, const QString &path)
{
    const QString workPath = workFileOf(path);
    if (QFileInfo::exists(workPath)) {
        prompt.error(QStringLiteral("処理の中止"), workPath + QStringLiteral(" (ﾜｰｸﾌｧｲﾙ) があるので処理できません。"));
        return Outcome::Stopped;
    }
    try {
        compactInto(path, workPath);
        replaceFile(workPath, path);
    } catch (const std::exception &) {
        closeDatabase(kCompactConnection);
        // The data file is untouched until the replace, so a partial work file can go.
        QFile::remove(workPath);
        prompt.plain(QStringLiteral("データ最適化失敗"), QStringLiteral("最適化に失敗しました。もう一度やり直してください。"));
        return Outcome::Failed;
    }
    prompt.plain(kOptimiseTitle, path + QStringLiteral("の最適化に成功しました。"));
    return Outcome::Done;
}

bool CompactDataFile(Prompt &prompt, const QString &path) { return compactDataFile(prompt, path) != Outcome::Stopped; }

Outcome Maintenance::backup(const QString &name, const std::optional<QString> &destination)
{
    if (name.isEmpty()) {
        m_prompt.plain(kBackupTitle, QStringLiteral("バックアップするデータを選択してください。"));
        return Outcome::Stopped;
    }
    if (!knownCompany(m_prompt, m_layout, kBackupTitle, name))
        return Outcome::Stopped;
    AppState &state = AppState::instance();
    if (state.isOpenCompany(name)) {
        if (!m_prompt.question(kBackupTitle, quotedName(name) + QStringLiteral("は現在使用中ですが、閉じてバックアップしますか？")))
            return Outcome::Stopped;
        state.closeCompany(AppState::ClosedBy::Maintenance);
    } else if (!m_prompt.question(kBackupTitle, quotedName(name) + QStringLiteral("をバックアップします。"))) {
        return Outcome::Stopped;
    }

    try {
        BusyCursor busy;
        const QString source = m_layout.companyDir(name);
        const QString target = destination ? QFileInfo(*destination).absoluteFilePath() : m_layout.backupDir(name);
        // A copy into the company's own folder would overwrite what it copies.
        if (isInsideFolder(target, source) || isInsideFolder(target, m_layout.dataDir()))
            throw Failure(QStringLiteral("バックアップ先にデータフォルダの中は選べません。"));
        copyFolderContents(source, target);
    } catch (const std::exception &) {
        m_prompt.plain(kBackupTitle, QStringLiteral("バックアップに失敗しました。"));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

Outcome Maintenance::optimise(const QString &name)
{
    AppState &state = AppState::instance();
    state.CompanyName = name;
    if (name.isEmpty()) {
        m_prompt.plain(kOptimiseTitle, QStringLiteral("最適化するデータを指定してください。"));
        return Outcome::Stopped;
    }
    if (!knownCompany(m_prompt, m_layout, kOptimiseTitle, name))
        return Outcome::Stopped;
    if (state.isOpenCompany(name)) {
        if (!m_prompt.question(kOptimiseTitle, quotedName(name) + QStringLiteral("は現在使用中ですが、閉じて最適化しますか？")))
            return Outcome::Stopped;
        // Closing the connection releases the file at once: nothing else holds it.
        state.closeCompany(AppState::ClosedBy::Maintenance);
        m_prompt.plain(kOptimiseTitle, QStringLiteral("最適化の準備ができました。"));
    } else if (!m_prompt.question(kOptimiseTitle, quotedName(name) + QStringLiteral("を最適化します。"))) {
        return Outcome::Stopped;
    }
    BusyCursor busy;
    return compactDataFile(m_prompt, m_layout.companyFile(name));
}

} // namespace normaris
