#pragma once
// Every message the user sees, and every yes/no question, goes through a Prompt.
// The desktop program shows message boxes, the CLI writes to the terminal, and
// tests script the answers and check the exact titles and texts.

#include <QString>

namespace normaris {

// The program's own name: the title of boxes that report a failure's own text.
inline const QString kProgramTitle = QStringLiteral("ハルモニアワークス【ノルマリス】");

class Prompt {
public:
    enum class Icon { None, Information, Warning, Error };

    virtual ~Prompt() = default;

    virtual void message(Icon icon, const QString &title, const QString &text) = 0;
    // A question with yes and no buttons; true means yes.
    virtual bool question(const QString &title, const QString &text) = 0;

    void plain(const QString &title, const QString &text) { message(Icon::None, title, text); }
    void information(const QString &title, const QString &text) { message(Icon::Information, title, text); }
    void warning(const QString &title, const QString &text) { message(Icon::Warning, title, text); }
    void error(const QString &title, const QString &text) { message(Icon::Error, title, text); }
    // A failure that has no message of its own: its description in a plain box.
    void failure(const QString &description) { plain(kProgramTitle, description); }
};

// The result of a user-facing step: what the CLI turns into its exit status.
enum class Outcome {
    Done,    // the step did what was asked
    Stopped, // a check refused the input, or the user answered no
    Failed,  // something went wrong; the user has been told
};

} // namespace normaris
