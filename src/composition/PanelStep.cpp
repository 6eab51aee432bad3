#include "composition/PanelStep.h"

#include "composition/Panels.h"
#include "legal/LegalCheck.h"

namespace normaris {

PanelChoice choosePanelStep(QSqlDatabase db, Prompt &prompt, const PanelSelection &s)
{
    const PanelRow &row = s.rows.at(s.row);
    PanelDecision d;
    if (s.paragraphPanel) {
        d = paragraphPanelAction(s.rows, s.row, s.action);
    } else {
        // Only going down to the 項 level needs to know whether the dictionary holds any.
        const bool hasParagraphs = s.action.startsWith(u'5') && row.level == Level::Article
                                   && articleHasParagraphs(db, s.style, s.document, row.codes[0], row.codes[1]);
        d = articlePanelAction(s.rows, s.row, s.action, hasParagraphs);
    }
    PanelChoice choice;
    switch (d.kind) {
    case PanelDecision::Kind::Nothing: return choice;
    case PanelDecision::Kind::Refuse:
        prompt.error(d.title, d.text);
        choice.kind = PanelChoice::Kind::Stopped;
        return choice;
    case PanelDecision::Kind::OpenParagraphs: choice.kind = PanelChoice::Kind::OpenParagraphs; return choice;
    case PanelDecision::Kind::Confirm: break;
    }
    if (!prompt.question(d.title, d.text)) {
        choice.kind = PanelChoice::Kind::Stopped;
        return choice;
    }
    // A release that would leave a legal requirement unstated asks once more, naming it.
    if (d.release && !legal::confirmReleaseAgainstLaw(db, prompt, s.style, s.document, d.current, row.codes)) {
        choice.kind = PanelChoice::Kind::Stopped;
        return choice;
    }
    if (d.release) {
        choice.kind = PanelChoice::Kind::Release;
        choice.release = {s.style, s.document, d.current, s.row, row.codes};
    } else {
        choice.kind = PanelChoice::Kind::Add;
        choice.add = {s.style, s.document, d.current, d.added, d.firstParagraph, s.row, row.codes, QString()};
    }
    return choice;
}

Outcome carryOutAdd(QSqlDatabase db, Prompt &prompt, AddRequest request, const QString &chosen)
{
    const QStringList place = ClauseAdder::placeOf(AddRequest{request.style, request.document, request.selected, request.added,
                                                              request.firstParagraph, request.rowIndex, request.codes, chosen});
    bool offered = false;
    for (const CodeAndName &s :
         stockList(db, request.style, request.document, request.added, place.mid(0, place.size() - 1), StockFilter::All))
        offered = offered || s.code == chosen;
    request.chosen = offered ? chosen : QString();
    ClauseAdder adder(db, prompt);
    const AddMember *member = addMember(request);
    return member ? member->run(adder, request) : adder.add(request);
}

Outcome carryOutRelease(QSqlDatabase db, Prompt &prompt, const ReleaseRequest &request)
{
    ClauseReleaser releaser(db, prompt);
    const ReleaseMember *member = releaseMember(request.level);
    return member ? member->run(releaser, request) : releaser.release(request);
}

} // namespace normaris
