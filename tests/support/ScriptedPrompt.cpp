#include "ScriptedPrompt.h"

namespace normaris::test {

void ScriptedPrompt::message(Icon icon, const QString &title, const QString &text) { m_shown << Shown{false, icon, title, text}; }

bool ScriptedPrompt::question(const QString &title, const QString &text)
{
    m_shown << Shown{true, Icon::None, title, text};
    if (m_answers.isEmpty()) {
        ++m_unanswered;
        return false;
    }
    return m_answers.takeFirst();
}

QStringList ScriptedPrompt::lines() const
{
    QStringList out;
    for (const Shown &s : m_shown)
        out << s.toString();
    return out;
}

} // namespace normaris::test
