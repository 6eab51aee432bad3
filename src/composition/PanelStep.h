#pragma once
// The step a row panel takes when the user runs the action chosen at a row, the same
// for the dialogs and the CLI: the position rules decide, a refusal is shown or the
// question asked through the Prompt, and what was confirmed becomes an add or a
// release request. The add or release itself runs once the clause to add is chosen.

#include "base/Prompt.h"
#include "composition/ClauseAdder.h"
#include "composition/ClauseReleaser.h"
#include "composition/PositionRules.h"

#include <QSqlDatabase>

namespace normaris {

// Where the panel stands: its document, which panel, its rows and the chosen row and action.
struct PanelSelection {
    QString style;
    QString document;
    bool paragraphPanel = false; // the 項 panel of one 条, else the 条 panel
    QList<PanelRow> rows;
    int row = 0;
    QString action;
};

struct PanelChoice {
    enum class Kind {
        Nothing,        // the action does nothing at the row
        Stopped,        // refused, or the question answered no: the panel stays
        OpenParagraphs, // go down to the 項 panel of the row's 条
        Add,            // add at the row: `add` holds all but the clause chosen
        Release,        // release the row's clause: `release`
    };
    Kind kind = Kind::Nothing;
    AddRequest add;
    ReleaseRequest release;
};

// Decides, refuses or asks: what the action at the selected row comes to.
PanelChoice choosePanelStep(QSqlDatabase db, Prompt &prompt, const PanelSelection &selection);

// Runs an add through its member of the add family, with the clause chosen from the
// stock (one that is not in the stock reads as no choice).
Outcome carryOutAdd(QSqlDatabase db, Prompt &prompt, AddRequest request, const QString &chosen);
// Runs a release through its member of the release family.
Outcome carryOutRelease(QSqlDatabase db, Prompt &prompt, const ReleaseRequest &request);

} // namespace normaris
