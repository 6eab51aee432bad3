#include "cli/Cli.h"

#include "cli/TerminalPrompt.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/ErrorLog.h"
#include "base/AppState.h"
#include "base/Failure.h"
#include "shell/ProgramFolder.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QDir>

namespace normaris::cli {

namespace {

const QString kRoot = QStringLiteral("--root");
const QString kStore = QStringLiteral("--store");
const QString kYes = QStringLiteral("--yes");
const QString kGlobalUsage = QStringLiteral("normaris-cli [--root DIR] [--store CONNINFO] [--yes]");

// The options every command line may carry, before the command or among its options.
const QList<Option> &globalOptions()
{
    static const QList<Option> options = {optional(kRoot, QStringLiteral("DIR")), optional(kStore, QStringLiteral("CONNINFO")),
                                          optional(kYes)};
    return options;
}

bool isHelp(const QString &word) { return word == u"--help" || word == u"-h"; }

void print(std::FILE *to, const QString &text) { std::fputs(qUtf8Printable(text), to); }

QString commandList(const QList<Command> &commands)
{
    QString text = QStringLiteral("usage: %1 COMMAND ...\n       %1 [COMMAND] --help\ncommands:\n").arg(kGlobalUsage);
    for (const Command &c : commands)
        text += QStringLiteral("  ") + c.usage() + u'\n';
    return text;
}

QString commandUsage(const Command &command) { return QStringLiteral("usage: %1 %2\n").arg(kGlobalUsage, command.usage()); }

// The command whose words begin the line, the longest when several do.
const Command *findCommand(const QList<Command> &commands, const QStringList &words)
{
    const Command *found = nullptr;
    for (const Command &c : commands) {
        if (words.mid(0, c.path.size()) == c.path && (!found || c.path.size() > found->path.size()))
            found = &c;
    }
    return found;
}

QCommandLineOption parserOption(const Option &o)
{
    return o.value.isEmpty() ? QCommandLineOption(o.name.mid(2)) : QCommandLineOption(o.name.mid(2), QString(), o.value);
}

// Parses what follows the command's words against its declaration. An empty error is success.
QString parseCommandLine(const Command &command, const QStringList &rest, Arguments &parsed, bool &help)
{
    QCommandLineParser parser;
    const QCommandLineOption helpOption(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    parser.addOption(helpOption);
    const QList<Option> options = globalOptions() + command.options;
    for (const Option &o : options)
        parser.addOption(parserOption(o));
    if (!parser.parse(QStringList{QStringLiteral("normaris-cli")} + rest))
        return parser.errorText();
    help = parser.isSet(helpOption);
    if (help)
        return {};
    for (const Option &o : options) {
        const QString name = o.name.mid(2);
        if (!parser.isSet(name)) {
            if (o.required)
                return QStringLiteral("%1 is required").arg(o.name);
            continue;
        }
        if (o.value.isEmpty()) {
            parsed.flags.insert(o.name);
            continue;
        }
        const QString value = parser.value(name);
        if (!o.choices.isEmpty() && !o.choices.contains(value))
            return QStringLiteral("%1 takes %2, not '%3'").arg(o.name, o.choices.join(u'|'), value);
        parsed.options.insert(o.name, value);
        parsed.lists.insert(o.name, parser.values(name));
    }
    parsed.words = parser.positionalArguments();
    if (parsed.words.size() > command.maxArguments)
        return QStringLiteral("unexpected argument '%1'").arg(parsed.words.value(command.maxArguments));
    if (parsed.words.size() < command.minArguments)
        return QStringLiteral("missing %1").arg(command.arguments);
    return {};
}

int badUsage(std::FILE *err, const QString &why, const QString &usage)
{
    if (!why.isEmpty())
        print(err, QStringLiteral("normaris-cli: ") + why + u'\n');
    print(err, usage);
    return ExitFailure;
}

int runCommand(const Command &command, const Arguments &parsed, const QString &programDir, std::FILE *out, std::FILE *err)
{
    TerminalPrompt prompt(parsed.flags.contains(kYes), err);
    const QString root = QDir(parsed.options.value(kRoot, programDir)).absolutePath();
    try {
        prepareProgramFolder(root, programDir);
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return ExitFailure;
    }
    AppState::instance().AppPath = root;
    // The server of the office when the line or the environment names one; else Data/.
    AppState::instance().Store = parsed.options.value(kStore, qEnvironmentVariable("NORMARIS_STORE"));
    ErrorLog::setFolder(root);

    QTextStream stream(out);
    Context context{parsed, AppState::instance().layout(), prompt, stream};
    context.args.options.remove(kRoot);
    context.args.options.remove(kStore);
    try {
        return command.run(context);
    } catch (const std::exception &e) {
        prompt.failure(QString::fromUtf8(e.what()));
        return ExitFailure;
    }
}

} // namespace

Option required(const QString &name, const QString &value, const QStringList &choices) { return Option{name, value, true, choices}; }
Option optional(const QString &name, const QString &value, const QStringList &choices) { return Option{name, value, false, choices}; }

const QStringList &styleChoices()
{
    static const QStringList styles = {QStringLiteral("1"), QStringLiteral("2")};
    return styles;
}
Option requiredStyle() { return required(QStringLiteral("--style"), QStringLiteral("S"), styleChoices()); }
Option optionalStyle() { return optional(QStringLiteral("--style"), QStringLiteral("S"), styleChoices()); }

QString Command::usage() const
{
    QStringList parts = path;
    for (const Option &o : options) {
        QString part = o.name;
        if (!o.value.isEmpty())
            part += u' ' + (o.choices.isEmpty() ? o.value : o.choices.join(u'|'));
        parts << (o.required ? part : u'[' + part + u']');
    }
    if (!arguments.isEmpty())
        parts << arguments;
    return parts.join(u' ');
}

int exitCodeOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done: return ExitDone;
    case Outcome::Stopped: return ExitStopped;
    case Outcome::Failed: break;
    }
    return ExitFailure;
}

bool canLayOutPdf(Context &c)
{
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return true;
    c.prompt.failure(QStringLiteral("PDF を作るにはフォントの設定が必要です。normaris-cli から --pdf を指定してください。"));
    return false;
}

bool checkDocumentOutputs(Context &c, const QString &docx, const QString &pdf)
{
    if (docx.isEmpty() && pdf.isEmpty()) {
        c.prompt.failure(QStringLiteral("--out で書き出す .docx ファイルか、--pdf で書き出す PDF ファイルを指定してください。"));
        return false;
    }
    return pdf.isEmpty() || canLayOutPdf(c);
}

Command companyCommand(QStringList path, QList<Option> options, QString arguments, int minArguments, int maxArguments,
                       std::function<int(Context &)> run, bool needsDocument)
{
    options.prepend(required(QStringLiteral("--company"), QStringLiteral("NAME")));
    if (needsDocument)
        options.insert(1, required(QStringLiteral("--doc"), QStringLiteral("CODE")));
    return Command{std::move(path),
                   std::move(options),
                   std::move(arguments),
                   minArguments,
                   maxArguments,
                   [run = std::move(run), needsDocument](Context &c) {
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
    addDictCommands(commands);
    addImportCommands(commands);
    addVersionCommands(commands);
    addCheckCommands(commands);
    addUpdateCommands(commands);
    return commands;
}

int run(const QStringList &args, const QString &programDir, std::FILE *out, std::FILE *err)
{
    const QList<Command> commands = allCommands();
    // The global options come first; the command's words begin at the first word
    // that is not an option.
    qsizetype i = 0;
    QStringList globals;
    for (; i < args.size() && args[i].startsWith(u'-'); ++i) {
        if (isHelp(args[i])) {
            print(out, commandList(commands));
            return ExitDone;
        }
        if (args[i] == kYes) {
            globals << args[i];
        } else if ((args[i] == kRoot || args[i] == kStore) && i + 1 < args.size()) {
            globals << args[i] << args[i + 1];
            ++i;
        } else {
            return badUsage(err,
                            args[i] == kRoot || args[i] == kStore ? QStringLiteral("missing value after %1").arg(args[i])
                                                                  : QStringLiteral("unknown option '%1'").arg(args[i]),
                            commandList(commands));
        }
    }
    const QStringList rest = args.mid(i);
    const Command *command = findCommand(commands, rest);
    if (!command)
        return badUsage(err, rest.isEmpty() ? QStringLiteral("no command") : QStringLiteral("unknown command '%1'").arg(rest.join(u' ')),
                        commandList(commands));

    Arguments parsed;
    bool help = false;
    const QString error = parseCommandLine(*command, globals + rest.mid(command->path.size()), parsed, help);
    if (help) {
        print(out, commandUsage(*command));
        return ExitDone;
    }
    if (!error.isEmpty())
        return badUsage(err, error, commandUsage(*command));
    ErrorLog::setCommand(QStringLiteral("normaris-cli ") + args.join(u' '));
    return runCommand(*command, parsed, programDir, out, err);
}

} // namespace normaris::cli
