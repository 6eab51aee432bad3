#include "dictionary/InlineSegmentEditor.h"

#include "base/Database.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/SegmentRecord.h"

#include <QRegularExpression>
#include <QSqlQuery>

namespace normaris::dictionary {

namespace {

const QChar kStar = u'★';
const QChar kWhiteStar = u'☆';

// A segment that is exactly one marker stands for a word (語句) or a setting (基本語句).
QString segmentKindOf(const QString &text)
{
    static const QRegularExpression word(QStringLiteral("^★[0-9]{4}★$"));
    static const QRegularExpression basic(QStringLiteral("^☆[0-9]{4}☆$"));
    if (word.match(text).hasMatch())
        return SegmentKind::Word;
    if (basic.match(text).hasMatch())
        return SegmentKind::BasicWord;
    return SegmentKind::Text;
}

} // namespace

InlineSegmentEditor::InlineSegmentEditor(QSqlDatabase db, ClausePlace place, QString documentKind)
    : m_db(std::move(db)), m_place(std::move(place)), m_documentKind(std::move(documentKind))
{
}

void InlineSegmentEditor::open()
{
    texts = Texts();
    breaks = Breaks();
    m_loadedChanged = {};
    RowReader q = execSql(m_db,
                          QStringLiteral("SELECT 改行, \"%1\", 選択フラグ, 変更フラグ FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                              .arg(m_place.textColumn(), m_place.table(), m_place.whereSql()),
                          m_place.whereValues());
    m_rowCount = 0;
    while (q.next()) {
        const int k = m_rowCount++;
        if (k >= kSegments)
            continue;
        texts[k] = q.value(1).toString();
        if (k > 0)
            breaks[k - 1] = q.value(0).toBool();
        m_loadedSelectFlag = q.value(2).toBool();
        m_loadedChanged[k] = q.value(3).toBool();
    }
    remember();
}

void InlineSegmentEditor::remember()
{
    m_loadedValue = texts;
    // umekomi: which segments held markers, for the protection of an update.
    for (int k = 0; k < kSegments; ++k) {
        m_loadedStar[k] = texts[k].contains(kStar);
        m_loadedWhiteStar[k] = texts[k].contains(kWhiteStar);
    }
}

Outcome InlineSegmentEditor::update(Prompt &prompt)
{
    int count = 0;
    for (const QString &t : texts)
        count += t.isEmpty() ? 0 : 1;
    // The update reloads the editor from the rows it writes. When the transaction
    // fails they are rolled back, and so is the editor, keeping what the user typed.
    const InlineSegmentEditor asOpened = *this;
    const Outcome outcome = runRefusableTransaction(prompt, m_db, [&] {
        const bool inUse = m_place.isComposed(m_db);
        if (count != m_rowCount && inUse) {
            prompt.error(kEditLimitTitle, kSegmentCountInUse);
            return false;
        }
        if (count == 0 && m_documentKind == u"2" && m_place.document.toInt() < levelInfo(Level::Document).firstUserCode) {
            prompt.error(kDeleteLimitTitle, kUserDataOnly);
            return false;
        }
        execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(m_place.table(), m_place.whereSql()), m_place.whereValues());
        bool changed = false;
        for (int k = 0; k < kSegments; ++k)
            changed = changed || texts[k] != m_loadedValue[k];
        const QStringList keys = m_place.keyColumns();
        QStringList marks;
        for (qsizetype i = 0; i < keys.size() + 7; ++i)
            marks << QStringLiteral("?");
        const QString insert =
            QStringLiteral("INSERT INTO \"%1\" (%2, 結合, 改行, \"%3\", 変数語句, 変更フラグ, 選択フラグ, 結合種別) VALUES (%4)")
                .arg(m_place.table(), keys.join(QStringLiteral(", ")), m_place.textColumn(), marks.join(QStringLiteral(", ")));
        int counter = 0;
        bool earlierFilled = false;
        for (int k = 0; k < kSegments; ++k) {
            const QString &text = texts[k];
            if (text.isEmpty())
                continue;
            ++counter;
            const QString join = count > 1 ? QString::number(counter) : QStringLiteral("0");
            const bool lineBreak = k > 0 && earlierFilled && breaks[k - 1];
            earlierFilled = true;
            // An unchanged clause keeps the flag of the row at the place; the kind is read
            // off the text as the dictionary's text sources have it.
            execSql(m_db, insert,
                    m_place.whereValues()
                        + QVariantList{join, lineBreak, text, text.contains(kStar) || text.contains(kWhiteStar),
                                       changed || m_loadedChanged[counter - 1], m_loadedSelectFlag, segmentKindOf(text)});
            // While in use, no marker may appear in, or vanish from, a segment.
            if (inUse && (text.contains(kStar) != m_loadedStar[k] || text.contains(kWhiteStar) != m_loadedWhiteStar[k])) {
                prompt.error(kEditLimitTitle, QStringLiteral("使用中のデータがあるため、埋込記号の移動・削除はできません。"));
                return false;
            }
        }
        open();
        // Word positions: this editor writes the row's 変数語句 where the segment editor
        // writes its 結合.
        RowReader rows = execSql(m_db,
                                 QStringLiteral("SELECT 変数語句, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                                     .arg(m_place.textColumn(), m_place.table(), m_place.whereSql()),
                                 m_place.whereValues());
        QList<std::pair<QString, QString>> clause;
        while (rows.next())
            clause << std::pair{rows.value(0).toBool() ? QStringLiteral("1") : QStringLiteral("0"), rows.value(1).toString()};
        RowReader words = execSql(m_db, QStringLiteral("SELECT ID, Code FROM 変数テーブル語句 WHERE ") + m_place.variableWhereSql(),
                                  m_place.variableWhereValues());
        QList<std::pair<qint64, QString>> wordRows;
        while (words.next())
            wordRows << std::pair{words.value(0).toLongLong(), words.value(1).toString()};
        for (const auto &[flag, text] : clause) {
            for (const auto &[id, code] : wordRows) {
                if (text.contains(wordMarker(code)))
                    execSql(m_db, QStringLiteral("UPDATE 変数テーブル語句 SET 結合 = ? WHERE ID = ?"),
                            {clause.size() == 1 ? QString() : flag, id});
            }
        }
        return true;
    });
    if (outcome == Outcome::Stopped)
        restoreTexts();
    if (outcome == Outcome::Failed)
        *this = asOpened;
    return outcome;
}

} // namespace normaris::dictionary
