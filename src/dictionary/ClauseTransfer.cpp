#include "dictionary/ClauseTransfer.h"

#include "base/Database.h"
#include "base/FieldChecks.h"
#include "dictionary/BasicPhrases.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/InlineSegmentEditor.h"
#include "dictionary/SegmentEditor.h"

#include <QRegularExpression>
#include <QSqlQuery>

namespace normaris::dictionary {

namespace {

// A word without a caption still needs one in the text: this stands for the empty one.
const QString kNoCaption = QStringLiteral("-");

QString sourceError(const ClauseSource &source, int line, const QString &message)
{
    return source.file + u':' + QString::number(line) + QStringLiteral(": ") + message;
}

// The same checks as the text boxes, located by line.
bool checkSegmentTexts(Prompt &prompt, const ClauseSource &source)
{
    for (const SourceSegment &s : source.segments) {
        for (QChar c : s.text) {
            if (c.category() == QChar::Other_Control) {
                prompt.error(kSourceErrorTitle, sourceError(source, s.line, QStringLiteral("制御文字は使えません")));
                return false;
            }
        }
        if (!CheckOptionalField(prompt, s.text, kSegmentTextLimit, true, kSegmentTextLabel)) {
            prompt.error(kSourceErrorTitle, sourceError(source, s.line, QStringLiteral("この文章は書き込めません")));
            return false;
        }
    }
    for (const SourceWord &w : source.words) {
        if (!CheckOptionalField(prompt, w.word, kSegmentTextLimit, true, QStringLiteral("･･･語句"))
            || !CheckOptionalField(prompt, w.caption, kSegmentTextLimit, true, QStringLiteral("･･･表示名称"))) {
            prompt.error(kSourceErrorTitle, sourceError(source, w.line, QStringLiteral("この語句は書き込めません")));
            return false;
        }
    }
    return true;
}

bool checkSegmentCount(Prompt &prompt, const ClauseSource &source, int limit)
{
    if (source.segments.size() <= limit)
        return true;
    prompt.error(kSourceErrorTitle,
                 sourceError(source, source.segments[limit].line, QStringLiteral("この文章の分割は%1までです").arg(limit)));
    return false;
}

QString captionOf(const SourceWord &w) { return w.caption == kNoCaption ? QString() : w.caption; }

// The standard document's words: a word of the source that the document lacks is added,
// one that differs takes the source's word and caption.
void writeWords(QSqlDatabase db, const ClausePlace &place, const QList<SourceWord> &words)
{
    for (const SourceWord &w : words) {
        const QVariant id = scalar(db, QStringLiteral("SELECT ID FROM 変数テーブル語句 WHERE Code = ? AND ") + place.variableWhereSql(),
                                   QVariantList{w.code} + place.variableWhereValues());
        if (id.isValid()) {
            execSql(db, QStringLiteral("UPDATE 変数テーブル語句 SET 語句 = ?, 表示名称 = ? WHERE ID = ? AND (語句 <> ? OR 表示名称 <> ?)"),
                    {w.word, captionOf(w), id, w.word, captionOf(w)});
        } else {
            execSql(
                db,
                QStringLiteral(
                    "INSERT INTO 変数テーブル語句 (Code, 語句, 規程Code, 結合, 種別, 表示名称, 選択フラグ) VALUES (?, ?, ?, '', ?, ?, 0)"),
                {w.code, w.word, place.document, levelCode(place.level), captionOf(w)});
        }
    }
}

Outcome putInline(Prompt &prompt, QSqlDatabase db, const ClausePlace &place, const QString &kind, const ClauseSource &source)
{
    if (!checkSegmentCount(prompt, source, InlineSegmentEditor::kSegments))
        return Outcome::Stopped;
    Outcome edited = Outcome::Stopped;
    const Outcome outer = runRefusableTransaction(prompt, db, [&] {
        InlineSegmentEditor editor(db, place, kind);
        editor.open();
        editor.texts = {};
        editor.breaks = {};
        for (qsizetype k = 0; k < source.segments.size(); ++k) {
            editor.texts[k] = source.segments[k].text;
            if (k > 0)
                editor.breaks[k - 1] = source.segments[k].lineBreak;
        }
        writeWords(db, place, source.words);
        edited = editor.update(prompt);
        return edited == Outcome::Done;
    });
    return outer == Outcome::Stopped ? edited : outer;
}

Outcome putSegments(Prompt &prompt, QSqlDatabase db, const ClausePlace &place, const QString &kind, const ClauseSource &source)
{
    if (!checkSegmentCount(prompt, source, SegmentEditor::kSegments))
        return Outcome::Stopped;
    static const QRegularExpression wordSegment(QStringLiteral("^★([0-9]{4})★$"));
    static const QRegularExpression basicSegment(QStringLiteral("^☆([0-9]{4})☆$"));
    QList<SegmentRecord> wanted;
    for (const SourceSegment &s : source.segments) {
        SegmentRecord r;
        r.lineBreak = s.lineBreak;
        if (const auto m = wordSegment.match(s.text); m.hasMatch()) {
            r.kind = SegmentKind::Word;
            r.code = m.captured(1);
        } else if (const auto b = basicSegment.match(s.text); b.hasMatch()) {
            r.kind = SegmentKind::BasicWord;
            r.code = b.captured(1);
            if (basicPhraseName(r.code).isEmpty()) {
                prompt.error(kSourceErrorTitle,
                             sourceError(source, s.line, QStringLiteral("基本語句は☆0001☆、☆0010☆、☆0030☆のどれかです")));
                return Outcome::Stopped;
            }
        } else {
            r.text = s.text;
        }
        wanted << r;
    }
    Outcome edited = Outcome::Stopped;
    const Outcome outer = runRefusableTransaction(prompt, db, [&] {
        SegmentEditor editor(db, place, kind);
        if (!editor.open(prompt)) {
            edited = Outcome::Failed;
            return false;
        }
        for (int k = 0; k < SegmentEditor::kSegments; ++k)
            editor.setKind(k, k < wanted.size() ? wanted[k].kind : SegmentKind::Text);
        for (const SourceWord &w : source.words)
            editor.provideWord(w.code, w.word, captionOf(w));
        for (int k = 0; k < SegmentEditor::kSegments; ++k) {
            SegmentRecord &s = editor.segments()[k];
            const SegmentRecord r = k < wanted.size() ? wanted[k] : SegmentRecord();
            s.text = r.text;
            s.lineBreak = r.lineBreak;
            QString word;
            for (const SourceWord &w : source.words) {
                if (w.code == r.code)
                    word = w.word;
            }
            if (r.kind != SegmentKind::Text)
                editor.setChosenValue(k, r.code, word);
            else
                s.code.clear();
        }
        edited = editor.update(prompt);
        return edited == Outcome::Done;
    });
    return outer == Outcome::Stopped ? edited : outer;
}

} // namespace

QString preambleText(QSqlDatabase db, const QString &style, const QString &document)
{
    const std::optional<DocumentRecord> doc = DocumentMaster(db, style).document(document);
    if (!doc)
        return {};
    const ClausePlace place = ClausePlace::preamble(style, document);
    QString out;
    out += QStringLiteral("文章形式 ") + style + u'\n';
    out += QStringLiteral("規程 ") + doc->code + u' ' + doc->name + u'\n';
    out += QStringLiteral("正式名称 ") + doc->formalName + u'\n';
    out += QStringLiteral("文章種別 ") + doc->kind + u'\n';
    out += QStringLiteral("前文\n");
    RowReader rows = execSql(db,
                             QStringLiteral("SELECT 改行, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                                 .arg(place.textColumn(), place.table(), place.whereSql()),
                             place.whereValues());
    QString clauseText;
    while (rows.next()) {
        out += (rows.value(0).toBool() ? QStringLiteral("=↵ ") : QStringLiteral("= ")) + rows.value(1).toString() + u'\n';
        clauseText += rows.value(1).toString();
    }
    RowReader words = execSql(
        db, QStringLiteral("SELECT Code, 表示名称, 語句 FROM 変数テーブル語句 WHERE %1 ORDER BY Code").arg(place.variableWhereSql()),
        place.variableWhereValues());
    while (words.next()) {
        const QString code = words.value(0).toString();
        // The word table has no style: the words of this style's clause are those it holds.
        if (!clauseText.contains(QStringLiteral("★") + code + QStringLiteral("★")))
            continue;
        const QString caption = words.value(1).toString();
        out += QStringLiteral("語句 ") + code + u' ' + (caption.isEmpty() ? kNoCaption : caption) + QStringLiteral(" = ")
               + words.value(2).toString() + u'\n';
    }
    return out;
}

Outcome putPreamble(Prompt &prompt, QSqlDatabase db, const QString &style, const QString &document, const ClauseSource &source)
{
    const std::optional<DocumentRecord> doc = DocumentMaster(db, style).document(document);
    if (!doc) {
        prompt.error(kSourceErrorTitle, QStringLiteral("規程「%1」はありません。").arg(document));
        return Outcome::Stopped;
    }
    if (!checkSegmentTexts(prompt, source))
        return Outcome::Stopped;
    const ClausePlace place = ClausePlace::preamble(style, document);
    if (document.toInt() < levelInfo(Level::Document).firstUserCode)
        return putInline(prompt, db, place, doc->kind, source);
    return putSegments(prompt, db, place, doc->kind, source);
}

} // namespace normaris::dictionary
