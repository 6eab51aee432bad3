// normaris-seedgen [--record] SOURCE_FOLDER OUTPUT_FILE
// Checks the dictionary sources and writes the seed file, then checks its release
// against data/releases/ (with --record, first records a release not recorded yet).
// Every problem is printed as file:line: message, and any problem fails the build.

#include "seed/SeedRelease.h"
#include "seed/SeedWriter.h"
#include "base/Failure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool record = !args.isEmpty() && args.first() == u"--record";
    if (record)
        args.removeFirst();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: normaris-seedgen [--record] SOURCE_FOLDER OUTPUT_FILE\n");
        return 2;
    }
    QDir().mkpath(QFileInfo(args[1]).absolutePath());
    try {
        auto errors = normaris::seed::generateSeed(args[0], args[1]);
        if (errors.isEmpty()) {
            errors = normaris::seed::settleRelease(args[0], args[1],
                                                   record ? normaris::seed::ReleaseMode::Record : normaris::seed::ReleaseMode::Check);
            // A seed whose release does not hold is not left for the next build to take as done.
            if (!errors.isEmpty())
                QFile::remove(args[1]);
        }
        for (const auto &e : errors)
            std::fprintf(stderr, "%s/%s\n", qUtf8Printable(args[0]), qUtf8Printable(e.toString()));
        if (!errors.isEmpty()) {
            std::fprintf(stderr, "seed file not written: %lld problem(s)\n", static_cast<long long>(errors.size()));
            return 1;
        }
    } catch (const normaris::Failure &f) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(f.text()));
        return 1;
    }
    return 0;
}
