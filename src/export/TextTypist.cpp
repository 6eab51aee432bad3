#include "export/TextTypist.h"

namespace normaris {

QString TextTypist::Font::marks() const
{
    QStringList m;
    if (name != kMinchoFont)
        m << name;
    if (size != kBaseSize)
        m << QString::number(size) + QStringLiteral("pt");
    if (bold)
        m << QStringLiteral("bold");
    if (color == Color::Blue)
        m << QStringLiteral("blue");
    else if (color == Color::Red)
        m << QStringLiteral("red");
    if (doubleStrike)
        m << QStringLiteral("dstrike");
    return m.join(u' ');
}

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
        const QString marks = font.marks();
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
