#pragma once
// What the benchmarks share: a prompt that answers yes and keeps quiet, a stopwatch,
// and a company made from the seed in a program folder of its own, open as `cn` with
// its basic settings filled in.

#include "base/AppState.h"
#include "base/Prompt.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
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

// The store a benchmark's company lives in: the Data folder, or with `--server` among the
// arguments the office's server that NORMARIS_STORE names (a company ベンチ already there
// is replaced, and removed at the end).
inline QString benchStore(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]) == "--server")
            return qEnvironmentVariable("NORMARIS_STORE");
    }
    return {};
}

// The company ベンチ in a temporary program folder, open as `cn`.
class BenchCompany {
public:
    explicit BenchCompany(QString store = {}) : m_store(std::move(store)) {}
    // The company is closed, and its lock given back, before its folder goes (or,
    // on the server, before it is removed).
    ~BenchCompany()
    {
        AppState::instance().reset();
        if (!m_store.isEmpty())
            CompanyFiles(layout(), prompt).remove(kName);
    }
    BenchCompany(const BenchCompany &) = delete;
    BenchCompany &operator=(const BenchCompany &) = delete;

    // False (after saying why on stderr) when the company could not be made.
    bool open()
    {
        const QString root = m_dir.path() + QStringLiteral("/root");
        prepareProgramFolder(root, QStringLiteral(NORMARIS_APP_DIR));
        AppState::instance().AppPath = root;
        if (!m_store.isEmpty() && companiesOf(layout()).contains(kName))
            CompanyFiles(layout(), prompt).remove(kName);
        if (CompanyFiles(layout(), prompt).createFromSeed(kName) != Outcome::Done
            || CompanyFiles(layout(), prompt).open(kName) != Outcome::Done) {
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
    // Where the company lives, for the figures: "folder" or "server".
    QString storeName() const { return m_store.isEmpty() ? QStringLiteral("folder") : QStringLiteral("server"); }

    QuietPrompt prompt;

private:
    inline static const QString kName = QStringLiteral("ベンチ");
    DataLayout layout() const { return DataLayout{m_dir.path() + QStringLiteral("/root"), m_store}; }

    QTemporaryDir m_dir;
    QString m_store;
};

} // namespace normaris::bench
