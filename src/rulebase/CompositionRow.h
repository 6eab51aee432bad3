#pragma once
// One row of the working tables 作成データ補助～条 (規程, 前文, 章, 条) and
// 作成データ補助項～ (項 and below), the 19 columns they share.

#include "base/Levels.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>
#include <QVariantList>

namespace normaris {

inline const QString kArticleRowsTable = QStringLiteral("作成データ補助～条");
inline const QString kClauseRowsTable = QStringLiteral("作成データ補助項～");

// The output tables of the export chain, with the same 19 columns. In them 結合 and
// テンプレート are empty rather than '0', and 改行 is the text "1" or empty.
inline const QString kFrozenRowsTable = QStringLiteral("作成データ置換前");
inline const QString kOutputRowsTable = QStringLiteral("作成データ");

inline QString workingTable(Level level) { return isClauseLevel(level) ? kClauseRowsTable : kArticleRowsTable; }

struct CompositionRow {
    int order = 0; // 順番
    Level level = Level::Document;
    QString document;                   // 規程Code
    int number = 0;                     // 番号
    QStringList codes = QStringList(6); // 章Code … 号の細分イロハCode
    QString join = QStringLiteral("0");
    bool lineBreak = false;
    QString templateCode = QStringLiteral("0");
    QString text;
    bool words = false;
    bool references = false;
    bool changed = false;
    QString style;
    QString formalName;

    // The values of the 19 columns in table order. The composition tables keep 改行
    // as a flag, the output tables as the text "1" or empty.
    QVariantList values(bool lineBreakAsText = false) const;
    // The clause's own code: the deepest filled place column.
    QString ownCode() const { return placeDepth(level) > 0 ? codes.value(placeDepth(level) - 1) : QString(); }
};

// The rows of a document's 条 panel, or of one 条's panel, in 順番 order.
QList<CompositionRow> readArticleRows(QSqlDatabase db, const QString &style, const QString &document);
QList<CompositionRow> readClauseRows(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                                     const QString &article);

// The rows of table that match where (a condition with ? for each key), in 順番 and 結合 order.
QList<CompositionRow> readRows(QSqlDatabase db, const QString &table, const QString &where, const QVariantList &keys);
// All rows of one document in one style, of any of the four tables of this shape.
QList<CompositionRow> readWorkRows(QSqlDatabase db, const QString &table, const QString &style, const QString &document);

// Inserts rows in one batch statement.
void insertCompositionRows(QSqlDatabase db, const QString &table, const QList<CompositionRow> &rows);
// The same for the output tables (作成データ置換前, 作成データ).
void insertWorkRows(QSqlDatabase db, const QString &table, const QList<CompositionRow> &rows);

} // namespace normaris
