#include "composition/ClauseReleaser.h"

#include "rulebase/CompositionRow.h"
#include "composition/DictionaryWalk.h"
#include "composition/RowsetScope.h"
#include "base/Database.h"

namespace normaris {

namespace {

void markStock(QSqlDatabase db, const ReleaseRequest &r, const QStringList &place)
{
    if (r.level == Level::Preamble) {
        execSql(db, QStringLiteral("UPDATE 前文 SET 選択フラグ = 0 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = '01'"),
                {r.style, r.document});
        return;
    }
    const int n = placeDepth(r.level);
    execSql(db,
            QStringLiteral("UPDATE %1 SET 選択フラグ = 0 WHERE 文章形式Code = ? AND 規程Code = ? AND %2")
                .arg(dictionaryTable(r.level), dictionaryPlaceWhere(r.level, n)),
            QVariantList{r.style, r.document} + QVariantList(place.begin(), place.end()));
}

} // namespace

Outcome ClauseReleaser::release(const ReleaseRequest &r)
{
    const bool done = runInTransaction(
        m_prompt, m_db,
        [&] {
            if (isClauseLevel(r.level))
                releaseFromArticle(r);
            else
                releaseFromDocument(r);
            const QStringList place = r.level == Level::Preamble ? QStringList() : r.codes.mid(0, placeDepth(r.level));
            setSubtreeWords(m_db, r.document, r.level, place, false);
        },
        Prompt::Icon::Error);
    if (!done)
        return Outcome::Failed;
    m_prompt.information(QStringLiteral("確認"), QStringLiteral("処理を終了しました。"));
    return Outcome::Done;
}

// 前文, 章 or 条: rows in 作成データ補助～条, and for 章 and 条 their clauses too.
void ClauseReleaser::releaseFromDocument(const ReleaseRequest &r)
{
    const RowsetScope scope = RowsetScope::document(m_db, r.style, r.document);
    const int i = r.rowIndex;
    const QStringList place = r.level == Level::Preamble ? QStringList() : r.codes.mid(0, placeDepth(r.level));
    const int p = r.level == Level::Preamble ? 0 : scope.numberAfter(r.level, {}, i);
    // For a 章, the lowest number among its 条; 0 when it has none (then every 条 of
    // the document is renumbered from 0).
    const int q = r.level == Level::Chapter ? scalar(m_db,
                                                     QStringLiteral("SELECT coalesce(min(番号), 0) FROM 作成データ補助～条 WHERE "
                                                                    "文章形式Code = ? AND 規程Code = ? AND 種別 = '3' AND 章Code = ?"),
                                                     {r.style, r.document, place[0]})
                                                  .toInt()
                                            : 0;
    scope.deleteRows(r.level, place);
    if (r.level != Level::Preamble)
        RowsetScope::documentClauses(m_db, r.style, r.document).deleteRows(r.level, place);
    // Only the clause named goes back to stock: its 条 and clauses keep their flags.
    markStock(m_db, r, place);
    scope.closeOrder(i);
    if (r.level == Level::Chapter) {
        scope.renumber(Level::Chapter, {}, p, p - 1);
        scope.renumber(Level::Article, {}, q, q - 1);
    } else if (r.level == Level::Article) {
        scope.renumber(Level::Article, {}, p, p - 1);
    }
}

// 項 and below: rows of one 条 in 作成データ補助項～.
void ClauseReleaser::releaseFromArticle(const ReleaseRequest &r)
{
    const QStringList place = r.codes.mid(0, placeDepth(r.level));
    const QStringList parent = place.mid(0, place.size() - 1);
    const RowsetScope scope = RowsetScope::article(m_db, r.style, r.document, place[0], place[1]);
    const int i = r.rowIndex;
    const int p = scope.numberAfter(r.level, parent, i);
    scope.deleteRows(r.level, place);
    markStock(m_db, r, place);
    scope.closeOrder(i);
    scope.renumber(r.level, parent, p, p - 1, true);
}

const ReleaseMember *releaseMember(Level level)
{
    for (const ReleaseMember &m : kReleaseFamily) {
        if (m.level == level)
            return &m;
    }
    return nullptr;
}

#define NORMARIS_KAIJO(name, releasedLevel)                                                                                                \
    Outcome name(ClauseReleaser &k, ReleaseRequest r)                                                                                      \
    {                                                                                                                                      \
        r.level = Level::releasedLevel;                                                                                                    \
        return k.release(r);                                                                                                               \
    }
NORMARIS_KAIJO(Kaijo10, Preamble)
NORMARIS_KAIJO(Kaijo02, Chapter)
NORMARIS_KAIJO(Kaijo03, Article)
NORMARIS_KAIJO(Kaijo04, Paragraph)
NORMARIS_KAIJO(Kaijo05, Item)
NORMARIS_KAIJO(Kaijo06, Maru)
NORMARIS_KAIJO(Kaijo07, Iroha)
#undef NORMARIS_KAIJO

} // namespace normaris
