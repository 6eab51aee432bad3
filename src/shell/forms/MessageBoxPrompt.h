#pragma once
// The desktop program's Prompt: a message box per message, with the pointer
// shown normally while the box waits for the user.

#include "base/Prompt.h"

namespace normaris {

class MessageBoxPrompt : public Prompt {
public:
    void message(Icon icon, const QString &title, const QString &text) override;
    bool question(const QString &title, const QString &text) override;
    bool questionNoByDefault(const QString &title, const QString &text) override;

private:
    bool ask(const QString &title, const QString &text, bool yesByDefault);
};

} // namespace normaris
