#include "seed/SeedRequirements.h"

#include "legal/Requirements.h"

namespace normaris::seed {

namespace {

QStringList placeCodes(const Place &p) { return {p.sho, p.jo, p.kou, p.gou, p.maru, p.iroha}; }

bool hasPlace(const Document &doc, const legal::RequirementPlace &place)
{
    for (const Clause &c : doc.clauses) {
        if (c.level == place.level && place.covers(c.level, placeCodes(c.place)))
            return true;
    }
    return false;
}

bool hasWord(const Document &doc, const QString &code)
{
    for (const Clause &c : doc.clauses) {
        for (const Word &w : c.words)
            if (w.code == code)
                return true;
    }
    return false;
}

} // namespace

QList<SourceError> checkRequirements(const Dictionary &dictionary, const QString &file, const QString &text)
{
    QList<legal::RequirementError> problems;
    const QList<legal::Requirement> table = legal::parseRequirements(text, problems);
    QList<SourceError> errors;
    for (const auto &p : std::as_const(problems))
        errors << SourceError{file, p.line, p.message};
    for (const legal::Requirement &r : table) {
        auto fail = [&](const QString &message) { errors << SourceError{file, r.line, message}; };
        bool found = false;
        for (const Document &doc : dictionary.documents) {
            if (doc.code != r.document)
                continue;
            found = true;
            const QString style = QStringLiteral("（文章形式 %1）").arg(doc.style);
            for (const legal::RequirementPlace &place : r.places) {
                if (!hasPlace(doc, place))
                    fail(QStringLiteral("規程 %1 に場所「%2」がありません%3").arg(r.document, place.text, style));
            }
            if (!r.word.isEmpty() && !hasWord(doc, r.word))
                fail(QStringLiteral("規程 %1 に語句 %2 がありません%3").arg(r.document, r.word, style));
        }
        if (!found)
            fail(QStringLiteral("規程 %1 がありません").arg(r.document));
    }
    return errors;
}

} // namespace normaris::seed
