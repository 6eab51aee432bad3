#include "ScriptedPrompt.h"

namespace normaris::test {

void ScriptedPrompt::message(Icon icon, const QString &title, const QString &text) { m_shown << Shown{false, false, icon, title, text}; }

bool ScriptedPrompt::question(const QString &title, const QString &text)
{
    m_shown << Shown{true, false, Icon::None, title, text};
    if (m_answers.isEmpty()) {
        ++m_unanswered;
        return false;
    }
    return m_answers.takeFirst();
}

bool ScriptedPrompt::questionNoByDefault(const QString &title, const QString &text)
{
    const bool answer = question(title, text);
    m_shown.last().noByDefault = true;
    return answer;
}

QStringList ScriptedPrompt::lines() const
{
    QStringList out;
    for (const Shown &s : m_shown)
        out << s.toString();
    return out;
}

} // namespace normaris::test
