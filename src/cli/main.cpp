// normaris-cli: the core of Normaris without windows, for automation and tests.

#include "base/AppState.h"
#include "base/RuntimeFolder.h"
#include "cli/Cli.h"

#include <QGuiApplication>

#include <cstring>
#include <memory>

int main(int argc, char *argv[])
{
    // A PDF is laid out with the platform's fonts, which only the GUI's application
    // object reaches. The command line shows no window, so it needs no screen: it
    // runs on the offscreen platform unless told otherwise.
    // The arguments as given: the GUI's application object takes some of them
    // (--style) for itself.
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    const bool pdf = std::any_of(argv, argv + argc, [](const char *arg) { return std::strcmp(arg, "--pdf") == 0; });
    normaris::settleRuntimeFolder();
    std::unique_ptr<QCoreApplication> app;
    if (pdf) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("normaris-cli"));
    const int code = normaris::cli::run(args, QCoreApplication::applicationDirPath(), stdout, stderr);
    // The company is given back while the database connections can still be closed.
    normaris::AppState::instance().reset();
    return code;
}
