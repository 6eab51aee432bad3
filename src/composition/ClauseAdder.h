#pragma once
// Adding a clause from the dictionary to a document being composed: the chosen
// clause with everything selected below it is copied into the working tables at
// the chosen place, later rows move down, and the running numbers follow.
//
// The twenty adds (Tuika + selected level + added level) are one algorithm; they
// differ in where the base number comes from, as the family table kAddFamily says.

#include "base/Levels.h"
#include "base/Prompt.h"

#include <QSqlDatabase>
#include <QStringList>

namespace normaris {

struct AddRequest {
    QString style;
    QString document;
    Level selected = Level::Document;   // level of the selected panel row
    Level added = Level::Chapter;       // level added below it
    bool firstParagraph = false;        // a new first 項 of the 条 (action '3' on a 項 row)
    int rowIndex = 0;                   // the selected row's place from 0: its 順番 is rowIndex + 1
    QStringList codes = QStringList(6); // the selected row's 章Code … 号の細分イロハCode
    QString chosen;                     // the dictionary clause's own Code
};

class ClauseAdder {
public:
    ClauseAdder(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Checks the choice, adds in one transaction, and reports.
    Outcome add(const AddRequest &request);

    // The place codes the added clause will have (章 … its own code).
    static QStringList placeOf(const AddRequest &request);

private:
    using LevelAdder = void (ClauseAdder::*)(const AddRequest &);
    static LevelAdder adderOf(Level added);
    void addPreamble(const AddRequest &r);
    void addChapter(const AddRequest &r);
    void addArticle(const AddRequest &r);
    void addClause(const AddRequest &r);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

// The entry points by name: Tuika + the selected row's level + the level added.
Outcome Tuika0110(ClauseAdder &a, AddRequest r);
Outcome Tuika0102(ClauseAdder &a, AddRequest r);
Outcome Tuika1002(ClauseAdder &a, AddRequest r);
Outcome Tuika0203(ClauseAdder &a, AddRequest r);
Outcome Tuika0302(ClauseAdder &a, AddRequest r);
Outcome Tuika0303(ClauseAdder &a, AddRequest r);
Outcome Tuika0400(ClauseAdder &a, AddRequest r);
Outcome Tuika0404(ClauseAdder &a, AddRequest r);
Outcome Tuika0405(ClauseAdder &a, AddRequest r);
Outcome Tuika0504(ClauseAdder &a, AddRequest r);
Outcome Tuika0505(ClauseAdder &a, AddRequest r);
Outcome Tuika0506(ClauseAdder &a, AddRequest r);
Outcome Tuika0604(ClauseAdder &a, AddRequest r);
Outcome Tuika0605(ClauseAdder &a, AddRequest r);
Outcome Tuika0606(ClauseAdder &a, AddRequest r);
Outcome Tuika0607(ClauseAdder &a, AddRequest r);
Outcome Tuika0704(ClauseAdder &a, AddRequest r);
Outcome Tuika0705(ClauseAdder &a, AddRequest r);
Outcome Tuika0706(ClauseAdder &a, AddRequest r);
Outcome Tuika0707(ClauseAdder &a, AddRequest r);

// Where the base number p of an add at the 項 level and below comes from.
enum class AddBase {
    None,            // an add above the 項 level, which numbers by its own rules
    Zero,            // the new clause is the first child of the selected row
    SelectedClause,  // the first clause of the level after the selected place: the selected clause itself
    EnclosingClause, // the last clause of the level before the selected place: the one holding the selected row
};

// One add of the family: the selected row's level, the level added (a new first 項
// apart), where its base number comes from, and its entry point.
struct AddMember {
    Level selected;
    Level added;
    bool firstParagraph;
    AddBase base;
    Outcome (*run)(ClauseAdder &, AddRequest);
};

inline constexpr AddMember kAddFamily[] = {
    {Level::Document, Level::Preamble, false, AddBase::None, Tuika0110},
    {Level::Document, Level::Chapter, false, AddBase::None, Tuika0102},
    {Level::Preamble, Level::Chapter, false, AddBase::None, Tuika1002},
    {Level::Chapter, Level::Article, false, AddBase::None, Tuika0203},
    {Level::Article, Level::Chapter, false, AddBase::None, Tuika0302},
    {Level::Article, Level::Article, false, AddBase::None, Tuika0303},
    {Level::Paragraph, Level::Paragraph, true, AddBase::Zero, Tuika0400},
    {Level::Paragraph, Level::Paragraph, false, AddBase::SelectedClause, Tuika0404},
    {Level::Paragraph, Level::Item, false, AddBase::Zero, Tuika0405},
    {Level::Item, Level::Paragraph, false, AddBase::EnclosingClause, Tuika0504},
    {Level::Item, Level::Item, false, AddBase::SelectedClause, Tuika0505},
    {Level::Item, Level::Maru, false, AddBase::Zero, Tuika0506},
    {Level::Maru, Level::Paragraph, false, AddBase::EnclosingClause, Tuika0604},
    {Level::Maru, Level::Item, false, AddBase::EnclosingClause, Tuika0605},
    {Level::Maru, Level::Maru, false, AddBase::SelectedClause, Tuika0606},
    {Level::Maru, Level::Iroha, false, AddBase::Zero, Tuika0607},
    {Level::Iroha, Level::Paragraph, false, AddBase::EnclosingClause, Tuika0704},
    {Level::Iroha, Level::Item, false, AddBase::EnclosingClause, Tuika0705},
    {Level::Iroha, Level::Maru, false, AddBase::EnclosingClause, Tuika0706},
    {Level::Iroha, Level::Iroha, false, AddBase::SelectedClause, Tuika0707},
};

// The member of the family for a request's levels; nullptr for an add there is none of.
const AddMember *addMember(Level selected, Level added, bool firstParagraph);
inline const AddMember *addMember(const AddRequest &r) { return addMember(r.selected, r.added, r.firstParagraph); }

} // namespace normaris
