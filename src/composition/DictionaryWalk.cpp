#include "composition/DictionaryWalk.h"

#include "base/Database.h"
#include "base/SqlDialect.h"

#include <QSqlQuery>

namespace normaris {

QString dictionaryPlaceWhere(Level level, int n)
{
    // In a dictionary table the clause's own code is the column "Code", its parents
    // the place columns before it.
    QStringList parts;
    const int own = placeDepth(level) - 1;
    for (int i = 0; i < n; ++i)
        parts << (i == own ? QStringLiteral("Code = ?") : QStringLiteral("%1 = ?").arg(placeColumns()[i]));
    return parts.join(QStringLiteral(" AND "));
}

CompositionRow DictionaryWalk::base(Level level) const
{
    CompositionRow r;
    r.level = level;
    r.document = m_document;
    r.style = m_style;
    return r;
}

QStringList DictionaryWalk::selectedChildren(Level level, const QStringList &parent)
{
    const QString table = dictionaryTable(level);
    QString where = QStringLiteral("文章形式Code = ? AND 規程Code = ? AND 選択フラグ = 1");
    QVariantList keys = {m_style, m_document};
    for (qsizetype i = 0; i < parent.size(); ++i) {
        where += QStringLiteral(" AND %1 = ?").arg(placeColumns()[i]);
        keys << parent[i];
    }
    if (isClauseLevel(level))
        where += QStringLiteral(" AND %1 <= 1").arg(SqlDialect::of(m_db).integerOf(QStringLiteral("結合")));
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT Code FROM %1 WHERE %2 GROUP BY Code ORDER BY %3")
                              .arg(table, where, SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                          keys);
    QStringList codes;
    while (q.next())
        codes << q.value(0).toString();
    return codes;
}

void DictionaryWalk::walk(Level level, const QStringList &place, int number, QList<CompositionRow> &out)
{
    const QString table = dictionaryTable(level);
    const int n = placeDepth(level);
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT %1, 結合, 改行, テンプレート, 変数語句, 変数番号, 変更フラグ FROM %1 "
                                         "WHERE 文章形式Code = ? AND 規程Code = ? AND %2 ORDER BY %3")
                              .arg(table, dictionaryPlaceWhere(level, n), SqlDialect::of(m_db).integerOf(QStringLiteral("結合"))),
                          QVariantList{m_style, m_document} + QVariantList(place.begin(), place.begin() + n));
    while (q.next()) {
        CompositionRow r = base(level);
        r.number = number;
        for (int i = 0; i < n; ++i)
            r.codes[i] = place[i];
        r.text = q.value(0).toString();
        r.join = q.value(1).toString();
        r.lineBreak = q.value(2).toBool();
        r.templateCode = q.value(3).toString();
        r.words = q.value(4).toBool();
        r.references = q.value(5).toBool();
        r.changed = q.value(6).toBool();
        out << r;
    }
    if (level == Level::Iroha)
        return;
    const Level child = Level(int(level) + 1);
    int childNumber = 0;
    for (const QString &code : selectedChildren(child, place.mid(0, n))) {
        QStringList childPlace = place.mid(0, n);
        childPlace << code;
        walk(child, childPlace, ++childNumber, out);
    }
}

QList<CompositionRow> DictionaryWalk::clause(Level level, const QStringList &place, int number)
{
    QList<CompositionRow> rows;
    walk(level, place, number, rows);
    return rows;
}

QList<CompositionRow> DictionaryWalk::articleBody(const QString &chapter, const QString &article)
{
    QList<CompositionRow> rows;
    int number = 0;
    for (const QString &code : selectedChildren(Level::Paragraph, {chapter, article}))
        walk(Level::Paragraph, {chapter, article, code}, ++number, rows);
    return rows;
}

QList<CompositionRow> DictionaryWalk::preamble()
{
    QList<CompositionRow> rows;
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT 前文, 結合, 改行, 変数語句, 変更フラグ FROM 前文 WHERE 文章形式Code = ? AND 規程Code = ? "
                                         "AND Code = '01' ORDER BY %1")
                              .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("結合"))),
                          {m_style, m_document});
    while (q.next()) {
        CompositionRow r = base(Level::Preamble);
        r.text = q.value(0).toString();
        r.join = q.value(1).toString();
        r.lineBreak = q.value(2).toBool();
        r.words = q.value(3).toBool();
        r.changed = q.value(4).toBool();
        rows << r;
    }
    return rows;
}

CompositionRow DictionaryWalk::chapter(const QString &code)
{
    CompositionRow r = base(Level::Chapter);
    r.codes[0] = code;
    RowReader q = execSql(m_db, QStringLiteral("SELECT 章, 変更フラグ FROM 章 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = ?"),
                          {m_style, m_document, code});
    if (q.next()) {
        r.text = q.value(0).toString();
        r.changed = q.value(1).toBool();
    }
    return r;
}

CompositionRow DictionaryWalk::article(const QString &chapter, const QString &code)
{
    CompositionRow r = base(Level::Article);
    r.codes[0] = chapter;
    r.codes[1] = code;
    RowReader q = execSql(
        m_db, QStringLiteral("SELECT 条, 変更フラグ, 正式名称 FROM 条 WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND Code = ?"),
        {m_style, m_document, chapter, code});
    if (q.next()) {
        r.text = q.value(0).toString();
        r.changed = q.value(1).toBool();
        r.formalName = q.value(2).toString();
    }
    return r;
}

QStringList DictionaryWalk::selectedArticles(const QString &chapter) { return selectedChildren(Level::Article, {chapter}); }

} // namespace normaris
