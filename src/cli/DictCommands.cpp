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

QString flagText(bool flag) { return flag ? QStringLiteral("True") : QStringLiteral("False"); }

int docsList(Context &c)
{
    for (const DocumentRecord &d : DocumentMaster(AppState::cn(), styleOf(c)).documents())
        c.out << d.code << '\t' << d.name << '\t' << flagText(d.changed) << '\t' << d.formalName << '\t' << flagText(d.selected) << '\t'
              << d.kind << '\n';
    return ExitDone;
}

int docsAdd(Context &c)
{
    DocumentRecord entered;
    entered.code = c.args.option(QStringLiteral("--code"));
    entered.name = c.args.option(QStringLiteral("--name"));
    // As the form: an empty formal name takes the display name.
    entered.formalName = c.args.options.value(QStringLiteral("--formal"), entered.name);
    entered.kind = c.args.options.value(QStringLiteral("--kind"), QStringLiteral("1"));
    DocumentMaster master(AppState::cn(), styleOf(c));
    return exitCodeOf(master.update(c.prompt, DocumentMaster::Mode::Add, DocumentRecord(), entered));
}

int docsEdit(Context &c)
{
    DocumentMaster master(AppState::cn(), styleOf(c));
    const std::optional<DocumentRecord> saved = master.document(c.args.option(QStringLiteral("--code")));
    if (!saved) {
        c.prompt.plain(QStringLiteral("データ指定の確認"),
                       QStringLiteral("規程「%1」はありません。").arg(c.args.option(QStringLiteral("--code"))));
        return ExitStopped;
    }
    DocumentRecord entered = *saved;
    entered.code = c.args.options.value(QStringLiteral("--new-code"), saved->code);
    entered.name = c.args.options.value(QStringLiteral("--name"), saved->name);
    entered.formalName = c.args.options.value(QStringLiteral("--formal"), saved->formalName);
    entered.kind = c.args.options.value(QStringLiteral("--kind"), saved->kind);
    entered.changed = c.args.has(QStringLiteral("--changed")) ? c.args.option(QStringLiteral("--changed")) == u"1" : saved->changed;
    return exitCodeOf(master.update(c.prompt, DocumentMaster::Mode::Edit, *saved, entered));
}

int docsDelete(Context &c)
{
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
    const QString text = preambleText(AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")));
    if (text.isEmpty()) {
        c.prompt.plain(QStringLiteral("データ指定の確認"),
                       QStringLiteral("この文章形式に規程「%1」はありません。").arg(c.args.option(QStringLiteral("--doc"))));
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
    const auto refuse = [&](int line, const QString &message) { errors << seed::SourceError{name, line, message}; };
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
    const std::optional<ClauseSource> source = readPreambleSource(c, c.args.words.value(0));
    if (!source)
        return ExitStopped;
    return exitCodeOf(putPreamble(c.prompt, AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")), *source));
}

} // namespace

void addDictCommands(QList<Command> &commands)
{
    const Option code = required(QStringLiteral("--code"), QStringLiteral("NN"));
    const Option name = optional(QStringLiteral("--name"), QStringLiteral("NAME"));
    const Option formal = optional(QStringLiteral("--formal"), QStringLiteral("NAME"));
    const Option kind = optional(QStringLiteral("--kind"), QStringLiteral("KIND"), {QStringLiteral("1"), QStringLiteral("2")});
    commands << companyCommand({kDict, kDocs, QStringLiteral("list")}, {requiredStyle()}, {}, 0, 0, docsList, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("add")},
                               {requiredStyle(), code, required(QStringLiteral("--name"), QStringLiteral("NAME")), formal, kind}, {}, 0, 0,
                               docsAdd, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("edit")},
                               {requiredStyle(), code, optional(QStringLiteral("--new-code"), QStringLiteral("MM")), name, formal, kind,
                                optional(QStringLiteral("--changed"), QStringLiteral("FLAG"), {QStringLiteral("0"), QStringLiteral("1")})},
                               {}, 0, 0, docsEdit, false);
    commands << companyCommand({kDict, kDocs, QStringLiteral("delete")}, {requiredStyle(), code}, {}, 0, 0, docsDelete, false);
    commands << companyCommand({kDict, QStringLiteral("get")}, {requiredStyle()}, {}, 0, 0, dictGet, true);
    commands << companyCommand({kDict, QStringLiteral("put")}, {requiredStyle()}, QStringLiteral("FILE"), 1, 1, dictPut, true);
}

} // namespace normaris::cli
