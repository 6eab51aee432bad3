#pragma once
// What the two composition panels show: their rows with the text read from the
// dictionary (so that a renamed clause shows its new name at once), the actions
// offered on a row, and the stock a clause can be added from.

#include "base/CodeAndName.h"
#include "composition/PositionRules.h"

#include <QSqlDatabase>

namespace normaris {

// The 条 panel of a document and the 項 panel of one 条.
QList<PanelRow> articlePanel(QSqlDatabase db, const QString &style, const QString &document);
QList<PanelRow> paragraphPanel(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                               const QString &article);

// The names heading a panel: the prose style, the document, and for the 項 panel its 章 and 条.
struct PlaceNames {
    QString style;
    QString document;
    QString chapter;
    QString article;
};
PlaceNames placeNames(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter = {},
                      const QString &article = {});

// The actions of 作成データ選択肢 offered on a row of the level, in code order.
QList<CodeAndName> panelActions(QSqlDatabase db, Level rowLevel);

// True when the dictionary holds a 項 for the 条 (a 条 without one can't be opened).
bool articleHasParagraphs(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter, const QString &article);

// The code a row shows: its own code, '01' for the 前文, nothing for the 規則 row.
QString panelCode(const PanelRow &row);

enum class StockFilter { All, Unselected, UserMade };

struct StockTexts {
    QString instruction; // Label1
    QString empty;       // the message when there is nothing to add
};
StockTexts stockTexts(Level added, bool firstParagraph);

// The clauses of a level that can be added under the parent place (章 … parent's code).
QList<CodeAndName> stockList(QSqlDatabase db, const QString &style, const QString &document, Level added, const QStringList &parent,
                             StockFilter filter);

} // namespace normaris
