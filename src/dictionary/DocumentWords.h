#pragma once
// The word dialog of a 語句 segment: the words of a document to choose from, and a new
// word with the next free code of the document. A chosen or new word is handed to the
// segment editor; its row of 変数テーブル語句 is written by the clause's update, with
// the clause's place, the segment's 結合 and the level as 種別, so that composition
// selects it and 埋込語句の設定 and substitution find it.

#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace normaris::dictionary {

class SegmentEditor;

struct DocumentWord {
    QString code;    // four digits: ★code★ in the clause
    QString caption; // 表示名称
    QString word;    // the default word (語句)
    bool operator==(const DocumentWord &) const = default;
};

class DocumentWords {
public:
    DocumentWords(QSqlDatabase db, QString document) : m_db(std::move(db)), m_document(std::move(document)) {}

    // The document's words, each code once (the first row of a code), in code order.
    QList<DocumentWord> words() const;
    // The next free four-digit code: past every word of the document and every word the
    // editor holds but has not written yet.
    QString nextCode(const SegmentEditor *editor = nullptr) const;

    // The checks of the dialog's fields: not empty, 80 bytes, no quotes, no control characters.
    static bool checkCaption(Prompt &prompt, const QString &caption);
    static bool checkWord(Prompt &prompt, const QString &word);

    // 新規作成: the checks, then a new word with the next free code for segment k of the
    // editor (which becomes a 語句 segment). code takes the new code.
    Outcome create(Prompt &prompt, SegmentEditor &editor, int k, const QString &caption, const QString &word,
                   QString *code = nullptr) const;
    // 選択: the word of that code, with its caption and default, for segment k.
    Outcome choose(Prompt &prompt, SegmentEditor &editor, int k, const QString &code) const;

private:
    QSqlDatabase m_db;
    QString m_document;
};

} // namespace normaris::dictionary
