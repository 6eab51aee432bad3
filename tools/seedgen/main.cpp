// normaris-seedgen SOURCE_FOLDER OUTPUT_FILE
// Checks the dictionary sources and writes the seed file. Every problem is printed
// as file:line: message, and any problem fails the build.

#include "seed/SeedWriter.h"
#include "base/Failure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: normaris-seedgen SOURCE_FOLDER OUTPUT_FILE\n");
        return 2;
    }
    QDir().mkpath(QFileInfo(args[2]).absolutePath());
    try {
        const auto errors = normaris::seed::generateSeed(args[1], args[2]);
        for (const auto &e : errors)
            std::fprintf(stderr, "%s/%s\n", qUtf8Printable(args[1]), qUtf8Printable(e.toString()));
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
