// Every step that changes several rows, run with a failure injected at its 1st, 2nd,
// 3rd … statement and, separately, at its row reads: each failure leaves every table
// of every company (and the data folder) exactly as before, and shows the message the
// step gives for a failure; the first run that meets no failure completes the step.
// A step joins the suite as one row of steps().

#include "CompanyDump.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"
#include "UserEntries.h"
#include "base/Database.h"
#include "base/FileOps.h"
#include "base/ErrorLog.h"
#include "base/ServerMessages.h"
#include "base/SqliteMessages.h"
#include "composition/ClauseAdder.h"
#include "composition/ClauseReleaser.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "composition/ExcelLists.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/DocumentWords.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/EntryText.h"
#include "dictionary/ReferenceTargets.h"
#include "dictionary/InlineSegmentEditor.h"
#include "dictionary/SegmentEditor.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "fileformats/TextOutput.h"
#include "versions/VersionOutput.h"
#include "import/EntryImport.h"
#include "intake/RulesIntake.h"
#include "import/SourceCompany.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/Maintenance.h"
#include "rulebase/ServerStore.h"
#include "office/CompanyTransfer.h"
#include "versions/ComparisonExport.h"
#include "update/CompanyUpdate.h"
#include "words/EmbeddedWords.h"

#include <QDirIterator>
#include <QRegularExpression>
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

// The text of an injected failure: SQLite's I/O error told in Japanese, with the file,
// or the server's disk error, with the company (or the server) it met.
bool isToldAsIoError(const QString &text)
{
    const QString path = text.section(u'「', 1).section(u'」', 0, 0);
    if (path.contains(QStringLiteral(".sqlite")) && text == sqliteMessage(SqliteIoErr, path))
        return true;
    // The server names the company as the user does, or the list of the companies.
    const QString company = u'『' + text.section(u'『', 1).section(u'』', 0, 0) + u'』';
    return TestServer::requested()
           && (text == serverMessage(kServerIoError, company) || text == serverMessage(kServerIoError, QStringLiteral("会社の一覧")));
}

struct FaultStep {
    QString name;
    // Sets the company up (no fault armed) and answers the step to run.
    std::function<Run(Fixture &)> prepare;
    FailureReport report;
    bool serverOnly = false; // a step the folder store refuses by nature
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

// The document built and dated.
void buildAndDate(Fixture &f, const QString &document)
{
    ScriptedPrompt quiet;
    mustBe(WorkDataBuild(f.db, quiet).build(kStyle, document), quiet, "build");
    EffectiveDates(f.db, document).add(kStyle, QDate(2026, 4, 1));
}

void fillSettings(Fixture &f)
{
    BasicSettings settings(f.db);
    QStringList values = settings.load();
    values[0] = QStringLiteral("株式会社甲");
    settings.save(values, QStringLiteral("2"));
}

// Every document on the list built and dated, as the substitution of one that cites
// the others wants them; the settings filled in.
void prepareSubstitution(Fixture &f)
{
    for (const CodeAndName &document : DocumentList(f.db).documents(kStyle, true))
        buildAndDate(f, document.code);
    fillSettings(f);
}

// The files a writing step writes go beside the company files, so that a failure that
// left one (or a part of one) would show among them.
QString outputPath(Fixture &f, const char *name) { return f.root.layout().dataDir() + u'/' + QString::fromLatin1(name); }

void clearOutputs(Fixture &f)
{
    for (const char *name : {"out.docx", "out.txt", "table.docx", "table.txt", "list.xlsx"})
        QFile::remove(outputPath(f, name));
}

// The document as .docx and text beside the company files, with its version when asked.
Outcome exportInto(Fixture &f, const RenderOptions &options, bool withVersion)
{
    DocxOutput docx(outputPath(f, "out.docx"));
    TextOutput text(outputPath(f, "out.txt"));
    VersionOutput version(f.db, kStyle, kDoc);
    DocumentOutputs outputs{&docx, &text};
    if (withVersion)
        outputs << &version;
    const bool filing = options.kind == ExportKind::Filing;
    return DocumentExport(f.db, f.prompt).write(filing ? QString() : kStyle, filing ? QString() : kDoc, options, outputs);
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

// The company 甲 as if made from an earlier release: one clause as it read then, one it
// did not have, and that release recorded beside the program's; its work rules composed,
// dated and with the basic settings, so that the update keeps their versions before and
// after and compares them.
Run updateStep(Fixture &f)
{
    execSql(f.db, QStringLiteral("UPDATE 項 SET 項 = 項 || '（旧）' WHERE 規程Code = '01' AND 条Code = '0001' AND Code = '02'"));
    execSql(f.db, QStringLiteral("DELETE FROM 項 WHERE 規程Code = '01' AND 条Code = '0001' AND Code = '03'"));
    execSql(f.db, QStringLiteral("DELETE FROM 作成データ補助項～ WHERE 規程Code = '01' AND 条Code = '0001' AND 項Code = '03'"));
    buildAndDate(f, kDoc);
    fillSettings(f);
    const Release earlier{QStringLiteral("2000.01"), dictionaryPrints(f.db)};
    QFile file(releasesFolder(f.root.path()) + QStringLiteral("/2000.01.tsv"));
    if (!file.open(QIODevice::WriteOnly) || file.write(releaseFileText(earlier).toUtf8()) < 0)
        qFatal("could not write the earlier release");
    file.close();
    recordRelease(f.db, earlier.name);
    const ProgramReleases releases = ProgramReleases::read(f.root.layout());
    return [&f, releases] {
        UpdateResult result;
        UpdateOptions options;
        return CompanyUpdate(f.root.layout(), f.prompt).updateOpen(f.db, kCompany, releases, options, result);
    };
}

// The user's chain into a company that is not the open one, through its store.
void addUserChainTo(const DataLayout &layout, const QString &company)
{
    {
        QSqlDatabase db = CompanyStore::of(layout)->open(company, kUserConnection, OpenMode::ReadWrite);
        addUserChain(db);
    }
    closeDatabase(kUserConnection);
}

// Where the company files of the steps that carry a company go, inside the program folder
// so that whatever a failure left of one shows in the dump.
QString carriedFolder(const Fixture &f) { return f.root.path() + QStringLiteral("/持ち出し"); }

// The company file of company (held by the fixture or by nobody), as a backup writes it.
QString companyFileOf(Fixture &f, const QString &company)
{
    const QString folder = f.root.path() + QStringLiteral("/files");
    CompanyStore::of(f.root.layout())->backup(company, folder);
    return folder + u'/' + company + QStringLiteral(".sqlite");
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
    list << FaultStep{QStringLiteral("dictionary update"), updateStep, kCancelledCritical};
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
                          addUserChain(f.db);
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
                          addUserChain(f.db);
                          return [&f] {
                              f.prompt.answer({true});
                              return dictionary::DocumentMaster(f.db, kStyle).remove(f.prompt, kUserCodes[0]);
                          };
                      },
                      kCancelledInformation};
    list << FaultStep{QStringLiteral("preamble in segments"),
                      [](Fixture &f) -> Run {
                          addUserChain(f.db);
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
            addUserChainTo(f.root.layout(), source);
            ScriptedPrompt quiet;
            mustBe(SourceCompany::open(quiet, f.root.layout(), source), quiet, "open the source");
            return [&f] {
                return importEntry(f.db, SourceCompany::connection(), f.prompt, ImportPlace{kStyle, Level::Document, {kUserCodes[0]}});
            };
        },
        kCancelledInformation};
    list << FaultStep{
        QStringLiteral("import a document, renumbering a word"),
        [](Fixture &f) -> Run {
            const QString source = QStringLiteral("乙");
            f.root.makeCompany(source);
            addUserChainTo(f.root.layout(), source);
            // The current company has the word code of the chain's text already.
            execSql(f.db, QStringLiteral("INSERT INTO 変数テーブル語句 (Code, 規程Code, 章Code, 条Code, 種別) VALUES ('7501', '75', '01', "
                                         "'0001', '4')"));
            ScriptedPrompt quiet;
            mustBe(SourceCompany::open(quiet, f.root.layout(), source), quiet, "open the source");
            return [&f] {
                return importEntry(f.db, SourceCompany::connection(), f.prompt, ImportPlace{kStyle, Level::Document, {kUserCodes[0]}},
                                   MarkerCodes::Renumber);
            };
        },
        kCancelledInformation};
    list << FaultStep{QStringLiteral("export with its version"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          ScriptedPrompt quiet;
                          mustBe(SettingSubstitution(f.db, quiet).run(kStyle, kDoc), quiet, "substitute");
                          return [&f] { return exportInto(f, RenderOptions{}, true); };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("filing forms"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          return [&f] {
                              RenderOptions options;
                              options.kind = ExportKind::Filing;
                              return exportInto(f, options, false);
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("comparison table"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          ScriptedPrompt quiet;
                          mustBe(SettingSubstitution(f.db, quiet).run(kStyle, kDoc), quiet, "substitute");
                          mustBe(exportInto(f, RenderOptions{}, true), f.prompt, "the first version");
                          EffectiveDates(f.db, kDoc).add(kStyle, QDate(2027, 4, 1));
                          // The new date makes the work data out of date: made again, as a user would.
                          mustBe(WorkDataBuild(f.db, quiet).build(kStyle, kDoc), quiet, "build again");
                          mustBe(SettingSubstitution(f.db, quiet).run(kStyle, kDoc), quiet, "substitute again");
                          mustBe(exportInto(f, RenderOptions{}, true), f.prompt, "the second version");
                          clearOutputs(f);
                          return [&f] {
                              return ComparisonExport(f.db, f.prompt)
                                  .write(ComparisonRequest{kStyle, kDoc, std::nullopt, std::nullopt, kCompany}, outputPath(f, "table.docx"),
                                         outputPath(f, "table.txt"));
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("words list"),
                      [](Fixture &f) -> Run {
                          prepareSubstitution(f);
                          return [&f] {
                              return ExcelLists(f.db, f.prompt).write(ListKind::BasicWords, kStyle, kDoc, outputPath(f, "list.xlsx"));
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
    list << FaultStep{QStringLiteral("clause update with a new code"),
                      [](Fixture &f) -> Run {
                          addEntryChain(f, 3);
                          auto editor = openParagraph(f);
                          auto paragraphs =
                              std::make_shared<dictionary::EntryEditor>(f.db, kStyle, kDoc, Level::Paragraph, kEntryChain.mid(0, 2));
                          return [&f, editor, paragraphs] {
                              editor->segments()[0].text = QStringLiteral("改めた本文");
                              return paragraphs->updateClause(f.prompt, *editor, QStringLiteral("72"));
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
    list << FaultStep{QStringLiteral("company file read in"),
                      [](Fixture &f) -> Run {
                          const QString file = companyFileOf(f, kCompany);
                          return [&f, file] {
                              f.prompt.answer({true});
                              return CompanyTransfer(f.root.layout(), f.prompt).importFile(file, QStringLiteral("乙"));
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("company file read in over a company"),
                      [](Fixture &f) -> Run {
                          const QString file = companyFileOf(f, kCompany);
                          f.root.makeCompany(QStringLiteral("丙"));
                          return [&f, file] {
                              f.prompt.answer({true});
                              return CompanyTransfer(f.root.layout(), f.prompt).importFile(file, QStringLiteral("丙"));
                          };
                      },
                      kDescription};
    list << FaultStep{QStringLiteral("checkout"),
                      [](Fixture &f) -> Run {
                          f.root.makeCompany(QStringLiteral("丙"));
                          QDir().mkpath(carriedFolder(f));
                          return [&f] {
                              f.prompt.answer({true});
                              return CompanyTransfer(f.root.layout(), f.prompt)
                                  .checkout(QStringLiteral("丙"), carriedFolder(f) + QStringLiteral("/丙.sqlite"));
                          };
                      },
                      kDescription, true};
    list << FaultStep{QStringLiteral("checkin"),
                      [](Fixture &f) -> Run {
                          f.root.makeCompany(QStringLiteral("丙"));
                          QDir().mkpath(carriedFolder(f));
                          const QString file = carriedFolder(f) + QStringLiteral("/丙.sqlite");
                          ScriptedPrompt quiet;
                          quiet.answer({true});
                          mustBe(CompanyTransfer(f.root.layout(), quiet).checkout(QStringLiteral("丙"), file), quiet, "checkout");
                          addUserChain(file);
                          return [&f, file] {
                              f.prompt.answer({true});
                              return CompanyTransfer(f.root.layout(), f.prompt).checkin(QStringLiteral("丙"), file);
                          };
                      },
                      kDescription, true};
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

// The data folder's entries (lock files aside), those of the folder of carried company
// files, and the content of every company: on the server, read through the store, with
// the mark of a company taken out.
QStringList dumpAll(const DataLayout &layout)
{
    QStringList lines;
    for (const QString &folder : {layout.dataDir(), layout.appPath + QStringLiteral("/持ち出し")}) {
        QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            if (!path.endsWith(QStringLiteral(".lock")))
                lines << path.mid(layout.appPath.size());
        }
    }
    lines.sort();
    if (layout.store.isEmpty()) {
        for (const QString &company : layout.companyList())
            lines += dumpFile(layout.companyFile(company));
        return lines;
    }
    const ServerStore store(layout);
    for (const QString &company : store.companyList()) {
        const std::optional<TakenOut> mark = store.takenOut(company);
        lines << company + QStringLiteral("|taken out|") + (mark ? mark->by + u'|' + mark->at + u'|' + mark->digest : QString());
        lines += dumpCompany(layout, company);
    }
    return lines;
}

// The fault points to try: all of them when there are few, else the first ones, an
// even spread and the last ones (a long step runs to thousands of row reads). On the
// server, where each run of a step costs many round trips, a third as many.
QList<int> faultPoints(int count)
{
    const bool server = TestServer::requested();
    const int all = server ? 20 : 60, first = server ? 7 : 20, last = server ? 3 : 10, spread = server ? 10 : 30;
    QList<int> points;
    for (int n = 1; n <= count; ++n) {
        if (count <= all || n <= first || n > count - last || n % (count / spread + 1) == 0)
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
        if (s.serverOnly && !TestServer::requested())
            QSKIP("a step of the server store only: the folder store refuses it (tst_office)");

        // A dry run counts the step's statements and row reads.
        int count = 0;
        {
            Fixture dry;
            const Run run = s.prepare(dry);
            FaultInjection::arm(0, 0);
            const Outcome outcome = run();
            QVERIFY2(outcome == Outcome::Done, qUtf8Printable(dry.prompt.lines().join(u'\n')));
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
            // The Japanese text of the I/O error, naming the file, is shown: on the last
            // line of the step's report, or in a box of its own before it.
            QVERIFY2(std::any_of(shown.begin(), shown.end(), [](const Shown &m) { return isToldAsIoError(m.text.section(u'\n', -1)); }),
                     qUtf8Printable(where + u' ' + f.prompt.lines().join(u'\n')));
            switch (s.report.kind) {
            case FailureReport::Kind::Cancelled:
                QVERIFY2(last.toString().startsWith(kCancelled + u'\n'), qUtf8Printable(where + u' ' + last.toString()));
                QCOMPARE(int(last.icon), int(s.report.icon));
                break;
            case FailureReport::Kind::Description:
                QCOMPARE(last.title, kProgramTitle);
                QVERIFY2(isToldAsIoError(last.text), qUtf8Printable(where + u' ' + last.text));
                break;
            case FailureReport::Kind::Fixed:
                // On the server the list of the companies is read before the step itself: a
                // failure there is told as the server's own.
                QVERIFY2(last.toString().startsWith(s.report.line + u'\n') || (TestServer::requested() && isToldAsIoError(last.text)),
                         qUtf8Printable(where + u' ' + last.toString()));
                break;
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
        const auto exportOnce = [&] {
            DocxOutput output(docx);
            VersionOutput version(f.db, kStyle, kDoc);
            return DocumentExport(f.db, f.prompt).write(kStyle, kDoc, RenderOptions{}, {&output, &version});
        };
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

    // SQLite's failures as the user is told them: the Japanese text of the result code,
    // naming the file (and the backup of a damaged company), and the detail in the log.
    void sqliteFailuresAreToldInJapanese_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");   // %1 the file, %2 the backup, %3 the company's folder
        QTest::addColumn<QString>("logged"); // what the log line holds after the code and the file
        const QString cancelled = QStringLiteral("取消: 処理中にエラーが発生しました。処理を取り消します。\n");
        QTest::newRow("disk full") << QStringLiteral("full") << 13
                                   << cancelled
                                          + QStringLiteral("ディスクがいっぱいのため、「%1」に書き込めません。"
                                                           "ディスクに空きを作ってから、やり直してください。")
                                   << QStringLiteral("database or disk is full");
        QTest::newRow("I/O error") << QStringLiteral("io") << 10
                                   << cancelled
                                          + QStringLiteral("「%1」の読み書きでディスクのエラーが起きました。"
                                                           "ディスクの状態と空きを確かめてから、やり直してください。")
                                   << QStringLiteral("disk I/O error (injected at statement 1)\tBEGIN IMMEDIATE");
        QTest::newRow("held by another program")
            << QStringLiteral("busy") << 5
            << cancelled + QStringLiteral("「%1」は他のプログラムが使用中です。他のプログラムの処理が終わってから、やり直してください。")
            << QStringLiteral("BEGIN IMMEDIATE");
        QTest::newRow("read-only") << QStringLiteral("readonly") << 8
                                   << cancelled
                                          + QStringLiteral("「%1」に書き込めません（読み取り専用です）。"
                                                           "ファイルとフォルダに書き込みの許可があるか確かめてください。")
                                   << QStringLiteral("INSERT INTO 施行日");
        QTest::newRow("damaged") << QStringLiteral("corrupt") << 11
                                 << kProgramTitle
                                        + QStringLiteral(
                                            ": 「%1」は壊れています。バックアップ「%2」の中のファイルを「%3」へ写して戻してください。")
                                 << QStringLiteral("SELECT count(*) FROM 項");
        QTest::newRow("no database") << QStringLiteral("notadb") << 26
                                     << kProgramTitle
                                            + QStringLiteral(": 「%1」は壊れているか、会社データのファイルではありません。"
                                                             "バックアップ「%2」の中のファイルを「%3」へ写して戻してください。")
                                     << QStringLiteral("SELECT count(*) FROM 項");
        // SQLite's extended codes are told by their primary code; one we can't make for
        // real (we run as any user, root included) is told from the table.
        QTest::newRow("cannot open")
            << QStringLiteral("table") << 14
            << kProgramTitle + QStringLiteral(": 「%1」を開けません。ファイルとフォルダがあるか、読み書きの許可があるか確かめてください。")
            << QStringLiteral("unable to open database file");
        QTest::newRow("short read") << QStringLiteral("table") << 522
                                    << kProgramTitle
                                           + QStringLiteral(": 「%1」の読み書きでディスクのエラーが起きました。"
                                                            "ディスクの状態と空きを確かめてから、やり直してください。")
                                    << QStringLiteral("unable to open database file");
        QTest::newRow("busy snapshot")
            << QStringLiteral("table") << 517
            << kProgramTitle
                   + QStringLiteral(": 「%1」は他のプログラムが使用中です。他のプログラムの処理が終わってから、やり直してください。")
            << QStringLiteral("unable to open database file");
    }
    void sqliteFailuresAreToldInJapanese()
    {
        QFETCH(QString, kind);
        QFETCH(int, code);
        QFETCH(QString, text);
        QFETCH(QString, logged);
        if (TestServer::requested())
            QSKIP("SQLite's failures of a company file: only the folder store keeps its companies in files");
        Fixture f;
        ErrorLog::setFolder(f.root.path());
        ErrorLog::setCommand(QStringLiteral("tst_faults"));
        const DataLayout layout = f.root.layout();
        QString file = layout.companyFile(kCompany);
        const QString company = QStringLiteral("丙");
        const auto failure = [&](const std::function<void()> &work) {
            try {
                work();
            } catch (const Failure &e) {
                f.prompt.failure(e.text());
            }
        };
        const auto insertDate = [&](QSqlDatabase db) {
            return runInTransaction(f.prompt, db, [&] {
                execSql(db, QStringLiteral("INSERT INTO 施行日 (規程Code, 文章形式Code, 年月日) VALUES ('01', '1', ?)"),
                        {QString(400000, u'x')});
            });
        };
        if (kind == u"full") {
            execSql(f.db, QStringLiteral("PRAGMA max_page_count = %1").arg(scalar(f.db, QStringLiteral("PRAGMA page_count")).toInt()));
            QVERIFY(!insertDate(f.db));
        } else if (kind == u"io") {
            FaultInjection::arm(1, 0);
            QVERIFY(!insertDate(f.db));
        } else if (kind == u"busy") {
            {
                QSqlDatabase holder = openDatabase(file, QStringLiteral("holder"));
                execSql(holder, QStringLiteral("BEGIN IMMEDIATE"));
                QVERIFY(!insertDate(f.db));
                execSql(holder, QStringLiteral("ROLLBACK"));
            }
            closeDatabase(QStringLiteral("holder"));
        } else if (kind == u"readonly") {
            {
                QSqlDatabase readOnly = openDatabase(file, QStringLiteral("readonly"), OpenMode::ReadOnly);
                QVERIFY(!insertDate(readOnly));
            }
            closeDatabase(QStringLiteral("readonly"));
        } else if (kind == u"corrupt" || kind == u"notadb") {
            f.root.makeCompany(company);
            file = layout.companyFile(company);
            const int pageSize = valueIn(file, QStringLiteral("PRAGMA page_size")).toInt();
            QFile damaged(file);
            QVERIFY(damaged.open(QIODevice::ReadWrite));
            const qint64 size = damaged.size();
            // Every page but the first (the schema), or the whole file with its header.
            const qint64 from = kind == u"corrupt" ? pageSize : 0;
            QVERIFY(damaged.seek(from));
            damaged.write(QByteArray(size - from, '\xff'));
            damaged.close();
            {
                QSqlDatabase db = openDatabase(file, QStringLiteral("damaged"));
                failure([&] { scalar(db, QStringLiteral("SELECT count(*) FROM 項")); });
            }
            closeDatabase(QStringLiteral("damaged"));
        } else {
            failure([&] { throw DbError(code, file, logged); });
        }
        const QString backup = f.root.path() + QStringLiteral("/BackupDB/") + QFileInfo(file).completeBaseName();
        text.replace(QStringLiteral("%1"), file)
            .replace(QStringLiteral("%2"), backup)
            .replace(QStringLiteral("%3"), QFileInfo(file).absolutePath());
        QCOMPARE(f.prompt.lines(), QStringList{text});
        // The log's last line: the time, the command, the code, the file, SQLite's text and the statement.
        QFile log(ErrorLog::fileOf(f.root.path()));
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QString line = QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts).last();
        const QString head = QStringLiteral("\ttst_faults\tSQLite %1\t%2\t").arg(code).arg(file);
        QVERIFY2(QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ\\t")).match(line).hasMatch(),
                 qUtf8Printable(line));
        QVERIFY2(line.contains(head) && line.section(head, 1).contains(logged), qUtf8Printable(line));
        ErrorLog::setFolder(QString());
    }

    // A backup or a compaction that fails, at any statement or at the sync of the copy,
    // leaves no file of its own: no backup folder it made, no part, no journal, no work file.
    void backupAndCompactionLeaveNoFileOfTheirs_data()
    {
        QTest::addColumn<bool>("backup");
        QTest::addColumn<bool>("sync");
        QTest::addColumn<bool>("earlierBackup");
        QTest::newRow("backup / statements") << true << false << false;
        QTest::newRow("backup / sync") << true << true << false;
        QTest::newRow("backup over an earlier one / sync") << true << true << true;
        QTest::newRow("compaction / statements") << false << false << false;
    }
    void backupAndCompactionLeaveNoFileOfTheirs()
    {
        QFETCH(bool, backup);
        QFETCH(bool, sync);
        QFETCH(bool, earlierBackup);
        if (TestServer::requested())
            QSKIP("the files of a backup and a compaction of a company file: only the folder store keeps its companies in files");
        Fixture f;
        const QString company = QStringLiteral("丙");
        f.root.makeCompany(company);
        const DataLayout layout = f.root.layout();
        const auto run = [&] {
            f.prompt.answer({true});
            return backup ? Maintenance(layout, f.prompt).backup(company) : Maintenance(layout, f.prompt).optimise(company);
        };
        if (earlierBackup)
            QCOMPARE(run(), Outcome::Done);
        const auto files = [&] {
            QStringList found;
            for (const QString &dir : {layout.companyDir(company), layout.backupRoot()}) {
                QDirIterator it(dir, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
                while (it.hasNext()) {
                    const QString path = it.next();
                    if (!path.endsWith(QStringLiteral(".lock")))
                        found << path + QStringLiteral(" ") + QString::number(QFileInfo(path).size());
                }
            }
            found.sort();
            return found;
        };
        const QStringList before = files();
        QList<int> points = {0};
        if (!sync) {
            FaultInjection::arm(0, 0);
            QCOMPARE(run(), Outcome::Done);
            const int count = FaultInjection::statementsSeen();
            FaultInjection::disarm();
            // Back to the start: the first backup goes again.
            if (backup)
                QVERIFY(QDir(layout.backupRoot()).removeRecursively());
            points.clear();
            for (int n = 1; n <= count; ++n)
                points << n;
        }
        for (int n : points) {
            f.prompt.clear();
            if (sync)
                failSyncsForTests(true);
            else
                FaultInjection::arm(n, 0);
            const Outcome outcome = run();
            failSyncsForTests(false);
            FaultInjection::disarm();
            QCOMPARE(outcome, Outcome::Failed);
            QCOMPARE(files(), before);
        }
        if (sync) {
            const QString part = layout.backupDir(company) + u'/' + company + QStringLiteral(".sqlite.part");
            QCOMPARE(f.prompt.lines().last(),
                     QStringLiteral("バックアップの確認: バックアップに失敗しました。\n「%1」をディスクに書き込めません。"
                                    "ディスクの状態と空きを確かめてから、やり直してください。")
                         .arg(part));
        }
    }
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
