#include "fileformats/TextTypist.h"

namespace normaris {

namespace {

// What sets a run's font apart from the base font, as the rendering marks it.
QString marksOf(const TypedFont &font)
{
    QStringList m;
    if (font.name != Typist::kMinchoFont)
        m << font.name;
    if (font.size != Typist::kBaseSize)
        m << QString::number(font.size) + QStringLiteral("pt");
    if (font.bold)
        m << QStringLiteral("bold");
    if (font.color == Typist::Color::Blue)
        m << QStringLiteral("blue");
    else if (font.color == Typist::Color::Red)
        m << QStringLiteral("red");
    if (font.doubleStrike)
        m << QStringLiteral("dstrike");
    return m.join(u' ');
}

} // namespace

void TextTypist::typeText(const QString &text)
{
    if (text.isEmpty())
        return;
    if (!m_runs.isEmpty() && m_runs.last().first == m_font)
        m_runs.last().second += text;
    else
        m_runs.append({m_font, text});
}

QString TextTypist::currentLine() const
{
    QString line;
    if (m_alignment == Alignment::Center)
        line += QStringLiteral("<C>");
    else if (m_alignment == Alignment::Right)
        line += QStringLiteral("<R>");
    if (m_indent != 0)
        line += QStringLiteral("<i%1>").arg(m_indent);
    for (const auto &[font, text] : m_runs) {
        const QString marks = marksOf(font);
        line += marks.isEmpty() ? text : u'{' + marks + u':' + text + u'}';
    }
    return line;
}

void TextTypist::typeParagraph()
{
    m_lines << currentLine();
    m_runs.clear();
}

void TextTypist::insertPageBreak()
{
    if (!m_runs.isEmpty())
        typeParagraph();
    m_lines << QStringLiteral("<改ページ>");
}

QStringList TextTypist::lines() const
{
    QStringList all = m_lines;
    if (!m_runs.isEmpty())
        all << currentLine();
    return all;
}

} // namespace normaris
