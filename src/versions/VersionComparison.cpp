#include "versions/VersionComparison.h"

#include <QHash>
#include <QRegularExpression>

namespace normaris {

namespace {

// A clause or a heading: its printed label and its whole text, the segments of
// a chain joined, a segment on a line of its own after '\n'.
struct Clause {
    QString key;
    Level level = Level::Article;
    QString label;
    QString text;
};

// What is matched as a whole: the preamble, a chapter heading, or an article
// with its clauses.
struct Unit {
    QString key;
    std::optional<Clause> heading;
    QList<Clause> clauses;
    QHash<QString, qsizetype> clauseAt; // by key
};

QString unitKey(const PrintedRow &row)
{
    if (row.level == Level::Preamble)
        return QStringLiteral("前文");
    if (row.level == Level::Chapter)
        return u'章' + row.codes[0];
    return u'条' + row.codes[1];
}

// A clause is known by its level and its codes below the 条.
QString clauseKey(const PrintedRow &row) { return levelCode(row.level) + u':' + row.codes.mid(2).join(u'.'); }

bool continuesChain(const PrintedRow &row) { return !row.segment.isEmpty() && row.segment != u"1"; }

// The numbers of the articles and chapters that moved: old label → new label.
using Moves = QHash<QString, QString>;

// The old text with every citation of a moved article or chapter read under its
// new number: a clause whose text differs only so has not changed. A number
// after 法 or 令 cites a law, not this document, and stays.
QString withMovedCitations(const QString &text, const Moves &moves)
{
    if (moves.isEmpty() || !text.contains(u'第'))
        return text;
    static const QRegularExpression citation(QStringLiteral("第[０-９0-9]+[条章]"));
    QString out;
    qsizetype from = 0;
    for (const QRegularExpressionMatch &m : citation.globalMatch(text)) {
        const qsizetype at = m.capturedStart();
        const bool law = at > 0 && (text[at - 1] == u'法' || text[at - 1] == u'令');
        out += text.mid(from, at - from);
        out += law ? m.captured() : moves.value(m.captured(), m.captured());
        from = m.capturedEnd();
    }
    return out + text.mid(from);
}

QList<Unit> unitsOf(const PrintedRows &rows)
{
    QList<Unit> units;
    QHash<QString, qsizetype> unitAt;
    for (const PrintedRow &row : rows) {
        if (row.level == Level::Document || row.level == Level::Closing)
            continue;
        const QString key = unitKey(row);
        const bool heading = row.level == Level::Chapter || row.level == Level::Article;
        if (heading || units.isEmpty() || units.last().key != key) {
            // A key seen before (which the codes should never allow) stays apart.
            const QString unique = unitAt.contains(key) ? key + u'#' + QString::number(units.size()) : key;
            unitAt.insert(unique, units.size());
            units.append(Unit{unique, std::nullopt, {}, {}});
        }
        Unit &unit = units.last();
        if (heading) {
            unit.heading = Clause{QString(), row.level, row.label, row.text};
            continue;
        }
        const QString ckey = clauseKey(row);
        if (!unit.clauses.isEmpty() && unit.clauses.last().key == ckey && continuesChain(row)) {
            unit.clauses.last().text += (row.newLine ? QStringLiteral("\n") : QString()) + row.text;
            continue;
        }
        const QString unique = unit.clauseAt.contains(ckey) ? ckey + u'#' + QString::number(unit.clauses.size()) : ckey;
        unit.clauseAt.insert(unique, unit.clauses.size());
        unit.clauses.append(Clause{unique, row.level, row.label, row.text});
    }
    return units;
}

bool sameClauseText(const QString &newer, const QString &older, const Moves &moves)
{
    return newer == older || newer == withMovedCitations(older, moves);
}

bool sameText(const Unit &newer, const Unit &older, const Moves &moves)
{
    if (newer.heading.has_value() != older.heading.has_value() || (newer.heading && newer.heading->text != older.heading->text))
        return false;
    if (newer.clauses.size() != older.clauses.size())
        return false;
    for (qsizetype i = 0; i < newer.clauses.size(); ++i)
        if (newer.clauses[i].key != older.clauses[i].key || !sameClauseText(newer.clauses[i].text, older.clauses[i].text, moves))
            return false;
    return true;
}

ComparisonLine wholeLine(const Clause &c, bool changed)
{
    return ComparisonLine{c.level, c.label, changed && !c.label.isEmpty(), c.text.isEmpty() ? MarkedText{} : MarkedText{{c.text, changed}}};
}

// A clause on both sides: each side its own text with the characters the other lacks marked.
std::pair<ComparisonLine, ComparisonLine> diffLines(const Clause &newer, const Clause &older)
{
    const CharacterDiff diff = CharacterDiff::of(older.text, newer.text);
    const bool moved = newer.label != older.label;
    return {ComparisonLine{newer.level, newer.label, moved && !newer.label.isEmpty(), markedSpans(newer.text, diff.newChanged)},
            ComparisonLine{older.level, older.label, moved && !older.label.isEmpty(), markedSpans(older.text, diff.oldChanged)}};
}

ComparisonCell wholeCell(const Unit &unit)
{
    ComparisonCell cell;
    if (unit.heading)
        cell.lines << wholeLine(*unit.heading, true);
    for (const Clause &c : unit.clauses)
        cell.lines << wholeLine(c, true);
    return cell;
}

ComparisonEntry addedEntry(const Unit &unit)
{
    ComparisonEntry entry{ChangeKind::Added, wholeCell(unit), {}};
    entry.older.placeholder = ComparisonTable::kAdded;
    return entry;
}

ComparisonEntry removedEntry(const Unit &unit)
{
    ComparisonEntry entry{ChangeKind::Removed, {}, wholeCell(unit)};
    entry.newer.placeholder = ComparisonTable::kRemoved;
    return entry;
}

// Both sides of a changed unit: the heading always, then the clauses that
// changed, came or went, each side in its own order.
ComparisonEntry changedEntry(const Unit &newer, const Unit &older, const Moves &moves)
{
    ComparisonEntry entry;
    if (newer.heading && older.heading) {
        auto [n, o] = diffLines(*newer.heading, *older.heading);
        entry.newer.lines << n;
        entry.older.lines << o;
    } else {
        if (newer.heading)
            entry.newer.lines << wholeLine(*newer.heading, true);
        if (older.heading)
            entry.older.lines << wholeLine(*older.heading, true);
    }
    for (const Clause &c : newer.clauses) {
        const auto other = older.clauseAt.constFind(c.key);
        if (other == older.clauseAt.cend())
            entry.newer.lines << wholeLine(c, true);
        else if (!sameClauseText(c.text, older.clauses[*other].text, moves))
            entry.newer.lines << diffLines(c, older.clauses[*other]).first;
    }
    for (const Clause &c : older.clauses) {
        const auto other = newer.clauseAt.constFind(c.key);
        if (other == newer.clauseAt.cend())
            entry.older.lines << wholeLine(c, true);
        else if (!sameClauseText(newer.clauses[*other].text, c.text, moves))
            entry.older.lines << diffLines(newer.clauses[*other], c).second;
    }
    return entry;
}

} // namespace

QString labelSeparator(const ComparisonLine &line)
{
    if (line.label.isEmpty() || (!line.text.isEmpty() && line.text.first().text.startsWith(u'（')))
        return QString();
    return QStringLiteral("　");
}

QString ComparisonEntry::remark() const
{
    if (kind == ChangeKind::Added)
        return ComparisonTable::kAdded;
    if (kind == ChangeKind::Removed)
        return ComparisonTable::kRemoved;
    for (const ComparisonLine &line : older.lines) {
        if (line.labelChanged)
            return ComparisonTable::kChanged;
        for (const MarkedSpan &span : line.text)
            if (span.changed)
                return ComparisonTable::kChanged;
    }
    return ComparisonTable::kExtended;
}

ComparisonTable compareVersions(const Version &older, const Version &newer)
{
    ComparisonTable table;
    table.documentName = newer.header.name;
    table.newer = newer.header;
    table.older = older.header;

    const QList<Unit> oldUnits = unitsOf(older.rows);
    const QList<Unit> newUnits = unitsOf(newer.rows);
    QHash<QString, qsizetype> oldAt;
    for (qsizetype i = 0; i < oldUnits.size(); ++i)
        oldAt.insert(oldUnits[i].key, i);
    QSet<QString> newKeys;
    Moves moves;
    for (const Unit &u : newUnits) {
        newKeys.insert(u.key);
        const auto found = oldAt.constFind(u.key);
        if (found != oldAt.cend() && u.heading && oldUnits[*found].heading && u.heading->label != oldUnits[*found].heading->label)
            moves.insert(oldUnits[*found].heading->label, u.heading->label);
    }

    // A removed unit stands where it stood: before the first kept unit that came after it.
    qsizetype swept = 0;
    const auto sweepRemovedUpTo = [&](qsizetype end) {
        for (; swept < end; ++swept)
            if (!newKeys.contains(oldUnits[swept].key))
                table.entries << removedEntry(oldUnits[swept]);
    };
    for (const Unit &unit : newUnits) {
        const auto found = oldAt.constFind(unit.key);
        if (found == oldAt.cend()) {
            table.entries << addedEntry(unit);
            continue;
        }
        sweepRemovedUpTo(*found);
        swept = qMax(swept, *found + 1);
        const Unit &before = oldUnits[*found];
        if (!sameText(unit, before, moves))
            table.entries << changedEntry(unit, before, moves);
        else if (unit.heading && before.heading && unit.heading->label != before.heading->label)
            table.renumbered << Renumbering{before.heading->label, unit.heading->label, unit.heading->text};
    }
    sweepRemovedUpTo(oldUnits.size());
    return table;
}

} // namespace normaris
