#include "cli/Cli.h"

#include "cli/TerminalPrompt.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"
#include "base/Failure.h"
#include "shell/ProgramFolder.h"

#include <QDir>

namespace normaris::cli {

namespace {

// Options that stand alone; every other option takes the next word as its value.
const QSet<QString> kFlags = {QStringLiteral("--yes"), QStringLiteral("--selected"), QStringLiteral("--unselected")};

void printUsage(std::FILE *err, const QList<Command> &commands)
{
    std::fprintf(err, "usage: normaris-cli [--root DIR] [--yes] COMMAND ...\ncommands:\n");
    for (const Command &c : commands)
        std::fprintf(err, "  %s %s\n", qUtf8Printable(c.path.join(u' ')), qUtf8Printable(c.usage));
}

// Splits the line into words and options. False on an option without its value.
bool splitArguments(const QStringList &args, QStringList &words, Arguments &parsed)
{
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (a.startsWith(QStringLiteral("--"))) {
            if (kFlags.contains(a)) {
                parsed.flags.insert(a);
            } else if (i + 1 < args.size()) {
                parsed.options.insert(a, args[++i]);
            } else {
                return false;
            }
        } else {
            words << a;
        }
    }
    return true;
}

} // namespace

int exitCodeOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done: return ExitDone;
    case Outcome::Stopped: return ExitStopped;
    case Outcome::Failed: break;
    }
    return ExitFailure;
}

Command companyCommand(QStringList path, QString usage, int minWords, int maxWords, std::function<int(Context &)> run,
                       bool needsDocument)
{
    return Command{std::move(path), QStringLiteral("--company NAME ") + usage, minWords, maxWords,
                   [run = std::move(run), needsDocument](Context &c) {
                       if (!c.args.has(QStringLiteral("--company"))) {
                           c.prompt.failure(QStringLiteral("--company で会社を指定してください。"));
                           return int(ExitFailure);
                       }
                       const Outcome opened = CompanyFiles(c.layout, c.prompt).open(c.args.option(QStringLiteral("--company")));
                       if (opened != Outcome::Done)
                           return exitCodeOf(opened);
                       const QString document = c.args.option(QStringLiteral("--doc"));
                       if (needsDocument
                           && scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = ?"), {document}).toInt() == 0) {
                           c.prompt.plain(QStringLiteral("データ指定の確認"), QStringLiteral("規程「%1」はありません。").arg(document));
                           return int(ExitStopped);
                       }
                       return run(c);
                   }};
}

QList<Command> allCommands()
{
    QList<Command> commands;
    addCompanyCommands(commands);
    addSettingsCommands(commands);
    addComposeCommands(commands);
    addExportCommands(commands);
    addVersionCommands(commands);
    return commands;
}

int run(const QStringList &args, const QString &programDir, std::FILE *out, std::FILE *err)
{
    const QList<Command> commands = allCommands();
    QStringList words;
    Arguments parsed;
    if (!splitArguments(args, words, parsed)) {
        printUsage(err, commands);
        return ExitFailure;
    }
    const Command *command = nullptr;
    for (const Command &c : commands) {
        if (words.mid(0, c.path.size()) == c.path) {
            command = &c;
            break;
        }
    }
    if (!command) {
        printUsage(err, commands);
        return ExitFailure;
    }
    parsed.words = words.mid(command->path.size());
    if (parsed.words.size() < command->minWords || parsed.words.size() > command->maxWords) {
        std::fprintf(err, "usage: normaris-cli %s %s\n", qUtf8Printable(command->path.join(u' ')),
                     qUtf8Printable(command->usage));
        return ExitFailure;
    }

    TerminalPrompt prompt(parsed.flags.contains(QStringLiteral("--yes")), err);
    const QString root = QDir(parsed.options.value(QStringLiteral("--root"), programDir)).absolutePath();
    parsed.options.remove(QStringLiteral("--root"));
    try {
        prepareProgramFolder(root, programDir);
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return ExitFailure;
    }
    AppState::instance().AppPath = root;

    QTextStream stream(out);
    Context context{parsed, DataLayout{root}, prompt, stream};
    try {
        return command->run(context);
    } catch (const std::exception &e) {
        prompt.failure(QString::fromUtf8(e.what()));
        return ExitFailure;
    }
}

} // namespace normaris::cli
