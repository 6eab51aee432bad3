#include "words/EmbeddedWords.h"

#include "base/AppState.h"
#include "base/Database.h"
#include "base/SqlDialect.h"
#include "base/FieldChecks.h"

#include <QSqlQuery>

namespace normaris {

EmbeddedWords EmbeddedWords::ofCurrentDocument()
{
    const AppState &s = AppState::instance();
    return EmbeddedWords(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode);
}

QList<CodeAndName> EmbeddedWords::chapters()
{
    QList<CodeAndName> list;
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT Code, 章 FROM 章 WHERE 文章形式Code = ? AND 規程Code = ? AND 選択フラグ = 1 "
                                         "ORDER BY %1")
                              .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                          {m_style, m_document});
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

QList<CodeAndName> EmbeddedWords::articlesWithWords(const QString &chapter)
{
    {
        Transaction transaction(m_db);
        execSql(m_db, QStringLiteral("DELETE FROM 語句設定■条"));
        // An article counts when any selected clause under it holds a word; the clauses
        // are looked at per article, whatever their parents' flags.
        QString holds;
        for (const char *table : {"項", "号", "号の細分丸", "号の細分イロハ"}) {
            if (!holds.isEmpty())
                holds += QStringLiteral(" OR ");
            holds += QStringLiteral("EXISTS (SELECT 1 FROM %1 c WHERE c.文章形式Code = j.文章形式Code AND c.規程Code = j.規程Code "
                                    "AND c.章Code = j.章Code AND c.条Code = j.Code AND c.選択フラグ = 1 AND c.変数語句 = 1)")
                         .arg(QString::fromUtf8(table));
        }
        execSql(m_db,
                QStringLiteral("INSERT INTO 語句設定■条 (文章形式Code, 規程Code, 章Code, Code, 条, 変更フラグ, 正式名称, 選択フラグ) "
                               "SELECT 文章形式Code, 規程Code, 章Code, Code, 条, 変更フラグ, 正式名称, 選択フラグ FROM 条 j "
                               "WHERE j.文章形式Code = ? AND j.規程Code = ? AND j.章Code = ? AND j.選択フラグ = 1 AND (%1)")
                    .arg(holds),
                {m_style, m_document, chapter});
        transaction.commit();
    }
    QList<CodeAndName> list;
    RowReader q = execSql(
        m_db, QStringLiteral("SELECT Code, 条 FROM 語句設定■条 ORDER BY %1").arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))));
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

QList<EmbeddedWord> EmbeddedWords::words(const QString &chapter, const QString &article)
{
    QList<EmbeddedWord> list;
    RowReader q =
        execSql(m_db,
                QStringLiteral("SELECT Code, 表示名称, 語句 FROM 変数テーブル語句 WHERE 規程Code = ? AND 章Code = ? AND 条Code = ? "
                               "AND 選択フラグ = 1 ORDER BY %1, ID")
                    .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                {m_document, chapter, article});
    while (q.next())
        list << EmbeddedWord{q.value(0).toString(), q.value(1).toString(), q.value(2).toString()};
    return list;
}

void EmbeddedWords::save(const QString &chapter, const QString &article, const QList<std::pair<QString, QString>> &words)
{
    Transaction transaction(m_db);
    for (const auto &[code, text] : words) {
        execSql(
            m_db,
            QStringLiteral(
                "UPDATE 変数テーブル語句 SET 語句 = ? WHERE Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ? AND 選択フラグ = 1"),
            {text.isEmpty() ? markerOf(code) : text, code, m_document, chapter, article});
    }
    transaction.commit();
}

bool EmbeddedWords::hasMadeData(const QString &chapter, const QString &article)
{
    return scalar(m_db,
                  QStringLiteral("SELECT count(*) FROM 作成データ WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                  {m_style, m_document, chapter, article})
               .toInt()
           > 0;
}

int EmbeddedWords::countCaptioned(const QString &caption)
{
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = ? AND 表示名称 = ? AND 選択フラグ = 1"),
                  {m_document, caption})
        .toInt();
}

bool EmbeddedWords::checkWord(Prompt &prompt, const QString &text)
{
    return CheckOptionalField(prompt, text, kWordLimit, false, QStringLiteral("･･･設定内容"))
           && CheckNoControlCharacters(prompt, text, QStringLiteral("･･･設定内容"))
           && CheckNoMarkers(prompt, text, QStringLiteral("･･･設定内容"));
}

} // namespace normaris
