#include "composition/PositionRules.h"

namespace normaris {

namespace {

const QString kAddTitle = QStringLiteral("追加の確認");
const QString kReleaseTitle = QStringLiteral("選択解除の確認");
const QString kPlaceTitle = QStringLiteral("処理位置の確認");

PanelDecision refuse(const QString &title, const QString &text)
{
    PanelDecision d;
    d.kind = PanelDecision::Kind::Refuse;
    d.title = title;
    d.text = text;
    return d;
}

// The question opens with the row's text; a second line stands after an empty line.
PanelDecision confirm(const PanelRow &row, const QString &line1, const QString &line2, Level current, bool release,
                      Level added = Level::Document, bool first = false)
{
    PanelDecision d;
    d.kind = PanelDecision::Kind::Confirm;
    d.title = release ? kReleaseTitle : kAddTitle;
    d.text = row.text + u'\n' + line1 + (line2.isEmpty() ? QString() : QStringLiteral("\n\n") + line2);
    d.current = current;
    d.release = release;
    d.added = added;
    d.firstParagraph = first;
    return d;
}

// One row of the 条 panel's table: the level of the selected row and the action, the
// test that refuses it, and the question.
enum class ArticleCheck {
    None,
    PreviousOfLevel, // refused when the row before is of the same level (not its first row)
    NextOfLevel,     // refused when the row after is of the same level (not its last row)
    NextInChapter,   // refused when the row after is in the same 章 (not its last 条)
    HasParagraphs,   // goes down to the 項 panel; refused when the dictionary holds no 項
};

struct ArticleRule {
    Level row;
    char action;
    ArticleCheck check;
    const char *refusalTitle;
    const char *refusal;
    const char *line1;
    const char *line2;
    bool release;
    Level added; // Document for a release
};

const char *const kPlace = "処理位置の確認";
const char *const kChapterBelowText = "の下に章を追加しますか？";
const char *const kArticleBelow = "の下に条を追加しますか？";
const char *const kWithArticles = "条以下のデータがある場合は、それらも一緒に追加します。";
const char *const kWithParagraphs = "項以下のデータがある場合は、それらも一緒に追加します。";
const char *const kReleaseRow = "の選択を解除しますか？";

// The tests of the 規程 row look at the row after it only when it is not row 0, and it
// always is: a second 前文 is refused by the add itself.
const ArticleRule kArticleRules[] = {
    {Level::Document, '3', ArticleCheck::None, "", "", "の下に前文を追加しますか？", "", false, Level::Preamble},
    {Level::Document, '4', ArticleCheck::None, "", "", kChapterBelowText, kWithArticles, false, Level::Chapter},
    {Level::Preamble, '2', ArticleCheck::PreviousOfLevel, kPlace, "前文の「最初の行」の位置で処理してください。", kReleaseRow, "", true,
     Level::Document},
    {Level::Preamble, '3', ArticleCheck::NextOfLevel, kPlace, "前文の「最後の行」の位置で処理してください。", kChapterBelowText,
     kWithArticles, false, Level::Chapter},
    {Level::Chapter, '2', ArticleCheck::None, "", "", kReleaseRow, "条以下のデータがある場合は、それらも一緒に選択解除します。", true,
     Level::Document},
    {Level::Chapter, '3', ArticleCheck::None, "", "", kArticleBelow, kWithParagraphs, false, Level::Article},
    {Level::Article, '2', ArticleCheck::None, "", "", kReleaseRow, "項以下のデータがある場合は、それらも一緒に選択解除します。", true,
     Level::Document},
    {Level::Article, '3', ArticleCheck::NextInChapter, kPlace, "前章の「最後の条」の位置で処理してください。", kChapterBelowText,
     kWithArticles, false, Level::Chapter},
    {Level::Article, '4', ArticleCheck::None, "", "", kArticleBelow, kWithParagraphs, false, Level::Article},
    {Level::Article, '5', ArticleCheck::HasParagraphs, "項の制約事項",
     "「項」が１つも登録されていません。\n"
     "この条を選択解除し、先にディクショナリで追加登録をしてください。\n"
     "その後、このフォームで同条を追加することで項以下のデータも追加されます。",
     "", "", false, Level::Document},
};

// One row of the 項 panel's table: the codes compared with the neighbour row, the
// refusal, and the question.
struct ParagraphRule {
    Level row;
    char action;
    QList<int> labels; // indexes into codes: 2 項, 3 号, 4 ①, 5 イ
    bool previous;     // compare with the row before (a release), else the row after
    const char *refusal;
    const char *line1;
    const char *line2;
    Level added; // Document for a release
    bool first;
};

const char *const kAddParagraph = "の下に項を追加しますか？";
const char *const kWithItems = "号以下のデータがある場合は、それらも一緒に追加します。";
const char *const kAddItem = "の下に号を追加しますか？";
const char *const kWithMaru = "①～⑳以下のデータがある場合は、それらも一緒に追加します。";
const char *const kAddMaru = "の下に①～⑳を追加しますか？";
const char *const kWithIroha = "イ～ネのデータがある場合は、それらも一緒に追加します。";
const char *const kAddIroha = "の下にイ～ネを追加しますか？";
const char *const kRelease = "の選択を解除しますか？";
const char *const kBelongsParagraph = "この下には属する項のデータがあります。";
const char *const kBelongsItem = "この下には属する号のデータがあります。";

const ParagraphRule kParagraphRules[] = {
    {Level::Paragraph,
     '2',
     {2},
     true,
     "解除する項の「最初の行」の位置で処理してください。",
     kRelease,
     "号以下のデータがある場合は、それらも一緒に選択解除します。",
     Level::Document,
     false},
    {Level::Paragraph, '3', {}, false, "", "第１項を追加しますか？", kWithItems, Level::Paragraph, true},
    {Level::Paragraph,
     '4',
     {2},
     false,
     "この項には結合データと号以下のデータのいずれか又は両方があります。",
     kAddParagraph,
     kWithItems,
     Level::Paragraph,
     false},
    {Level::Paragraph, '5', {2, 3}, false, "この項には結合データがあります。", kAddItem, kWithMaru, Level::Item, false},
    {Level::Item,
     '2',
     {3},
     true,
     "解除する号の「最初の行」の位置で処理してください。",
     kRelease,
     "①～⑳以下のデータがある場合は、それらも一緒に選択解除します。",
     Level::Document,
     false},
    {Level::Item, '3', {2}, false, kBelongsParagraph, kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Item,
     '4',
     {3},
     false,
     "この号には結合データと①～⑳以下のデータのいずれか又は両方があります。",
     kAddItem,
     kWithMaru,
     Level::Item,
     false},
    {Level::Item, '5', {3, 4}, false, "この号には結合データがあります。", kAddMaru, kWithIroha, Level::Maru, false},
    {Level::Maru,
     '2',
     {4},
     true,
     "解除する①～⑳の「最初の行」の位置で処理してください。",
     kRelease,
     "イ～ネのデータがある場合は、それらも一緒に選択解除します。",
     Level::Document,
     false},
    {Level::Maru, '3', {2}, false, kBelongsParagraph, kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Maru, '4', {3}, false, kBelongsItem, kAddItem, kWithMaru, Level::Item, false},
    {Level::Maru,
     '5',
     {4},
     false,
     "この①～⑳には結合データとイ～ネのデータのいずれか又は両方があります。",
     kAddMaru,
     kWithIroha,
     Level::Maru,
     false},
    {Level::Maru, '6', {4, 5}, false, "この①～⑳には結合データがあります。", kAddIroha, "", Level::Iroha, false},
    {Level::Iroha, '2', {5}, true, "解除するイ～ネの「最初の行」の位置で処理してください。", kRelease, "", Level::Document, false},
    {Level::Iroha, '3', {2}, false, kBelongsParagraph, kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Iroha, '4', {3}, false, kBelongsItem, kAddItem, kWithMaru, Level::Item, false},
    {Level::Iroha, '5', {4}, false, "この下には属する①～⑳のデータがあります。", kAddMaru, kWithIroha, Level::Maru, false},
    {Level::Iroha, '6', {5}, false, "このイ～ネには結合データがあります。", kAddIroha, "", Level::Iroha, false},
};

// True when every named code is the same in the row and its neighbour (none past the ends).
bool sameAsNeighbour(const QList<PanelRow> &rows, int index, int neighbour, const QList<int> &labels)
{
    if (labels.isEmpty() || neighbour < 0 || neighbour >= rows.size())
        return false;
    for (int label : labels) {
        if (rows[neighbour].codes[label] != rows[index].codes[label])
            return false;
    }
    return true;
}

} // namespace

PanelDecision articlePanelAction(const QList<PanelRow> &rows, int i, const QString &action, bool articleHasParagraphs)
{
    if (action.isEmpty())
        return refuse(QStringLiteral("処理方法の指定"), QStringLiteral("処理方法を指定してください。"));
    const PanelRow &row = rows.at(i);
    const bool last = i + 1 == rows.size();
    for (const ArticleRule &rule : kArticleRules) {
        if (rule.row != row.level || action.at(0) != QChar::fromLatin1(rule.action))
            continue;
        bool refused = false;
        switch (rule.check) {
        case ArticleCheck::None: break;
        case ArticleCheck::PreviousOfLevel: refused = i > 0 && rows[i - 1].level == row.level; break;
        case ArticleCheck::NextOfLevel: refused = !last && rows[i + 1].level == row.level; break;
        case ArticleCheck::NextInChapter: refused = !last && rows[i + 1].codes[0] == row.codes[0]; break;
        case ArticleCheck::HasParagraphs: refused = !articleHasParagraphs; break;
        }
        if (refused)
            return refuse(QString::fromUtf8(rule.refusalTitle), QString::fromUtf8(rule.refusal));
        if (rule.check == ArticleCheck::HasParagraphs) {
            PanelDecision d;
            d.kind = PanelDecision::Kind::OpenParagraphs;
            d.current = row.level;
            return d;
        }
        return confirm(row, QString::fromUtf8(rule.line1), QString::fromUtf8(rule.line2), row.level, rule.release, rule.added);
    }
    return {};
}

PanelDecision paragraphPanelAction(const QList<PanelRow> &rows, int i, const QString &action)
{
    if (action.isEmpty())
        return refuse(QStringLiteral("処理方法の指定"), QStringLiteral("処理方法を指定してください。"));
    const PanelRow &row = rows.at(i);
    for (const ParagraphRule &rule : kParagraphRules) {
        if (rule.row != row.level || action != QString(QChar::fromLatin1(rule.action)))
            continue;
        const bool release = rule.added == Level::Document;
        if (release && row.level == Level::Paragraph) {
            // The last 項 of a 条 stays, whichever of its rows is chosen.
            int paragraphs = 0;
            for (const PanelRow &r : rows)
                paragraphs += r.level == Level::Paragraph && r.join.toInt() <= 1;
            if (paragraphs == 1)
                return refuse(QStringLiteral("選択解除不可"), QStringLiteral("項は最低１つ必要です。\n先に他の項を追加してください。"));
        }
        const int neighbour = rule.previous ? i - 1 : i + 1;
        if (sameAsNeighbour(rows, i, neighbour, rule.labels)) {
            const QString text = QString::fromUtf8(rule.refusal);
            // Only the refusals that name the first row stand alone.
            return refuse(kPlaceTitle, rule.previous ? text : text + QStringLiteral("\nそれらの最後の行の位置で処理してください。"));
        }
        return confirm(row, QString::fromUtf8(rule.line1), QString::fromUtf8(rule.line2), row.level, release, rule.added, rule.first);
    }
    return {};
}

} // namespace normaris
