#include "versions/VersionStore.h"

#include "base/Database.h"
#include "rulebase/Schema.h"
#include "versions/VersionTables.h"

#include <QCryptographicHash>

namespace normaris {

namespace {

const QString kHeaderColumns = QStringLiteral("ID, 文章形式Code, 規程Code, 正式名称, 作成日時, 施行日");

VersionHeader headerOf(const RowReader &q)
{
    VersionHeader h;
    h.id = q.value(0).toLongLong();
    h.style = q.value(1).toString();
    h.document = q.value(2).toString();
    h.name = q.value(3).toString();
    h.made = QDateTime::fromString(q.value(4).toString(), Qt::ISODate);
    h.effective = QDate::fromString(q.value(5).toString(), Qt::ISODate);
    return h;
}

void insertRows(QSqlDatabase db, qint64 id, const PrintedRows &rows)
{
    RowWriter insert(db, QStringLiteral("INSERT INTO 改訂履歴行 (改訂履歴ID, 順番, 種別, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, "
                                        "号の細分イロハCode, 結合, 改行, 番号表示, 文章) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?)"));
    QVariantList binds;
    binds.reserve(13);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const PrintedRow &r = rows[i];
        binds.clear();
        binds << id << qint64(i + 1) << levelCode(r.level);
        for (const QString &code : r.codes)
            binds << code;
        binds << r.segment << (r.newLine ? QStringLiteral("1") : QStringLiteral("")) << r.label << r.text;
        insert.write(binds);
    }
}

} // namespace

VersionStore::VersionStore(QSqlDatabase db) : m_db(std::move(db)) { ensureVersionTables(m_db); }

QString VersionStore::fingerprint(const QDate &effective, const PrintedRows &rows)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(effective.toString(Qt::ISODate).toUtf8());
    for (const PrintedRow &r : rows) {
        // Unit and record separators keep "ab"+"c" apart from "a"+"bc".
        QStringList fields{
            levelCode(r.level), r.codes.join(u'\x1f'), r.segment, r.newLine ? QStringLiteral("1") : QString(), r.label, r.text};
        hash.addData(QByteArray("\x1e"));
        hash.addData(fields.join(u'\x1f').toUtf8());
    }
    return QString::fromLatin1(hash.result().toHex());
}

qint64 VersionStore::keep(const VersionHeader &header, const PrintedRows &rows)
{
    Transaction transaction(m_db);
    const QString print = fingerprint(header.effective, rows);
    RowReader last =
        execSql(m_db, QStringLiteral("SELECT ID, 指紋 FROM 改訂履歴 WHERE 文章形式Code = ? AND 規程Code = ? ORDER BY ID DESC LIMIT 1"),
                {header.style, header.document});
    if (last.next() && last.value(1).toString() == print)
        return last.value(0).toLongLong();
    const qint64 id = insertInto(m_db, kVersionsTable,
                                 {QStringLiteral("文章形式Code"), QStringLiteral("規程Code"), QStringLiteral("正式名称"),
                                  QStringLiteral("作成日時"), QStringLiteral("施行日"), QStringLiteral("指紋")},
                                 {header.style, header.document, boundValue(header.name), header.made.toString(Qt::ISODate),
                                  header.effective.toString(Qt::ISODate), print});
    insertRows(m_db, id, rows);
    transaction.commit();
    return id;
}

QList<VersionHeader> VersionStore::list(const QString &style, const QString &document)
{
    RowReader q =
        execSql(m_db, QStringLiteral("SELECT %1 FROM 改訂履歴 WHERE 文章形式Code = ? AND 規程Code = ? ORDER BY ID").arg(kHeaderColumns),
                {style, document});
    QList<VersionHeader> headers;
    while (q.next())
        headers << headerOf(q);
    return headers;
}

QList<VersionHeader> VersionStore::latestOfEach(const QString &style)
{
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT %1 FROM 改訂履歴 WHERE ID IN (SELECT MAX(ID) FROM 改訂履歴 WHERE 文章形式Code = ? "
                                         "GROUP BY 規程Code) ORDER BY 規程Code")
                              .arg(kHeaderColumns),
                          {style});
    QList<VersionHeader> headers;
    while (q.next())
        headers << headerOf(q);
    return headers;
}

std::optional<VersionHeader> VersionStore::header(qint64 id)
{
    RowReader q = execSql(m_db, QStringLiteral("SELECT %1 FROM 改訂履歴 WHERE ID = ?").arg(kHeaderColumns), {id});
    if (!q.next())
        return std::nullopt;
    return headerOf(q);
}

Version VersionStore::read(qint64 id)
{
    // One read transaction: the header and its rows as they stand together.
    Transaction transaction(m_db);
    const std::optional<VersionHeader> found = header(id);
    if (!found)
        throw Failure(QStringLiteral("版 %1 はありません。").arg(id));
    Version version{*found, {}};
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT 種別, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合, 改行, "
                                         "番号表示, 文章 FROM 改訂履歴行 WHERE 改訂履歴ID = ? ORDER BY 順番"),
                          {id});
    while (q.next()) {
        PrintedRow r;
        r.level = levelOf(q.value(0).toString());
        for (int i = 0; i < 6; ++i)
            r.codes[i] = q.value(1 + i).toString();
        r.segment = q.value(7).toString();
        r.newLine = q.value(8).toString() == u"1";
        r.label = q.value(9).toString();
        r.text = q.value(10).toString();
        version.rows << r;
    }
    transaction.commit();
    return version;
}

bool VersionStore::remove(qint64 id)
{
    Transaction transaction(m_db);
    if (!header(id))
        return false;
    execSql(m_db, QStringLiteral("DELETE FROM 改訂履歴行 WHERE 改訂履歴ID = ?"), {id});
    execSql(m_db, QStringLiteral("DELETE FROM 改訂履歴 WHERE ID = ?"), {id});
    transaction.commit();
    return true;
}

} // namespace normaris
