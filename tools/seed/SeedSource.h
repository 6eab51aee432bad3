#pragma once
// The clause dictionary as it stands in the text sources of data/: one file per
// document and prose style, read into these plain structures, checked, and then
// written into the seed file.

#include "base/Levels.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace normaris::seed {

// The name of the 章 "00" that holds the articles of a document without chapters.
inline const QString kChapterlessBody = QStringLiteral("本則");

using Level = normaris::Level;

// Where a row stands: the codes of all levels above it and its own.
struct Place {
    QString kitei, sho, jo, kou, gou, maru, iroha;
    bool operator==(const Place &) const = default;
    QString describe() const;
};

struct Segment {
    QString text;
    bool lineBreak = false;
    // A table or form the user inserts here; it completes the clause, so it is one of the
    // clause's segments after a line break and takes no number of its own.
    QString templateCode = QStringLiteral("0");
};

struct Word {
    QString code;
    QString caption; // 表示名称
    QString word;    // the default word (語句)
    int line = 0;
};

struct Reference {
    QString code;
    Place target; // 規程 always set; lower levels as deep as the target goes
    Level targetLevel = Level::Document;
    QString targetSegment; // 結合 of the target, empty for the whole clause
    int line = 0;
};

struct Clause {
    Level level = Level::Paragraph;
    Place place;
    QString title;      // 章 and 条
    QString formalName; // 条
    QList<Segment> segments;
    bool stock = false; // 標準外: kept out of the standard draft, with everything under it
    QList<Word> words;
    QList<Reference> references;
    int line = 0;
};

struct Document {
    QString file;
    int line = 0;
    QString style;                      // 文章形式Code
    QString code;                       // 規程Code
    QString name;                       // 規程 (表示名称)
    QString formalName;                 // 正式名称
    QString kind = QStringLiteral("1"); // 文章種別
    bool standardDraft = false;         // 標準案: comes composed and on the company's list
    QList<Clause> clauses;              // in reading order
};

// A fixed table of the seed file given as rows of text (作成データ選択肢 and the like).
struct FixedTable {
    QString file;
    QString table;
    QStringList columns;
    QList<QStringList> rows;
};

struct Dictionary {
    QString release; // the release's name, 2026.11
    QList<Document> documents;
    QList<FixedTable> fixedTables;
};

// One problem in a source, located by file and line.
struct SourceError {
    QString file;
    int line = 0;
    QString message;
    QString toString() const { return file + u':' + QString::number(line) + QStringLiteral(": ") + message; }
};

} // namespace normaris::seed
