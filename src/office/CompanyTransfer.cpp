#include "office/CompanyTransfer.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/FileOps.h"
#include "rulebase/CompanyCopy.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/ServerStore.h"
#include "versions/ComparisonDocx.h"
#include "versions/VersionComparison.h"
#include "versions/VersionTables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace normaris {

namespace {

const QString kProbeConnection = QStringLiteral("normaris_transfer_probe");
const QString kCompanyConnection = QStringLiteral("normaris_transfer_company");
const QString kOlderConnection = QStringLiteral("normaris_transfer_older");
const QString kNewerConnection = QStringLiteral("normaris_transfer_newer");

// Closes a connection of this step whatever happens to the step.
class ClosedAtEnd {
public:
    explicit ClosedAtEnd(QString connection) : m_connection(std::move(connection)) {}
    ~ClosedAtEnd() { closeDatabase(m_connection); }
    ClosedAtEnd(const ClosedAtEnd &) = delete;
    ClosedAtEnd &operator=(const ClosedAtEnd &) = delete;

private:
    QString m_connection;
};

QString markText(const TakenOut &mark) { return QStringLiteral("（持ち出した人：%1、日時：%2）").arg(mark.by, mark.at); }

// The latest kept version of each document of a company file, by style and document.
QMap<std::pair<QString, QString>, Version> latestVersions(const QString &file, const QString &connection)
{
    QMap<std::pair<QString, QString>, Version> latest;
    ClosedAtEnd closed(connection);
    QSqlDatabase db = openDatabase(file, connection, OpenMode::ReadOnly);
    if (!scalar(db, QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?"), {kVersionsTable}).isValid())
        return latest;
    VersionStore store(db);
    QList<qint64> ids;
    {
        RowReader rows = execSql(db, QStringLiteral("SELECT MAX(ID) FROM 改訂履歴 GROUP BY 文章形式Code, 規程Code"));
        while (rows.next())
            ids << rows.value(0).toLongLong();
    }
    for (qint64 id : ids) {
        const Version version = store.read(id);
        latest.insert({version.header.style, version.header.document}, version);
    }
    return latest;
}

// A file name of the document's name: what a file system refuses becomes "_".
QString fileNameOf(const QString &text)
{
    QString name = text;
    name.replace(QRegularExpression(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]")), QStringLiteral("_"));
    return name.trimmed();
}

// The 新旧対照表 of each document whose latest kept version differs between older and
// newer (company files), written into folder together; the names of the files written.
QStringList writeComparisons(const QString &older, const QString &newer, const QString &folder, const QString &company)
{
    const auto olds = latestVersions(older, kOlderConnection);
    const auto news = latestVersions(newer, kNewerConnection);
    QList<std::pair<QString, QString>> documents = olds.keys();
    for (const auto &key : news.keys()) {
        if (!olds.contains(key))
            documents << key;
    }
    std::sort(documents.begin(), documents.end());
    StagedFiles files;
    QStringList written;
    for (const auto &key : documents) {
        // A document kept on one side only is compared with nothing: all of it new, or all gone.
        const Version newerVersion = news.value(key, Version{olds.value(key).header, {}});
        const Version olderVersion = olds.value(key, Version{newerVersion.header, {}});
        if (VersionStore::fingerprint(olderVersion.header.effective, olderVersion.rows)
            == VersionStore::fingerprint(newerVersion.header.effective, newerVersion.rows))
            continue;
        ComparisonTable table = compareVersions(olderVersion, newerVersion);
        table.company = company;
        QString name = fileNameOf(company + u'_' + table.title());
        if (written.contains(name + QStringLiteral(".docx")))
            name += QStringLiteral("_文章形式") + fileNameOf(key.first);
        name += QStringLiteral(".docx");
        saveComparisonDocx(table, files.stage(folder + u'/' + name));
        written << name;
    }
    files.commit();
    return written;
}

} // namespace

std::optional<Outcome> CompanyTransfer::refuseFile(const QString &title, const QString &file)
{
    if (file.isEmpty()) {
        m_prompt.plain(title, QStringLiteral("会社データのファイルを指定してください。"));
        return Outcome::Stopped;
    }
    if (!QFileInfo(file).isFile()) {
        m_prompt.plain(title, QStringLiteral("ファイル「%1」が見つかりません。").arg(file));
        return Outcome::Stopped;
    }
    try {
        ClosedAtEnd closed(kProbeConnection);
        openCompanyDatabase(file, kProbeConnection, OpenMode::ReadOnly);
    } catch (const DbError &e) {
        m_prompt.failure(e.text());
        // A file of another kind is refused; a failure to read it is a failure.
        return e.sqliteCode() != 0 ? Outcome::Failed : Outcome::Stopped;
    }
    return std::nullopt;
}

bool CompanyTransfer::refuseFolderStore(const QString &title, const QString &what)
{
    if (!m_layout.store.isEmpty())
        return false;
    m_prompt.plain(title, QStringLiteral("%1はサーバーの会社だけができます。").arg(what));
    return true;
}

bool CompanyTransfer::closeWhenOpen(const QString &title, const QString &name, const QString &what)
{
    AppState &state = AppState::instance();
    if (!state.isOpenCompany(name))
        return true;
    if (!m_prompt.question(title, quotedName(name) + QStringLiteral("は現在使用中ですが、閉じて%1しますか？").arg(what)))
        return false;
    state.closeCompany(AppState::ClosedBy::Maintenance);
    return true;
}

Outcome CompanyTransfer::importFile(const QString &file, const QString &givenName)
{
    const QString &title = kImportTitle;
    if (const std::optional<Outcome> refused = refuseFile(title, file))
        return *refused;
    const QString name = givenName.isEmpty() ? QFileInfo(file).completeBaseName() : givenName;
    if (!CompanyFiles(m_layout, m_prompt).acceptName(name))
        return Outcome::Stopped;
    try {
        const auto store = CompanyStore::of(m_layout);
        const bool replacing = store->companyList().contains(name);
        if (replacing) {
            if (AppState::instance().isOpenCompany(name)) {
                m_prompt.plain(title, quotedName(name) + QStringLiteral("は現在使用中なので置き換えられません。"));
                return Outcome::Stopped;
            }
            if (!m_prompt.questionNoByDefault(
                    title, quotedName(name) + QStringLiteral("は既にあります。ファイル「%1」の内容で置き換えますか？").arg(file)))
                return Outcome::Stopped;
        } else if (!m_prompt.question(title, QStringLiteral("ファイル「%1」を").arg(file) + quotedName(name)
                                                 + QStringLiteral("として読み込みます。"))) {
            return Outcome::Stopped;
        }
        BusyCursor busy;
        if (replacing) {
            const auto held = store->hold(name);
            if (const auto *server = dynamic_cast<const ServerStore *>(store.get())) {
                // A company taken out comes back only through 持ち帰り, which compares.
                if (const std::optional<TakenOut> mark = server->takenOut(name)) {
                    m_prompt.plain(title, quotedName(name) + QStringLiteral("は持ち出し中なので置き換えられません。") + markText(*mark));
                    return Outcome::Stopped;
                }
            }
            store->replaceFromFile(name, file);
        } else {
            store->addFromFile(name, file, false);
        }
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const Failure &e) {
        m_prompt.failure(e.text());
        return Outcome::Failed;
    }
    m_prompt.information(title, quotedName(name) + QStringLiteral("を読み込みました。"));
    return Outcome::Done;
}

Outcome CompanyTransfer::checkout(const QString &name, const QString &file)
{
    const QString &title = kCheckoutTitle;
    if (refuseFolderStore(title, title))
        return Outcome::Stopped;
    if (refuseUnknownCompany(m_prompt, m_layout, title, name))
        return Outcome::Stopped;
    if (file.isEmpty()) {
        m_prompt.plain(title, QStringLiteral("持ち出し先のファイルを指定してください。"));
        return Outcome::Stopped;
    }
    const QString target = QFileInfo(file).absoluteFilePath();
    if (isInsideFolder(target, m_layout.dataDir())) {
        m_prompt.plain(title, QStringLiteral("持ち出し先にデータフォルダの中は選べません。"));
        return Outcome::Stopped;
    }
    if (!QFileInfo(QFileInfo(target).absolutePath()).isDir()) {
        m_prompt.plain(title, QStringLiteral("フォルダ「%1」がありません。").arg(QFileInfo(target).absolutePath()));
        return Outcome::Stopped;
    }
    if (!closeWhenOpen(title, name, QStringLiteral("持ち出し")))
        return Outcome::Stopped;
    if (!m_prompt.question(title,
                           quotedName(name)
                               + QStringLiteral("をファイル「%1」に持ち出します。持ち帰るまで、サーバーでは変更できません。").arg(target)))
        return Outcome::Stopped;
    try {
        BusyCursor busy;
        const ServerStore store(m_layout);
        const auto held = store.hold(name);
        if (const std::optional<TakenOut> mark = store.takenOut(name)) {
            m_prompt.plain(title, quotedName(name) + QStringLiteral("は既に持ち出されています。") + markText(*mark));
            return Outcome::Stopped;
        }
        ClosedAtEnd closed(kCompanyConnection);
        QSqlDatabase db = store.open(name, kCompanyConnection, OpenMode::ReadWrite);
        // The file and the mark of one moment: both in one transaction on the company's
        // connection. The file comes into place just before the commit and goes again
        // when the commit fails; a file that could not be written leaves no mark.
        Transaction transaction(db);
        StagedFiles files;
        writeCompanyFile(db, files.stage(target));
        ServerStore::markTakenOut(db, QString());
        files.commit();
        try {
            transaction.commit();
        } catch (...) {
            QFile::remove(target);
            throw;
        }
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const Failure &e) {
        m_prompt.failure(e.text());
        return Outcome::Failed;
    }
    m_prompt.information(title, quotedName(name) + QStringLiteral("を持ち出しました。\n保存先：") + target);
    return Outcome::Done;
}

Outcome CompanyTransfer::checkin(const QString &name, const QString &file)
{
    const QString &title = kCheckinTitle;
    if (refuseFolderStore(title, title))
        return Outcome::Stopped;
    if (refuseUnknownCompany(m_prompt, m_layout, title, name))
        return Outcome::Stopped;
    if (const std::optional<Outcome> refused = refuseFile(title, file))
        return *refused;
    const QString source = QFileInfo(file).absoluteFilePath();
    if (!closeWhenOpen(title, name, QStringLiteral("持ち帰り")))
        return Outcome::Stopped;
    try {
        const ServerStore store(m_layout);
        std::unique_ptr<CompanyHold> held;
        std::optional<TakenOut> mark;
        QString now;
        {
            BusyCursor busy;
            held = store.hold(name);
            mark = store.takenOut(name);
            if (mark) {
                ClosedAtEnd closed(kCompanyConnection);
                now = ServerStore::contentDigest(store.open(name, kCompanyConnection, OpenMode::ReadOnly));
            }
        }
        if (!mark) {
            m_prompt.plain(title, quotedName(name) + QStringLiteral("は持ち出されていません。"));
            return Outcome::Stopped;
        }
        if (now != mark->digest) {
            // The server's copy as it is now against the file: what each side changed.
            QStringList written;
            {
                BusyCursor busy;
                QTemporaryDir work;
                if (!work.isValid())
                    throw Failure(QStringLiteral("作業用のフォルダを作成できません。"));
                const QString copy = work.path() + QStringLiteral("/server.sqlite");
                {
                    ClosedAtEnd closed(kCompanyConnection);
                    writeCompanyFile(store.open(name, kCompanyConnection, OpenMode::ReadOnly), copy);
                }
                written = writeComparisons(copy, source, QFileInfo(source).absolutePath(), name);
            }
            QString text =
                quotedName(name) + QStringLiteral("は持ち出しの後にサーバーで変更されたので、持ち帰れません。") + markText(*mark);
            if (written.isEmpty())
                text += QStringLiteral("\n出力済みの規程の版には違いがありません。");
            else
                text += QStringLiteral("\n規程ごとの新旧対照表（改正前：サーバー、改正後：ファイル）を作成しました。\n保存先：")
                        + QDir::toNativeSeparators(QFileInfo(source).absolutePath()) + u'\n' + written.join(u'\n');
            m_prompt.warning(title, text);
            return Outcome::Stopped;
        }
        if (!m_prompt.question(title,
                               quotedName(name) + QStringLiteral("をファイル「%1」の内容で置き換え、持ち出しを終わります。").arg(source)))
            return Outcome::Stopped;
        BusyCursor busy;
        store.replaceFromFile(name, source);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const Failure &e) {
        m_prompt.failure(e.text());
        return Outcome::Failed;
    }
    m_prompt.information(title, quotedName(name) + QStringLiteral("を持ち帰りました。"));
    return Outcome::Done;
}

} // namespace normaris
