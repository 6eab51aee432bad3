#include "rulebase/ServerStore.h"

#include "base/SqlDialect.h"
#include "rulebase/CompanyCopy.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/Schema.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QSysInfo>
#include <QRegularExpression>
#include <QSet>
#include <QThread>
#include <QUrl>

#include <pwd.h>
#include <unistd.h>

namespace normaris {

namespace {

// The first key of the program's advisory locks; the second is the company's number
// (0: the catalog itself, while a company is made, replaced or removed).
constexpr int kLockSpace = 0x4e4d;

const QString kFileConnection = QStringLiteral("normaris_server_file");
const QString kSourceCompanyConnection = QStringLiteral("normaris_server_source");
const QString kBackupConnection = QStringLiteral("normaris_server_backup");

// The catalog and the trigger that keeps a taken-out company as it was. Made by the
// first program on an empty database; every statement may run again.
const char16_t *const kCatalogSetup[] = {
    u"CREATE SCHEMA IF NOT EXISTS normaris",
    u"CREATE TABLE IF NOT EXISTS normaris.会社 (名前 text COLLATE \"C\" PRIMARY KEY, 番号 integer NOT NULL UNIQUE, "
    u"スキーマ text NOT NULL UNIQUE, 作成日時 text NOT NULL, 辞書リリース integer NOT NULL DEFAULT 0, "
    u"持ち出し text NOT NULL DEFAULT '', 持ち出し日時 text NOT NULL DEFAULT '', 持ち出し時の内容 text NOT NULL DEFAULT '')",
    u"CREATE SEQUENCE IF NOT EXISTS normaris.会社番号",
    u"CREATE OR REPLACE FUNCTION normaris.持ち出し中の変更を拒む() RETURNS trigger LANGUAGE plpgsql AS $body$ BEGIN "
    u"IF EXISTS (SELECT 1 FROM normaris.会社 WHERE スキーマ = TG_TABLE_SCHEMA AND 持ち出し <> '') THEN "
    u"RAISE EXCEPTION 'company taken out' USING ERRCODE = '25006'; END IF; RETURN NULL; END $body$",
};

// The connection string as the user may see it: without a password.
QString shownStore(const QString &store)
{
    if (store.contains(QStringLiteral("://"))) {
        QUrl url(store);
        url.setPassword(QString());
        return url.toString();
    }
    QString shown = store;
    shown.remove(QRegularExpression(QStringLiteral("\\s*password\\s*=\\s*('([^'\\\\]|\\\\.)*'|\\S*)")));
    return shown.trimmed();
}

QString catalogConnection(const QString &store) { return QStringLiteral("normaris_catalog_") + QString::number(qHash(store), 16); }

// Connections whose catalog is known to be there.
QSet<QString> &preparedCatalogs()
{
    static QSet<QString> prepared;
    return prepared;
}

// The advisory lock of one company, on a connection of its own: released with the
// connection, and by the server when the program dies.
class ServerHold : public CompanyHold {
public:
    ServerHold(const QString &store, const QString &name, int number) : m_connection(QStringLiteral("normaris_hold_%1").arg(++s_count))
    {
        QSqlDatabase db = openServerDatabase(store, QString(), m_connection, OpenMode::ReadWrite, ServerStore::placeOf(name));
        QDeadlineTimer deadline(CompanyLock::waitMs());
        try {
            while (!scalar(db, QStringLiteral("SELECT pg_try_advisory_lock(?, ?)"), {kLockSpace, number}).toBool()) {
                if (deadline.hasExpired())
                    throw CompanyInUse(
                        QStringLiteral("『%1』は他のプログラムが使用中です。そのプログラムで会社を閉じてから、もう一度やり直してください。")
                            .arg(name));
                QThread::msleep(100);
            }
        } catch (...) {
            // The lock may have been taken by a statement whose answer was then lost: the
            // connection goes, and the lock with it.
            db = QSqlDatabase();
            closeDatabase(m_connection);
            throw;
        }
    }
    ~ServerHold() override { closeDatabase(m_connection); }

private:
    static inline int s_count = 0;
    QString m_connection;
};

QString whoAmI()
{
    QString user = qEnvironmentVariable("USER", qEnvironmentVariable("LOGNAME"));
    if (user.isEmpty()) {
        // A service or a cron job may run without either: the account itself says who.
        if (const passwd *account = getpwuid(geteuid()))
            user = QString::fromLocal8Bit(account->pw_name);
    }
    return user + u'@' + QSysInfo::machineHostName();
}

} // namespace

ServerStore::ServerStore(DataLayout layout) : m_layout(std::move(layout)) {}

QString ServerStore::title() const { return QStringLiteral("サーバー（%1）").arg(shownStore(m_layout.store)); }

QSqlDatabase ServerStore::catalog() const
{
    const QString name = catalogConnection(m_layout.store);
    QSqlDatabase db = QSqlDatabase::database(name, false);
    if (db.isValid() && db.isOpen() && preparedCatalogs().contains(name)) {
        // The connection is kept for the whole run: one the server ended meanwhile (a restart
        // of the server, a network gone and back) is opened afresh.
        if (QSqlQuery(db).exec(QStringLiteral("SELECT 1")))
            return db;
        db.close();
    }
    db = openServerDatabase(m_layout.store, QString(), name, OpenMode::ReadWrite, QStringLiteral("会社の一覧"));
    // Two programs on an empty database: one makes the catalog, the other waits for it.
    Transaction transaction(db);
    execSql(db, QStringLiteral("SELECT pg_advisory_xact_lock(?, 0)"), {kLockSpace});
    for (const char16_t *statement : kCatalogSetup)
        execSql(db, QString::fromUtf16(statement));
    transaction.commit();
    preparedCatalogs().insert(name);
    return db;
}

QStringList ServerStore::companyList() const
{
    QStringList names;
    RowReader rows = execSql(catalog(), QStringLiteral("SELECT 名前 FROM normaris.会社 ORDER BY 名前"));
    while (rows.next())
        names << rows.value(0).toString();
    sortCompanyNames(names); // as the folder store lists them
    return names;
}

QString ServerStore::schemaOf(const QString &name) const
{
    const QVariant schema = scalar(catalog(), QStringLiteral("SELECT スキーマ FROM normaris.会社 WHERE 名前 = ?"), {name});
    if (!schema.isValid())
        throw Failure(QStringLiteral("『%1』という会社はありません。").arg(name));
    return schema.toString();
}

std::unique_ptr<CompanyHold> ServerStore::hold(const QString &name) const
{
    const QVariant number = scalar(catalog(), QStringLiteral("SELECT 番号 FROM normaris.会社 WHERE 名前 = ?"), {name});
    if (!number.isValid())
        throw Failure(QStringLiteral("『%1』という会社はありません。").arg(name));
    return std::make_unique<ServerHold>(m_layout.store, name, number.toInt());
}

QSqlDatabase ServerStore::open(const QString &name, const QString &connection, OpenMode mode) const
{
    QSqlDatabase db = openServerDatabase(m_layout.store, schemaOf(name), connection, mode, placeOf(name));
    QString mismatch;
    try {
        mismatch = schemaMismatch(db);
    } catch (...) {
        db = QSqlDatabase();
        closeDatabase(connection);
        throw;
    }
    if (!mismatch.isEmpty()) {
        db = QSqlDatabase();
        closeDatabase(connection);
        throw DbError(QStringLiteral("「%1」は本システムの会社データではありません。（%2）").arg(placeOf(name), mismatch));
    }
    return db;
}

bool ServerStore::isContentTable(const QString &table)
{
    return table != QStringLiteral("作成データ置換前") && table != QStringLiteral("作成データ");
}

void ServerStore::addFrom(QSqlDatabase source, const QString &name, bool cleared, bool replacing) const
{
    QSqlDatabase db = catalog();
    const SqlDialect &dialect = SqlDialect::postgres();
    Transaction transaction(db);
    execSql(db, QStringLiteral("SELECT pg_advisory_xact_lock(?, 0)"), {kLockSpace});
    const QVariant existing = scalar(db, QStringLiteral("SELECT スキーマ FROM normaris.会社 WHERE 名前 = ?"), {name});
    QString schema;
    if (replacing) {
        if (!existing.isValid())
            throw Failure(QStringLiteral("『%1』という会社はありません。").arg(name));
        schema = existing.toString();
        execSql(db, QStringLiteral("DROP SCHEMA %1 CASCADE").arg(dialect.quote(schema)));
        execSql(db, QStringLiteral("UPDATE normaris.会社 SET 持ち出し = '', 持ち出し日時 = '', 持ち出し時の内容 = '' WHERE 名前 = ?"),
                {name});
    } else {
        if (existing.isValid())
            throw Failure(QStringLiteral("『%1』は既にあります。").arg(name));
        const int number = scalar(db, QStringLiteral("SELECT nextval('normaris.会社番号')")).toInt();
        schema = QStringLiteral("company_%1").arg(number, 4, 10, QLatin1Char('0'));
        execSql(db, QStringLiteral("INSERT INTO normaris.会社 (名前, 番号, スキーマ, 作成日時) VALUES (?, ?, ?, ?)"),
                {name, number, schema, QDateTime::currentDateTime().toString(Qt::ISODate)});
    }
    execSql(db, QStringLiteral("CREATE SCHEMA %1").arg(dialect.quote(schema)));
    execSql(db, QStringLiteral("SET LOCAL search_path TO %1").arg(dialect.quote(schema)));
    copyCompany(source, db);
    if (cleared) {
        for (const QString &table : tablesClearedForNewCompany())
            execSql(db, QStringLiteral("DELETE FROM %1").arg(dialect.quote(table)));
    }
    for (const TableDef &table : schemaTables()) {
        if (isContentTable(table.name))
            execSql(db, QStringLiteral("CREATE TRIGGER 持ち出し中 BEFORE INSERT OR UPDATE OR DELETE OR TRUNCATE ON %1 "
                                       "FOR EACH STATEMENT EXECUTE FUNCTION normaris.持ち出し中の変更を拒む()")
                            .arg(dialect.quote(table.name)));
    }
    transaction.commit();
}

void ServerStore::addFromFile(const QString &name, const QString &file, bool cleared) const
{
    try {
        {
            QSqlDatabase source = openCompanyDatabase(file, kFileConnection, OpenMode::ReadOnly);
            addFrom(source, name, cleared, false);
        }
        closeDatabase(kFileConnection);
    } catch (...) {
        closeDatabase(kFileConnection);
        throw;
    }
}

void ServerStore::addFromCompany(const QString &name, const QString &source, bool cleared) const
{
    try {
        {
            // The caller holds the source, so nothing changes it while it is read: its content
            // is of one moment without a transaction of its own, whose end could still fail
            // after the new company is made.
            QSqlDatabase db = open(source, kSourceCompanyConnection, OpenMode::ReadOnly);
            addFrom(db, name, cleared, false);
        }
        closeDatabase(kSourceCompanyConnection);
    } catch (...) {
        closeDatabase(kSourceCompanyConnection);
        throw;
    }
}

void ServerStore::replaceFromFile(const QString &name, const QString &file) const
{
    try {
        {
            QSqlDatabase source = openCompanyDatabase(file, kFileConnection, OpenMode::ReadOnly);
            addFrom(source, name, false, true);
        }
        closeDatabase(kFileConnection);
    } catch (...) {
        closeDatabase(kFileConnection);
        throw;
    }
}

void ServerStore::remove(const QString &name) const
{
    QSqlDatabase db = catalog();
    Transaction transaction(db);
    execSql(db, QStringLiteral("SELECT pg_advisory_xact_lock(?, 0)"), {kLockSpace});
    const QString schema = schemaOf(name);
    execSql(db, QStringLiteral("DROP SCHEMA %1 CASCADE").arg(SqlDialect::postgres().quote(schema)));
    execSql(db, QStringLiteral("DELETE FROM normaris.会社 WHERE 名前 = ?"), {name});
    transaction.commit();
}

void ServerStore::backup(const QString &name, const QString &target) const
{
    if (!QDir().mkpath(target))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(target));
    try {
        {
            QSqlDatabase db = open(name, kBackupConnection, OpenMode::ReadOnly);
            writeCompanyFile(db, target + u'/' + name + QStringLiteral(".sqlite"));
        }
        closeDatabase(kBackupConnection);
    } catch (...) {
        closeDatabase(kBackupConnection);
        throw;
    }
}

Outcome ServerStore::optimise(Prompt &prompt, const QString &name) const
{
    const QString title = QStringLiteral("データ最適化の確認");
    try {
        QSqlDatabase db = catalog();
        const QString schema = schemaOf(name);
        QStringList tables;
        {
            RowReader rows = execSql(db,
                                     QStringLiteral("SELECT table_name FROM information_schema.tables WHERE table_schema = ? "
                                                    "AND table_type = 'BASE TABLE' ORDER BY table_name"),
                                     {schema});
            while (rows.next())
                tables << rows.value(0).toString();
        }
        // The server's own maintenance: dead rows given back, the planner's figures renewed.
        // VACUUM runs outside any transaction, one table at a time.
        const SqlDialect &dialect = SqlDialect::postgres();
        for (const QString &table : tables)
            execSql(db, QStringLiteral("VACUUM (ANALYZE) %1.%2").arg(dialect.quote(schema), u'"' + table + u'"'));
    } catch (const Failure &e) {
        prompt.plain(QStringLiteral("データ最適化失敗"), QStringLiteral("最適化に失敗しました。もう一度やり直してください。\n") + e.text());
        return Outcome::Failed;
    }
    prompt.plain(title, placeOf(name) + QStringLiteral("の最適化に成功しました。"));
    return Outcome::Done;
}

std::optional<TakenOut> ServerStore::takenOut(const QString &name) const
{
    RowReader rows =
        execSql(catalog(), QStringLiteral("SELECT 持ち出し, 持ち出し日時, 持ち出し時の内容 FROM normaris.会社 WHERE 名前 = ?"), {name});
    if (!rows.next() || rows.value(0).toString().isEmpty())
        return std::nullopt;
    return TakenOut{rows.value(0).toString(), rows.value(1).toString(), rows.value(2).toString()};
}

void ServerStore::markTakenOut(QSqlDatabase db, const QString &by)
{
    execSql(
        db,
        QStringLiteral("UPDATE normaris.会社 SET 持ち出し = ?, 持ち出し日時 = ?, 持ち出し時の内容 = ? WHERE スキーマ = current_schema()"),
        {by.isEmpty() ? whoAmI() : by, QDateTime::currentDateTime().toString(Qt::ISODate), contentDigest(db)});
}

QString ServerStore::contentDigest(QSqlDatabase db)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const SqlDialect &dialect = SqlDialect::of(db);
    for (const TableDef &table : schemaTables()) {
        if (!isContentTable(table.name))
            continue;
        hash.addData(table.name.toUtf8());
        hash.addData(scalar(db, QStringLiteral("SELECT md5(coalesce(string_agg(CAST(t AS text), '|' ORDER BY t.id), '')) FROM %1 t")
                                    .arg(dialect.quote(table.name)))
                         .toString()
                         .toUtf8());
    }
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace normaris
