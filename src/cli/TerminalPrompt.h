#pragma once
// The CLI's Prompt: every box is one line "title: text" on stderr, and every
// question is answered yes only when the command line said --yes.

#include "base/Prompt.h"

#include <cstdio>

namespace normaris::cli {

class TerminalPrompt : public Prompt {
public:
    TerminalPrompt(bool answerYes, std::FILE *out = stderr) : m_yes(answerYes), m_out(out) {}
    void message(Icon icon, const QString &title, const QString &text) override;
    bool question(const QString &title, const QString &text) override;

private:
    void line(const QString &title, const QString &text);
    bool m_yes;
    std::FILE *m_out;
};

} // namespace normaris::cli
