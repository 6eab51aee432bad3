#include "composition/ClauseAdder.h"

#include "rulebase/CompositionRow.h"
#include "composition/DictionaryWalk.h"
#include "composition/RowsetScope.h"
#include "base/Database.h"

namespace normaris {

namespace {

// Gives the rows 順番 from `first` on, in the order they stand.
void placeRows(QList<CompositionRow> &rows, int first)
{
    for (CompositionRow &row : rows)
        row.order = first++;
}

void markSelected(QSqlDatabase db, const QString &style, const QString &document, Level level, const QStringList &place)
{
    const int n = placeDepth(level);
    execSql(db,
            QStringLiteral("UPDATE %1 SET 選択フラグ = 1 WHERE 文章形式Code = ? AND 規程Code = ? AND %2")
                .arg(dictionaryTable(level), dictionaryPlaceWhere(level, n)),
            QVariantList{style, document} + QVariantList(place.begin(), place.begin() + n));
}

} // namespace

const AddMember *addMember(Level selected, Level added, bool firstParagraph)
{
    for (const AddMember &m : kAddFamily) {
        if (m.selected == selected && m.added == added && m.firstParagraph == firstParagraph)
            return &m;
    }
    return nullptr;
}

QStringList ClauseAdder::placeOf(const AddRequest &r)
{
    if (r.added == Level::Preamble)
        return {};
    QStringList place = r.codes.mid(0, placeDepth(r.added) - 1);
    place << r.chosen;
    return place;
}

Outcome ClauseAdder::add(const AddRequest &r)
{
    const QString caption = levelCaption(r.added);
    if (r.chosen.isEmpty()) {
        m_prompt.error(QStringLiteral("未指定"), QStringLiteral("「%1」を指定してください").arg(caption));
        return Outcome::Stopped;
    }
    const QStringList place = placeOf(r);
    // The in-use test and the panel rows are read inside the write, so that no other
    // connection can change them between the test and the insert.
    const Outcome outcome = runStep(
        m_prompt, m_db,
        [&] {
            const RowsetScope scope = isClauseLevel(r.added) ? RowsetScope::article(m_db, r.style, r.document, place[0], place[1])
                                                             : RowsetScope::document(m_db, r.style, r.document);
            if (scope.hasRow(r.added, place)) {
                m_prompt.error(QStringLiteral("使用中"), QStringLiteral("この%1は既に使用しています").arg(caption));
                return Outcome::Stopped;
            }
            if (isClauseLevel(r.added) && !addMember(r)) {
                m_prompt.failure(QStringLiteral("この位置には%1を追加できません。").arg(caption));
                return Outcome::Stopped;
            }
            (this->*adderOf(r.added))(r);
            // The words of the whole subtree come into use, also under clauses left out.
            setSubtreeWords(m_db, r.document, r.added, place, true);
            return Outcome::Done;
        },
        Prompt::Icon::Error);
    if (outcome != Outcome::Done)
        return outcome;
    m_prompt.information(QStringLiteral("確認"), QStringLiteral("処理を終了しました。"));
    return Outcome::Done;
}

ClauseAdder::LevelAdder ClauseAdder::adderOf(Level added)
{
    // The levels above 項 each add their own way; every clause level adds alike.
    static const std::pair<Level, LevelAdder> adders[] = {{Level::Preamble, &ClauseAdder::addPreamble},
                                                          {Level::Chapter, &ClauseAdder::addChapter},
                                                          {Level::Article, &ClauseAdder::addArticle}};
    for (const auto &[level, adder] : adders) {
        if (level == added)
            return adder;
    }
    return &ClauseAdder::addClause;
}

void ClauseAdder::addPreamble(const AddRequest &r)
{
    execSql(m_db, QStringLiteral("UPDATE 前文 SET 選択フラグ = 1 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = '01'"),
            {r.style, r.document});
    QList<CompositionRow> rows = DictionaryWalk(m_db, r.style, r.document).preamble();
    const int at = r.rowIndex + 2;
    RowsetScope::document(m_db, r.style, r.document).shiftOrder(at, int(rows.size()));
    placeRows(rows, at);
    insertCompositionRows(m_db, kArticleRowsTable, rows);
}

void ClauseAdder::addChapter(const AddRequest &r)
{
    const RowsetScope scope = RowsetScope::document(m_db, r.style, r.document);
    DictionaryWalk walk(m_db, r.style, r.document);
    markSelected(m_db, r.style, r.document, Level::Chapter, {r.chosen});
    const QStringList articles = walk.selectedArticles(r.chosen);
    const int i = r.rowIndex, n = int(articles.size());
    const int p = scope.numberBefore(Level::Chapter, {}, i + 1);
    // Below a 条 the new chapter's articles follow that 条; elsewhere they lead the run.
    const int q =
        r.selected == Level::Article ? scope.numberAfter(Level::Article, {}, i) : scope.numberBefore(Level::Article, {r.chosen}, i + 1);
    scope.shiftOrder(i + 2, n + 1);
    scope.renumber(Level::Chapter, {}, p, p + 1);
    scope.renumber(Level::Article, {}, q, q + n);

    QList<CompositionRow> rows = {walk.chapter(r.chosen)};
    rows.first().number = p + 1;
    for (int k = 0; k < n; ++k) {
        rows << walk.article(r.chosen, articles[k]);
        rows.last().number = q + 1 + k;
        QList<CompositionRow> body = walk.articleBody(r.chosen, articles[k]);
        placeRows(body, 1);
        insertCompositionRows(m_db, kClauseRowsTable, body);
    }
    placeRows(rows, i + 2);
    insertCompositionRows(m_db, kArticleRowsTable, rows);
}

void ClauseAdder::addArticle(const AddRequest &r)
{
    const RowsetScope scope = RowsetScope::document(m_db, r.style, r.document);
    DictionaryWalk walk(m_db, r.style, r.document);
    const QString chapter = r.codes[0];
    markSelected(m_db, r.style, r.document, Level::Article, {chapter, r.chosen});
    const int i = r.rowIndex;
    const int q = r.selected == Level::Article ? scope.numberAfter(Level::Article, {}, i) : scope.numberBefore(Level::Article, {}, i + 1);
    scope.shiftOrder(i + 2, 1);
    scope.renumber(Level::Article, {}, q, q + 1);
    CompositionRow row = walk.article(chapter, r.chosen);
    row.number = q + 1;
    row.order = i + 2;
    insertCompositionRows(m_db, kArticleRowsTable, {row});
    QList<CompositionRow> body = walk.articleBody(chapter, r.chosen);
    placeRows(body, 1);
    insertCompositionRows(m_db, kClauseRowsTable, body);
}

void ClauseAdder::addClause(const AddRequest &r)
{
    const AddMember &rule = *addMember(r);
    const QStringList place = placeOf(r);
    const QStringList parent = place.mid(0, place.size() - 1);
    const RowsetScope scope = RowsetScope::article(m_db, r.style, r.document, place[0], place[1]);
    markSelected(m_db, r.style, r.document, r.added, place);
    const int i = r.rowIndex;
    int p = 0;
    if (rule.base == AddBase::SelectedClause)
        p = scope.numberAfter(r.added, parent, i);
    else if (rule.base == AddBase::EnclosingClause)
        p = scope.numberBefore(r.added, parent, i + 1);
    QList<CompositionRow> rows = DictionaryWalk(m_db, r.style, r.document).clause(r.added, place, p + 1);
    const int at = rule.firstParagraph ? 1 : i + 2;
    scope.shiftOrder(at, int(rows.size()));
    scope.bumpNumbers(r.added, parent, p);
    placeRows(rows, at);
    insertCompositionRows(m_db, kClauseRowsTable, rows);
}

#define NORMARIS_TUIKA(name, selectedLevel, addedLevel, isFirst)                                                                           \
    Outcome name(ClauseAdder &a, AddRequest r)                                                                                             \
    {                                                                                                                                      \
        r.selected = Level::selectedLevel;                                                                                                 \
        r.added = Level::addedLevel;                                                                                                       \
        r.firstParagraph = isFirst;                                                                                                        \
        return a.add(r);                                                                                                                   \
    }
NORMARIS_TUIKA(Tuika0110, Document, Preamble, false)
NORMARIS_TUIKA(Tuika0102, Document, Chapter, false)
NORMARIS_TUIKA(Tuika1002, Preamble, Chapter, false)
NORMARIS_TUIKA(Tuika0203, Chapter, Article, false)
NORMARIS_TUIKA(Tuika0302, Article, Chapter, false)
NORMARIS_TUIKA(Tuika0303, Article, Article, false)
NORMARIS_TUIKA(Tuika0400, Paragraph, Paragraph, true)
NORMARIS_TUIKA(Tuika0404, Paragraph, Paragraph, false)
NORMARIS_TUIKA(Tuika0405, Paragraph, Item, false)
NORMARIS_TUIKA(Tuika0504, Item, Paragraph, false)
NORMARIS_TUIKA(Tuika0505, Item, Item, false)
NORMARIS_TUIKA(Tuika0506, Item, Maru, false)
NORMARIS_TUIKA(Tuika0604, Maru, Paragraph, false)
NORMARIS_TUIKA(Tuika0605, Maru, Item, false)
NORMARIS_TUIKA(Tuika0606, Maru, Maru, false)
NORMARIS_TUIKA(Tuika0607, Maru, Iroha, false)
NORMARIS_TUIKA(Tuika0704, Iroha, Paragraph, false)
NORMARIS_TUIKA(Tuika0705, Iroha, Item, false)
NORMARIS_TUIKA(Tuika0706, Iroha, Maru, false)
NORMARIS_TUIKA(Tuika0707, Iroha, Iroha, false)
#undef NORMARIS_TUIKA

} // namespace normaris
