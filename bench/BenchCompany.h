#pragma once
// What the benchmarks share: a prompt that answers yes and keeps quiet, a stopwatch,
// and a company made from the seed in a program folder of its own, open as `cn` with
// its basic settings filled in.

#include "base/AppState.h"
#include "base/Prompt.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "shell/ProgramFolder.h"

#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

namespace normaris::bench {

// Answers every question yes; remembers the last message that is not a success.
class QuietPrompt : public Prompt {
public:
    void message(Icon, const QString &title, const QString &text) override
    {
        if (title != u"処理完了")
            ++m_messages, m_last = title + QStringLiteral(": ") + text;
    }
    bool question(const QString &, const QString &) override { return true; }
    int m_messages = 0;
    QString m_last;
};

// The milliseconds a step takes.
inline double timed(const std::function<void()> &step)
{
    QElapsedTimer timer;
    timer.start();
    step();
    return double(timer.nsecsElapsed()) / 1e6;
}

inline const QString kStyle = QStringLiteral("1");

// The company ベンチ in a temporary program folder, open as `cn`.
class BenchCompany {
public:
    BenchCompany() = default;
    // The company is closed, and its lock given back, before its folder goes.
    ~BenchCompany() { AppState::instance().reset(); }
    BenchCompany(const BenchCompany &) = delete;
    BenchCompany &operator=(const BenchCompany &) = delete;

    // False (after saying why on stderr) when the company could not be made.
    bool open()
    {
        const QString root = m_dir.path() + QStringLiteral("/root");
        prepareProgramFolder(root, QStringLiteral(NORMARIS_APP_DIR));
        AppState::instance().AppPath = root;
        if (CompanyFiles(DataLayout{root}, prompt).createFromSeed(QStringLiteral("ベンチ")) != Outcome::Done
            || CompanyFiles(DataLayout{root}, prompt).open(QStringLiteral("ベンチ")) != Outcome::Done) {
            std::fprintf(stderr, "cannot make the company: %s\n", qUtf8Printable(prompt.m_last));
            return false;
        }
        BasicSettings settings(db());
        QStringList values = settings.load();
        values[0] = QStringLiteral("株式会社ベンチ");
        settings.save(values, QStringLiteral("2"));
        return true;
    }
    QSqlDatabase db() const { return AppState::cn(); }
    QString folder() const { return m_dir.path(); }

    QuietPrompt prompt;

private:
    QTemporaryDir m_dir;
};

} // namespace normaris::bench
