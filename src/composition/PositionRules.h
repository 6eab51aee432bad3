#pragma once
// Whether the action chosen on a panel row may run at that row, and what the user
// is asked before it does: pure functions of the panel's rows, the selected row and
// the action code of 作成データ選択肢.

#include "base/Levels.h"

#include <QList>
#include <QStringList>

namespace normaris {

// A panel row as the position rules see it.
struct PanelRow {
    Level level = Level::Document;
    QStringList codes = QStringList(6); // 章Code … 号の細分イロハCode
    QString join = QStringLiteral("0");
    QString text; // the text shown on the row
};

struct PanelDecision {
    enum class Kind {
        Nothing,        // action '1': offered nowhere, does nothing
        Refuse,         // a message (title, text) and the panel stays
        Confirm,        // a yes/no question (title, text); on yes the add or release runs
        OpenParagraphs, // go down to the 項 panel of the 条
    };
    Kind kind = Kind::Nothing;
    QString title;
    QString text;
    Level current = Level::Document; // CurShubetsu
    bool release = false;
    Level added = Level::Document; // AddShubetsu, for an add
    bool firstParagraph = false;   // AddShubetsu '0'
};

// The 条 panel (規程, 前文, 章, 条). articleHasParagraphs: the dictionary holds a 項
// for the selected 条 (asked only for action '5').
PanelDecision articlePanelAction(const QList<PanelRow> &rows, int index, const QString &action, bool articleHasParagraphs);
// The 項 panel of one 条.
PanelDecision paragraphPanelAction(const QList<PanelRow> &rows, int index, const QString &action);

} // namespace normaris
