#include "versions/ComparisonText.h"

#include "rulebase/JapaneseDate.h"

namespace normaris {

namespace {

QString braces(const QString &text, bool changed) { return changed ? QStringLiteral("{u:") + text + u'}' : text; }

// 項 and the levels above it stand at the margin; each level below one blank more.
int indentOf(Level level) { return isClauseLevel(level) ? clauseDepth(level) : 0; }

} // namespace

QString effectiveCaption(const VersionHeader &version)
{
    if (!version.effective.isValid())
        return QStringLiteral("施行日なし");
    return formatEraDate(version.effective) + QStringLiteral("施行");
}

QStringList cellLines(const ComparisonCell &cell, QString (*mark)(const QString &text, bool changed))
{
    if (!cell.placeholder.isEmpty())
        return {cell.placeholder};
    QStringList lines;
    for (const ComparisonLine &line : cell.lines) {
        const QString indent(indentOf(line.level), u'　');
        QString text = mark(line.label, line.labelChanged) + labelSeparator(line);
        for (const MarkedSpan &span : line.text) {
            // A span may run over a line end: each piece is marked on its own line.
            const QStringList pieces = span.text.split(u'\n');
            for (qsizetype i = 0; i < pieces.size(); ++i) {
                if (i > 0) {
                    lines << indent + text;
                    text.clear();
                }
                if (!pieces[i].isEmpty())
                    text += mark(pieces[i], span.changed);
            }
        }
        lines << indent + text;
    }
    return lines;
}

QString comparisonText(const ComparisonTable &table)
{
    QStringList out;
    out << table.title();
    if (!table.company.isEmpty())
        out << table.company;
    out << QStringLiteral("%1：%2（版 %3）　%4：%5（版 %6）")
               .arg(ComparisonTable::kNewColumn, effectiveCaption(table.newer), QString::number(table.newer.id),
                    ComparisonTable::kOldColumn, effectiveCaption(table.older), QString::number(table.older.id));
    for (qsizetype i = 0; i < table.entries.size(); ++i) {
        const ComparisonEntry &entry = table.entries[i];
        out << QString() << QStringLiteral("―― %1 ――").arg(i + 1);
        out << u'【' + ComparisonTable::kNewColumn + u'】';
        out << cellLines(entry.newer, braces);
        out << u'【' + ComparisonTable::kOldColumn + u'】';
        out << cellLines(entry.older, braces);
        if (table.remarks)
            out << u'【' + ComparisonTable::kRemarksColumn + u'】' << entry.remark();
    }
    out << QString() << ComparisonTable::kClosingNote;
    if (!table.renumbered.isEmpty()) {
        out << QString() << ComparisonTable::kRenumberedHeading;
        for (const Renumbering &r : table.renumbered)
            out << r.line();
    }
    return out.join(u'\n') + u'\n';
}

} // namespace normaris
