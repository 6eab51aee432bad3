#include "dictionary/EntryText.h"

#include "base/Database.h"
#include "base/FieldChecks.h"
#include "dictionary/BasicPhrases.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/DocumentWords.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/SegmentEditor.h"

#include <QRegularExpression>
#include <algorithm>

namespace normaris::dictionary {

namespace {

constexpr qint16 kWordLimit = 80;
// A word without a caption still needs one in the text: this stands for the empty one.
const QString kNoCaption = QStringLiteral("-");

// What a clause holds, as the text writes it and as put compares it.
struct ClauseBlock {
    QList<SourceSegment> segments;
    QList<SourceWord> words;
    QStringList references; // "code target"

    bool operator==(const ClauseBlock &other) const
    {
        if (segments.size() != other.segments.size() || words.size() != other.words.size() || references != other.references)
            return false;
        for (qsizetype i = 0; i < segments.size(); ++i) {
            const SourceSegment &a = segments[i], &b = other.segments[i];
            if (a.text != b.text || a.lineBreak != b.lineBreak || a.templateCode != b.templateCode)
                return false;
        }
        for (qsizetype i = 0; i < words.size(); ++i) {
            const SourceWord &a = words[i], &b = other.words[i];
            if (a.code != b.code || a.caption != b.caption || a.word != b.word)
                return false;
        }
        return true;
    }
};

QString templateOf(const QString &stored) { return stored == u"0" ? QString() : stored; }

ClauseBlock readClause(QSqlDatabase db, const ClausePlace &place)
{
    ClauseBlock block;
    // Only the clause levels below 条 keep a template per row.
    const QString templateColumn = isClauseLevel(place.level) ? QStringLiteral("テンプレート") : QStringLiteral("''");
    auto rows = execSql(db,
                        QStringLiteral("SELECT 改行, \"%1\", %4 FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                            .arg(place.textColumn(), place.table(), place.whereSql(), templateColumn),
                        place.whereValues());
    QString text;
    while (rows.next()) {
        SourceSegment s;
        s.lineBreak = rows.value(0).toBool() && !block.segments.isEmpty();
        s.text = rows.value(1).toString();
        s.templateCode = templateOf(rows.value(2).toString());
        text += s.text;
        block.segments << s;
    }
    // The word and reference tables have no style: this style's rows are those its text holds.
    auto words = execSql(
        db, QStringLiteral("SELECT Code, 表示名称, 語句 FROM 変数テーブル語句 WHERE %1 ORDER BY Code, ID").arg(place.variableWhereSql()),
        place.variableWhereValues());
    while (words.next()) {
        const QString code = words.value(0).toString();
        if (!text.contains(wordMarker(code)) || (!block.words.isEmpty() && block.words.last().code == code))
            continue;
        const QString caption = words.value(1).toString();
        block.words << SourceWord{code, caption.isEmpty() ? kNoCaption : caption, words.value(2).toString(), 0};
    }
    auto refs = execSql(db, QStringLiteral("SELECT * FROM 変数テーブル番号 WHERE %1 ORDER BY Code, ID").arg(place.variableWhereSql()),
                        place.variableWhereValues());
    QStringList seen;
    while (refs.next()) {
        const QString code = refs.value(QStringLiteral("Code")).toString();
        if (!text.contains(referenceMarker(code)) || seen.contains(code))
            continue;
        seen << code;
        block.references << code + u' ' + referenceTargetOf(refs.record()).describe(place.document);
    }
    return block;
}

QString indentOf(Level level) { return QString(2 * qMax(0, placeDepth(level) - 2), u' '); }

QString clauseHeading(Level level, const QString &code)
{
    return indentOf(level) + QString::fromUtf16(levelInfo(level).sourceName) + u' ' + code + u'\n';
}

QString headingLine(const LevelEntry &e, Level level)
{
    QString out = QStringLiteral("\n") + QString::fromUtf16(levelInfo(level).sourceName) + u' ' + e.code + u' ' + e.name + u'\n';
    if (!e.formalName.isEmpty() && e.formalName != e.name)
        out += QStringLiteral("正式名称 ") + e.formalName + u'\n';
    return out;
}

QString clauseText(const ClauseBlock &block, Level level)
{
    const QString indent = indentOf(level);
    QString out;
    for (const SourceSegment &s : block.segments) {
        out += indent + (s.lineBreak ? QStringLiteral("=↵ ") : QStringLiteral("= ")) + s.text + u'\n';
        if (!s.templateCode.isEmpty())
            out += indent + QStringLiteral("テンプレート ") + s.templateCode + u'\n';
    }
    for (const SourceWord &w : block.words)
        out += indent + QStringLiteral("語句 ") + w.code + u' ' + w.caption + QStringLiteral(" = ") + w.word + u'\n';
    for (const QString &r : block.references)
        out += indent + QStringLiteral("参照 ") + r + u'\n';
    return out;
}

// The entry at codes and everything below it, in code order.
void appendTree(QSqlDatabase db, const QString &style, const QString &document, const LevelEntry &entry, const QStringList &codes,
                QString &out)
{
    const Level level = levelOfDepth(int(codes.size()));
    if (levelInfo(level).segmented) {
        out += clauseHeading(level, entry.code);
        out += clauseText(readClause(db, ClausePlace{level, style, document, codes}), level);
    } else {
        out += headingLine(entry, level);
    }
    if (codes.size() >= placeColumns().size())
        return;
    const Level below = levelOfDepth(int(codes.size()) + 1);
    for (const LevelEntry &child : EntryEditor(db, style, document, below, codes).entries())
        appendTree(db, style, document, child, codes + QStringList{child.code}, out);
}

QString sourceError(const QString &file, int line, const QString &message)
{
    return file + u':' + QString::number(line) + QStringLiteral(": ") + message;
}

class EntryWriter {
public:
    EntryWriter(Prompt &prompt, QSqlDatabase db, QString style, const EntriesSource &source)
        : m_prompt(prompt), m_db(std::move(db)), m_style(std::move(style)), m_source(source)
    {
    }

    // Stopped after a refusal; Failed when a step below failed and has said so.
    Outcome write()
    {
        if (!DocumentMaster(m_db, m_style).document(m_source.document)) {
            m_prompt.error(kSourceErrorTitle, QStringLiteral("規程「%1」はありません。").arg(m_source.document));
            return Outcome::Stopped;
        }
        if (m_source.preamble && !preambleStands(*m_source.preamble)) {
            const Outcome preamble = putPreamble(m_prompt, m_db, m_style, m_source.document, *m_source.preamble);
            if (preamble != Outcome::Done)
                return preamble;
        }
        for (const SourceEntry &e : m_source.entries) {
            const Outcome outcome = levelInfo(e.level).segmented ? writeClause(e) : writeHeading(e);
            if (outcome != Outcome::Done)
                return outcome;
        }
        return Outcome::Done;
    }

private:
    // Whether the stored 前文 is the source's, words included: then it is left alone.
    bool preambleStands(const ClauseSource &preamble) const
    {
        ClauseBlock wanted;
        wanted.segments = preamble.segments;
        wanted.words = preamble.words;
        std::sort(wanted.words.begin(), wanted.words.end(), [](const SourceWord &a, const SourceWord &b) { return a.code < b.code; });
        return readClause(m_db, ClausePlace::preamble(m_style, m_source.document)) == wanted;
    }

    bool refuse(int line, const QString &message)
    {
        m_prompt.error(kSourceErrorTitle, sourceError(m_source.file, line, message));
        return false;
    }
    // A step's outcome, its refusal located in the file; a failure has said so already.
    Outcome located(Outcome outcome, const SourceEntry &e)
    {
        if (outcome == Outcome::Stopped)
            refuse(e.line, QStringLiteral("%1は書き込めません").arg(describe(e)));
        return outcome;
    }

    QString describe(const SourceEntry &e) const
    {
        return ReferenceTarget{e.level, m_source.document, e.codes, QString()}.describe(m_source.document);
    }

    Outcome writeHeading(const SourceEntry &e)
    {
        EntryEditor editor(m_db, m_style, m_source.document, e.level, e.codes.mid(0, e.codes.size() - 1));
        LevelEntry entered;
        entered.code = e.codes.last();
        entered.name = e.title;
        entered.formalName = e.formalName;
        const std::optional<LevelEntry> saved = editor.entry(entered.code);
        Outcome outcome = Outcome::Done;
        if (!saved)
            outcome = editor.updateHeading(m_prompt, EntryEditor::Mode::Add, LevelEntry(), entered);
        else if (saved->name != entered.name || (!saved->formalName.isEmpty() && saved->formalName != entered.formalName))
            outcome = editor.updateHeading(m_prompt, EntryEditor::Mode::Edit, *saved, entered);
        return located(outcome, e);
    }

    bool checkTexts(const SourceEntry &e)
    {
        if (e.segments.size() > SegmentEditor::kSegments)
            return refuse(e.segments[SegmentEditor::kSegments].line,
                          QStringLiteral("この文章の分割は%1までです").arg(SegmentEditor::kSegments));
        for (const SourceSegment &s : e.segments) {
            for (QChar c : s.text) {
                if (c.category() == QChar::Other_Control)
                    return refuse(s.line, QStringLiteral("制御文字は使えません"));
            }
            if (!CheckOptionalField(m_prompt, s.text, kSegmentTextLimit, true, kSegmentTextLabel))
                return refuse(s.line, QStringLiteral("この文章は書き込めません"));
        }
        for (const SourceWord &w : e.words) {
            const QString caption = w.caption == kNoCaption ? QString() : w.caption;
            if (!CheckOptionalField(m_prompt, w.word, kWordLimit, true, QStringLiteral("･･･語句"))
                || !CheckNoMarkers(m_prompt, w.word, QStringLiteral("･･･語句"))
                || !CheckOptionalField(m_prompt, caption, kWordLimit, true, QStringLiteral("･･･表示名称")))
                return refuse(w.line, QStringLiteral("この語句は書き込めません"));
        }
        return true;
    }

    // A word code of the document stands for one word: a code used at another place
    // with another caption is refused.
    bool checkWordCodes(const SourceEntry &e, const ClausePlace &place, const SegmentEditor &editor)
    {
        for (const SourceWord &w : e.words) {
            const QString caption = w.caption == kNoCaption ? QString() : w.caption;
            auto q = execSql(m_db,
                             QStringLiteral("SELECT 表示名称 FROM 変数テーブル語句 WHERE Code = ? AND 規程Code = ? AND NOT (%1)")
                                 .arg(place.variableWhereSql()),
                             QVariantList{w.code, m_source.document} + place.variableWhereValues());
            while (q.next()) {
                if (q.value(0).toString() != caption)
                    return refuse(w.line,
                                  QStringLiteral("語句%1は「%2」として使われています（次の空きCodeは%3です）")
                                      .arg(w.code, q.value(0).toString(), DocumentWords(m_db, m_source.document).nextCode(&editor)));
            }
        }
        return true;
    }

    // The targets must stand, or be created by the text further on; a reference code of the document used at another place
    // for another target is refused.
    bool resolveReferences(const SourceEntry &e, const ClausePlace &place, QList<SourceReference> &resolved)
    {
        ReferenceTargets targets(m_db, m_style);
        for (SourceReference r : e.references) {
            if (r.target.codes.size() >= 2 && r.target.codes[0].isEmpty()) {
                auto q =
                    execSql(m_db, QStringLiteral("SELECT DISTINCT 章Code FROM 条 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = ?"),
                            {m_style, r.target.document, r.target.codes[1]});
                QStringList chapters;
                while (q.next())
                    chapters << q.value(0).toString();
                if (chapters.size() > 1)
                    return refuse(r.line,
                                  QStringLiteral("参照%1の条%2は複数の章にあります。章を書いてください").arg(r.code, r.target.codes[1]));
                // An article the text itself creates further on.
                for (const SourceEntry &other : m_source.entries) {
                    if (chapters.isEmpty() && other.level == Level::Article && other.codes.value(1) == r.target.codes[1])
                        chapters << other.codes[0];
                }
                r.target.codes[0] = chapters.value(0);
            }
            // A target that the text creates further on stands once the step is done.
            if (!targets.stands(r.target) && !createdBySource(r.target))
                return refuse(r.line, QStringLiteral("参照%1の参照先（%2）がありません").arg(r.code, r.target.describe(QString())));
            auto q = execSql(
                m_db,
                QStringLiteral("SELECT * FROM 変数テーブル番号 WHERE Code = ? AND 規程Code = ? AND NOT (%1)").arg(place.variableWhereSql()),
                QVariantList{r.code, m_source.document} + place.variableWhereValues());
            while (q.next()) {
                if (!(referenceTargetOf(q.record()) == r.target))
                    return refuse(r.line, QStringLiteral("参照%1は規程%2の別の参照に使われています（次の空きCodeは%3です）")
                                              .arg(r.code, m_source.document, targets.nextCode(m_source.document)));
            }
            resolved << r;
        }
        return true;
    }

    bool createdBySource(const ReferenceTarget &target) const
    {
        if (!target.join.isEmpty() || target.document != m_source.document)
            return false;
        return std::any_of(m_source.entries.begin(), m_source.entries.end(), [&](const SourceEntry &e) {
            return e.level == target.level && e.codes == target.codes && (!levelInfo(e.level).segmented || !e.segments.isEmpty());
        });
    }

    Outcome writeClause(const SourceEntry &e)
    {
        const ClausePlace place{e.level, m_style, m_source.document, e.codes};
        const bool exists =
            scalar(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(place.table(), place.whereSql()), place.whereValues())
                .toInt()
            > 0;
        if (e.segments.isEmpty() && !exists)
            refuse(e.line, QStringLiteral("%1はありません").arg(describe(e)));
        if (e.segments.isEmpty())
            return exists ? Outcome::Done : Outcome::Stopped;
        QList<SourceReference> references;
        if (!checkTexts(e) || !resolveReferences(e, place, references))
            return Outcome::Stopped;
        ClauseBlock wanted;
        wanted.segments = e.segments;
        for (const SourceWord &w : e.words)
            wanted.words << w;
        std::sort(wanted.words.begin(), wanted.words.end(), [](const SourceWord &a, const SourceWord &b) { return a.code < b.code; });
        QList<SourceReference> sortedRefs = references;
        std::sort(sortedRefs.begin(), sortedRefs.end(), [](const SourceReference &a, const SourceReference &b) { return a.code < b.code; });
        for (const SourceReference &r : sortedRefs)
            wanted.references << r.code + u' ' + r.target.describe(m_source.document);
        if (exists && readClause(m_db, place) == wanted)
            return Outcome::Done;

        EntryEditor entries(m_db, m_style, m_source.document, e.level, e.codes.mid(0, e.codes.size() - 1));
        SegmentEditor editor(m_db, place, entries.documentKind());
        // The opening tells its own failure; the step then fails as a whole.
        if (!editor.open(m_prompt))
            throw Failure(QStringLiteral("%1を開けません。").arg(describe(e)));
        if (!checkWordCodes(e, place, editor))
            return Outcome::Stopped;
        static const QRegularExpression exactMarker(QStringLiteral("^([★☆◆])([0-9]{4})\\1$"));
        QList<SegmentRecord> segments;
        for (const SourceSegment &s : e.segments) {
            SegmentRecord r;
            r.lineBreak = s.lineBreak;
            r.templateCode = s.templateCode;
            const auto m = exactMarker.match(s.text);
            if (m.hasMatch()) {
                r.kind = m.captured(1) == u"★"   ? SegmentKind::Word
                         : m.captured(1) == u"☆" ? SegmentKind::BasicWord
                                                 : SegmentKind::Reference;
                r.code = m.captured(2);
                if (r.kind == SegmentKind::BasicWord && basicPhraseName(e.level, r.code).isEmpty()) {
                    refuse(s.line, QStringLiteral("基本語句☆%1☆はありません").arg(r.code));
                    return Outcome::Stopped;
                }
            } else {
                r.text = s.text;
            }
            segments << r;
        }
        for (int k = 0; k < SegmentEditor::kSegments; ++k)
            editor.setKind(k, k < segments.size() ? segments[k].kind : SegmentKind::Text);
        for (const SourceWord &w : e.words)
            editor.provideWord(w.code, w.word, w.caption == kNoCaption ? QString() : w.caption);
        for (const SourceReference &r : references)
            editor.provideReference(r.code, r.target);
        for (int k = 0; k < SegmentEditor::kSegments; ++k) {
            SegmentRecord &s = editor.segments()[k];
            const SegmentRecord r = k < segments.size() ? segments[k] : SegmentRecord();
            s.text = r.text;
            s.lineBreak = r.lineBreak;
            s.templateCode = r.templateCode;
            if (r.kind == SegmentKind::Text) {
                s.code.clear();
                continue;
            }
            QString shown;
            for (const SourceWord &w : e.words) {
                if (w.code == r.code)
                    shown = w.word;
            }
            editor.setChosenValue(k, r.code, shown);
        }
        return located(exists ? editor.update(m_prompt) : entries.addClause(m_prompt, editor), e);
    }

    Prompt &m_prompt;
    QSqlDatabase m_db;
    QString m_style;
    const EntriesSource &m_source;
};

} // namespace

Level levelOfDepth(int depth)
{
    for (const LevelInfo &info : kLevels) {
        if (depth > 0 && info.placeDepth == depth)
            return info.level;
    }
    return Level::Document;
}

QString entryText(QSqlDatabase db, const QString &style, const QString &document, const QStringList &codes)
{
    const QString preamble = preambleText(db, style, document);
    if (preamble.isEmpty())
        return {};
    if (codes.isEmpty()) {
        QString out = preamble;
        for (const LevelEntry &chapter : EntryEditor(db, style, document, Level::Chapter, {}).entries())
            appendTree(db, style, document, chapter, {chapter.code}, out);
        return out;
    }
    // The header of the document, then each parent as a bare heading.
    QString out = preamble.left(preamble.indexOf(QStringLiteral("前文\n")));
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const Level level = levelOfDepth(int(i) + 1);
        const std::optional<LevelEntry> e = EntryEditor(db, style, document, level, codes.mid(0, i)).entry(codes[i]);
        if (!e)
            return {};
        if (i == codes.size() - 1)
            appendTree(db, style, document, *e, codes, out);
        else
            out += levelInfo(level).segmented ? clauseHeading(level, e->code) : headingLine(*e, level);
    }
    return out;
}

Outcome putEntries(Prompt &prompt, QSqlDatabase db, const QString &style, const EntriesSource &source)
{
    // The checks read what the step writes: all of it runs in one transaction.
    return runStep(prompt, db, [&] { return EntryWriter(prompt, db, style, source).write(); });
}

} // namespace normaris::dictionary
