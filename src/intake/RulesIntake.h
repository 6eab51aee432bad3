#pragma once
// 現行規程の取込: the client's current rules, once their structure is found, written as a
// document of the company's own (code 70–99) in one prose style, composed and on the
// list, in one transaction through the document master and the level editors with
// their checks. Nothing is written when any check refuses.

#include "base/Prompt.h"
#include "intake/RulesStructure.h"

#include <QSqlDatabase>

namespace normaris::intake {

struct IntakeRequest {
    QString style;
    QString code;        // 70–99
    QString name;        // 規程 (表示名称)
    QString formalName;  // empty: the name
    QString companyName; // set as 事業所名 (when none is set) and marked ☆0001☆ in the text; empty: left as text
};

// The name a document gets when the user gives none: the title the text begins with.
QString defaultName(const FoundRules &rules);

// The first code from 70 that no document of the style has (99 when all are taken).
QString firstFreeCode(QSqlDatabase db, const QString &style);

// The refusal of a code that is not 70–99 or that a document of the style has; true
// when the code is free.
bool checkIntakeCode(Prompt &prompt, QSqlDatabase db, const QString &style, const QString &code);

// Writes the rules. rules.source.document must be request.code.
Outcome writeRules(Prompt &prompt, QSqlDatabase db, const FoundRules &rules, const IntakeRequest &request);

} // namespace normaris::intake
