#include "rulebase/CompanyFiles.h"

#include "rulebase/CompanyNames.h"

#include "base/Database.h"
#include "rulebase/CompanyDatabase.h"
#include "base/FileOps.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/CompanyLock.h"
#include "base/FieldChecks.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace normaris {

namespace {

const QString kRename = QStringLiteral("名前の変更");
const QString kSelectTitle = QStringLiteral("会社指定の確認");
const QString kDeleteTitle = QStringLiteral("会社削除の確認");
const QString kProbeConnection = QStringLiteral("normaris_probe");
const QString kCopySourceConnection = QStringLiteral("normaris_copy_source");

} // namespace

bool CompanyFiles::acceptNewName(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kRename, QStringLiteral("名前を入力してください。"));
        return false;
    }
    if (CP932Length(name) > kCompanyNameLimit) {
        m_prompt.plain(kRename, QStringLiteral("会社名の長さが制限(%1)を越えています。").arg(kCompanyNameLimit));
        return false;
    }
    if (CheckCompanyName(m_prompt, name))
        return false;
    if (companyList().contains(name)) {
        m_prompt.plain(kRename, QStringLiteral("名前が重複しています。"));
        return false;
    }
    return true;
}

Outcome CompanyFiles::createFromSeed(const QString &name)
{
    if (!acceptNewName(name))
        return Outcome::Stopped;
    return create(name, m_layout.seedFile());
}

Outcome CompanyFiles::createFromCompany(const QString &name, const QString &source)
{
    if (source.isEmpty()) {
        m_prompt.plain(QStringLiteral("未選択"), QStringLiteral("ソースファイルを選択してください。"));
        return Outcome::Stopped;
    }
    if (!acceptNewName(name))
        return Outcome::Stopped;
    if (refuseUnknownCompany(m_prompt, m_layout, QStringLiteral("未選択"), source))
        return Outcome::Stopped;
    AppState &state = AppState::instance();
    if (state.isOpenCompany(source)) {
        if (!m_prompt.question(QStringLiteral("データ指定の確認"),
                               QStringLiteral("現在使用中の") + quotedName(source) + QStringLiteral("を閉じますか？")))
            return Outcome::Stopped;
        state.closeCompany(AppState::ClosedBy::Copying);
    }
    try {
        const CompanyLock lock(m_layout.companyDir(source), source);
        return create(name, m_layout.companyFile(source));
    } catch (const CompanyInUse &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Stopped;
    }
}

Outcome CompanyFiles::create(const QString &name, const QString &sourceFile)
{
    if (!m_prompt.question(QStringLiteral("ファイル作成の確認"), QStringLiteral("新しいフォルダ") + quotedName(name)
                                                                     + QStringLiteral("を作成し、その中にデータファイルを作成します。")))
        return Outcome::Stopped;

    // The company is made in a work folder and renamed into place only when complete:
    // a crash on the way leaves no half-made company under its name.
    const QString dir = m_layout.companyDir(name);
    const QString work = m_layout.newCompanyWorkDir(name);
    try {
        BusyCursor busy;
        QDir(work).removeRecursively();
        if (!QDir().mkpath(work))
            throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(work));
        try {
            {
                QLockFile workLock(work + QStringLiteral("/work.lock"));
                workLock.setStaleLockTime(0);
                if (!workLock.tryLock(0))
                    throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(work));
                copyAndClear(sourceFile, work, work + u'/' + QFileInfo(m_layout.companyFile(name)).fileName());
            }
            if (QFileInfo::exists(dir))
                throw Failure(QStringLiteral("フォルダ「%1」は既にあります。").arg(dir));
            if (!QDir().rename(work, dir))
                throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(dir));
        } catch (...) {
            QDir(work).removeRecursively();
            throw;
        }
    } catch (const CompanyInUse &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

// The new file takes its final name only once its tables are cleared.
void CompanyFiles::copyAndClear(const QString &sourceFile, const QString &dir, const QString &file)
{
    if (!QFileInfo(sourceFile).isFile())
        throw Failure(QStringLiteral("コピー元のデータファイル「%1」が見つかりません。").arg(sourceFile));
    const QString partial = dir + QStringLiteral("/作成中.sqlite");
    // Through SQLite, so that the copy is of one moment and a journal beside the source
    // is honoured rather than left behind.
    {
        const OpenMode mode = QFileInfo(sourceFile).isWritable() ? OpenMode::ReadWrite : OpenMode::ReadOnly;
        QSqlDatabase source = openCompanyDatabase(sourceFile, kCopySourceConnection, mode);
        execSql(source, QStringLiteral("VACUUM INTO ?"), {partial});
    }
    closeDatabase(kCopySourceConnection);
    QFile(partial).setPermissions(QFile(partial).permissions() | QFileDevice::WriteOwner);
    {
        QSqlDatabase db = openCompanyDatabase(partial, kProbeConnection);
        Transaction transaction(db);
        for (const char *table : {"施行日", "作成データ置換前", "作成データ"})
            execSql(db, QStringLiteral("DELETE FROM \"%1\"").arg(QString::fromUtf8(table)));
        transaction.commit();
    }
    closeDatabase(kProbeConnection);
    replaceFile(partial, file);
}

Outcome CompanyFiles::select(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kSelectTitle, QStringLiteral("処理する会社を指定してください。"));
        return Outcome::Stopped;
    }
    if (refuseUnknownCompany(m_prompt, m_layout, kSelectTitle, name))
        return Outcome::Stopped;
    if (!m_prompt.question(kSelectTitle, quotedName(name) + QStringLiteral("を指定します。")))
        return Outcome::Stopped;
    return open(name);
}

Outcome CompanyFiles::open(const QString &name)
{
    if (refuseUnknownCompany(m_prompt, m_layout, kSelectTitle, name))
        return Outcome::Stopped;
    AppState &state = AppState::instance();
    std::unique_ptr<CompanyLock> lock;
    try {
        BusyCursor busy;
        const QString file = m_layout.companyFile(name);
        // The company open now holds its own lock: reopening it starts from closed.
        if (state.isOpenCompany(name))
            state.closeCompany(AppState::ClosedBy::MainWindow);
        lock = std::make_unique<CompanyLock>(m_layout.companyDir(name), name);
        // Prove the file first, so that a refusal leaves the open company as it was.
        openCompanyDatabase(file, kProbeConnection);
        closeDatabase(kProbeConnection);
        if (state.isCompanyOpen())
            state.closeCompany(AppState::ClosedBy::MainWindow);
        openCompanyDatabase(file, kMainConnection);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        closeDatabase(kProbeConnection);
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    state.markCompanyOpen(name, std::move(lock));
    return Outcome::Done;
}

Outcome CompanyFiles::remove(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kDeleteTitle, QStringLiteral("削除する会社を選択してください。"));
        return Outcome::Stopped;
    }
    if (refuseUnknownCompany(m_prompt, m_layout, kDeleteTitle, name))
        return Outcome::Stopped;
    if (AppState::instance().isOpenCompany(name)) {
        m_prompt.plain(kDeleteTitle, quotedName(name) + QStringLiteral("は現在使用中なので削除できません。"));
        return Outcome::Stopped;
    }
    if (!m_prompt.question(kDeleteTitle, quotedName(name) + QStringLiteral("を削除します。")))
        return Outcome::Stopped;
    try {
        BusyCursor busy;
        const QString dir = m_layout.companyDir(name);
        const QFileInfo info(dir);
        if (info.isSymLink() || !info.isDir())
            throw Failure(QStringLiteral("「%1」は会社のフォルダではないので削除できません。").arg(dir));
        const CompanyLock lock(dir, name);
        // Like a delete without force: a read-only file stops the whole deletion.
        QDirIterator it(dir, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QFileInfo file(it.next());
            if (!file.isWritable())
                throw Failure(QStringLiteral("「%1」は読み取り専用なので削除できません。").arg(file.filePath()));
        }
        // Renamed aside first, in one step: a failure after it leaves no company half
        // deleted under its name, and the next start removes what is left.
        const QString aside = m_layout.deletedCompanyWorkDir(name);
        QDir(aside).removeRecursively();
        if (!QDir().rename(dir, aside))
            throw Failure(QStringLiteral("フォルダ「%1」を削除できません。").arg(dir));
        QDir(aside).removeRecursively();
    } catch (const CompanyInUse &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

} // namespace normaris
