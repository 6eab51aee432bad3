#pragma once
// normaris-cli [--root DIR] [--yes] COMMAND ...
//
// Exit status: 0 done, 1 stopped by a check or answered no, 2 bad usage or a failure.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTextStream>
#include <functional>

namespace normaris::cli {

enum ExitCode { ExitDone = 0, ExitStopped = 1, ExitFailure = 2 };

int exitCodeOf(Outcome outcome);

// The words and options of one command line, after the global options.
struct Arguments {
    QStringList words;               // what follows the command's own words
    QHash<QString, QString> options; // --name value
    QSet<QString> flags;             // --name alone

    QString option(const QString &name) const { return options.value(name); }
    bool has(const QString &name) const { return options.contains(name) || flags.contains(name); }
};

struct Context {
    Arguments args;
    DataLayout layout;
    Prompt &prompt;
    QTextStream &out;
};

struct Command {
    QStringList path;     // e.g. {"company", "new"}
    QString usage;        // the rest of the line, e.g. "NAME [--from SOURCE]"
    int minWords = 0;     // positional words after the path
    int maxWords = 0;
    std::function<int(Context &)> run;
};

// A command that works on the company named by --company, opened without a question
// (as `cn`); with needsDocument, --doc must name a document of the dictionary.
Command companyCommand(QStringList path, QString usage, int minWords, int maxWords, std::function<int(Context &)> run,
                       bool needsDocument);

// Every command, each subsystem adding its own.
QList<Command> allCommands();
void addCompanyCommands(QList<Command> &commands);
void addSettingsCommands(QList<Command> &commands);
void addComposeCommands(QList<Command> &commands);
void addExportCommands(QList<Command> &commands);
void addVersionCommands(QList<Command> &commands);

// Runs one command line (without the program name). Output goes to out, boxes to err.
int run(const QStringList &args, const QString &programDir, std::FILE *out, std::FILE *err);

} // namespace normaris::cli
