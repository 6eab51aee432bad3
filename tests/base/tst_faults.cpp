// Every step that changes several rows, run with a failure injected at its 1st, 2nd,
// 3rd … statement and, separately, at its row reads: each failure leaves every table
// of every company (and the data folder) exactly as before, and shows the message the
// step gives for a failure; the first run that meets no failure completes the step.
// A step joins the suite as one row of steps().

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "base/AppState.h"
#include "UserEntries.h"
#include "base/Database.h"
#include "composition/ClauseAdder.h"
#include "composition/ClauseReleaser.h"
#include "composition/CompositionRow.h"
#include "composition/DocumentList.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/DocumentWords.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/EntryText.h"
#include "dictionary/ReferenceTargets.h"
#include "dictionary/InlineSegmentEditor.h"
#include "dictionary/SegmentEditor.h"
#include "export/DocumentExport.h"
#include "import/EntryImport.h"
#include "intake/RulesIntake.h"
#include "import/SourceCompany.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/Maintenance.h"
#include "words/EmbeddedWords.h"

#include <QDirIterator>
#include <QTest>
#include <functional>
#include <memory>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kDoc = QStringLiteral("01");
const QString kCompany = QStringLiteral("甲");
const QString kCancelled = QStringLiteral("取消: 処理中にエラーが発生しました。処理を取り消します。");

// One program folder with the company 甲 open as `cn`.
struct Fixture {
    Fixture() : db(root.openCompany(kCompany)) {}
    ~Fixture()
    {
        SourceCompany::close();
        db = QSqlDatabase();
    }
    TestRoot root;
    QSqlDatabase db;
    ScriptedPrompt prompt;
};

// How a step reports a failure: the "取消" box with its icon, or the failure's own
// description in a plain box under the program's title, or a fixed box of its own.
struct FailureReport {
    enum class Kind { Cancelled, Description, Fixed } kind;
    Prompt::Icon icon = Prompt::Icon::Information;
    QString line; // for Fixed
};

const FailureReport kCancelledInformation{FailureReport::Kind::Cancelled, Prompt::Icon::Information, {}};
const FailureReport kCancelledCritical{FailureReport::Kind::Cancelled, Prompt::Icon::Error, {}};
const FailureReport kDescription{FailureReport::Kind::Description, Prompt::Icon::None, {}};

using Run = std::function<Outcome()>;

struct FaultStep {
    QString name;
    // Sets the company up (no fault armed) and answers the step to run.
    std::function<Run(Fixture &)> prepare;
    FailureReport report;
};

// A core call that throws, as its form or command handles it: the description.
Outcome described(Prompt &prompt, const std::function<void()> &work)
{
    try {
        work();
        return Outcome::Done;
    } catch (const Failure &f) {
        prompt.failure(f.text());
        return Outcome::Failed;
    }
}

using MasterMode = dictionary::DocumentMaster::Mode;

// A document of the user's own, as the document master adds it.
dictionary::DocumentRecord userDocument()
{
    dictionary::DocumentRecord record;
    record.code = QStringLiteral("70");
    record.name = record.formalName = QStringLiteral("社内規程");
    return record;
}

// A 条, 項, 号 … row that can be released and added back below the row before it.
struct Placed {
    Level selectedLevel;
    int selectedIndex;
    QStringList selectedCodes;
    CompositionRow row;
    int index;
};

Placed placedAt(QSqlDatabase db, Level level)
{
    if (level == Level::Chapter || level == Level::Article) {
        const QList<CompositionRow> rows = readArticleRows(db, kStyle, kDoc);
        int seen = 0;
        for (int i = 1; i < rows.size(); ++i) {
            if (rows[i].level == level && ++seen == 3)
                return {rows[i - 1].level, i - 1, rows[i - 1].codes, rows[i], i};
        }
    } else {
        for (const CompositionRow &article : readArticleRows(db, kStyle, kDoc)) {
            if (article.level != Level::Article)
                continue;
            const QList<CompositionRow> rows = readClauseRows(db, kStyle, kDoc, article.codes[0], article.codes[1]);
            for (int i = 1; i < rows.size(); ++i) {
                if (rows[i].level == level && rows[i].join.toInt() <= 1)
                    return {rows[i - 1].level, i - 1, rows[i - 1].codes, rows[i], i};
            }
        }
    }
    qFatal("no row at level %d", int(level));
}

ReleaseRequest releaseOf(const Placed &p) { return {kStyle, kDoc, p.row.level, p.index, p.row.codes}; }
AddRequest addOf(const Placed &p)
{
    return {kStyle, kDoc, p.selectedLevel, p.row.level, false, p.selectedIndex, p.selectedCodes, p.row.ownCode()};
}

const ReleaseRequest kPreambleRelease{kStyle, kDoc, Level::Preamble, 1, QStringList(6)};
const AddRequest kPreambleAdd{kStyle, kDoc, Level::Document, Level::Preamble, false, 0, QStringList(6), QStringLiteral("01")};

Run releaseStep(Fixture &f, Level level)
{
    const ReleaseRequest request = level == Level::Preamble ? kPreambleRelease : releaseOf(placedAt(f.db, level));
    return [&f, request] { return ClauseReleaser(f.db, f.prompt).release(request); };
}

Run addStep(Fixture &f, Level level)
{
    const bool preamble = level == Level::Preamble;
    const Placed placed = preamble ? Placed{} : placedAt(f.db, level);
    ScriptedPrompt quiet;
    if (ClauseReleaser(f.db, quiet).release(preamble ? kPreambleRelease : releaseOf(placed)) != Outcome::Done)
        qFatal("could not release: %s", qUtf8Printable(quiet.lines().join(u'\n')));
    const AddRequest request = preamble ? kPreambleAdd : addOf(placed);
    return [&f, request] { return ClauseAdder(f.db, f.prompt).add(request); };
}

void mustBe(Outcome outcome, const ScriptedPrompt &prompt, const char *what)
{
    if (outcome != Outcome::Done)
        qFatal("%s: %s", what, qUtf8Printable(prompt.lines().join(u'\n')));
}

// Every document on the list built and dated, as the substitution of one that cites
// the others wants them; the settings filled in.
void prepareSubstitution(Fixture &f)
{
    ScriptedPrompt quiet;
    for (const CodeAndName &document : DocumentList(f.db).documents(kStyle, true)) {
        mustBe(WorkDataBuild(f.db, quiet).build(kStyle, document.code), quiet, "build");
        EffectiveDates(f.db, document.code).add(kStyle, QDate(2026, 4, 1));
    }
    BasicSettings settings(f.db);
    QStringList values = settings.load();
    values[0] = QStringLiteral("株式会社甲");
    settings.save(values, QStringLiteral("2"));
}

// The user's chain of entries in the work rules: 章 70, 条 7001, 項 70, 号 70, ①～⑳ 70,
// イ～ネ 70, each level from its count of codes.
const QStringList kEntryChain = {QStringLiteral("70"), QStringLiteral("7001"), QStringLiteral("70"),
                                 QStringLiteral("70"), QStringLiteral("70"),   QStringLiteral("70")};

// The step that adds the entry at codes: a heading, or a clause of one segment through
// an editor opened beforehand.
Run entryAdd(Fixture &f, const QStringList &codes)
{
    const Level level = dictionary::levelOfDepth(int(codes.size()));
    auto entries = std::make_shared<dictionary::EntryEditor>(f.db, kStyle, kDoc, level, codes.mid(0, codes.size() - 1));
    if (!levelInfo(level).segmented) {
        return [&f, entries, codes] {
            dictionary::LevelEntry e;
            e.code = codes.last();
            e.name = QStringLiteral("見出し");
            return entries->updateHeading(f.prompt, dictionary::EntryEditor::Mode::Add, {}, e);
        };
    }
    auto editor = std::make_shared<dictionary::SegmentEditor>(f.db, entries->placeOf(codes.last()), entries->documentKind());
    if (!editor->open(f.prompt))
        qFatal("could not open the clause");
    editor->segments()[0].text = QStringLiteral("本文");
    return [&f, entries, editor] { return entries->addClause(f.prompt, *editor); };
}

// The chain down to depth, with a word and a reference in 項 70 and a reference to it
// from the standard 条 0016.
void addEntryChain(Fixture &f, int depth)
{
    ScriptedPrompt quiet;
    for (int i = 1; i <= depth; ++i)
        mustBe(entryAdd(f, kEntryChain.mid(0, i))(), f.prompt, "add an entry");
    if (depth < 3)
        return;
    dictionary::EntryEditor paragraphs(f.db, kStyle, kDoc, Level::Paragraph, kEntryChain.mid(0, 2));
    dictionary::SegmentEditor editor(f.db, paragraphs.placeOf(QStringLiteral("71")), paragraphs.documentKind());
    if (!editor.open(quiet))
        qFatal("could not open the clause");
    mustBe(dictionary::DocumentWords(f.db, kDoc).create(quiet, editor, 0, QStringLiteral("上限"), QStringLiteral("週２日")), quiet, "word");
    mustBe(dictionary::ReferenceTargets(f.db, kStyle).make(quiet, editor, 1, {Level::Paragraph, kDoc, kEntryChain.mid(0, 3), {}}), quiet,
           "reference");
    mustBe(paragraphs.addClause(quiet, editor), quiet, "the clause");
    dictionary::EntryEditor outside(f.db, kStyle, kDoc, Level::Paragraph, {QStringLiteral("03"), QStringLiteral("0016")});
    dictionary::SegmentEditor citing(f.db, outside.placeOf(QStringLiteral("70")), outside.documentKind());
    if (!citing.open(quiet))
        qFatal("could not open the clause");
    mustBe(dictionary::ReferenceTargets(f.db, kStyle).make(quiet, citing, 0, {Level::Paragraph, kDoc, kEntryChain.mid(0, 3), {}}), quiet,
           "reference");
    mustBe(outside.addClause(quiet, citing), quiet, "the citing clause");
    f.prompt.clear();
}

// An editor of 項 70 of the chain, open.
std::shared_ptr<dictionary::SegmentEditor> openParagraph(Fixture &f)
{
    const dictionary::EntryEditor paragraphs(f.db, kStyle, kDoc, Level::Paragraph, kEntryChain.mid(0, 2));
    auto editor = std::make_shared<dictionary::SegmentEditor>(f.db, paragraphs.placeOf(QStringLiteral("70")), paragraphs.documentKind());
    if (!editor->open(f.prompt))
        qFatal("could not open the clause");
    return editor;
}

QList<FaultStep> steps()
{
    QList<FaultStep> list;
    const std::pair<Level, const char *> levels[] = {
        {Level::Preamble, "preamble"}, {Level::Chapter, "chapter"}, {Level::Article, "article"}, {Level::Paragraph, "paragraph"},
        {Level::Item, "item"},         {Level::Maru, "maru"},       {Level::Iroha, "iroha"}};
    for (const auto &[level, name] : levels) {
        const Level l = level;
        list << FaultStep{QStringLiteral("add %1").arg(QString::fromLatin1(name)), [l](Fixture &f) { return addStep(f, l); },
                          kCancelledCritical};
        list << FaultStep{QStringLiteral("release %1").arg(QString::fromLatin1(name)), [l](Fixture &f) { return releaseStep(f, l); },
                          kCancelledCritical};
    }
    list << FaultStep{QStringLiteral("build"),
                      [](Fixture &f) -> Run { return [&f] { return WorkDataBuild(f.db, f.prompt).build(kStyle, kDoc); }; },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("substitute with references"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          return [&f] { return SettingSubstitution(f.db, f.prompt).run(kStyle, kDoc); };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("settings update"),
                      [](Fixture &f) -> Run {
                          return [&f] {
                              return described(f.prompt, [&f] {
                                  BasicSettings settings(f.db);
                                  QStringList values = settings.load();
                                  values[0] = QStringLiteral("株式会社甲");
                                  settings.save(values, QStringLiteral("1"));
                              });
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("words update"),
                      [](Fixture &f) -> Run {
                          EmbeddedWords words(f.db, kStyle, kDoc);
                          const CodeAndName chapter = words.chapters().value(0);
                          const CodeAndName article = words.articlesWithWords(chapter.code).value(0);
                          QList<std::pair<QString, QString>> given;
                          for (const EmbeddedWord &w : words.words(chapter.code, article.code))
                              given << std::pair{w.code, w.word + QStringLiteral("改")};
                          return [&f, chapter, article, given] {
                              return described(f.prompt,
                                               [&] { EmbeddedWords(f.db, kStyle, kDoc).save(chapter.code, article.code, given); });
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("dates add"),
                      [](Fixture &f) -> Run {
                          return [&f] { return described(f.prompt, [&f] { EffectiveDates(f.db, kDoc).add(kStyle, QDate(2026, 4, 1)); }); };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("dates change and delete"),
                      [](Fixture &f) -> Run {
                          const qint64 first = EffectiveDates(f.db, kDoc).add(kStyle, QDate(2026, 4, 1));
                          const qint64 second = EffectiveDates(f.db, kDoc).add(kStyle, QDate(2026, 10, 1));
                          return [&f, first, second] {
                              return described(f.prompt, [&] {
                                  Transaction transaction(f.db);
                                  EffectiveDates dates(f.db, kDoc);
                                  dates.change(first, QDate(2027, 1, 1));
                                  dates.remove(second);
                                  transaction.commit();
                              });
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("document onto the list"),
                      [](Fixture &f) -> Run {
                          const QString document = DocumentList(f.db).documents(kStyle, false).value(0).code;
                          return [&f, document] { return described(f.prompt, [&] { DocumentList(f.db).addToList(kStyle, document); }); };
                      },
                      kDescription};
    list << FaultStep{
        QStringLiteral("document off the list"),
        [](Fixture &f) -> Run { return [&f] { return described(f.prompt, [&f] { DocumentList(f.db).removeFromList(kStyle, kDoc); }); }; },
        kDescription};
    list << FaultStep{QStringLiteral("company new"),
                      [](Fixture &f) -> Run {
                          return [&f] {
                              f.prompt.answer({true});
                              return CompanyFiles(f.root.layout(), f.prompt).createFromSeed(QStringLiteral("乙"));
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("company copy"),
                      [](Fixture &f) -> Run {
                          f.root.makeCompany(QStringLiteral("丙"));
                          return [&f] {
                              f.prompt.answer({true});
                              return CompanyFiles(f.root.layout(), f.prompt).createFromCompany(QStringLiteral("乙"), QStringLiteral("丙"));
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("compaction"),
                      [](Fixture &f) -> Run {
                          f.root.makeCompany(QStringLiteral("丙"));
                          return [&f] {
                              f.prompt.answer({true});
                              return Maintenance(f.root.layout(), f.prompt).optimise(QStringLiteral("丙"));
                          };
                      },
                      FailureReport{FailureReport::Kind::Fixed, Prompt::Icon::None,
                                    QStringLiteral("データ最適化失敗: 最適化に失敗しました。もう一度やり直してください。")}};
    list << FaultStep{QStringLiteral("document master add"),
                      [](Fixture &f) -> Run {
                          return [&f] {
                              return dictionary::DocumentMaster(f.db, kStyle).update(f.prompt, MasterMode::Add, {}, userDocument());
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("document code change"),
                      [](Fixture &f) -> Run {
                          addUserChain(f.root.layout().companyFile(kCompany));
                          const dictionary::DocumentRecord saved = *dictionary::DocumentMaster(f.db, kStyle).document(kUserCodes[0]);
                          return [&f, saved] {
                              dictionary::DocumentRecord moved = saved;
                              moved.code = QStringLiteral("76");
                              return dictionary::DocumentMaster(f.db, kStyle).update(f.prompt, MasterMode::Edit, saved, moved);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("document delete"),
                      [](Fixture &f) -> Run {
                          addUserChain(f.root.layout().companyFile(kCompany));
                          return [&f] {
                              f.prompt.answer({true});
                              return dictionary::DocumentMaster(f.db, kStyle).remove(f.prompt, kUserCodes[0]);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("preamble in segments"),
                      [](Fixture &f) -> Run {
                          addUserChain(f.root.layout().companyFile(kCompany));
                          auto editor = std::make_shared<dictionary::SegmentEditor>(
                              f.db, dictionary::ClausePlace::preamble(kStyle, kUserCodes[0]), QStringLiteral("1"));
                          if (!editor->open(f.prompt))
                              qFatal("could not open the preamble");
                          return [&f, editor] {
                              editor->segments()[0].text = QStringLiteral("当社は");
                              editor->setKind(1, dictionary::SegmentKind::BasicWord);
                              editor->setChosenValue(1, QStringLiteral("0001"), QString());
                              return editor->update(f.prompt);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("standard preamble"),
                      [](Fixture &f) -> Run {
                          auto editor = std::make_shared<dictionary::InlineSegmentEditor>(
                              f.db, dictionary::ClausePlace::preamble(kStyle, kDoc), QStringLiteral("1"));
                          editor->open();
                          const QString changed = editor->texts[0] + QStringLiteral("（改）");
                          return [&f, editor, changed] {
                              editor->texts[0] = changed;
                              return editor->update(f.prompt);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{
        QStringLiteral("import a document"),
        [](Fixture &f) -> Run {
            const QString source = QStringLiteral("乙");
            f.root.makeCompany(source);
            addUserChain(f.root.layout().companyFile(source));
            ScriptedPrompt quiet;
            mustBe(SourceCompany::open(quiet, f.root.layout(), source), quiet, "open the source");
            return [&f] {
                return importEntry(f.db, SourceCompany::connection(), f.prompt, ImportPlace{kStyle, Level::Document, {kUserCodes[0]}});
            };
        },
        kCancelledInformation};
    list << FaultStep{QStringLiteral("export with its version"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          ScriptedPrompt quiet;
                          mustBe(SettingSubstitution(f.db, quiet).run(kStyle, kDoc), quiet, "substitute");
                          return [&f] {
                              return DocumentExport(f.db, f.prompt)
                                  .write(kStyle, kDoc, RenderOptions{}, QString(), f.root.path() + QStringLiteral("/out.txt"));
                          };
                      },
                      kDescription};
    for (int depth = 1; depth <= 6; ++depth) {
        list << FaultStep{QStringLiteral("entry add at depth %1").arg(depth),
                          [depth](Fixture &f) -> Run {
                              addEntryChain(f, depth - 1);
                              return entryAdd(f, kEntryChain.mid(0, depth));
                          },
                          kCancelledInformation};
    }
    list << FaultStep{QStringLiteral("entry code change (条)"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 3);
                          return [&f] {
                              return dictionary::EntryEditor(f.db, kStyle, kDoc, Level::Article, {kEntryChain[0]})
                                  .changeCode(f.prompt, kEntryChain[1], QStringLiteral("7002"));
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("entry code change (項)"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 4);
                          return [&f] {
                              return dictionary::EntryEditor(f.db, kStyle, kDoc, Level::Paragraph, kEntryChain.mid(0, 2))
                                  .changeCode(f.prompt, QStringLiteral("70"), QStringLiteral("72"));
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("entry delete (号)"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 6);
                          return [&f] {
                              f.prompt.answer({true});
                              return dictionary::EntryEditor(f.db, kStyle, kDoc, Level::Item, kEntryChain.mid(0, 3))
                                  .remove(f.prompt, QStringLiteral("70"));
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("clause update"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 3);
                          auto editor = openParagraph(f);
                          return [&f, editor] {
                              editor->segments()[0].text = QStringLiteral("改めた本文");
                              return editor->update(f.prompt);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{
        QStringLiteral("word creation"),
        [](Fixture &f) -> Run {
            addEntryChain(f, 3);
            auto editor = openParagraph(f);
            return [&f, editor] {
                return dictionary::DocumentWords(f.db, kDoc).create(f.prompt, *editor, 1, QStringLiteral("日数"), QStringLiteral("５日"));
            };
        },
        kCancelledInformation};
    list << FaultStep{QStringLiteral("reference creation"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 3);
                          auto editor = openParagraph(f);
                          return [&f, editor] {
                              return dictionary::ReferenceTargets(f.db, kStyle)
                                  .make(f.prompt, *editor, 1, {Level::Article, kDoc, {QStringLiteral("01"), QStringLiteral("0002")}, {}});
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("dict put of a file"),
                      [](Fixture &f) -> Run {
                          dictionary::EntriesSource source;
                          source.file = QStringLiteral("7001.txt");
                          source.document = kDoc;
                          dictionary::SourceEntry article;
                          article.level = Level::Article;
                          article.codes = {QStringLiteral("03"), QStringLiteral("7001")};
                          article.title = article.formalName = QStringLiteral("テレワーク勤務");
                          dictionary::SourceEntry paragraph;
                          paragraph.level = Level::Paragraph;
                          paragraph.codes = article.codes + QStringList{QStringLiteral("70")};
                          paragraph.segments = {{QStringLiteral("上限は"), false, 1, {}},
                                                {QStringLiteral("★0990★"), false, 1, {}},
                                                {QStringLiteral("◆0990◆"), false, 1, {}}};
                          paragraph.words = {{QStringLiteral("0990"), QStringLiteral("上限"), QStringLiteral("週２日"), 1}};
                          paragraph.references = {
                              {QStringLiteral("0990"),
                               {Level::Item, kDoc, {QString(), QStringLiteral("0002"), QStringLiteral("01"), QStringLiteral("01")}, {}},
                               1}};
                          source.entries = {article, paragraph};
                          return [&f, source] { return dictionary::putEntries(f.prompt, f.db, kStyle, source); };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("read current rules"),
                      [](Fixture &f) -> Run {
                          intake::RulesLines lines;
                          for (const char *line :
                               {"就業規則", "この規則は、株式会社甲（以下「会社」という。）に適用する。", "第１章　総則", "（目的）",
                                "第１条　この規則は、就業の条件を定める。", "２　前項の条件は、次のとおりとする。", "一　賃金",
                                "二　労働時間", "第２条（適用）　この規則は、前条第２項第１号の者に適用する。"})
                              lines.lines << intake::RulesLine{QString::fromUtf8(line), false};
                          const intake::FoundRules rules = intake::findStructure(lines, QStringLiteral("rules.txt"), QStringLiteral("70"));
                          const intake::IntakeRequest request{kStyle, QStringLiteral("70"), QStringLiteral("就業規則"), QString(),
                                                              QStringLiteral("株式会社甲")};
                          return [&f, rules, request] { return intake::writeRules(f.prompt, f.db, rules, request); };
                      },
                      kCancelledInformation};
    return list;
}

// Every table of one file, row by row, in rowid order.
QStringList dumpFile(const QString &file)
{
    const QString connection = QStringLiteral("fault_dump");
    QStringList lines;
    {
        QSqlDatabase db = openDatabase(file, connection, OpenMode::ReadOnly);
        QStringList tables;
        RowReader names = execSql(db, QStringLiteral("SELECT name, sql FROM sqlite_master ORDER BY name"));
        while (names.next()) {
            lines << names.value(0).toString() + u'|' + names.value(1).toString();
            if (names.value(1).toString().startsWith(QStringLiteral("CREATE TABLE")))
                tables << names.value(0).toString();
        }
        for (const QString &table : tables) {
            RowReader rows = execSql(db, QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid").arg(table));
            const int columns = rows.record().count();
            while (rows.next()) {
                QString line = table;
                for (int c = 0; c < columns; ++c)
                    line += u'\x1f' + rows.value(c).toString();
                lines << line;
            }
        }
    }
    closeDatabase(connection);
    return lines;
}

// The data folder's entries (lock files aside) and the content of every company.
QStringList dumpAll(const DataLayout &layout)
{
    QStringList lines;
    QDirIterator it(layout.dataDir(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!path.endsWith(QStringLiteral(".lock")))
            lines << path.mid(layout.dataDir().size());
    }
    lines.sort();
    for (const QString &company : layout.companyList())
        lines += dumpFile(layout.companyFile(company));
    return lines;
}

QString firstDifference(const QStringList &a, const QStringList &b)
{
    for (qsizetype i = 0; i < qMax(a.size(), b.size()); ++i) {
        if (a.value(i) != b.value(i))
            return QStringLiteral("line %1:\n  before: %2\n  after:  %3").arg(i).arg(a.value(i).left(200), b.value(i).left(200));
    }
    return {};
}

// The fault points to try: all of them when there are few, else the first ones, an
// even spread and the last ones (a long step runs to thousands of row reads).
QList<int> faultPoints(int count)
{
    QList<int> points;
    for (int n = 1; n <= count; ++n) {
        if (count <= 60 || n <= 20 || n > count - 10 || n % (count / 30 + 1) == 0)
            points << n;
    }
    points << count + 1; // no failure: the step completes
    return points;
}

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { FaultInjection::disarm(); }

    void failureLeavesEverythingAsItWas_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<bool>("rowReads");
        const QList<FaultStep> all = steps();
        for (int i = 0; i < all.size(); ++i) {
            QTest::newRow(qUtf8Printable(all[i].name + QStringLiteral(" / statements"))) << i << false;
            QTest::newRow(qUtf8Printable(all[i].name + QStringLiteral(" / row reads"))) << i << true;
        }
    }

    void failureLeavesEverythingAsItWas()
    {
        QFETCH(int, step);
        QFETCH(bool, rowReads);
        const FaultStep s = steps().at(step);

        // A dry run counts the step's statements and row reads.
        int count = 0;
        {
            Fixture dry;
            const Run run = s.prepare(dry);
            FaultInjection::arm(0, 0);
            QCOMPARE(run(), Outcome::Done);
            count = rowReads ? FaultInjection::rowReadsSeen() : FaultInjection::statementsSeen();
            FaultInjection::disarm();
        }
        if (count == 0)
            QSKIP("the step reads no rows");

        Fixture f;
        const Run run = s.prepare(f);
        const QStringList before = dumpAll(f.root.layout());
        int failures = 0;
        for (int n : faultPoints(count)) {
            f.prompt.clear();
            FaultInjection::arm(rowReads ? 0 : n, rowReads ? n : 0);
            const Outcome outcome = run();
            const bool fired = FaultInjection::fired();
            FaultInjection::disarm();
            const QString where = QStringLiteral("%1 at %2 of %3").arg(s.name).arg(n).arg(count);
            if (!fired) {
                QVERIFY2(outcome == Outcome::Done, qUtf8Printable(where + u'\n' + f.prompt.lines().join(u'\n')));
                QCOMPARE(n, count + 1);
                break;
            }
            ++failures;
            QVERIFY2(outcome == Outcome::Failed, qUtf8Printable(where));
            const QList<Shown> &shown = f.prompt.shown();
            QVERIFY2(!shown.isEmpty(), qUtf8Printable(where));
            const Shown &last = shown.last();
            switch (s.report.kind) {
            case FailureReport::Kind::Cancelled:
                QCOMPARE(last.toString(), kCancelled);
                QCOMPARE(int(last.icon), int(s.report.icon));
                break;
            case FailureReport::Kind::Description:
                QCOMPARE(last.title, kProgramTitle);
                QVERIFY2(last.text.contains(QStringLiteral("injected")), qUtf8Printable(where + u' ' + last.text));
                break;
            case FailureReport::Kind::Fixed: QCOMPARE(last.toString(), s.report.line); break;
            }
            const QStringList after = dumpAll(f.root.layout());
            QVERIFY2(after == before, qUtf8Printable(where + u'\n' + firstDifference(before, after)));
        }
        QVERIFY(failures > 0);
    }

    // A read that fails anywhere in the export: the step fails, and no document is
    // written (never a shorter one).
    void exportNeverWritesFromAFailedRead()
    {
        Fixture f;
        prepareSubstitution(f);
        ScriptedPrompt quiet;
        mustBe(SettingSubstitution(f.db, quiet).run(kStyle, kDoc), quiet, "substitute");

        const QString docx = f.root.path() + QStringLiteral("/out.docx");
        const auto exportOnce = [&] { return DocumentExport(f.db, f.prompt).write(kStyle, kDoc, RenderOptions{}, docx); };
        FaultInjection::arm(0, 0);
        QCOMPARE(exportOnce(), Outcome::Done);
        const int count = FaultInjection::rowReadsSeen();
        FaultInjection::disarm();
        QVERIFY(QFile::remove(docx));
        QVERIFY(count > 100);

        for (int n : faultPoints(count)) {
            if (n > count)
                break;
            f.prompt.clear();
            FaultInjection::arm(0, n);
            const Outcome outcome = exportOnce();
            FaultInjection::disarm();
            const QString where = QStringLiteral("export at row read %1 of %2").arg(n).arg(count);
            QVERIFY2(outcome == Outcome::Failed, qUtf8Printable(where));
            QVERIFY2(!QFile::exists(docx), qUtf8Printable(where));
            QCOMPARE(f.prompt.shown().last().title, kProgramTitle);
        }
    }
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
