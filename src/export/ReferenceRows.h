#pragma once
// The rows of 変数テーブル番号: one per reference marker ◆nnnn◆ of a clause, with the
// place of the referring clause and the place of the clause it points to.

#include <QList>
#include <QSqlDatabase>
#include <QStringList>

namespace normaris {

struct ReferenceRow {
    QString code;      // the marker's four digits
    QString document;  // 規程Code of the referring clause
    QStringList place; // its 章Code … 号の細分イロハCode
    QString join;      // 結合
    QString level;     // 種別 of the referring clause
    QString targetDocument;
    QStringList targetPlace;
    QString targetJoin;
    QString targetLevel; // the target's level, and so how deep the wording goes
};

// The references made from one document, in the order they were stored.
QList<ReferenceRow> readReferenceRows(QSqlDatabase db, const QString &document);

} // namespace normaris
