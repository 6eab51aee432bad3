#include "cli/TerminalPrompt.h"

namespace normaris::cli {

void TerminalPrompt::line(const QString &title, const QString &text)
{
    QString oneLine = text;
    oneLine.replace(u'\n', u' ');
    std::fprintf(m_out, "%s: %s\n", qUtf8Printable(title), qUtf8Printable(oneLine));
    std::fflush(m_out);
}

void TerminalPrompt::message(Icon, const QString &title, const QString &text) { line(title, text); }

bool TerminalPrompt::question(const QString &title, const QString &text)
{
    line(title, text);
    return m_yes;
}

} // namespace normaris::cli
