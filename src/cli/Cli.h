#pragma once
// normaris-cli [--root DIR] [--yes] COMMAND ...
//
// Exit status: 0 done, 1 stopped by a check or answered no, 2 bad usage or a failure.
//
// Every command declares its words, options and arguments in one Command row; the
// frame parses the line against that row and refuses, with the command's usage and
// status 2, an option it does not declare, an option without its value, a value
// outside the option's choices, a missing required option and a stray argument.

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

// One option of a command: "--name VALUE", or "--name" alone when value is empty.
struct Option {
    QString name;          // with its dashes: "--company"
    QString value;         // the value's name in the usage: "NAME"; empty for a flag
    bool required = false; // refused as bad usage when missing
    QStringList choices;   // when not empty, the only values accepted
};

Option required(const QString &name, const QString &value, const QStringList &choices = {});
Option optional(const QString &name, const QString &value = {}, const QStringList &choices = {});

// The prose styles, as every option naming one accepts them.
const QStringList &styleChoices();
Option requiredStyle();
Option optionalStyle();

// The words and options of one command line, after the command's own words.
struct Arguments {
    QStringList words;                 // the command's arguments
    QHash<QString, QString> options;   // --name value
    QSet<QString> flags;               // --name alone
    QHash<QString, QStringList> lists; // every value of an option given more than once

    QStringList values(const QString &name) const { return lists.value(name); }
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
    QStringList path;      // e.g. {"company", "new"}
    QList<Option> options; // what the command accepts besides --root and --yes
    QString arguments;     // the arguments in the usage, e.g. "NAME"
    int minArguments = 0;
    int maxArguments = 0;
    std::function<int(Context &)> run;

    QString usage() const; // "company new [--from SOURCE] NAME"
};

// A command that works on the company named by --company, opened without a question
// (as `cn`); with needsDocument, it also requires --doc, which must name a document of
// the dictionary.
Command companyCommand(QStringList path, QList<Option> options, QString arguments, int minArguments, int maxArguments,
                       std::function<int(Context &)> run, bool needsDocument);

// Whether a PDF can be laid out: its fonts come from the platform, and main() starts
// the GUI's application object (on the offscreen platform) when --pdf is given. Says
// why not, and answers false, when there is none.
bool canLayOutPdf(Context &c);
// A command that writes a .docx (--out), a PDF (--pdf) or both: at least one must be
// given, and a PDF must be possible. Says why not, and answers false.
bool checkDocumentOutputs(Context &c, const QString &docx, const QString &pdf);

// Every command, each subsystem adding its own.
QList<Command> allCommands();
void addCompanyCommands(QList<Command> &commands);
void addSettingsCommands(QList<Command> &commands);
void addComposeCommands(QList<Command> &commands);
void addExportCommands(QList<Command> &commands);
void addDictCommands(QList<Command> &commands);
void addImportCommands(QList<Command> &commands);
void addVersionCommands(QList<Command> &commands);
void addCheckCommands(QList<Command> &commands);
void addUpdateCommands(QList<Command> &commands);

// Runs one command line (without the program name). Output and help go to out; boxes
// and usage errors to err.
int run(const QStringList &args, const QString &programDir, std::FILE *out, std::FILE *err);

} // namespace normaris::cli
