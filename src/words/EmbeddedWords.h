#pragma once
// The words that fill the gaps (★nnnn★) of a document's articles. A word is kept
// per place in 変数テーブル語句; an emptied word goes back to its marker, so that the
// gap stays visible in the finished document.

#include "base/CodeAndName.h"
#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>

namespace normaris {

struct EmbeddedWord {
    QString code;
    QString caption; // 表示名称
    QString word;    // the content (設定内容)
};

// The limit of one word in CP932 bytes.
constexpr int kWordLimit = 80;

class EmbeddedWords {
public:
    EmbeddedWords(QSqlDatabase db, QString style, QString document)
        : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document))
    {
    }
    // The words of the document and style chosen in the application state, on `cn`.
    static EmbeddedWords ofCurrentDocument();

    // The chapters in use, in code order.
    QList<CodeAndName> chapters();
    // The articles in use of a chapter that hold words in a selected clause; the list
    // is kept in 語句設定■条, rebuilt in one transaction.
    QList<CodeAndName> articlesWithWords(const QString &chapter);
    // The selected words of one article, in code order.
    QList<EmbeddedWord> words(const QString &chapter, const QString &article);
    // Saves the words of one article in one transaction: code → text, empty text → marker.
    void save(const QString &chapter, const QString &article, const QList<std::pair<QString, QString>> &words);
    // True when the work data (作成データ) hold the article: the preview needs them.
    bool hasMadeData(const QString &chapter, const QString &article);
    // How many selected words of the document are captioned 担当者.
    int countCaptioned(const QString &caption);

    // The check of a typed word, on leaving its box.
    static bool checkWord(Prompt &prompt, const QString &text);
    static QString markerOf(const QString &code) { return u'★' + code + u'★'; }

private:
    QSqlDatabase m_db;
    QString m_style;
    QString m_document;
};

} // namespace normaris
