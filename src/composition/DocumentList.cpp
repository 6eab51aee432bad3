#include "composition/DocumentList.h"

#include "rulebase/CompositionRow.h"
#include "base/Database.h"
#include "base/SqlDialect.h"

#include <QSqlQuery>

namespace normaris {

namespace {

QList<CodeAndName> codesAndNames(RowReader q)
{
    QList<CodeAndName> list;
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

} // namespace

QList<CodeAndName> DocumentList::documents(const QString &style, bool selected)
{
    return codesAndNames(execSql(m_db,
                                 QStringLiteral("SELECT Code, 規程 FROM 規程 WHERE 文章形式Code = ? AND 選択フラグ = ? ORDER BY %1")
                                     .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                                 {style, selected ? 1 : 0}));
}

QList<CodeAndName> DocumentList::selectedOfKind(const QString &style, const QString &kind)
{
    return codesAndNames(execSql(m_db,
                                 QStringLiteral("SELECT Code, 規程 FROM 規程 WHERE 文章形式Code = ? AND 選択フラグ = 1 AND 文章種別 = ? "
                                                "ORDER BY %1")
                                     .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                                 {style, kind}));
}

bool DocumentList::isOnList(const QString &style, const QString &document)
{
    return scalar(m_db, QStringLiteral("SELECT 選択フラグ FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toInt() == 1;
}

bool DocumentList::exists(const QString &style, const QString &document)
{
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toInt() > 0;
}

void DocumentList::addToList(const QString &style, const QString &document)
{
    Transaction transaction(m_db);
    execSql(m_db, QStringLiteral("UPDATE 規程 SET 選択フラグ = 1 WHERE 文章形式Code = ? AND Code = ?"), {style, document});
    const bool composed =
        scalar(m_db, QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = ? AND 規程Code = ?"), {style, document})
            .toInt()
        > 0;
    if (!composed) {
        RowReader q = execSql(m_db, QStringLiteral("SELECT 規程, 変更フラグ, 正式名称 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"),
                              {style, document});
        if (q.next()) {
            CompositionRow row;
            row.order = 1;
            row.level = Level::Document;
            row.document = document;
            row.text = q.value(0).toString();
            row.changed = q.value(1).toBool();
            row.style = style;
            row.formalName = q.value(2).toString();
            insertCompositionRows(m_db, kArticleRowsTable, {row});
        }
    }
    transaction.commit();
}

Outcome DocumentList::takeOffList(const QString &style, const QString &document, Prompt &prompt)
{
    // Only a document of the dictionary's own loses its composition; the user's own keep theirs.
    const bool losesComposition =
        document.toInt() < kUserCodes
        && scalar(m_db, QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = ? AND 規程Code = ?"),
                  {style, document})
                   .toInt()
               > 0;
    if (losesComposition) {
        const QString name =
            scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
        if (!prompt.questionNoByDefault(
                QStringLiteral("リストから外す確認"),
                QStringLiteral("『%1』をリストから外します。\n"
                               "この規則・規程・協定で選択した章・条・項などの構成はすべて削除され、元に戻せません。\n\n"
                               "よろしいですか？")
                    .arg(name)))
            return Outcome::Stopped;
    }
    removeFromList(style, document);
    return Outcome::Done;
}

void DocumentList::removeFromList(const QString &style, const QString &document)
{
    Transaction transaction(m_db);
    execSql(m_db, QStringLiteral("UPDATE 規程 SET 選択フラグ = 0 WHERE 文章形式Code = ? AND Code = ?"), {style, document});
    if (document.toInt() < kUserCodes) {
        for (const QString &table : {kArticleRowsTable, kClauseRowsTable})
            execSql(m_db, QStringLiteral("DELETE FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(table), {style, document});
    }
    transaction.commit();
}

} // namespace normaris
