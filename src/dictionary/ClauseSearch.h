#pragma once
// 条文検索: where the company's dictionary speaks of something. Every clause of both
// prose styles (前文 to イ～ネ, the user's own and read-in documents included) and every
// article caption is searched for all the words given.
//
// The index is SQLite's full-text index (FTS5, trigram tokenizer: Japanese needs no
// dictionary) in memory, on a connection of its own, built from the dictionary tables
// when a search starts: it never stands in the company's file (whose opening check
// refuses virtual tables), and it can never be behind a step that wrote a clause.

#include "base/Levels.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>

namespace normaris::dictionary {

struct SearchHit {
    QString style;
    QString document;
    QString documentName;
    Level level = Level::Paragraph;
    QStringList codes;     // 章Code … its own Code (empty for the 前文)
    QString articleNumber; // 第５条 as the composed document numbers it; empty when not composed
    QString context;       // the words around the first hit
    // "規程01 章02 条0005 項02"
    QString place() const;
};

class ClauseSearch {
public:
    explicit ClauseSearch(QSqlDatabase db) : m_db(std::move(db)) {}

    // The clauses that hold every word of words (split at blanks of either width), in
    // document and place order; only of document when one is given.
    QList<SearchHit> find(const QString &words, const QString &document = {}) const;

    // How many characters of context stand on each side of a hit.
    static constexpr int kContext = 15;

private:
    QSqlDatabase m_db;
};

} // namespace normaris::dictionary
