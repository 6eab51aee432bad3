#pragma once
// Adding a clause from the dictionary to a document being composed: the chosen
// clause with everything selected below it is copied into the working tables at
// the chosen place, later rows move down, and the running numbers follow.
//
// The twenty adds (Tuika + selected level + added level) are one algorithm; they
// differ in where the base number comes from, as the table in ClauseAdder.cpp says.

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

} // namespace normaris
