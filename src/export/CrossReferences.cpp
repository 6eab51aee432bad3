#include "export/CrossReferences.h"

#include "export/Numerals.h"
#include "base/Database.h"

namespace normaris {

namespace {

struct MissingTarget {};

QString articleKey(const QStringList &place) { return place.value(0) + u'|' + place.value(1); }

// A level's number as it reads on its own: 第５条, 第２項, 第３号, ②, ロ.
QString plainPart(Level level, int number)
{
    const LevelInfo &info = levelInfo(level);
    switch (info.numbering) {
    case Numbering::Ordinal: return u'第' + fullWidthDigits(number) + QString::fromUtf16(info.caption);
    case Numbering::Circled: return maruCharacter(number);
    case Numbering::Iroha: return irohaCharacter(number);
    case Numbering::None: break;
    }
    return {};
}

// The word for the clause just before, where a level has one.
QString previousWord(Level level) { return QString::fromUtf16(levelInfo(level).previousWord); }

} // namespace

CrossReferences::CrossReferences(QSqlDatabase db, Prompt &prompt, const QString &document) : m_db(db), m_prompt(prompt), m_numbers(db)
{
    for (const ReferenceRow &r : readReferenceRows(db, document))
        m_byArticle[articleKey(r.place)] << r;
}

QString CrossReferences::replaceIn(const CompositionRow &row) { return isClauseLevel(row.level) ? number(row, row.level) : row.text; }

QString CrossReferences::number(const CompositionRow &row, Level level)
{
    QString text = row.text;
    if (!row.references)
        return text;
    const int depth = placeDepth(level);
    for (const ReferenceRow &reference : m_byArticle.value(articleKey(row.codes))) {
        if (reference.level != levelCode(level) || reference.place.mid(0, depth) != row.codes.mid(0, depth)
            || (!row.join.isEmpty() && reference.join != row.join))
            continue;
        if (!text.contains(reference.code))
            continue;
        try {
            if (const std::optional<QString> w = wording(reference, row, level))
                text.replace(u'◆' + reference.code + u'◆', *w);
        } catch (const MissingTarget &) {
            m_prompt.error(QStringLiteral("未置換"), QStringLiteral("参照先の条文番号◆%1◆が見つかりません。").arg(reference.code));
            break;
        }
    }
    return text;
}

QString CrossReferences::formalName(const QString &document)
{
    if (!m_formalNames.contains(document)) {
        const QVariant name =
            scalar(m_db, QStringLiteral("SELECT 正式名称 FROM 規程 WHERE Code = ? AND 選択フラグ = 1 ORDER BY ID"), {document});
        if (!name.isValid())
            throw MissingTarget{}; // the document is not on the list
        m_formalNames.insert(document, name.toString());
    }
    return m_formalNames.value(document);
}

std::optional<QString> CrossReferences::wording(const ReferenceRow &reference, const CompositionRow &row, Level level)
{
    const int target = reference.targetLevel.toInt();
    const QString &document = reference.targetDocument;
    // The target's rows down to its own level; only the row at that level is told by its segment.
    auto targetNumber = [&](int l) {
        const std::optional<int> n =
            m_numbers.number(document, Level(l), reference.targetPlace, l == target ? reference.targetJoin : QString());
        if (!n)
            throw MissingTarget{};
        return *n;
    };
    // The parts of the levels from..target, each as it reads on its own.
    auto plainParts = [&](int from) {
        QString parts;
        for (int l = from; l <= target; ++l)
            parts += plainPart(Level(l), targetNumber(l));
        return parts;
    };

    if (document != reference.document) {
        // Out of the document: the other document's formal name and the full path, never 前条.
        const QString name = formalName(document);
        if (target <= int(Level::Document))
            return name;
        if (target == int(Level::Chapter))
            return name + plainPart(Level::Chapter, targetNumber(int(Level::Chapter)));
        return name + plainParts(int(Level::Article));
    }
    if (target <= int(Level::Document))
        return formalName(document);
    if (target == int(Level::Chapter))
        return plainPart(Level::Chapter, targetNumber(int(Level::Chapter)));
    for (int l = int(Level::Article); l <= target; ++l)
        targetNumber(l); // every target row must be built, whichever rung words it

    // The number of the referring clause's own row at a level (its ancestor, or itself).
    auto currentNumber = [&](int l) {
        if (l == int(level))
            return row.number;
        const std::optional<int> n = m_numbers.number(row.document, Level(l), row.codes);
        if (!n)
            throw MissingTarget{};
        return *n;
    };
    // The ladder: the first rung whose test holds gives the first part of the wording.
    // Each rung compares the referring clause's 条Code with the target's code of that
    // rung's level, as the rule has always been: the codes are of different widths,
    // so from rung 2 on the test as a rule holds.
    const QString article = reference.place.value(1);
    const int L = int(level);
    struct Rung {
        int level; // the rung's level, and the least target level it applies to
        bool holds;
    };
    const Rung rungs[] = {
        {int(Level::Article), article != reference.targetPlace.value(1)},
        {int(Level::Paragraph), L == int(Level::Paragraph) || article != reference.targetPlace.value(2)},
        {int(Level::Item), L == int(Level::Item) || (L > int(Level::Item) && article != reference.targetPlace.value(3))},
        {int(Level::Maru), L == int(Level::Maru) || (L == int(Level::Iroha) && article != reference.targetPlace.value(4))},
        {int(Level::Iroha), L == int(Level::Iroha)},
    };
    for (const Rung &rung : rungs) {
        if (target < rung.level || !rung.holds)
            continue;
        const int n = targetNumber(rung.level);
        const QString previous = previousWord(Level(rung.level));
        const QString first = !previous.isEmpty() && n + 1 == currentNumber(rung.level) ? previous : plainPart(Level(rung.level), n);
        return first + plainParts(rung.level + 1);
    }
    return std::nullopt; // the marker stays
}

} // namespace normaris
