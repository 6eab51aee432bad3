#include "dictionary/SegmentEditor.h"

#include "base/Database.h"
#include "rulebase/Schema.h"
#include "dictionary/DictionaryMessages.h"

#include "dictionary/BasicPhrases.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>

namespace normaris::dictionary {

namespace {

const QStringList kWorkTables = {QStringLiteral("変数テーブル語句更新前"), QStringLiteral("変数テーブル語句更新後"),
                                 QStringLiteral("変数テーブル番号更新前"), QStringLiteral("変数テーブル番号更新後")};
const QString kWordsBefore = QStringLiteral("変数テーブル語句更新前");
const QString kWordsAfter = QStringLiteral("変数テーブル語句更新後");
const QString kReferencesAfter = QStringLiteral("変数テーブル番号更新後");
// The word columns that the work tables copy: Code … 表示名称 (ordinals 1 to 12).
const QString kWordColumns = QStringLiteral("Code, 語句, 規程Code, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, "
                                            "号の細分イロハCode, 結合, 種別, 表示名称");
// The segment whose word look-up is built without the AND before 種別: its query fails,
// and with it the opening. The member is one of the family as the editor has it.
constexpr int kSegmentWithoutAnd = 3;
// The reference columns that the work tables copy.
const QString kReferenceColumns = QStringLiteral(
    "Code, 規程Code, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合, 種別, 変換参照■規程Code, "
    "変換参照■章Code, 変換参照■条Code, 変換参照■項Code, 変換参照■号Code, 変換参照■号の細分丸Code, 変換参照■号の細分イロハCode, "
    "変換参照■結合, 変換参照■種別");
const QString kTargetColumns = QStringLiteral("変換参照■規程Code, 変換参照■章Code, 変換参照■条Code, 変換参照■項Code, 変換参照■号Code, "
                                              "変換参照■号の細分丸Code, 変換参照■号の細分イロハCode, 変換参照■結合, 変換参照■種別");

// The markers of a text in order: ★nnnn★, ☆nnnn☆ and ◆nnnn◆.
QStringList markersIn(const QString &text)
{
    static const QRegularExpression marker(QStringLiteral("([★☆◆])[0-9]{4}\\1"));
    QStringList found;
    auto it = marker.globalMatch(text);
    while (it.hasNext())
        found << it.next().captured(0);
    return found;
}

} // namespace

SegmentEditor::SegmentEditor(QSqlDatabase db, ClausePlace place, QString documentKind)
    : m_db(std::move(db)), m_place(std::move(place)), m_documentKind(std::move(documentKind))
{
    m_loadedKind.fill(SegmentKind::Text);
}

bool SegmentEditor::open(Prompt &prompt)
{
    try {
        for (const QString &table : kWorkTables)
            execSql(m_db, QStringLiteral("DELETE FROM \"%1\"").arg(table));
        load(true);
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return false;
    }
    for (int k = 0; k < kSegments; ++k) {
        m_loadedKind[k] = m_segments[k].kind;
        m_loadedValue[k] = m_segments[k].kind == SegmentKind::Text ? m_segments[k].text : m_segments[k].code;
        m_loadedWord[k] = m_segments[k].word;
        m_loadedBreak[k] = m_segments[k].lineBreak;
    }
    return true;
}

void SegmentEditor::load(bool fillWorkTables)
{
    m_segments = Segments();
    // The clause levels keep a template code per row as well.
    const QString templateColumn = isClauseLevel(m_place.level) ? QStringLiteral("テンプレート") : QStringLiteral("''");
    auto rows = execSql(
        m_db,
        QStringLiteral("SELECT 改行, \"%1\", 結合種別, 選択フラグ, 変更フラグ, %4 FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
            .arg(m_place.textColumn(), m_place.table(), m_place.whereSql(), templateColumn),
        m_place.whereValues());
    m_rowCount = 0;
    QList<QVariantList> read;
    while (rows.next())
        read << QVariantList{rows.value(0), rows.value(1), rows.value(2), rows.value(3), rows.value(4), rows.value(5)};
    m_rowCount = int(read.size());
    // A new clause below 条 comes along when its parent is added to a composition, as
    // the clauses under the dictionary's stock articles do.
    if (m_rowCount == 0)
        m_loadedSelectFlag = isClauseLevel(m_place.level);
    m_loadedChanged = {};
    for (int k = 0; k < kSegments && k < m_rowCount; ++k) {
        const QVariantList &row = read[k];
        SegmentRecord &s = m_segments[k];
        // The stepping stops on the last row shown: its 選択フラグ is kept for the chain.
        m_loadedSelectFlag = row[3].toBool();
        m_loadedChanged[k] = row[4].toBool();
        if (k > 0)
            s.lineBreak = row[0].toBool();
        const QString stored = row[1].toString();
        const QString kind = row[2].toString();
        s.templateCode = row[5].toString();
        if (kind == SegmentKind::Word) {
            s.kind = SegmentKind::Word;
            s.code = markerCode(stored);
            QString where = QStringLiteral("Code = ? AND ") + m_place.variableWhereSql();
            if (fillWorkTables && k == kSegmentWithoutAnd && levelInfo(m_place.level).faultyFourthWordLookup)
                where.replace(QStringLiteral(" AND 種別"), QStringLiteral(" 種別"));
            RowReader words = execSql(m_db, QStringLiteral("SELECT ID, 語句 FROM 変数テーブル語句 WHERE ") + where,
                                      QVariantList{s.code} + m_place.variableWhereValues());
            QList<std::pair<qint64, QString>> found;
            while (words.next())
                found << std::pair{words.value(0).toLongLong(), words.value(1).toString()};
            // Only a word that stands once is the segment's.
            if (found.size() == 1) {
                if (fillWorkTables) {
                    for (const QString &table : {kWordsBefore, kWordsAfter})
                        execSql(m_db,
                                QStringLiteral("INSERT INTO \"%1\" (%2, 選択フラグ) SELECT %2, 0 FROM 変数テーブル語句 WHERE ID = ?")
                                    .arg(table, kWordColumns),
                                {found[0].first});
                }
                s.word = found[0].second;
                s.hasValue = true;
            }
        } else if (kind == SegmentKind::Reference) {
            s.kind = SegmentKind::Reference;
            s.code = markerCode(stored);
            auto refs = execSql(m_db, QStringLiteral("SELECT * FROM 変数テーブル番号 WHERE Code = ? AND ") + m_place.variableWhereSql(),
                                QVariantList{s.code} + m_place.variableWhereValues());
            if (refs.next()) {
                const QSqlRecord found = refs.record();
                if (fillWorkTables)
                    execSql(m_db,
                            QStringLiteral("INSERT INTO 変数テーブル番号更新後 (%1) SELECT %1 FROM 変数テーブル番号 WHERE ID = ?")
                                .arg(kReferenceColumns),
                            {found.value(0)});
                s.word = referenceTargetOf(found).describe(m_place.document);
                s.hasValue = true;
            }
        } else if (kind == SegmentKind::BasicWord) {
            s.kind = SegmentKind::BasicWord;
            s.code = markerCode(stored);
            s.hasValue = true;
        } else {
            s.text = stored;
        }
    }
}

bool SegmentEditor::changeKind(Prompt &prompt, int k, const QString &kind)
{
    if (m_segments[k].kind == kind)
        return false;
    if (!prompt.question(QStringLiteral("変更の確認"), QStringLiteral("処理する種別を変更しますか？")))
        return false;
    return runInTransaction(prompt, m_db, [&] { setKind(k, kind); });
}

void SegmentEditor::setKind(int k, const QString &kind)
{
    SegmentRecord &s = m_segments[k];
    if (s.kind == kind)
        return;
    // A word that leaves the segment leaves the list of the words the clause uses now.
    if (s.kind == SegmentKind::Word && !s.code.isEmpty())
        execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル語句更新後 WHERE Code = ?"), {s.code});
    if (s.kind == SegmentKind::Reference && !s.code.isEmpty())
        execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル番号更新後 WHERE Code = ?"), {s.code});
    if (kind == SegmentKind::Text) {
        s.code.clear();
        s.word.clear();
    } else {
        s.text.clear();
        s.code.clear();
        s.word.clear();
    }
    s.hasValue = false;
    s.kind = kind;
}

void SegmentEditor::provideWord(const QString &code, const QString &word, const QString &caption)
{
    execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル語句更新後 WHERE Code = ? AND 規程Code = ?"), {code, m_place.document});
    execSql(m_db,
            QStringLiteral("INSERT INTO 変数テーブル語句更新後 (Code, 語句, 規程Code, 結合, 種別, 表示名称, 選択フラグ) "
                           "VALUES (?, ?, ?, '', ?, ?, 0)"),
            {code, word, m_place.document, levelCode(m_place.level), caption});
}

void SegmentEditor::provideReference(const QString &code, const ReferenceTarget &target)
{
    execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル番号更新後 WHERE Code = ? AND 規程Code = ?"), {code, m_place.document});
    QVariantList values = {code, m_place.document, levelCode(m_place.level), target.document};
    for (int i = 0; i < 6; ++i)
        values << target.codes.value(i);
    values << target.join << levelCode(target.level);
    execSql(m_db,
            QStringLiteral(
                "INSERT INTO 変数テーブル番号更新後 (Code, 規程Code, 結合, 種別, %1) VALUES (?, ?, '', ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                .arg(kTargetColumns),
            values);
}

static QStringList codesIn(QSqlDatabase db, const QString &table, const QString &document)
{
    QStringList codes;
    auto q = execSql(db, QStringLiteral("SELECT Code FROM \"%1\" WHERE 規程Code = ?").arg(table), {document});
    while (q.next())
        codes << q.value(0).toString();
    return codes;
}

QStringList SegmentEditor::providedWordCodes() const { return codesIn(m_db, kWordsAfter, m_place.document); }

QStringList SegmentEditor::providedReferenceCodes() const { return codesIn(m_db, kReferencesAfter, m_place.document); }

void SegmentEditor::setChosenValue(int k, const QString &code, const QString &word)
{
    SegmentRecord &s = m_segments[k];
    if (!code.isEmpty())
        s.hasValue = true;
    s.code = code;
    // A word shows its default, a reference the place it cites.
    if (s.kind == SegmentKind::Word || s.kind == SegmentKind::Reference)
        s.word = word;
}

bool SegmentEditor::isInUse() const { return m_place.isComposed(m_db); }

void SegmentEditor::restoreLastGood()
{
    for (int k = 0; k < kSegments; ++k) {
        SegmentRecord &s = m_segments[k];
        s.kind = m_loadedKind[k];
        // Rows past the clause's rows keep what the user put in them.
        if (k >= m_rowCount)
            continue;
        s.text = s.kind == SegmentKind::Text ? m_loadedValue[k] : QString();
        s.code = s.kind == SegmentKind::Text ? QString() : m_loadedValue[k];
        s.word = s.kind == SegmentKind::Word ? m_loadedWord[k] : QString();
        s.hasValue = s.kind != SegmentKind::Text;
        s.lineBreak = m_loadedBreak[k];
    }
}

Outcome SegmentEditor::update(Prompt &prompt)
{
    // The update reloads the editor from the rows it writes. When the transaction
    // fails they are rolled back, and so is the editor, keeping what the user entered.
    const SegmentEditor asOpened = *this;
    const Outcome outcome = runRefusableTransaction(prompt, m_db, [&] {
        const bool inUse = isInUse();
        int count = 0;
        for (int k = 0; k < kSegments; ++k) {
            if (m_segments[k].isEmpty())
                continue;
            // The rows close up: a segment is compared with the kind loaded at its place
            // among the filled ones.
            if (m_segments[k].kind != m_loadedKind[count++] && inUse) {
                prompt.error(kEditLimitTitle, QStringLiteral("使用中のデータがあるため、種別を変更できません。"));
                restoreLastGood();
                return false;
            }
        }
        if (count != m_rowCount && isInUse()) {
            prompt.error(kEditLimitTitle, kSegmentCountInUse);
            restoreLastGood();
            return false;
        }
        if (!checkMarkers(prompt, inUse)) {
            restoreLastGood();
            return false;
        }
        if (count == 0 && m_documentKind == u"2" && m_place.document.toInt() < levelInfo(Level::Document).firstUserCode) {
            prompt.error(kDeleteLimitTitle, kUserDataOnly);
            restoreLastGood();
            return false;
        }
        execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(m_place.table(), m_place.whereSql()), m_place.whereValues());
        // Each text and each code is compared with the one saved value of its row.
        bool changed = false;
        for (int j = 0; j < kSegments; ++j)
            changed = changed || m_segments[j].text != m_loadedValue[j] || m_segments[j].code != m_loadedValue[j];
        int joinCounter = 0;
        for (int k = 0; k < kSegments; ++k) {
            // A segment whose word or reference can't be written refuses the whole update.
            if (!writeRow(prompt, k, joinCounter, changed)) {
                restoreLastGood();
                return false;
            }
        }
        // The words that have left the clause.
        RowReader before = execSql(m_db, QStringLiteral("SELECT Code FROM 変数テーブル語句更新前"));
        while (before.next()) {
            const QString code = before.value(0).toString();
            if (!scalar(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句更新後 WHERE Code = ?"), {code}).toInt())
                execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル語句 WHERE Code = ? AND ") + m_place.variableWhereSql(),
                        QVariantList{code} + m_place.variableWhereValues());
        }
        if (isClauseLevel(m_place.level)) {
            writeInlineMarkerRows();
            sweepMarkerRows();
        }
        load(false);
        for (int k = 0; k < kSegments; ++k) {
            m_loadedValue[k] = m_segments[k].kind == SegmentKind::Text ? m_segments[k].text : m_segments[k].code;
            m_loadedWord[k] = m_segments[k].word;
            m_loadedBreak[k] = m_segments[k].lineBreak;
        }
        setWordPositions();
        return true;
    });
    if (outcome == Outcome::Failed)
        *this = asOpened;
    return outcome;
}

bool SegmentEditor::writeRow(Prompt &prompt, int k, int &joinCounter, bool changed)
{
    const SegmentRecord &s = m_segments[k];
    QString stored;
    if (s.kind == SegmentKind::Text)
        stored = s.text;
    else if (!s.code.isEmpty())
        stored = s.kind == SegmentKind::Word        ? wordMarker(s.code)
                 : s.kind == SegmentKind::Reference ? referenceMarker(s.code)
                                                    : basicWordMarker(s.code);
    if (stored.isEmpty())
        return true;
    ++joinCounter;
    bool othersFilled = false;
    bool earlierFilled = false;
    for (int j = 0; j < kSegments; ++j) {
        if (j != k && !m_segments[j].isEmpty())
            othersFilled = true;
        if (j < k && !m_segments[j].isEmpty())
            earlierFilled = true;
    }
    const QString join = othersFilled ? QString::number(joinCounter) : QStringLiteral("0");
    const bool lineBreak = k > 0 && earlierFilled && s.lineBreak;
    QStringList columns = m_place.keyColumns();
    QVariantList values = m_place.whereValues();
    columns << QStringLiteral("結合") << QStringLiteral("改行") << m_place.textColumn() << QStringLiteral("変数語句")
            << QStringLiteral("変更フラグ") << QStringLiteral("選択フラグ") << QStringLiteral("結合種別");
    const bool clauseLevel = isClauseLevel(m_place.level);
    // The clause levels flag the markers their text holds, as the text sources do; the
    // 前文 flags every segment that is not text.
    const bool holdsWords = clauseLevel ? stored.contains(u'★') || stored.contains(u'☆') : s.kind != SegmentKind::Text;
    values << join << lineBreak << stored << holdsWords << (changed || m_loadedChanged[joinCounter - 1]) << m_loadedSelectFlag << s.kind;
    if (clauseLevel) {
        columns << QStringLiteral("テンプレート") << QStringLiteral("変数番号");
        values << (s.templateCode.isEmpty() ? QStringLiteral("0") : s.templateCode) << stored.contains(u'◆');
    }
    insertInto(m_db, m_place.table(), columns, values);
    if (s.kind == SegmentKind::Reference) {
        if (writeReferenceRow(s.code, join))
            return true;
        prompt.error(QStringLiteral("更新エラー"), QStringLiteral("参照の更新でエラーが発生しました。"));
        return false;
    }
    if (s.kind != SegmentKind::Word)
        return true;
    RowReader after =
        execSql(m_db, QStringLiteral("SELECT Code, 語句, 結合, 表示名称 FROM 変数テーブル語句更新後 WHERE Code = ? AND 規程Code = ?"),
                {s.code, m_place.document});
    QList<QVariantList> found;
    while (after.next())
        found << QVariantList{after.value(0), after.value(1), after.value(2), after.value(3)};
    if (found.size() != 1) {
        prompt.error(QStringLiteral("更新エラー"), QStringLiteral("語句の更新でエラーが発生しました。"));
        return false;
    }
    writeWordRow(found[0][0].toString(), found[0][1].toString(), found[0][2].toString(), found[0][3].toString());
    return true;
}

void SegmentEditor::writeWordRow(const QString &code, const QString &word, const QString &join, const QString &caption)
{
    execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル語句 WHERE Code = ? AND ") + m_place.variableWhereSql(),
            QVariantList{code} + m_place.variableWhereValues());
    QStringList columns = {QStringLiteral("Code"), QStringLiteral("語句"), QStringLiteral("規程Code")};
    QVariantList values = {code, word, m_place.document};
    for (int i = 0; i < placeDepth(m_place.level); ++i) {
        columns << placeColumns()[i];
        values << m_place.codes.value(i);
    }
    columns << QStringLiteral("結合") << QStringLiteral("種別") << QStringLiteral("表示名称") << QStringLiteral("選択フラグ");
    values << join << levelCode(m_place.level) << caption << false;
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    execSql(m_db,
            QStringLiteral("INSERT INTO 変数テーブル語句 (%1) VALUES (%2)")
                .arg(columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))),
            values);
}

bool SegmentEditor::writeReferenceRow(const QString &code, const QString &join)
{
    auto q = execSql(m_db, QStringLiteral("SELECT %1 FROM 変数テーブル番号更新後 WHERE Code = ? AND 規程Code = ?").arg(kTargetColumns),
                     {code, m_place.document});
    if (!q.next())
        return false;
    QVariantList target;
    for (int i = 0; i < 9; ++i)
        target << q.value(i);
    execSql(m_db, QStringLiteral("DELETE FROM 変数テーブル番号 WHERE Code = ? AND ") + m_place.variableWhereSql(),
            QVariantList{code} + m_place.variableWhereValues());
    QVariantList values = {code, m_place.document};
    for (int i = 0; i < 6; ++i)
        values << (i < placeDepth(m_place.level) ? m_place.codes.value(i) : QString());
    values << join << levelCode(m_place.level);
    execSql(
        m_db,
        QStringLiteral("INSERT INTO 変数テーブル番号 (Code, 規程Code, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, "
                       "結合, 種別, %1) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .arg(kTargetColumns),
        values + target);
    return true;
}

void SegmentEditor::writeInlineMarkerRows()
{
    // A marker inside a text segment (as the standard clauses hold them) takes the word
    // or reference handed to the editor for it; one the editor was not given keeps its row.
    auto rows = execSql(
        m_db,
        QStringLiteral("SELECT 結合, \"%1\", 結合種別 FROM \"%2\" WHERE %3").arg(m_place.textColumn(), m_place.table(), m_place.whereSql()),
        m_place.whereValues());
    QList<std::pair<QString, QString>> texts;
    while (rows.next()) {
        if (rows.value(2).toString() == SegmentKind::Text)
            texts << std::pair{rows.value(0).toString(), rows.value(1).toString()};
    }
    for (const auto &[join, text] : texts) {
        for (const QString &marker : markersIn(text)) {
            const QString code = markerCode(marker);
            if (marker.startsWith(u'◆')) {
                writeReferenceRow(code, join);
                continue;
            }
            if (!marker.startsWith(u'★'))
                continue;
            auto w = execSql(m_db, QStringLiteral("SELECT 語句, 表示名称 FROM 変数テーブル語句更新後 WHERE Code = ? AND 規程Code = ?"),
                             {code, m_place.document});
            if (w.next())
                writeWordRow(code, w.value(0).toString(), join, w.value(1).toString());
        }
    }
}

void SegmentEditor::sweepMarkerRows()
{
    // A word or reference row of the place whose marker no clause at the place holds, in
    // either prose style, has left the text for good.
    QStringList keys = m_place.keyColumns();
    keys.removeFirst();
    QStringList where;
    for (const QString &k : keys)
        where << k + QStringLiteral(" = ?");
    QVariantList keyValues = m_place.whereValues();
    keyValues.removeFirst();
    auto rows = execSql(m_db,
                        QStringLiteral("SELECT \"%1\" FROM \"%2\" WHERE %3")
                            .arg(m_place.textColumn(), m_place.table(), where.join(QStringLiteral(" AND "))),
                        keyValues);
    QString held;
    while (rows.next())
        held += rows.value(0).toString();
    const std::pair<QString, QChar> tables[] = {{QStringLiteral("変数テーブル語句"), u'★'}, {QStringLiteral("変数テーブル番号"), u'◆'}};
    for (const auto &[table, mark] : tables) {
        auto q = execSql(m_db, QStringLiteral("SELECT ID, Code FROM \"%1\" WHERE ").arg(table) + m_place.variableWhereSql(),
                         m_place.variableWhereValues());
        QList<qint64> gone;
        while (q.next()) {
            if (!held.contains(mark + q.value(1).toString() + mark))
                gone << q.value(0).toLongLong();
        }
        for (const qint64 id : gone)
            execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE ID = ?").arg(table), {id});
    }
}

bool SegmentEditor::checkMarkers(Prompt &prompt, bool inUse) const
{
    const bool standard = isClauseLevel(m_place.level) && !isUserCode(m_place.level, m_place.codes.value(m_place.codes.size() - 1));
    int filled = 0;
    for (const SegmentRecord &s : m_segments) {
        if (s.isEmpty())
            continue;
        const int loaded = filled++;
        if (s.kind != SegmentKind::Text)
            continue;
        // In use, a standard clause keeps each marker in its segment and in its order.
        if (standard && inUse && markersIn(s.text) != markersIn(loaded < m_rowCount ? m_loadedValue[loaded] : QString())) {
            prompt.error(kEditLimitTitle, QStringLiteral("使用中のデータがあるため、埋込記号の移動・削除はできません。"));
            return false;
        }
        if (standard || !isClauseLevel(m_place.level))
            continue;
        // A user's clause holds no marker without its row.
        for (const QString &marker : markersIn(s.text)) {
            const QString code = markerCode(marker);
            bool known = false;
            if (marker.startsWith(u'☆')) {
                known = !basicPhraseName(m_place.level, code).isEmpty();
            } else {
                const QString table = marker.startsWith(u'★') ? QStringLiteral("変数テーブル語句") : QStringLiteral("変数テーブル番号");
                known = scalar(m_db, QStringLiteral("SELECT count(*) FROM \"%1更新後\" WHERE Code = ? AND 規程Code = ?").arg(table),
                               {code, m_place.document})
                                .toInt()
                            > 0
                        || scalar(m_db,
                                  QStringLiteral("SELECT count(*) FROM \"%1\" WHERE Code = ? AND ").arg(table) + m_place.variableWhereSql(),
                                  QVariantList{code} + m_place.variableWhereValues())
                                   .toInt()
                               > 0;
            }
            if (!known) {
                prompt.error(kInputErrorTitle, QStringLiteral("文章中の%1に対応する語句・参照・基本語句がありません。").arg(marker));
                return false;
            }
        }
    }
    return true;
}

void SegmentEditor::setWordPositions()
{
    RowReader rows = execSql(m_db,
                             QStringLiteral("SELECT 結合, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                                 .arg(m_place.textColumn(), m_place.table(), m_place.whereSql()),
                             m_place.whereValues());
    QList<std::pair<QString, QString>> clause;
    while (rows.next())
        clause << std::pair{rows.value(0).toString(), rows.value(1).toString()};
    RowReader words = execSql(m_db, QStringLiteral("SELECT ID, Code FROM 変数テーブル語句 WHERE ") + m_place.variableWhereSql(),
                              m_place.variableWhereValues());
    QList<std::pair<qint64, QString>> wordRows;
    while (words.next())
        wordRows << std::pair{words.value(0).toLongLong(), words.value(1).toString()};
    for (const auto &[join, text] : clause) {
        // A 前文 of one row has no place to name: its words take the empty 結合. Below 条
        // the words take the row's 結合 ("0" for a lone row), which substitution matches.
        const QString position = clause.size() == 1 && !isClauseLevel(m_place.level) ? QString() : join;
        for (const auto &[id, code] : wordRows) {
            if (text.contains(wordMarker(code)))
                execSql(m_db, QStringLiteral("UPDATE 変数テーブル語句 SET 結合 = ? WHERE ID = ?"), {position, id});
        }
    }
}

} // namespace normaris::dictionary
