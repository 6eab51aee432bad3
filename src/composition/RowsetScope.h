#pragma once
// Set-based steps on one rowset of a working table: the rows of a document in
// 作成データ補助～条, or of one 条 in 作成データ補助項～. Shared by adding and releasing.

#include "base/Levels.h"

#include <QSqlDatabase>
#include <QStringList>
#include <QVariantList>

namespace normaris {

class RowsetScope {
public:
    // The document's rowset in 作成データ補助～条.
    static RowsetScope document(QSqlDatabase db, const QString &style, const QString &document);
    // All 作成データ補助項～ rows of a document (for deleting a whole 章 or 条).
    static RowsetScope documentClauses(QSqlDatabase db, const QString &style, const QString &document);
    // One 条's rowset in 作成データ補助項～.
    static RowsetScope article(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                               const QString &article);

    // Rows from `from` on move down by n places (順番 + n).
    void shiftOrder(int from, int n) const;
    // Rows after `after` close up so that they run on from after + 1.
    void closeOrder(int after) const;
    // Rows of the level under the parent (the first place codes) with 番号 > above,
    // in 番号 order, get base + 1, base + 2 … (segments of one clause counting once when
    // segmentsShare is set).
    void renumber(Level level, const QStringList &parent, int above, int base, bool segmentsShare = false) const;
    // Rows of the level under the parent with 番号 > above move up by one.
    void bumpNumbers(Level level, const QStringList &parent, int above) const;
    // 番号 of the first (or last) row of the level under the parent whose 順番 is
    // after (or before) the given place; 0 when there is none.
    int numberAfter(Level level, const QStringList &parent, int order) const;
    int numberBefore(Level level, const QStringList &parent, int orderBelow) const;
    // Deletes the rows whose place begins with the given codes (all, when codes is empty).
    void deleteRows(Level level, const QStringList &codes) const;
    bool hasRow(Level level, const QStringList &codes) const;

    const QString &table() const { return m_table; }

private:
    RowsetScope(QSqlDatabase db, QString table, QString where, QVariantList keys)
        : m_db(std::move(db)), m_table(std::move(table)), m_where(std::move(where)), m_keys(std::move(keys))
    {
    }
    // The scope plus 種別 and the given place columns.
    std::pair<QString, QVariantList> within(Level level, const QStringList &codes) const;

    QSqlDatabase m_db;
    QString m_table;
    QString m_where;
    QVariantList m_keys;
};

// Sets or clears 選択フラグ of the embedded words of a clause's subtree: the words
// held at the clause's level and below, under the clause's place.
void setSubtreeWords(QSqlDatabase db, const QString &document, Level level, const QStringList &place, bool selected);

} // namespace normaris
