#include "seed/SeedDraft.h"

#include "composition/ClauseAdder.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "base/Failure.h"

namespace normaris::seed {

namespace {

// The draft is composed by the same adds a user makes; any message but the
// closing "確認" means the source is wrong, and stops the generator.
class DraftPrompt : public Prompt {
public:
    void message(Icon, const QString &title, const QString &text) override
    {
        if (title != u"確認")
            throw Failure(QStringLiteral("標準案を作成できません: ") + title + QStringLiteral(": ") + text);
    }
    bool question(const QString &, const QString &) override { return true; }
};

} // namespace

bool composesStandardDraft(const Document &doc) { return doc.standardDraft && doc.style == u"1"; }

bool selectedInSeed(const Document &doc, const Clause &clause)
{
    if (clause.stock)
        return false;
    if (clause.level == Level::Chapter || clause.level == Level::Preamble)
        return composesStandardDraft(doc);
    return true;
}

void writeStandardDraft(QSqlDatabase db, const Document &doc)
{
    DocumentList(db).addToList(doc.style, doc.code);
    DraftPrompt prompt;
    ClauseAdder adder(db, prompt);
    // Each add goes below the last row: the preamble first, then every chapter with
    // the articles and clauses its flags select.
    for (const Clause &c : doc.clauses) {
        if ((c.level != Level::Preamble && c.level != Level::Chapter) || c.stock)
            continue;
        const QList<CompositionRow> rows = readArticleRows(db, doc.style, doc.code);
        const CompositionRow &last = rows.last();
        AddRequest request{doc.style,  doc.code,
                           last.level, c.level,
                           false,      int(rows.size()) - 1,
                           last.codes, c.level == Level::Preamble ? QStringLiteral("01") : c.place.sho};
        if (adder.add(request) != Outcome::Done)
            throw Failure(QStringLiteral("標準案を作成できません: %1").arg(c.place.describe()));
    }
}

} // namespace normaris::seed
