#pragma once
// The legal requirements on the documents: what the law asks a document to state
// (労働基準法第89条 and the agreements' required items) and the bounds the law sets on
// its words. The table is the program's knowledge of the law, not a company's data:
// it is written in data/法令要件.tsv, checked against the dictionary when the seed file
// is made, and shipped beside the seed file, so that every company is checked against
// the table of the program that opens it.

#include "base/Levels.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace normaris::legal {

enum class RequirementKind {
    Absolute, // 絶対: the document must state it
    Relative, // 相対: only where the company has such a rule; met when one of its places is composed
    Bound,    // 限度: a word whose value the law bounds
};

// 未満, 以下, 以上
enum class Comparison { Below, AtMost, AtLeast };

// A dictionary place that meets a requirement: 前文, 章04, 条0030, 条0030項02号03.
// The 条 code stands for the article whatever its chapter; the levels below follow it.
struct RequirementPlace {
    Level level = Level::Article;
    QStringList codes = QStringList(6); // 章Code … 号の細分イロハCode, empty where not given
    QString text;                       // as written in the table

    // Whether a row of the level with these place codes stands at or below this place.
    bool covers(Level rowLevel, const QStringList &rowCodes) const;
};

struct Requirement {
    QString code;     // 01-002: the document's code and a running number
    QString document; // 規程Code
    RequirementKind kind = RequirementKind::Absolute;
    QString law;     // 労働基準法第89条第1号
    QString caption; // 休憩時間
    QDate effective; // the day it takes effect; invalid when it always has
    QDate lapse;     // the day it lapses; invalid when it does not
    QList<RequirementPlace> places;
    QString pattern;        // in the user's own text, the words that show it (a regular expression)
    QString patternCaption; // what those words are taken to show
    QString word;           // 限度: the word's Code
    Comparison comparison = Comparison::AtMost;
    double bound = 0;
    QString boundText;   // 100時間未満
    QString coverageRow; // the row of data/coverage.md it stands for, where it has one
    int line = 0;        // in the source

    bool inForceOn(const QDate &date) const;
    // Whether value is within the bound.
    bool withinBound(double value) const;
};

struct RequirementError {
    int line = 0;
    QString message;
};

// The file's columns, in order.
const QStringList &requirementColumns();

// Reads the table's text: one requirement a line after the line of column names;
// lines starting with # are notes. Problems are added to errors with their line.
QList<Requirement> parseRequirements(const QString &text, QList<RequirementError> &errors);
// Reads the table from a file. Throws Failure when it can't be read or has a problem.
QList<Requirement> loadRequirements(const QString &path);
// Where the table stands beneath a program folder: beside the seed file.
QString requirementsFile(const QString &appPath);
// The table shipped with the program (Data/法令要件.tsv under AppPath), read once.
const QList<Requirement> &shippedRequirements();

// The requirements a dictionary entry stands behind: the "law caption" of every
// requirement of the document with a place at or above the entry (or a word of it).
QStringList requirementsBehind(const QList<Requirement> &table, const QString &document, Level level, const QStringList &codes);

// The legal bound on a word of the document, as shown beside it: "100時間未満（労働基準法第36条第5項）";
// empty when the law sets none.
QString wordBound(const QList<Requirement> &table, const QString &document, const QString &word);

} // namespace normaris::legal
