#pragma once
// Wordで確認: one article of the work data (作成データ) as a document of its own,
// for the user to check its embedded words. It numbers nothing (● stands for every
// number), shows in blue the rows where a word's marker ★ is left, and in red the
// places of templates.

#include "document/Typist.h"

#include <QSqlDatabase>

namespace normaris {

class ArticlePreview {
public:
    ArticlePreview(QSqlDatabase db, QString style, QString document)
        : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document))
    {
    }

    // Types the article's rows in 順番 order, each ended by a paragraph. False, with
    // nothing typed, when the work data hold no row of the article.
    bool type(Typist &typist, const QString &chapter, const QString &article);

    // The preview written to a new .docx in the temporary folder: its path, or an
    // empty one, with no file, when there is nothing to show. Throws Failure.
    QString write(const QString &chapter, const QString &article);

private:
    QSqlDatabase m_db;
    QString m_style;
    QString m_document;
};

} // namespace normaris
