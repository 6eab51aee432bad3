#pragma once
// A Prompt for tests: records every box and question, and answers questions from
// a script. A question that the script did not expect is answered no and recorded,
// so that the test sees it.

#include "base/Prompt.h"

#include <QList>
#include <QStringList>

namespace normaris::test {

struct Shown {
    bool question = false;
    Prompt::Icon icon = Prompt::Icon::None;
    QString title;
    QString text;
    QString toString() const { return title + QStringLiteral(": ") + text; }
};

class ScriptedPrompt : public Prompt {
public:
    // Answers for the coming questions, in order.
    void answer(std::initializer_list<bool> answers) { m_answers += QList<bool>(answers); }

    void message(Icon icon, const QString &title, const QString &text) override;
    bool question(const QString &title, const QString &text) override;

    const QList<Shown> &shown() const { return m_shown; }
    // Every box and question as "title: text", in order.
    QStringList lines() const;
    int unansweredQuestions() const { return m_unanswered; }
    int answersLeft() const { return int(m_answers.size()); }
    void clear()
    {
        m_shown.clear();
        m_answers.clear();
        m_unanswered = 0;
    }

private:
    QList<Shown> m_shown;
    QList<bool> m_answers;
    int m_unanswered = 0;
};

} // namespace normaris::test
