#include "dictionary/DocumentWords.h"

#include "base/Database.h"
#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/SegmentEditor.h"

namespace normaris::dictionary {

namespace {

constexpr qint16 kWordLimit = 80;
const QString kCaptionLabel = QStringLiteral("･･･表示名称");
const QString kWordLabel = QStringLiteral("･･･語句");

bool checkField(Prompt &prompt, const QString &text, const QString &label)
{
    for (QChar c : text) {
        if (c.category() == QChar::Other_Control) {
            prompt.error(kInputErrorTitle, QStringLiteral("項目中に制御文字を含むことはできません。 ") + label);
            return false;
        }
    }
    return CheckRequiredField(prompt, text, kWordLimit, false, label) && CheckNoMarkers(prompt, text, label);
}

QString nextFree(const QStringList &codes)
{
    int last = 0;
    for (const QString &c : codes)
        last = qMax(last, c.toInt());
    return QStringLiteral("%1").arg(last + 1, 4, 10, QLatin1Char('0'));
}

} // namespace

QList<DocumentWord> DocumentWords::words() const
{
    auto q = execSql(
        m_db, QStringLiteral("SELECT Code, 表示名称, 語句 FROM 変数テーブル語句 WHERE 規程Code = ? ORDER BY CAST(Code AS INTEGER), ID"),
        {m_document});
    QList<DocumentWord> list;
    while (q.next()) {
        if (!list.isEmpty() && list.last().code == q.value(0).toString())
            continue;
        list << DocumentWord{q.value(0).toString(), q.value(1).toString(), q.value(2).toString()};
    }
    return list;
}

QString DocumentWords::nextCode(const SegmentEditor *editor) const
{
    QStringList codes;
    auto q = execSql(m_db, QStringLiteral("SELECT Code FROM 変数テーブル語句 WHERE 規程Code = ?"), {m_document});
    while (q.next())
        codes << q.value(0).toString();
    if (editor)
        codes += editor->providedWordCodes();
    return nextFree(codes);
}

bool DocumentWords::checkCaption(Prompt &prompt, const QString &caption) { return checkField(prompt, caption, kCaptionLabel); }

bool DocumentWords::checkWord(Prompt &prompt, const QString &word) { return checkField(prompt, word, kWordLabel); }

Outcome DocumentWords::create(Prompt &prompt, SegmentEditor &editor, int k, const QString &caption, const QString &word,
                              QString *code) const
{
    if (!checkCaption(prompt, caption) || !checkWord(prompt, word))
        return Outcome::Stopped;
    QString made;
    const bool done = runInTransaction(prompt, m_db, [&] {
        made = nextCode(&editor);
        editor.setKind(k, SegmentKind::Word);
        editor.provideWord(made, word, caption);
        editor.setChosenValue(k, made, word);
    });
    if (!done)
        return Outcome::Failed;
    if (code)
        *code = made;
    return Outcome::Done;
}

Outcome DocumentWords::choose(Prompt &prompt, SegmentEditor &editor, int k, const QString &code) const
{
    for (const DocumentWord &w : words()) {
        if (w.code != code)
            continue;
        const bool done = runInTransaction(prompt, m_db, [&] {
            editor.setKind(k, SegmentKind::Word);
            editor.provideWord(w.code, w.word, w.caption);
            editor.setChosenValue(k, w.code, w.word);
        });
        return done ? Outcome::Done : Outcome::Failed;
    }
    prompt.error(kInputErrorTitle, QStringLiteral("語句「%1」はありません。").arg(code));
    return Outcome::Stopped;
}

} // namespace normaris::dictionary
