// normaris-cli: the core of Normaris without windows, for automation and tests.

#include "cli/Cli.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("normaris-cli"));
    return normaris::cli::run(app.arguments().mid(1), QCoreApplication::applicationDirPath(), stdout, stderr);
}
