#pragma once
// The kept versions of finished documents: every 規則・規程 or agreement that
// データをWordへ送る printed, with its text row by row. A version identical to the
// last one of the same document and style (the same rows, the same latest
// effective date) is not kept a second time.

#include "versions/PrintedRow.h"

#include <QDate>
#include <QDateTime>
#include <QSqlDatabase>
#include <optional>

namespace normaris {

struct VersionHeader {
    qint64 id = 0; // the version number
    QString style;
    QString document;
    QString name; // the document's formal name
    QDateTime made;
    QDate effective;
};

struct Version {
    VersionHeader header;
    PrintedRows rows;
};

class VersionStore {
public:
    // Creates the tables when missing.
    explicit VersionStore(QSqlDatabase db);

    // Keeps the version; returns its number, or that of the last version when
    // it is the same. One transaction.
    qint64 keep(const VersionHeader &header, const PrintedRows &rows);

    // The versions of one document in one style, oldest first.
    QList<VersionHeader> list(const QString &style, const QString &document);
    std::optional<VersionHeader> header(qint64 id);
    // The latest version of each document kept in the style, by document code.
    QList<VersionHeader> latestOfEach(const QString &style);
    // The whole version; throws Failure when there is none of that number.
    Version read(qint64 id);
    // Removes a version and its rows; false when there is none of that number.
    bool remove(qint64 id);

    // The hash by which two versions are known to be the same.
    static QString fingerprint(const QDate &effective, const PrintedRows &rows);

private:
    QSqlDatabase m_db;
};

} // namespace normaris
