#include "rulebase/CompositionRow.h"

#include "base/Database.h"
#include "base/SqlDialect.h"
#include "rulebase/Schema.h"

#include <QSqlError>
#include <QSqlQuery>

namespace normaris {

QVariantList CompositionRow::values(bool lineBreakAsText) const
{
    QVariantList v = {order, levelCode(level), document, number};
    for (const QString &c : codes)
        v << c;
    const QVariant lineBreakValue = lineBreakAsText ? QVariant(lineBreak ? QStringLiteral("1") : QString()) : QVariant(lineBreak ? 1 : 0);
    v << join << lineBreakValue << templateCode << text << words << references << changed << style << formalName;
    return v;
}

QList<CompositionRow> readRows(QSqlDatabase db, const QString &table, const QString &where, const QVariantList &keys)
{
    QList<CompositionRow> rows;
    RowReader q =
        execSql(db,
                QStringLiteral("SELECT 順番, 種別, 規程Code, 番号, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, "
                               "結合, 改行, テンプレート, 文章, 変数語句, 変数番号, 変更フラグ, 文章形式Code, 正式名称 "
                               "FROM %1 WHERE %2 ORDER BY 順番, %3")
                    .arg(table, where, SqlDialect::of(db).integerOf(QStringLiteral("結合"))),
                keys);
    while (q.next()) {
        CompositionRow r;
        r.order = q.value(0).toInt();
        r.level = levelOf(q.value(1).toString());
        r.document = q.value(2).toString();
        r.number = q.value(3).toInt();
        for (int i = 0; i < 6; ++i)
            r.codes[i] = q.value(4 + i).toString();
        r.join = q.value(10).toString();
        r.lineBreak = q.value(11).toString() == u"1";
        r.templateCode = q.value(12).toString();
        r.text = q.value(13).toString();
        r.words = q.value(14).toBool();
        r.references = q.value(15).toBool();
        r.changed = q.value(16).toBool();
        r.style = q.value(17).toString();
        r.formalName = q.value(18).toString();
        rows << r;
    }
    return rows;
}

QList<CompositionRow> readWorkRows(QSqlDatabase db, const QString &table, const QString &style, const QString &document)
{
    return readRows(db, table, QStringLiteral("文章形式Code = ? AND 規程Code = ?"), {style, document});
}

QList<CompositionRow> readArticleRows(QSqlDatabase db, const QString &style, const QString &document)
{
    return readRows(db, kArticleRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ?"), {style, document});
}

QList<CompositionRow> readClauseRows(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                                     const QString &article)
{
    return readRows(db, kClauseRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                    {style, document, chapter, article});
}

namespace {

void insertRows(QSqlDatabase db, const QString &table, const QList<CompositionRow> &rows, bool lineBreakAsText)
{
    if (rows.isEmpty())
        return;
    const QStringList names = schemaTable(table).columnNames();
    const QStringList marks(names.size(), QStringLiteral("?"));
    RowWriter insert(db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, names.join(u','), marks.join(u',')));
    for (const CompositionRow &r : rows)
        insert.write(r.values(lineBreakAsText));
}

} // namespace

void insertCompositionRows(QSqlDatabase db, const QString &table, const QList<CompositionRow> &rows) { insertRows(db, table, rows, false); }

void insertWorkRows(QSqlDatabase db, const QString &table, const QList<CompositionRow> &rows) { insertRows(db, table, rows, true); }

} // namespace normaris
