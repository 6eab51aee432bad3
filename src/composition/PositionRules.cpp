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

const QString kChapterBelow = QStringLiteral("の下に章を追加しますか？");

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
    Level added;       // Document for a release
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
    {Level::Paragraph, '2', {2}, true, "解除する項の「最初の行」の位置で処理してください。", kRelease, "号以下のデータがある場合は、それらも一緒に選択解除します。", Level::Document, false},
    {Level::Paragraph, '3', {}, false, "", "第１項を追加しますか？", kWithItems, Level::Paragraph, true},
    {Level::Paragraph, '4', {2}, false, "この項には結合データと号以下のデータのいずれか又は両方があります。", kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Paragraph, '5', {2, 3}, false, "この項には結合データがあります。", kAddItem, kWithMaru, Level::Item, false},
    {Level::Item, '2', {3}, true, "解除する号の「最初の行」の位置で処理してください。", kRelease, "①～⑳以下のデータがある場合は、それらも一緒に選択解除します。", Level::Document, false},
    {Level::Item, '3', {2}, false, kBelongsParagraph, kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Item, '4', {3}, false, "この号には結合データと①～⑳以下のデータのいずれか又は両方があります。", kAddItem, kWithMaru, Level::Item, false},
    {Level::Item, '5', {3, 4}, false, "この号には結合データがあります。", kAddMaru, kWithIroha, Level::Maru, false},
    {Level::Maru, '2', {4}, true, "解除する①～⑳の「最初の行」の位置で処理してください。", kRelease, "イ～ネのデータがある場合は、それらも一緒に選択解除します。", Level::Document, false},
    {Level::Maru, '3', {2}, false, kBelongsParagraph, kAddParagraph, kWithItems, Level::Paragraph, false},
    {Level::Maru, '4', {3}, false, kBelongsItem, kAddItem, kWithMaru, Level::Item, false},
    {Level::Maru, '5', {4}, false, "この①～⑳には結合データとイ～ネのデータのいずれか又は両方があります。", kAddMaru, kWithIroha, Level::Maru, false},
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
    const QString withArticles = QStringLiteral("条以下のデータがある場合は、それらも一緒に追加します。");
    const QString withParagraphs = QStringLiteral("項以下のデータがある場合は、それらも一緒に追加します。");
    const QString articleBelow = QStringLiteral("の下に条を追加しますか？");
    const QString release = QStringLiteral("の選択を解除しますか？");
    const QChar a = action.at(0);
    switch (row.level) {
    case Level::Document:
        // The tests of this row look at the row after it only when it is not row 0, and it
        // always is: a second 前文 is refused by the add itself.
        if (a == u'3')
            return confirm(row, QStringLiteral("の下に前文を追加しますか？"), {}, Level::Document, false, Level::Preamble);
        if (a == u'4')
            return confirm(row, kChapterBelow, withArticles, Level::Document, false, Level::Chapter);
        break;
    case Level::Preamble:
        if (a == u'2') {
            if (i > 0 && rows[i - 1].level == Level::Preamble)
                return refuse(kPlaceTitle, QStringLiteral("前文の「最初の行」の位置で処理してください。"));
            return confirm(row, release, {}, Level::Preamble, true);
        }
        if (a == u'3') {
            if (!last && rows[i + 1].level == Level::Preamble)
                return refuse(kPlaceTitle, QStringLiteral("前文の「最後の行」の位置で処理してください。"));
            return confirm(row, kChapterBelow, withArticles, Level::Preamble, false, Level::Chapter);
        }
        break;
    case Level::Chapter:
        if (a == u'2')
            return confirm(row, release, QStringLiteral("条以下のデータがある場合は、それらも一緒に選択解除します。"), Level::Chapter, true);
        if (a == u'3')
            return confirm(row, articleBelow, withParagraphs, Level::Chapter, false, Level::Article);
        break;
    case Level::Article:
        if (a == u'2')
            return confirm(row, release, QStringLiteral("項以下のデータがある場合は、それらも一緒に選択解除します。"), Level::Article, true);
        if (a == u'3') {
            if (!last && rows[i + 1].codes[0] == row.codes[0])
                return refuse(kPlaceTitle, QStringLiteral("前章の「最後の条」の位置で処理してください。"));
            return confirm(row, kChapterBelow, withArticles, Level::Article, false, Level::Chapter);
        }
        if (a == u'4')
            return confirm(row, articleBelow, withParagraphs, Level::Article, false, Level::Article);
        if (a == u'5') {
            if (!articleHasParagraphs)
                return refuse(QStringLiteral("項の制約事項"), QStringLiteral("「項」が１つも登録されていません。\n"
                                                                       "この条を選択解除し、先にディクショナリで追加登録をしてください。\n"
                                                                       "その後、このフォームで同条を追加することで項以下のデータも追加されます。"));
            PanelDecision d;
            d.kind = PanelDecision::Kind::OpenParagraphs;
            d.current = Level::Article;
            return d;
        }
        break;
    default:
        break;
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
