#pragma once
// Entries of the dictionary as text, in the format of the dictionary's text sources,
// and back: `dict get` prints an entry with everything below it (its parents as bare
// heading lines, so that the text reads on its own), and `dict put` creates or
// replaces the entries of such a text through the level editors, with their checks,
// all in one transaction.
//
// In a text given to put, a 章 or 条 line names the heading (created, or renamed when
// its name differs); a clause with segments is created or has its segments replaced;
// a clause without segments only names the parent of the clauses after it and must
// exist. A clause whose segments, words and references are those stored is left as
// it is, so that get piped into put changes nothing.

#include "base/Levels.h"
#include "base/Prompt.h"
#include "dictionary/ClauseTransfer.h"
#include "dictionary/ReferenceTargets.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>
#include <optional>

namespace normaris::dictionary {

struct SourceReference {
    QString code;
    ReferenceTarget target; // an empty 章 code before a 条 is looked up in the target document
    int line = 0;
};

// One entry of a text: a 章, a 条 or a clause, with its place under the document.
struct SourceEntry {
    Level level = Level::Paragraph;
    QStringList codes; // 章Code … its own Code
    QString title;     // 章 and 条
    QString formalName;
    QList<SourceSegment> segments;
    QList<SourceWord> words;
    QList<SourceReference> references;
    int line = 0;
};

struct EntriesSource {
    QString file;
    QString document;
    std::optional<ClauseSource> preamble;
    QList<SourceEntry> entries; // in reading order: parents before what is under them
};

// The entry at codes (章Code … down to its own; empty for the whole document, with its
// header and 前文) with everything below it. Empty when the entry does not stand.
QString entryText(QSqlDatabase db, const QString &style, const QString &document, const QStringList &codes);

// The level of an entry whose place has that many codes (章 1 … イ～ネ 6).
Level levelOfDepth(int depth);

// Writes the entries of the source in one transaction; the first refusal is told with
// the file and line, and nothing is written.
Outcome putEntries(Prompt &prompt, QSqlDatabase db, const QString &style, const EntriesSource &source);

} // namespace normaris::dictionary
