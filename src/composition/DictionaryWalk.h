#pragma once
// Reads clauses out of the dictionary as composition rows: a clause with every
// segment, followed depth-first by the clauses under it whose 選択フラグ is set,
// each level numbered from 1 under its parent. 順番 is left for the caller.

#include "rulebase/CompositionRow.h"

namespace normaris {

class DictionaryWalk {
public:
    DictionaryWalk(QSqlDatabase db, QString style, QString document)
        : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document))
    {
    }

    // A clause of 項 level or below at its place (章 … own code), numbered `number`, and its subtree.
    QList<CompositionRow> clause(Level level, const QStringList &place, int number);
    // The 項 and everything selected under an article.
    QList<CompositionRow> articleBody(const QString &chapter, const QString &article);
    // The rows of the 前文, every segment.
    QList<CompositionRow> preamble();
    CompositionRow chapter(const QString &code);
    CompositionRow article(const QString &chapter, const QString &code);
    // The 条 of a 章 whose 選択フラグ is set, in code order.
    QStringList selectedArticles(const QString &chapter);

private:
    // The selected clauses of a level under a parent place, in code order.
    QStringList selectedChildren(Level level, const QStringList &parent);
    void walk(Level level, const QStringList &place, int number, QList<CompositionRow> &out);
    CompositionRow base(Level level) const;

    QSqlDatabase m_db;
    QString m_style;
    QString m_document;
};

// "col1 = ? AND col2 = ? …" for the first n place columns of a dictionary table at the level.
QString dictionaryPlaceWhere(Level level, int n);

} // namespace normaris
