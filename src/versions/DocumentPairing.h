#pragma once
// The 新旧対照表 of two different documents of one company: the client's current rules
// (read in as a document of their own) before, the newly composed rules after. They
// share no codes, so their articles are paired by caption and text similarity, first in
// the order of the documents, then (for a chapter that moved) across it; the user's
// overrides come first. Chapters pair by title. Within a pair, clauses pair by their
// place (the first 項 with the first 項, its first 号 with the first 号, …).

#include "versions/ComparisonTable.h"

namespace normaris {

// An override: the article printed as number older is the one printed as newer
// (0 for newer: the old article has no counterpart and is listed as （削除）).
struct PairOverride {
    int older = 0;
    int newer = 0;
};

struct ArticlePair {
    QString olderLabel; // empty: （新設）
    QString olderHeading;
    QString newerLabel; // empty: （削除）
    QString newerHeading;
    int percent = 0; // the similarity, 0–100
    bool overridden = false;
    // 「第５条（採用） = 第７条（採用手続） 82%」
    QString line() const;
};

// The overrides as the command line writes them: "5=7,6=0". Empty when one is not of
// that form (error then holds the wrong one).
std::optional<QList<PairOverride>> parseOverrides(const QString &text, QString *error);

// The table of older against newer, and the pairing it used.
ComparisonTable compareDocuments(const Version &older, const Version &newer, const QList<PairOverride> &overrides,
                                 QList<ArticlePair> *pairing);

} // namespace normaris
