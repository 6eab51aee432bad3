#include "rulebase/Maintenance.h"

#include "rulebase/CompanyNames.h"

#include "base/Database.h"
#include "rulebase/CompanyDatabase.h"
#include "base/FileOps.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/CompanyLock.h"
#include "rulebase/CompanyStore.h"
#include "base/FieldChecks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace normaris {

namespace {

const QString kBackupTitle = QStringLiteral("バックアップの確認");
const QString kOptimiseTitle = QStringLiteral("データ最適化の確認");
const QString kCompactConnection = QStringLiteral("normaris_compact");
const QString kCompactWorkConnection = QStringLiteral("normaris_compact_work");

// VACUUM INTO writes a fresh, compact copy into the work file from one read
// transaction, and the copy is checked. The data file itself is then compacted by
// VACUUM on it: SQLite rewrites it in place under its own locking and journal, so a
// connection elsewhere is waited for (or the step fails, the file as it was) and
// never loses what it commits; the file keeps its permissions, and a link keeps
// pointing at it. Nothing is renamed over a file that another program may hold.
void compact(const QString &path, const QString &workPath)
{
    {
        QSqlDatabase db = openCompanyDatabase(path, kCompactConnection);
        execSql(db, QStringLiteral("VACUUM INTO ?"), {workPath});
        {
            QSqlDatabase work = openCompanyDatabase(workPath, kCompactWorkConnection, OpenMode::ReadOnly);
            const QString verdict = scalar(work, QStringLiteral("PRAGMA quick_check")).toString();
            if (verdict != QStringLiteral("ok"))
                throw Failure(verdict);
        }
        closeDatabase(kCompactWorkConnection);
        execSql(db, QStringLiteral("VACUUM"));
    }
    closeDatabase(kCompactConnection);
    removeWithSideFiles(workPath);
}

// The failure's own text below the step's message: what happened and what to do.
QString reasonOf(const std::exception &e)
{
    if (const auto *failure = dynamic_cast<const Failure *>(&e))
        return u'\n' + failure->text();
    return {};
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
        compact(path, workPath);
    } catch (const std::exception &e) {
        closeDatabase(kCompactConnection);
        closeDatabase(kCompactWorkConnection);
        // VACUUM rewrites the data file in one transaction of its own, so the data
        // file is whole whatever happened, and the work file can go with its journal.
        removeWithSideFiles(workPath);
        prompt.plain(QStringLiteral("データ最適化失敗"),
                     QStringLiteral("最適化に失敗しました。もう一度やり直してください。") + reasonOf(e));
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
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kBackupTitle, name))
        return *refused;
    AppState &state = AppState::instance();
    if (state.isOpenCompany(name)) {
        if (!m_prompt.question(kBackupTitle, quotedName(name) + QStringLiteral("は現在使用中ですが、閉じてバックアップしますか？")))
            return Outcome::Stopped;
        state.closeCompany(AppState::ClosedBy::Maintenance);
    } else if (!m_prompt.question(kBackupTitle, quotedName(name) + QStringLiteral("をバックアップします。"))) {
        return Outcome::Stopped;
    }

    QString written;
    try {
        BusyCursor busy;
        const auto store = CompanyStore::of(m_layout);
        const QString target = destination ? QFileInfo(*destination).absoluteFilePath() : m_layout.backupDir(name);
        // A copy into the company's own folder would overwrite what it copies.
        if (isInsideFolder(target, m_layout.companyDir(name)) || isInsideFolder(target, m_layout.dataDir()))
            throw Failure(QStringLiteral("バックアップ先にデータフォルダの中は選べません。"));
        const auto held = store->hold(name);
        // A folder this backup makes goes again when the backup fails.
        const bool made = !QFileInfo::exists(target);
        try {
            store->backup(name, target);
        } catch (...) {
            if (made)
                QDir(target).removeRecursively();
            throw;
        }
        written = target;
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        m_prompt.plain(kBackupTitle, QStringLiteral("バックアップに失敗しました。") + reasonOf(e));
        return Outcome::Failed;
    }
    // Said once the company's lock is given back.
    m_prompt.information(kBackupTitle, quotedName(name) + QStringLiteral("のバックアップを作成しました。\n保存先：") + written);
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
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kOptimiseTitle, name))
        return *refused;
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
    try {
        const auto store = CompanyStore::of(m_layout);
        const auto held = store->hold(name);
        return store->optimise(m_prompt, name);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const Failure &e) {
        m_prompt.failure(e.text());
        return Outcome::Failed;
    }
}

} // namespace normaris
