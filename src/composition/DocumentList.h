#pragma once
// The documents a company uses (規程.選択フラグ), per prose style. Putting a document
// on the list starts its composition with the 規程 row, or brings back the one it had;
// taking a standard document (code below 70) off the list drops its composition,
// while a document of the user's own keeps it for when it comes back.

#include "base/CodeAndName.h"
#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>

namespace normaris {

class DocumentList {
public:
    explicit DocumentList(QSqlDatabase db) : m_db(std::move(db)) {}

    // The documents of a style on the list (selected) or not, in code order.
    QList<CodeAndName> documents(const QString &style, bool selected);
    // The documents of a style on the list that are of one kind (文章種別: 1 規則・規程, 2 協約・協定).
    QList<CodeAndName> selectedOfKind(const QString &style, const QString &kind);
    bool isOnList(const QString &style, const QString &document);
    bool exists(const QString &style, const QString &document);

    void addToList(const QString &style, const QString &document);
    void removeFromList(const QString &style, const QString &document);
    // リストから外す as the user asks for it: when the step would delete a composition,
    // the user is asked first, naming the document, with いいえ as the default.
    Outcome takeOffList(const QString &style, const QString &document, Prompt &prompt);

    // The first code of the user's own documents.
    static constexpr int kUserCodes = 70;

private:
    QSqlDatabase m_db;
};

} // namespace normaris
