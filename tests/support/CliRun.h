#pragma once
// Runs the command line in the test's process, as a user's shell would run the
// program, and keeps its status and what it printed. For suites that link the CLI.

#include "base/AppState.h"
#include "base/DataLayout.h"
#include "cli/Cli.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdio>

namespace normaris {

struct CliRun {
    int status = 0;
    QString out;
    QString err;
};

// What was written to f, which is then closed.
inline QString readAllAndClose(std::FILE *f)
{
    std::rewind(f);
    QByteArray bytes;
    char buffer[4096];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0)
        bytes.append(buffer, qsizetype(n));
    std::fclose(f);
    return QString::fromUtf8(bytes);
}

// `normaris-cli --root root args…`, from a fresh application state.
inline CliRun runCli(const QString &root, const QStringList &args)
{
    AppState::instance().reset();
    std::FILE *out = std::tmpfile();
    std::FILE *err = std::tmpfile();
    CliRun r;
    r.status = cli::run(QStringList{QStringLiteral("--root"), root} + args, QStringLiteral(NORMARIS_APP_DIR), out, err);
    r.out = readAllAndClose(out);
    r.err = readAllAndClose(err);
    return r;
}

// The same on the layout's program folder and, when it names one, its store.
inline CliRun runCli(const DataLayout &layout, const QStringList &args)
{
    const QStringList store = layout.store.isEmpty() ? QStringList() : QStringList{QStringLiteral("--store"), layout.store};
    return runCli(layout.appPath, store + args);
}

} // namespace normaris
