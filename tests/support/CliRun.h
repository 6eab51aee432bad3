#pragma once
// Runs the command line in the test's process, as a user's shell would run the
// program, and keeps its status and what it printed. For suites that link the CLI.

#include "TestServer.h"
#include "base/AppState.h"
#include "base/DataLayout.h"
#include "cli/Cli.h"

#include <QByteArray>
#include <QHash>
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

// The store of the program folder root: none (the Data folder), or in the run against
// the server a database of its own on the test's server, made at the root's first use.
inline QString storeOfRoot(const QString &root)
{
    if (!test::TestServer::requested())
        return {};
    static QHash<QString, QString> stores;
    auto found = stores.find(root);
    if (found == stores.end())
        found = stores.insert(root, test::TestServer::newDatabase());
    return *found;
}

// `normaris-cli --root root args…`, from a fresh application state; on the root's store.
inline CliRun runCli(const QString &root, const QStringList &args)
{
    AppState::instance().reset();
    std::FILE *out = std::tmpfile();
    std::FILE *err = std::tmpfile();
    CliRun r;
    QStringList all{QStringLiteral("--root"), root};
    if (const QString store = storeOfRoot(root); !store.isEmpty())
        all << QStringLiteral("--store") << store;
    r.status = cli::run(all + args, QStringLiteral(NORMARIS_APP_DIR), out, err);
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
