#pragma once
// A clause of the dictionary as text, in the format of the dictionary's text sources
// (one "=" line a segment, "=↵" after a line break, the "語句" lines of its words), and
// the way back: a clause read from such text written through the clause's own editor,
// with the editor's checks and protections.

#include "base/Prompt.h"
#include "dictionary/ClausePlace.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace normaris::dictionary {

struct SourceSegment {
    QString text;
    bool lineBreak = false;
    int line = 0;         // in the file, for the messages
    QString templateCode; // テンプレート of the segment below 条 (empty: none)
};

struct SourceWord {
    QString code;
    QString caption; // 表示名称
    QString word;
    int line = 0;
};

struct ClauseSource {
    QString file;
    int line = 0; // of the clause's heading
    QList<SourceSegment> segments;
    QList<SourceWord> words;
};

// The document's header and its 前文 with the words it uses.
QString preambleText(QSqlDatabase db, const QString &style, const QString &document);

// Replaces the 前文 of the document by the source: through the editor of a standard
// document below 70 (seven segments, markers inline), through the segment editor from
// 70 on (fifteen segments; a segment that is exactly one marker is a 語句 or 基本語句).
// Nothing is written when a check refuses.
Outcome putPreamble(Prompt &prompt, QSqlDatabase db, const QString &style, const QString &document, const ClauseSource &source);

// The title of the refusals of a source that does not fit its clause.
inline const QString kSourceErrorTitle = QStringLiteral("読込エラー");

} // namespace normaris::dictionary
