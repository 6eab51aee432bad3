#include "versions/VersionRecorder.h"

#include "rulebase/CompositionRow.h"

namespace normaris {

namespace {

// The blanks that lay a label out: half- and full-width.
bool isLayoutBlank(QChar c) { return c == u' ' || c == u'　'; }

QString trimBlanks(const QString &text)
{
    qsizetype from = 0, to = text.size();
    while (from < to && isLayoutBlank(text[from]))
        ++from;
    while (to > from && isLayoutBlank(text[to - 1]))
        --to;
    return text.mid(from, to - from);
}

} // namespace

void VersionRecorder::typeText(const QString &text)
{
    if (!m_pending || m_color == Color::Red || text.isEmpty())
        return;
    m_pending->printed += text;
}

void VersionRecorder::typeParagraph()
{
    if (!m_pending)
        return;
    // A break before the row's first text only lays the row out.
    if (!m_pending->printed.isEmpty())
        m_pending->printed += u'\n';
}

void VersionRecorder::startRow(const CompositionRow &row)
{
    finishRow();
    Pending pending;
    pending.row.level = row.level;
    pending.row.codes = row.codes;
    pending.row.segment = row.join == u"0" ? QString() : row.join;
    pending.row.newLine = row.lineBreak;
    pending.ownText = row.text;
    m_pending = pending;
}

void VersionRecorder::endRows() { finishRow(); }

void VersionRecorder::finishRow()
{
    if (!m_pending)
        return;
    Pending pending = std::move(*m_pending);
    m_pending.reset();
    while (pending.printed.endsWith(u'\n'))
        pending.printed.chop(1);
    if (pending.printed.isEmpty())
        return;
    auto [label, text] = splitLabel(pending.printed, pending.ownText);
    pending.row.label = label;
    pending.row.text = text;
    m_rows.append(pending.row);
}

std::pair<QString, QString> VersionRecorder::splitLabel(const QString &printed, const QString &ownText)
{
    const qsizetype at = ownText.isEmpty() ? -1 : printed.indexOf(ownText);
    if (at <= 0)
        return {QString(), trimBlanks(printed)};
    QString label = trimBlanks(printed.left(at));
    // A heading's text stands in brackets after its number: the bracket is text.
    if (label.endsWith(u'（'))
        label.chop(1);
    const qsizetype labelEnd = printed.indexOf(label) + label.size();
    QString text = printed.mid(labelEnd);
    while (!text.isEmpty() && isLayoutBlank(text.front()))
        text.remove(0, 1);
    return {label, text};
}

} // namespace normaris
