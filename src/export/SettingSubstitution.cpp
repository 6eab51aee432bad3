#include "export/SettingSubstitution.h"

#include "export/CrossReferences.h"
#include "export/NumberIndex.h"
#include "export/ReferenceRows.h"
#include "export/WorkDataAge.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/JapaneseDate.h"
#include "base/BusyCursor.h"

#include <QHash>
#include <QSqlQuery>

namespace normaris {

namespace {

constexpr int kSettingCount = 16;
const QString kLatestDateCode = QStringLiteral("0030");

QString codeOf(int i) { return QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0')); }

struct WordRow {
    QString code;
    QString word;
    QStringList place;
    QString join;
};

// The document's words by article (章Code|条Code), in stored order.
QHash<QString, QList<WordRow>> readWords(QSqlDatabase db, const QString &document)
{
    QHash<QString, QList<WordRow>> words;
    RowReader q = execSql(db,
                          QStringLiteral("SELECT Code, 語句, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合 "
                                         "FROM 変数テーブル語句 WHERE 規程Code = ? ORDER BY ID"),
                          {document});
    while (q.next()) {
        WordRow w{q.value(0).toString(), q.value(1).toString(), {}, q.value(8).toString()};
        for (int i = 2; i < 8; ++i)
            w.place << q.value(i).toString();
        words[w.place[0] + u'|' + w.place[1]] << w;
    }
    return words;
}

// The 16 basic settings, or nothing when the company has no row yet.
std::optional<QStringList> readSettings(QSqlDatabase db)
{
    RowReader q = execSql(db, QStringLiteral("SELECT * FROM 企業情報 ORDER BY ID LIMIT 1"));
    if (!q.next())
        return std::nullopt;
    QStringList values;
    for (int i = 1; i <= kSettingCount; ++i)
        values << q.value(i).toString();
    return values;
}

// The rewrite of a row's text; one statement for all the rows of a step.
class TextWriter {
public:
    TextWriter(QSqlDatabase db, QString style, QString document)
        : m_update(std::move(db),
                   QStringLiteral("UPDATE %1 SET 文章 = ? WHERE 文章形式Code = ? AND 規程Code = ? AND 順番 = ?").arg(kOutputRowsTable)),
          m_style(std::move(style)), m_document(std::move(document))
    {
    }
    void write(int order, const QString &text) { m_update.write({text, m_style, m_document, order}); }

private:
    RowWriter m_update;
    QString m_style, m_document;
};

bool rewritesMarkers(Level level) { return isClauseLevel(level) || level == Level::Preamble; }

} // namespace

Outcome SettingSubstitution::run(const QString &style, const QString &document)
{
    // Everything the substitution decides on is read inside its write, and the rewrite
    // of an agreement's 前文 goes with the rest: a failure anywhere leaves the rows as
    // they were. Work data older than their words are built again first, if the user wishes.
    const Outcome fresh = WorkDataAge(m_db, m_prompt).refreshIfStale(style, document, false, WorkDataAge::ReadFailure::Cancelled);
    if (fresh != Outcome::Done)
        return fresh;
    const Outcome outcome = runStep(m_prompt, m_db, [&] {
        if (EffectiveDates(m_db, document).list().isEmpty()) {
            m_prompt.error(QStringLiteral("データの確認"), QStringLiteral("日付のデータがありません。"));
            return Outcome::Stopped;
        }
        if (!checkMakingOrder(style, document))
            return Outcome::Stopped;
        roushi(style, document);

        QList<CompositionRow> rows = readWorkRows(m_db, kOutputRowsTable, style, document);
        if (rows.isEmpty()) {
            m_prompt.error(QStringLiteral("データの確認"), QStringLiteral("データがありません。"));
            return Outcome::Stopped;
        }
        BusyCursor busy;
        const QList<CompositionRow> before = rows;
        substituteWordsAndSettings(rows, document);
        CrossReferences references(m_db, m_prompt, document);
        for (CompositionRow &row : rows) {
            if (!row.text.isEmpty())
                row.text = references.replaceIn(row);
        }
        TextWriter writer(m_db, style, document);
        for (qsizetype i = 0; i < rows.size(); ++i) {
            if (rows[i].text != before[i].text)
                writer.write(rows[i].order, rows[i].text);
        }
        WorkDataAge(m_db, m_prompt).record(WorkDataStep::Substitution, style, document);
        return Outcome::Done;
    });
    if (outcome != Outcome::Done)
        return outcome;
    m_prompt.plain(QStringLiteral("処理完了"), QStringLiteral("置換処理が完了しました。"));
    return Outcome::Done;
}

void SettingSubstitution::substituteWordsAndSettings(QList<CompositionRow> &rows, const QString &document)
{
    const QHash<QString, QList<WordRow>> words = readWords(m_db, document);
    const std::optional<QStringList> settings = readSettings(m_db);
    const QList<EffectiveDate> dates = EffectiveDates(m_db, document).list();
    const QString latestDate = dates.isEmpty() ? QString() : formatEraDate(dates.last().date);

    for (CompositionRow &row : rows) {
        if (row.text.isEmpty() || !row.words || !rewritesMarkers(row.level))
            continue;
        QString &text = row.text;
        // A word belongs to its clause: the same code can mean another word elsewhere.
        // A 前文 keeps its word markers.
        if (isClauseLevel(row.level)) {
            const int depth = placeDepth(row.level);
            for (const WordRow &w : words.value(row.codes[0] + u'|' + row.codes[1])) {
                if (w.place.mid(0, depth) != row.codes.mid(0, depth) || (!row.join.isEmpty() && w.join != row.join))
                    continue;
                if (text.contains(w.code))
                    text.replace(u'★' + w.code + u'★', w.word);
            }
        }
        // A setting left empty keeps its marker.
        for (int i = 1; i <= kSettingCount; ++i) {
            const QString code = codeOf(i);
            if (text.contains(code) && settings && !settings->at(i - 1).isEmpty())
                text.replace(u'☆' + code + u'☆', settings->at(i - 1));
        }
        if (text.contains(kLatestDateCode) && !latestDate.isEmpty())
            text.replace(u'☆' + kLatestDateCode + u'☆', latestDate);
    }
}

bool SettingSubstitution::checkMakingOrder(const QString &style, const QString &document)
{
    QStringList texts;
    RowReader q = execSql(m_db, QStringLiteral("SELECT 文章 FROM %1 WHERE 規程Code = ? ORDER BY ID").arg(kOutputRowsTable), {document});
    while (q.next())
        texts << q.value(0).toString();

    NumberIndex built(m_db);
    // An empty column of a reference keeps the value of the reference before it.
    ReferenceRow target;
    target.targetPlace = QStringList(6);
    auto take = [](QString &held, const QString &value) {
        if (!value.isEmpty())
            held = value;
    };
    QStringList missing; // the documents to build first, each once, in the order they are cited
    for (const ReferenceRow &r : readReferenceRows(m_db, document)) {
        if (r.targetDocument == document)
            continue;
        for (const QString &text : texts) {
            if (!text.contains(r.code))
                continue;
            take(target.targetDocument, r.targetDocument);
            for (int i = 0; i < 6; ++i)
                take(target.targetPlace[i], r.targetPlace.value(i));
            take(target.targetJoin, r.targetJoin);
            take(target.targetLevel, r.targetLevel);
            if (!built.number(target.targetDocument, levelOf(target.targetLevel), target.targetPlace, r.targetJoin)
                && !missing.contains(target.targetDocument))
                missing << target.targetDocument;
        }
    }
    if (missing.isEmpty())
        return true;
    QStringList names;
    for (const QString &code : std::as_const(missing)) {
        const QString name =
            scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE Code = ? ORDER BY 文章形式Code = ? DESC, 文章形式Code"), {code, style})
                .toString();
        names << u'「' + (name.isEmpty() ? code : name) + u'」';
    }
    m_prompt.error(QStringLiteral("作成順序"),
                   QStringLiteral("他の規則・規程等を参照している条文があります。\n%1\n先に参照先の規則・規程等を作成してください。")
                       .arg(names.join(QString())));
    return false;
}

void SettingSubstitution::roushi(const QString &style, const QString &document)
{
    if (scalar(m_db, QStringLiteral("SELECT 文章種別 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString() != u"2")
        return;
    RowReader segment =
        execSql(m_db,
                QStringLiteral("SELECT 順番, 文章 FROM %1 WHERE 文章形式Code = ? AND 規程Code = ? AND 種別 = '10' AND 結合 = '3' "
                               "ORDER BY 順番")
                    .arg(kOutputRowsTable),
                {style, document});
    if (!segment.next())
        return;
    const int order = segment.value(0).toInt();
    const QString text = segment.value(1).toString();
    if (segment.next())
        return; // only a single such segment names the side
    // The workers' side: a trade union signs in its own name; a representative of the
    // majority keeps the words before the marker that say whom they represent and how
    // they were chosen.
    struct Party {
        const char16_t *code;
        const char16_t *marker;
        bool keepsLeadIn;
    };
    static constexpr Party kParties[] = {
        {u"1", u"☆0008☆", false}, // 労働組合
        {u"2", u"☆0010☆", true},  // 従業員代表
        {u"3", u"☆0012☆", true},  // パート代表
    };
    const QString chosen = scalar(m_db, QStringLiteral("SELECT 代表労働者 FROM 代表労働者の選択 ORDER BY ID LIMIT 1")).toString();
    const Party *party = nullptr;
    for (const Party &p : kParties) {
        if (chosen == QStringView(p.code))
            party = &p;
    }
    if (!party)
        return;
    qsizetype firstMarker = -1;
    for (const Party &p : kParties) {
        const qsizetype at = text.indexOf(QStringView(p.marker));
        if (at >= 0 && (firstMarker < 0 || at < firstMarker))
            firstMarker = at;
    }
    const bool namesSide = firstMarker >= 0;
    // The agreement calls the side by the word 0009 of a paragraph that holds it.
    const bool paragraphUsesShortName =
        scalar(m_db,
               QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = ? AND 規程Code = ? AND 変数語句 = 1 AND 項 LIKE '%★0009★%'"),
               {style, document})
            .toInt()
        > 0;
    if (!namesSide || !paragraphUsesShortName)
        return;
    RowReader word = execSql(
        m_db, QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE 規程Code = ? AND Code = '0009' AND 選択フラグ = 1"), {document});
    if (!word.next())
        return;
    const QString shortName = word.value(0).toString();
    if (word.next())
        return;
    const QString leadIn = party->keepsLeadIn ? text.left(firstMarker) : QString();
    TextWriter(m_db, style, document)
        .write(order,
               leadIn + QString::fromUtf16(party->marker) + QStringLiteral("（以下「") + shortName + QStringLiteral("」と称する。）"));
}

} // namespace normaris
