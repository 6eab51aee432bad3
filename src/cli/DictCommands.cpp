// dict docs list|add|edit|delete, dict get|put: the dictionary's documents and their 前文

#include "cli/Cli.h"
#include "base/AppState.h"
#include "dictionary/ClauseTransfer.h"
#include "dictionary/DocumentMaster.h"
#include "seed/SeedParser.h"

#include <QFile>
#include <QFileInfo>

namespace normaris::cli {

namespace {

using namespace normaris::dictionary;

const QString kDict = QStringLiteral("dict");
const QString kDocs = QStringLiteral("docs");

QString styleOf(Context &c) { return c.args.option(QStringLiteral("--style")); }

bool checkStyle(Context &c)
{
    const QString style = styleOf(c);
    if (style == u"1" || style == u"2")
        return true;
    c.prompt.error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
    return false;
}

// --kind and --changed take the values the form's options and box can hold.
bool optionIn(Context &c, const QString &name, const QString &current, QString &value)
{
    value = c.args.options.value(name, current);
    if (value == u"1" || value == u"2" || (name == u"--changed" && value == u"0"))
        return true;
    c.prompt.failure(QStringLiteral("%1 の値「%2」は使えません。").arg(name, value));
    return false;
}

QString flagText(bool flag) { return flag ? QStringLiteral("True") : QStringLiteral("False"); }

int docsList(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    for (const DocumentRecord &d : DocumentMaster(AppState::cn(), styleOf(c)).documents())
        c.out << d.code << '\t' << d.name << '\t' << flagText(d.changed) << '\t' << d.formalName << '\t' << flagText(d.selected) << '\t'
              << d.kind << '\n';
    return ExitDone;
}

int docsAdd(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    DocumentRecord entered;
    entered.code = c.args.option(QStringLiteral("--code"));
    entered.name = c.args.option(QStringLiteral("--name"));
    // As the form: an empty formal name takes the display name.
    entered.formalName = c.args.options.value(QStringLiteral("--formal"), entered.name);
    if (!optionIn(c, QStringLiteral("--kind"), QStringLiteral("1"), entered.kind))
        return ExitFailure;
    DocumentMaster master(AppState::cn(), styleOf(c));
    return exitCodeOf(master.update(c.prompt, DocumentMaster::Mode::Add, DocumentRecord(), entered));
}

int docsEdit(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    DocumentMaster master(AppState::cn(), styleOf(c));
    const std::optional<DocumentRecord> saved = master.document(c.args.option(QStringLiteral("--code")));
    if (!saved) {
        c.prompt.plain(QStringLiteral("データ指定の確認"), QStringLiteral("規程「%1」はありません。").arg(c.args.option(QStringLiteral("--code"))));
        return ExitStopped;
    }
    DocumentRecord entered = *saved;
    entered.code = c.args.options.value(QStringLiteral("--new-code"), saved->code);
    entered.name = c.args.options.value(QStringLiteral("--name"), saved->name);
    entered.formalName = c.args.options.value(QStringLiteral("--formal"), saved->formalName);
    QString changed;
    if (!optionIn(c, QStringLiteral("--kind"), saved->kind, entered.kind)
        || !optionIn(c, QStringLiteral("--changed"), saved->changed ? QStringLiteral("1") : QStringLiteral("0"), changed))
        return ExitFailure;
    entered.changed = changed == u"1";
    return exitCodeOf(master.update(c.prompt, DocumentMaster::Mode::Edit, *saved, entered));
}

int docsDelete(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    DocumentMaster master(AppState::cn(), styleOf(c));
    const QString code = c.args.option(QStringLiteral("--code"));
    if (code.toInt() >= 70 && !master.document(code)) {
        c.prompt.plain(QStringLiteral("データ指定の確認"), QStringLiteral("規程「%1」はありません。").arg(code));
        return ExitStopped;
    }
    return exitCodeOf(master.remove(c.prompt, code));
}

int dictGet(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    const QString text = preambleText(AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")));
    if (text.isEmpty()) {
        c.prompt.plain(QStringLiteral("データ指定の確認"), QStringLiteral("この文章形式に規程「%1」はありません。").arg(c.args.option(QStringLiteral("--doc"))));
        return ExitStopped;
    }
    c.out << text;
    return ExitDone;
}

// Reads the file in the format of the text sources; every problem is told with its line.
std::optional<ClauseSource> readPreambleSource(Context &c, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        c.prompt.failure(QStringLiteral("ファイル「%1」を読めません。").arg(path));
        return std::nullopt;
    }
    const QString name = QFileInfo(path).fileName();
    QList<seed::SourceError> errors;
    const seed::Document doc = seed::parseDocument(name, QString::fromUtf8(file.readAll()), errors);
    const auto refuse = [&](int line, const QString &message) {
        errors << seed::SourceError{name, line, message};
    };
    if (errors.isEmpty() && doc.style != styleOf(c))
        refuse(1, QStringLiteral("文章形式が --style と違います"));
    if (errors.isEmpty() && doc.code != c.args.option(QStringLiteral("--doc")))
        refuse(doc.line, QStringLiteral("規程のCodeが --doc と違います"));
    ClauseSource source;
    source.file = name;
    bool preamble = false;
    for (const seed::Clause &clause : doc.clauses) {
        if (clause.level != Level::Preamble || preamble) {
            refuse(clause.line, QStringLiteral("書き込めるのは前文一つだけです"));
            break;
        }
        preamble = true;
        source.line = clause.line;
        // The parser keeps no line per segment: the clause's own heading is told for each.
        for (const seed::Segment &s : clause.segments)
            source.segments << SourceSegment{s.text, s.lineBreak, clause.line};
        for (const seed::Word &w : clause.words)
            source.words << SourceWord{w.code, w.caption, w.word, w.line};
        if (!clause.references.isEmpty())
            refuse(clause.references.first().line, QStringLiteral("前文には参照を置けません"));
    }
    if (errors.isEmpty() && !preamble)
        refuse(1, QStringLiteral("「前文」の行がありません"));
    if (!errors.isEmpty()) {
        for (const seed::SourceError &e : errors)
            c.prompt.error(kSourceErrorTitle, e.toString());
        return std::nullopt;
    }
    return source;
}

int dictPut(Context &c)
{
    if (!checkStyle(c))
        return ExitStopped;
    const std::optional<ClauseSource> source = readPreambleSource(c, c.args.words.value(0));
    if (!source)
        return ExitStopped;
    return exitCodeOf(putPreamble(c.prompt, AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")), *source));
}

} // namespace

void addDictCommands(QList<Command> &commands)
{
    commands << companyCommand({kDict, kDocs, QStringLiteral("list")}, QStringLiteral("--style S"), 0, 0, docsList, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("add")},
                               QStringLiteral("--style S --code NN --name NAME [--formal NAME] [--kind 1|2]"), 0, 0, docsAdd, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("edit")},
                               QStringLiteral("--style S --code NN [--new-code MM] [--name NAME] [--formal NAME] [--kind 1|2] [--changed 0|1]"),
                               0, 0, docsEdit, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("delete")}, QStringLiteral("--style S --code NN"), 0, 0, docsDelete, false);
    commands << companyCommand({kDict, QStringLiteral("get")}, QStringLiteral("--style S --doc NN"), 0, 0, dictGet, true);
    commands << companyCommand({kDict, QStringLiteral("put")}, QStringLiteral("--style S --doc NN FILE"), 1, 1, dictPut, true);
}

} // namespace normaris::cli
