#pragma once
// The composed documents of a company kept as versions before and after an update, and
// their 新旧対照表: each document is built, substituted and rendered as データをWordへ送る
// does, without writing a file, so that the version before the update is kept.

#include "update/CompanyUpdate.h"

namespace normaris {

class DocumentVersions {
public:
    explicit DocumentVersions(QSqlDatabase db) : m_db(std::move(db)) {}
    // Keeps a version of every composed document. Throws Failure when the chain fails.
    void keepBefore();
    // Keeps them again and compares each with its version before.
    QList<DocumentComparison> keepAfter();

private:
    // Keeps a version of every document: its number in latest, 0 when nothing printed.
    void keepAll();

    struct Composed {
        QString style, document, name, kind;
        qint64 before = 0;
        qint64 latest = 0;
        QString note; // why no version was kept
    };
    QSqlDatabase m_db;
    QList<Composed> m_documents;
};

} // namespace normaris
