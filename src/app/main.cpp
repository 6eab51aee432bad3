// normaris: the desktop program.
//
//   normaris [--root DIR]
//
// The program folder (AppPath) is the executable's folder unless --root names another;
// a root without data is first laid out from the program's own seed file and help pages.

#include "base/RuntimeFolder.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/ErrorLog.h"
#include "base/Failure.h"
#include "shell/ProgramFolder.h"
#include "shell/SingleInstance.h"
#include "shell/forms/DesktopSetup.h"
#include "shell/forms/FormHelpers.h"
#include "shell/forms/GuardedApplication.h"
#include "app/forms/frmMain01.h"
#include "app/forms/frmSplash1.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

using namespace normaris;

int main(int argc, char *argv[])
{
    settleRuntimeFolder();
    GuardedApplication app(argc, argv);
    setUpDesktopProgram(app);

    SingleInstance instance;
    if (!instance.isFirst()) {
        uiPrompt().information(QStringLiteral("二重起動"), QStringLiteral("すでに起動されています。"));
        return 0;
    }

    QCommandLineParser parser;
    QCommandLineOption rootOption(QStringLiteral("root"), QStringLiteral("program folder (AppPath)"), QStringLiteral("DIR"));
    parser.addOption(rootOption);
    QCommandLineOption storeOption(QStringLiteral("store"),
                                   QStringLiteral("the office's PostgreSQL server (libpq connection string or URI)"),
                                   QStringLiteral("CONNINFO"));
    parser.addOption(storeOption);
    parser.addHelpOption();
    parser.process(app);

    const QString programDir = QApplication::applicationDirPath();
    const QString root = QDir(parser.isSet(rootOption) ? parser.value(rootOption) : programDir).absolutePath();
    try {
        prepareProgramFolder(root, programDir);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
        return 2;
    }
    AppState::instance().AppPath = root;
    AppState::instance().Store = parser.isSet(storeOption) ? parser.value(storeOption) : qEnvironmentVariable("NORMARIS_STORE");
    ErrorLog::setFolder(root);
    ErrorLog::setCommand(QStringLiteral("normaris"));
    QDir::setCurrent(root);

    BusyCursor::setHandler([](bool busy) {
        if (busy)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    });

    {
        frmSplash1 splash;
        splash.showFor(qEnvironmentVariableIsSet("NORMARIS_NO_SPLASH") ? 0 : 2000);
    }

    int code = 0;
    {
        frmMain01 main;
        main.show();
        code = app.exec();
    }
    // The company is given back while the database connections can still be closed.
    AppState::instance().reset();
    return code;
}
