#include "import/SourceCompany.h"
#include "rulebase/CompanyNames.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/CompanyLock.h"
#include "base/Database.h"
#include "base/Excerpt.h"
#include "base/FieldChecks.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/Schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>

namespace normaris {

namespace {

const QString kTitle = QStringLiteral("会社指定の確認");

// The source company's lock, held while it is open as the source: the file is read as
// immutable, so no other program may write it meanwhile.
std::unique_ptr<CompanyHold> &sourceLock()
{
    static std::unique_ptr<CompanyHold> lock;
    return lock;
}

// True when path lies inside dir (both taken at their real place).
bool isInside(const QString &path, const QString &dir)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    const QString root = QFileInfo(dir).canonicalFilePath();
    return !real.isEmpty() && !root.isEmpty() && real.startsWith(root + u'/');
}

bool hasSqliteHeader(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return file.read(16) == QByteArray("SQLite format 3", 16);
}

// The connection string of a file that is only read: the read-only flag, and
// immutable, so that SQLite neither locks it nor looks for a journal to replay.
QString readOnlyUri(const QString &path)
{
    return QStringLiteral("file:") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/")) + QStringLiteral("?mode=ro&immutable=1");
}

// A printable excerpt of a name the file gives, for a message.
QString shownName(const QString &name) { return printableExcerpt(name, 30); }

// SQLite leaves a journal (or a write-ahead log) beside a file whose writing stopped
// half-way; the next opening for writing rolls it back. Opened immutable, the source would
// be read without it, torn pages included: such a source is refused before any reading.
bool stoppedInAWrite(const QString &path)
{
    static const QByteArray journalMagic = QByteArray::fromHex("d9d505f920a163d7");
    QFile journal(path + QStringLiteral("-journal"));
    if (journal.open(QIODevice::ReadOnly) && journal.read(journalMagic.size()) == journalMagic)
        return true;
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

QString openChecked(const QString &path)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kSourceConnection);
    db.setDatabaseName(readOnlyUri(path));
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"));
    if (!db.open())
        return QStringLiteral("データファイルを開けません。%1").arg(db.lastError().text());
    try {
        execSql(db, QStringLiteral("PRAGMA trusted_schema=OFF"));
        auto unsafe = execSql(db, QStringLiteral("SELECT type, name FROM sqlite_master WHERE type IN ('trigger', 'view')"
                                                 " OR (type = 'table' AND sql LIKE 'CREATE VIRTUAL%') ORDER BY rowid LIMIT 1"));
        if (unsafe.next()) {
            const QString type = unsafe.value(0).toString();
            const QString kind = type == u"trigger" ? QStringLiteral("トリガー")
                                 : type == u"view"  ? QStringLiteral("ビュー")
                                                    : QStringLiteral("仮想表");
            return QStringLiteral("%1「%2」を含むファイルは取り込めません。").arg(kind, shownName(unsafe.value(1).toString()));
        }
        const QString mismatch = schemaMismatch(db, SchemaForms::OlderAccepted);
        if (!mismatch.isEmpty())
            return QStringLiteral("本システムの会社データではありません。") + mismatch;
    } catch (const DbError &) {
        return QStringLiteral("データベースとして読めません。");
    }
    return {};
}

} // namespace

QString SourceCompany::refusal(const DataLayout &layout, const QString &name)
{
    try {
        if (!companiesOf(layout).contains(name))
            return QStringLiteral("その会社はありません。");
    } catch (const Failure &e) {
        return e.text();
    }
    // On the server the other company is a schema the program made: its tables are
    // checked as it is opened.
    if (!layout.store.isEmpty())
        return {};
    const QString dir = layout.companyDir(name);
    const QString file = layout.companyFile(name);
    const QFileInfo fileInfo(file);
    if (QFileInfo(dir).isSymLink() || fileInfo.isSymLink() || !isInside(file, layout.dataDir()))
        return QStringLiteral("データフォルダの外を指すファイルは取り込めません。");
    if (!fileInfo.isFile())
        return QStringLiteral("データファイルがありません。");
    if (!fileInfo.isReadable())
        return QStringLiteral("データファイルを読めません。");
    if (fileInfo.size() == 0 || !hasSqliteHeader(file))
        return QStringLiteral("データベースのファイルではありません。");
    return {};
}

Outcome SourceCompany::open(Prompt &prompt, const DataLayout &layout, const QString &name)
{
    close();
    // Nothing is taken in without a company to take it into.
    if (!AppState::instance().isCompanyOpen()) {
        prompt.error(kTitle, kNoTargetCompany);
        return Outcome::Stopped;
    }
    if (CheckCompanyName(prompt, name))
        return Outcome::Stopped;
    QString why;
    try {
        BusyCursor busy;
        // A company is never its own source: its codes would all conflict with themselves.
        if (AppState::instance().isOpenCompany(name))
            why = QStringLiteral("取込先の会社と同じです。取込元には別の会社を指定してください。");
        if (why.isEmpty())
            why = refusal(layout, name);
        const auto store = CompanyStore::of(layout);
        if (why.isEmpty())
            sourceLock() = store->hold(name);
        if (why.isEmpty() && store->isServer()) {
            try {
                store->open(name, kSourceConnection, OpenMode::ReadOnly);
            } catch (const Failure &e) {
                why = e.text();
            }
        } else {
            // Under the lock: a journal now is one that no program is writing.
            if (why.isEmpty() && stoppedInAWrite(layout.companyFile(name)))
                why = QStringLiteral("取込元の会社データは書き込みの途中で終わっています。取込元の会社を一度このプログラムで開いてから、や"
                                     "り直してください。");
            if (why.isEmpty())
                why = openChecked(layout.companyFile(name));
        }
    } catch (const CompanyInUse &e) {
        prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const Failure &e) {
        close();
        prompt.failure(e.text());
        return Outcome::Failed;
    }
    if (!why.isEmpty()) {
        close();
        prompt.plain(kTitle, QStringLiteral("『%1』のデータは取り込めません。").arg(name) + why);
        return Outcome::Stopped;
    }
    AppState::instance().SourceCompanyName = name;
    return Outcome::Done;
}

void SourceCompany::close()
{
    closeDatabase(kSourceConnection);
    sourceLock().reset();
}

bool SourceCompany::isOpen() { return QSqlDatabase::contains(kSourceConnection) && connection().isOpen(); }

QSqlDatabase SourceCompany::connection() { return QSqlDatabase::database(kSourceConnection, false); }

} // namespace normaris
