#include "legal/LegalCheck.h"

#include "base/Database.h"
#include "rulebase/CompositionRow.h"
#include "fileformats/XlsxSheet.h"
#include "rulebase/EffectiveDates.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <functional>
#include <optional>

namespace normaris::legal {

namespace {

// Each state's name and its colour in the list, 0xRRGGBB.
struct StateInfo {
    CheckState state;
    const char16_t *name;
    unsigned colour;
};
constexpr StateInfo kStates[] = {{CheckState::Met, u"充足", 0xD0F0D0},
                                 {CheckState::Missing, u"不足", 0xF8C0C0},
                                 {CheckState::ToConfirm, u"要確認", 0xF8F0A8},
                                 {CheckState::OutOfBounds, u"範囲外", 0xF8D0A0},
                                 {CheckState::Coming, u"施行予定", 0xD0E0F8}};

QString fullWidth(const QString &text)
{
    QString out = text;
    for (QChar &c : out) {
        if (c >= u'0' && c <= u'9')
            c = QChar(c.unicode() - u'0' + 0xFF10);
    }
    return out;
}

QString halfWidth(const QString &text)
{
    QString out = text;
    for (QChar &c : out) {
        if (c.unicode() >= 0xFF10 && c.unicode() <= 0xFF19)
            c = QChar(c.unicode() - 0xFF10 + u'0');
        else if (c == u'．')
            c = u'.';
    }
    return out.remove(u'，').remove(u',');
}

// The number a word holds: N分のM as M per hundred of N, else its first number.
std::optional<double> numberIn(const QString &word)
{
    const QString text = halfWidth(word);
    static const QRegularExpression fraction(QStringLiteral("([0-9]+)分の([0-9]+(?:\\.[0-9]+)?)"));
    if (const auto m = fraction.match(text); m.hasMatch() && m.captured(1).toDouble() > 0)
        return m.captured(2).toDouble() * 100 / m.captured(1).toDouble();
    static const QRegularExpression number(QStringLiteral("[0-9]+(?:\\.[0-9]+)?"));
    if (const auto m = number.match(text); m.hasMatch())
        return m.captured(0).toDouble();
    return std::nullopt;
}

QString placeKey(Level level, const QStringList &codes) { return levelCode(level) + u'|' + codes.mid(0, placeDepth(level)).join(u'|'); }

// The composed rows of one document, with their printed numbers.
class ComposedDocument {
public:
    ComposedDocument(QSqlDatabase db, const CheckRequest &r)
    {
        RequirementPlace without;
        without.level = r.withoutLevel;
        without.codes = r.withoutCodes;
        without.codes.resize(6);
        const bool leaveOut = r.withoutLevel != Level::Document;
        const QString where = QStringLiteral("文章形式Code = ? AND 規程Code = ?");
        for (const QString &table : {kArticleRowsTable, kClauseRowsTable}) {
            for (const CompositionRow &row : readRows(db, table, where, {r.style, r.document})) {
                if (row.level == Level::Document || (leaveOut && without.covers(row.level, row.codes)))
                    continue;
                m_rows << row;
                if (row.join == u"0" || row.join == u"1" || row.join.isEmpty())
                    m_numbers.insert(placeKey(row.level, row.codes), row.number);
            }
        }
    }

    const QList<CompositionRow> &rows() const { return m_rows; }

    bool has(Level level, const QStringList &codes) const { return m_numbers.contains(placeKey(level, codes)); }

    // 第３０条第２項第３号, 第２章, 前文: as the clause is printed, down to its 号.
    QString printed(Level level, const QStringList &codes) const
    {
        if (level == Level::Preamble)
            return QStringLiteral("前文");
        static const std::pair<Level, const char16_t *> parts[] = {
            {Level::Article, u"条"}, {Level::Paragraph, u"項"}, {Level::Item, u"号"}};
        if (level == Level::Chapter)
            return QStringLiteral("第%1章").arg(fullWidth(QString::number(m_numbers.value(placeKey(level, codes)))));
        QString text;
        for (const auto &[part, caption] : parts) {
            if (placeDepth(part) > placeDepth(level))
                break;
            const auto it = m_numbers.constFind(placeKey(part, codes));
            if (it != m_numbers.constEnd())
                text += u'第' + fullWidth(QString::number(*it)) + QString::fromUtf16(caption);
        }
        return text;
    }

private:
    QList<CompositionRow> m_rows;
    QHash<QString, int> m_numbers;
};

struct WordRow {
    QString value;
    bool selected = false;
    Level level = Level::Article;
    QStringList codes = QStringList(6);
};

QMultiHash<QString, WordRow> documentWords(QSqlDatabase db, const QString &document)
{
    QMultiHash<QString, WordRow> words;
    auto rows = execSql(db,
                        QStringLiteral("SELECT Code, 語句, 選択フラグ, 種別, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, "
                                       "号の細分イロハCode FROM 変数テーブル語句 WHERE 規程Code = ?"),
                        {document});
    while (rows.next()) {
        WordRow w;
        w.value = rows.value(1).toString();
        w.selected = rows.value(2).toBool();
        w.level = levelOf(rows.value(3).toString());
        for (int i = 0; i < 6; ++i)
            w.codes[i] = rows.value(4 + i).toString();
        words.insert(rows.value(0).toString(), w);
    }
    return words;
}

QDate documentDate(QSqlDatabase db, const QString &document)
{
    const QList<EffectiveDate> dates = EffectiveDates(db, document).list();
    return dates.isEmpty() ? QDate::currentDate() : dates.last().date;
}

bool ownText(const CompositionRow &row)
{
    return isUserCode(Level::Document, row.document) || (placeDepth(row.level) > 0 && isUserCode(row.level, row.ownCode()));
}

void checkBound(const Requirement &r, const ComposedDocument &doc, const QMultiHash<QString, WordRow> &words, CheckResult &result,
                bool &listed)
{
    result.bound = r.boundText;
    for (const WordRow &w : words.values(r.word)) {
        // A word counts where it is chosen and its clause is composed.
        if (!w.selected || !doc.has(w.level, w.codes))
            continue;
        listed = true;
        result.level = w.level;
        result.codes = w.codes;
        result.articles = {doc.printed(w.level, w.codes)};
        result.value = w.value;
        const std::optional<double> n = numberIn(w.value);
        result.state = !n ? CheckState::ToConfirm : r.withinBound(*n) ? CheckState::Met : CheckState::OutOfBounds;
        if (result.state != CheckState::Met)
            return;
    }
}

// Adds the printed number of every composed row that shows the requirement; the first
// such row becomes the result's clause.
void collectArticles(const ComposedDocument &doc, CheckResult &result, const std::function<bool(const CompositionRow &)> &shows)
{
    for (const CompositionRow &row : doc.rows()) {
        if (!shows(row))
            continue;
        const QString printed = doc.printed(row.level, row.codes);
        if (result.articles.isEmpty()) {
            result.level = row.level;
            result.codes = row.codes;
        }
        if (!result.articles.contains(printed))
            result.articles << printed;
    }
}

// Met by a composed place; else to confirm where the user's own text shows it; else missing.
// A document of the user's standing for a standard one meets nothing by place: its codes are not
// the standard document's.
void checkStatement(const Requirement &r, const ComposedDocument &doc, bool byPlace, CheckResult &result, bool &listed)
{
    if (!r.places.isEmpty() && byPlace) {
        result.level = r.places[0].level;
        result.codes = r.places[0].codes;
    }
    for (const RequirementPlace &p : r.places)
        collectArticles(doc, result,
                        [&](const CompositionRow &row) { return byPlace && row.level == p.level && p.covers(row.level, row.codes); });
    listed = true;
    if (!result.articles.isEmpty()) {
        result.state = CheckState::Met;
        return;
    }
    if (!r.pattern.isEmpty()) {
        const QRegularExpression pattern(r.pattern);
        collectArticles(doc, result, [&](const CompositionRow &row) {
            return ownText(row) && (row.text.contains(pattern) || row.formalName.contains(pattern));
        });
        if (!result.articles.isEmpty()) {
            result.state = CheckState::ToConfirm;
            result.value = r.patternCaption;
            return;
        }
    }
    result.state = CheckState::Missing;
    listed = r.kind == RequirementKind::Absolute;
}

QString countText(const QList<CheckResult> &results, CheckState state)
{
    const auto n = std::count_if(results.begin(), results.end(), [&](const CheckResult &r) { return r.state == state; });
    return n == 0 ? QString() : QStringLiteral("%1が%2件").arg(stateName(state), fullWidth(QString::number(n)));
}

} // namespace

QString stateName(CheckState state)
{
    for (const StateInfo &s : kStates)
        if (s.state == state)
            return QString::fromUtf16(s.name);
    return {};
}

unsigned stateColour(CheckState state)
{
    for (const StateInfo &s : kStates)
        if (s.state == state)
            return s.colour;
    return 0xFFFFFF;
}

const QStringList &resultHeadings()
{
    static const QStringList headings = {QStringLiteral("規程"), QStringLiteral("状態"),     QStringLiteral("法令"),
                                         QStringLiteral("事項"), QStringLiteral("条・語句"), QStringLiteral("限度・施行日")};
    return headings;
}

QStringList CheckResult::cells() const
{
    QString where = articles.join(u'、');
    if (!value.isEmpty())
        where = where.isEmpty() ? value : where + u'　' + value;
    QString limit = bound;
    if (state == CheckState::Coming)
        limit = effective.toString(Qt::ISODate) + QStringLiteral("施行");
    return {documentName, stateName(state), law, caption, where, limit};
}

QString CheckResult::line() const
{
    QStringList parts = cells().mid(1);
    while (!parts.isEmpty() && parts.last().isEmpty())
        parts.removeLast();
    parts.removeAll(QString());
    return parts.join(u'　');
}

QString standardDocumentFor(QSqlDatabase db, const QString &style, const QString &document)
{
    if (!isUserCode(Level::Document, document))
        return document;
    auto q = execSql(db,
                     QStringLiteral("SELECT s.Code FROM 規程 u JOIN 規程 s ON s.文章形式Code = u.文章形式Code "
                                    "WHERE u.文章形式Code = ? AND u.Code = ? AND s.Code <> u.Code "
                                    "AND (s.規程 IN (u.規程, u.正式名称) OR s.正式名称 IN (u.規程, u.正式名称)) "
                                    "ORDER BY CAST(s.Code AS INTEGER)"),
                     {style, document});
    while (q.next()) {
        const QString code = q.value(0).toString();
        if (!isUserCode(Level::Document, code))
            return code;
    }
    return {};
}

QList<CheckResult> checkDocument(QSqlDatabase db, const QList<Requirement> &table, const CheckRequest &request)
{
    const QDate date = request.date.isValid() ? request.date : documentDate(db, request.document);
    const ComposedDocument doc(db, request);
    const QMultiHash<QString, WordRow> words = documentWords(db, request.document);
    const QString name =
        scalar(db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {request.style, request.document})
            .toString();
    const QString standard = standardDocumentFor(db, request.style, request.document);
    const bool own = standard != request.document;
    QList<CheckResult> results;
    QList<CheckResult> coming;
    for (const Requirement &r : table) {
        // The words of the user's document are not the standard document's: its bounds are not checked.
        if (standard.isEmpty() || r.document != standard || (own && r.kind == RequirementKind::Bound))
            continue;
        CheckResult result;
        result.style = request.style;
        result.document = request.document;
        result.documentName = name;
        result.date = date;
        result.code = r.code;
        result.law = r.law;
        result.caption = r.caption;
        bool listed = false;
        const bool comingSoon = r.effective.isValid() && date < r.effective && r.effective <= date.addMonths(12);
        if (!r.inForceOn(date) && !comingSoon)
            continue;
        if (r.kind == RequirementKind::Bound)
            checkBound(r, doc, words, result, listed);
        else
            checkStatement(r, doc, !own, result, listed);
        if (comingSoon) {
            result.state = CheckState::Coming;
            result.effective = r.effective;
            coming << result;
        } else if (listed) {
            results << result;
        }
    }
    return results + coming;
}

QList<CheckResult> checkCompany(QSqlDatabase db, const QList<Requirement> &table, const QString &style, const QDate &date)
{
    QStringList documents;
    auto rows = execSql(
        db, QStringLiteral("SELECT Code FROM 規程 WHERE 文章形式Code = ? AND 選択フラグ = 1 ORDER BY CAST(Code AS INTEGER)"), {style});
    while (rows.next())
        documents << rows.value(0).toString();
    QList<CheckResult> results;
    for (const QString &document : std::as_const(documents)) {
        CheckRequest request;
        request.style = style;
        request.document = document;
        request.date = date;
        results += checkDocument(db, table, request);
    }
    return results;
}

QString checkText(const QList<CheckResult> &results)
{
    QString text;
    QString document;
    for (const CheckResult &r : results) {
        if (r.document != document) {
            document = r.document;
            text += QStringLiteral("■%1（%2）\n").arg(r.documentName, r.date.toString(Qt::ISODate));
        }
        text += r.line() + u'\n';
    }
    return text;
}

void writeCheckXlsx(const QString &path, const QList<CheckResult> &results)
{
    const QList<XlsxColumn> columns = {{resultHeadings()[0], 24}, {resultHeadings()[1], 8},  {resultHeadings()[2], 34},
                                       {resultHeadings()[3], 40}, {resultHeadings()[4], 34}, {resultHeadings()[5], 16}};
    QList<QStringList> rows;
    for (const CheckResult &r : results)
        rows << r.cells();
    writeXlsxSheet(path, QStringLiteral("法令チェック表"), columns, rows);
}

bool hasFindings(const QList<CheckResult> &results)
{
    return std::any_of(results.begin(), results.end(),
                       [](const CheckResult &r) { return r.state == CheckState::Missing || r.state == CheckState::OutOfBounds; });
}

QList<CheckResult> leftMissingByRelease(QSqlDatabase db, const QList<Requirement> &table, const QString &style, const QString &document,
                                        Level level, const QStringList &codes)
{
    CheckRequest request;
    request.style = style;
    request.document = document;
    QSet<QString> missingBefore;
    for (const CheckResult &r : checkDocument(db, table, request)) {
        if (r.state == CheckState::Missing)
            missingBefore.insert(r.code);
    }
    request.withoutLevel = level;
    request.withoutCodes = codes;
    QList<CheckResult> left;
    for (const CheckResult &r : checkDocument(db, table, request)) {
        if (r.state == CheckState::Missing && !missingBefore.contains(r.code))
            left << r;
    }
    return left;
}

bool confirmReleaseAgainstLaw(QSqlDatabase db, Prompt &prompt, const QString &style, const QString &document, Level level,
                              const QStringList &codes)
{
    QList<CheckResult> left;
    try {
        left = leftMissingByRelease(db, shippedRequirements(), style, document, level, codes);
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return false;
    }
    if (left.isEmpty())
        return true;
    QStringList names;
    for (const CheckResult &r : left)
        names << u'・' + (r.law.isEmpty() ? r.caption : r.law + u'　' + r.caption);
    return prompt.questionNoByDefault(
        QStringLiteral("法令チェック"),
        QStringLiteral("解除すると、次の法令上の記載事項が不足します。\n%1\n解除しますか？").arg(names.join(u'\n')));
}

Outcome confirmExportAgainstLaw(QSqlDatabase db, Prompt &prompt, const QString &style, const QString &document)
{
    CheckRequest request;
    request.style = style;
    request.document = document;
    QList<CheckResult> results;
    try {
        results = checkDocument(db, shippedRequirements(), request);
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return Outcome::Failed;
    }
    if (!hasFindings(results))
        return Outcome::Done;
    QStringList counts = {countText(results, CheckState::Missing), countText(results, CheckState::OutOfBounds)};
    counts.removeAll(QString());
    const bool goOn = prompt.questionNoByDefault(
        QStringLiteral("法令チェック"),
        QStringLiteral("法令チェックで%1見つかりました。法令上の記載事項が不足しています。このまま作成しますか？").arg(counts.join(u'、')));
    return goOn ? Outcome::Done : Outcome::Stopped;
}

} // namespace normaris::legal
