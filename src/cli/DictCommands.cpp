// dict docs list|add|edit|delete, dict get|put|delete, dict words|refs list: the dictionary's documents
// and their entries at every level

#include "cli/Cli.h"
#include "base/AppState.h"
#include "dictionary/ClauseSearch.h"
#include "dictionary/ClauseTransfer.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/DocumentWords.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/EntryText.h"
#include "intake/RulesFile.h"
#include "intake/RulesIntake.h"
#include "intake/RulesStructure.h"
#include "seed/SeedParser.h"
#include "seed/SeedValidator.h"

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

// The options that name a place under the document, 章 first.
const QStringList &placeOptions()
{
    static const QStringList options = {QStringLiteral("--chapter"), QStringLiteral("--article"), QStringLiteral("--paragraph"),
                                        QStringLiteral("--item"),    QStringLiteral("--maru"),    QStringLiteral("--iroha")};
    return options;
}

// The codes named by the place options, 章 down to the deepest given; every one above
// the deepest must be given too. False (with the navigator's hint) otherwise.
bool placeFromOptions(Context &c, QStringList &codes)
{
    int deepest = -1;
    for (int i = 0; i < placeOptions().size(); ++i) {
        if (c.args.has(placeOptions()[i]))
            deepest = i;
    }
    for (int i = 0; i <= deepest; ++i) {
        if (!c.args.has(placeOptions()[i])) {
            c.prompt.error(QStringLiteral("未指定"), QString::fromUtf16(levelInfo(levelOfDepth(deepest + 1)).pickerHint));
            return false;
        }
        codes << c.args.option(placeOptions()[i]);
    }
    return true;
}

int dictGet(Context &c)
{
    QStringList codes;
    if (!placeFromOptions(c, codes))
        return ExitStopped;
    const QString text = entryText(AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")), codes);
    if (text.isEmpty()) {
        c.prompt.plain(QStringLiteral("データ指定の確認"),
                       codes.isEmpty()
                           ? QStringLiteral("この文章形式に規程「%1」はありません。").arg(c.args.option(QStringLiteral("--doc")))
                           : QStringLiteral("指定の条項はありません。"));
        return ExitStopped;
    }
    c.out << text;
    return ExitDone;
}

// The codes of a clause's place as the file gives them, 章 down to its own.
QStringList codesOf(const seed::Place &p, int depth) { return QStringList{p.sho, p.jo, p.kou, p.gou, p.maru, p.iroha}.mid(0, depth); }

// Reads the file in the format of the text sources; every problem is told with its line.
std::optional<EntriesSource> readEntriesSource(Context &c, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        c.prompt.failure(QStringLiteral("ファイル「%1」を読めません。").arg(path));
        return std::nullopt;
    }
    const QString name = QFileInfo(path).fileName();
    QList<seed::SourceError> errors;
    const QString text = seed::decodeSource(name, file.readAll(), errors);
    const seed::Document doc = errors.isEmpty() ? seed::parseDocument(name, text, errors) : seed::Document();
    if (errors.isEmpty())
        errors += seed::checkEntries(doc);
    const auto refuse = [&](int line, const QString &message) { errors << seed::SourceError{name, line, message}; };
    if (errors.isEmpty() && doc.style != styleOf(c))
        refuse(1, QStringLiteral("文章形式が --style と違います"));
    if (errors.isEmpty() && doc.code != c.args.option(QStringLiteral("--doc")))
        refuse(doc.line, QStringLiteral("規程のCodeが --doc と違います"));
    EntriesSource source;
    source.file = name;
    source.document = doc.code;
    for (const seed::Clause &clause : doc.clauses) {
        QList<SourceSegment> segments;
        // The parser keeps no line per segment: the clause's own heading is told for each.
        for (const seed::Segment &s : clause.segments)
            segments << SourceSegment{s.text, s.lineBreak, clause.line, s.templateCode == u"0" ? QString() : s.templateCode};
        QList<SourceWord> words;
        for (const seed::Word &w : clause.words)
            words << SourceWord{w.code, w.caption, w.word, w.line};
        if (clause.level == Level::Preamble) {
            if (source.preamble) {
                refuse(clause.line, QStringLiteral("前文は一つだけです"));
                break;
            }
            if (!clause.references.isEmpty())
                refuse(clause.references.first().line, QStringLiteral("前文には参照を置けません"));
            source.preamble = ClauseSource{name, clause.line, segments, words};
            continue;
        }
        SourceEntry entry;
        entry.level = clause.level;
        entry.codes = codesOf(clause.place, placeDepth(clause.level));
        entry.title = clause.title;
        entry.formalName = clause.formalName;
        entry.segments = segments;
        entry.words = words;
        entry.line = clause.line;
        for (const seed::Reference &r : clause.references) {
            ReferenceTarget target{r.targetLevel, r.target.kitei, codesOf(r.target, placeDepth(r.targetLevel)), r.targetSegment};
            entry.references << SourceReference{r.code, target, r.line};
        }
        if (!levelInfo(entry.level).segmented && (!segments.isEmpty() || !words.isEmpty()))
            refuse(clause.line, QStringLiteral("章・条の見出しには本文を置けません"));
        source.entries << entry;
    }
    if (!errors.isEmpty()) {
        for (const seed::SourceError &e : errors)
            c.prompt.error(kSourceErrorTitle, e.toString());
        return std::nullopt;
    }
    return source;
}

int dictPut(Context &c)
{
    const std::optional<EntriesSource> source = readEntriesSource(c, c.args.words.value(0));
    if (!source)
        return ExitStopped;
    return exitCodeOf(putEntries(c.prompt, AppState::cn(), styleOf(c), *source));
}

int dictDelete(Context &c)
{
    QStringList codes;
    if (!placeFromOptions(c, codes))
        return ExitStopped;
    if (codes.isEmpty()) {
        c.prompt.error(QStringLiteral("未指定"), QStringLiteral("削除する章・条・項…を指定してください（規程は dict docs delete）。"));
        return ExitStopped;
    }
    const Level level = levelOfDepth(int(codes.size()));
    EntryEditor editor(AppState::cn(), styleOf(c), c.args.option(QStringLiteral("--doc")), level, codes.mid(0, codes.size() - 1));
    return exitCodeOf(editor.remove(c.prompt, codes.last()));
}

int dictRead(Context &c)
{
    const QString path = c.args.option(QStringLiteral("--file"));
    const QString title = QStringLiteral("取込エラー");
    if (intake::needsConversion(path))
        c.prompt.plain(QStringLiteral("変換"), QStringLiteral("LibreOffice でファイルを変換しています…"));
    const intake::RulesFileResult read = intake::readRulesFile(path);
    if (!read.lines) {
        c.prompt.error(title, read.refusal);
        return ExitStopped;
    }
    const QString code = c.args.options.value(QStringLiteral("--code"), intake::firstFreeCode(AppState::cn(), styleOf(c)));
    const intake::FoundRules rules = intake::findStructure(*read.lines, QFileInfo(path).fileName(), code);
    if (rules.source.entries.isEmpty()) {
        c.prompt.error(
            title, QStringLiteral("ファイル「%1」には条が見つかりません。規則の文書か確かめてください。").arg(QFileInfo(path).fileName()));
        return ExitStopped;
    }
    intake::IntakeRequest request;
    request.style = styleOf(c);
    request.code = code;
    request.name = c.args.options.value(QStringLiteral("--name"), intake::defaultName(rules));
    request.companyName = c.args.options.value(QStringLiteral("--company-name"));
    if (request.name.isEmpty())
        request.name = QStringLiteral("現行規程");
    for (const QString &line : intake::summaryOf(rules))
        c.out << line << '\n';
    if (c.args.has(QStringLiteral("--text"))) {
        intake::FoundRules marked = rules;
        intake::markCompanyName(marked, request.companyName);
        QFile out(c.args.option(QStringLiteral("--text")));
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)
            || out.write(intake::dictionaryText(marked, request.style, request.name, request.name).toUtf8()) < 0) {
            c.prompt.failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(out.fileName()));
            return ExitFailure;
        }
        return ExitDone;
    }
    if (!intake::checkIntakeCode(c.prompt, AppState::cn(), request.style, code))
        return ExitStopped;
    if (!c.prompt.question(QStringLiteral("確認"), QStringLiteral("規程%1「%2」として書き込みますか？").arg(code, request.name)))
        return ExitStopped;
    return exitCodeOf(intake::writeRules(c.prompt, AppState::cn(), rules, request));
}

int dictSearch(Context &c)
{
    const QList<SearchHit> hits =
        ClauseSearch(AppState::cn()).find(c.args.option(QStringLiteral("--text")), c.args.option(QStringLiteral("--doc")));
    for (const SearchHit &h : hits)
        c.out << h.style << '\t' << h.place() << '\t' << h.documentName << '\t'
              << (h.articleNumber.isEmpty() ? QStringLiteral("-") : h.articleNumber) << '\t' << h.context << '\n';
    if (hits.isEmpty()) {
        c.prompt.plain(QStringLiteral("条文検索"),
                       QStringLiteral("「%1」を含む条文はありません。").arg(c.args.option(QStringLiteral("--text"))));
        return ExitStopped;
    }
    return ExitDone;
}

int wordsList(Context &c)
{
    for (const DocumentWord &w : DocumentWords(AppState::cn(), c.args.option(QStringLiteral("--doc"))).words())
        c.out << w.code << '\t' << w.caption << '\t' << w.word << '\n';
    return ExitDone;
}

int refsList(Context &c)
{
    const QString document = c.args.option(QStringLiteral("--doc"));
    for (const ReferenceRow &r : documentReferences(AppState::cn(), document)) {
        const Level level = levelOf(r.targetLevel);
        const ReferenceTarget target{level, r.targetDocument, r.targetPlace.mid(0, placeDepth(level)), r.targetJoin};
        QStringList place;
        for (const QString &code : r.place) {
            if (!code.isEmpty())
                place << code;
        }
        c.out << r.code << '\t' << place.join(u' ') << '\t' << r.join << '\t' << r.level << '\t' << target.describe(QString()) << '\n';
    }
    return ExitDone;
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
    QList<Option> place = {requiredStyle()};
    for (const QString &o : placeOptions())
        place << optional(o, QStringLiteral("CODE"));
    commands << companyCommand({kDict, QStringLiteral("get")}, place, {}, 0, 0, dictGet, true);
    commands << companyCommand({kDict, QStringLiteral("put")}, {requiredStyle()}, QStringLiteral("FILE"), 1, 1, dictPut, true);
    commands << companyCommand({kDict, QStringLiteral("delete")}, place, {}, 0, 0, dictDelete, true);
    commands << companyCommand(
        {kDict, QStringLiteral("search")},
        {required(QStringLiteral("--text"), QStringLiteral("WORDS")), optional(QStringLiteral("--doc"), QStringLiteral("NN"))}, {}, 0, 0,
        dictSearch, false);
    commands << companyCommand({kDict, QStringLiteral("read")},
                               {requiredStyle(), required(QStringLiteral("--file"), QStringLiteral("FILE")),
                                optional(QStringLiteral("--code"), QStringLiteral("NN")), name,
                                optional(QStringLiteral("--company-name"), QStringLiteral("WORD")),
                                optional(QStringLiteral("--text"), QStringLiteral("OUT.txt"))},
                               {}, 0, 0, dictRead, false);
    commands << companyCommand({kDict, QStringLiteral("words"), QStringLiteral("list")}, {optionalStyle()}, {}, 0, 0, wordsList, true);
    commands << companyCommand({kDict, QStringLiteral("refs"), QStringLiteral("list")}, {optionalStyle()}, {}, 0, 0, refsList, true);
}

} // namespace normaris::cli
