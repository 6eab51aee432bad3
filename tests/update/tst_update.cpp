// ディクショナリ更新: three releases made from the project's own sources, companies made
// from the first and updated to the others, entry by entry.

#include "CliRun.h"
#include "ReleaseSources.h"
#include "OfficeRender.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "UserEntries.h"
#include "base/AppState.h"
#include "base/CompanyLock.h"
#include "composition/ClauseAdder.h"
#include "rulebase/CompositionRow.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/EntryText.h"
#include "dictionary/SegmentEditor.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/EffectiveDates.h"
#include "shell/forms/FormHelpers.h"
#include "update/CompanyUpdate.h"
#include "update/forms/frmDicUpdate.h"
#include "update/UpdateReport.h"
#include "words/EmbeddedWords.h"

#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kCompany = QStringLiteral("甲");
const QString kTitleLine = QStringLiteral("ディクショナリ更新: ");
const QString kNewer = QStringLiteral("2099.01");
const QString kNewest = QStringLiteral("2099.02");

// Every row of the tables that hold document 75, the user's own, in one text.
QString userRows(QSqlDatabase db)
{
    QString out;
    for (const QString &table : {QStringLiteral("規程"), QStringLiteral("前文"), QStringLiteral("章"), QStringLiteral("条"),
                                 QStringLiteral("項"), QStringLiteral("号"), QStringLiteral("号の細分丸"), QStringLiteral("号の細分イロハ"),
                                 QStringLiteral("変数テーブル語句"), QStringLiteral("変数テーブル番号")}) {
        const QString key = table == u"規程" ? QStringLiteral("Code") : QStringLiteral("規程Code");
        RowReader rows = execSql(db, QStringLiteral("SELECT * FROM \"%1\" WHERE %2 = '75' ORDER BY ID").arg(table, key));
        while (rows.next()) {
            QStringList values;
            for (int i = 0; i < rows.record().count(); ++i)
                values << rows.value(i).toString();
            out += table + u':' + values.join(u',') + u'\n';
        }
    }
    return out;
}

QString clauseText(QSqlDatabase db, const QString &style, const QString &article, const QString &paragraph)
{
    QStringList parts;
    RowReader rows = execSql(db,
                             QStringLiteral("SELECT 項 FROM 項 WHERE 文章形式Code = ? AND 規程Code = '01' AND 条Code = ? AND Code = ? "
                                            "ORDER BY CAST(結合 AS INTEGER)"),
                             {style, article, paragraph});
    while (rows.next())
        parts << rows.value(0).toString();
    return parts.join(QString());
}

// The basic settings filled and the composed documents dated, as a company that has
// printed them has them.
void dateDocuments(QSqlDatabase db)
{
    BasicSettings settings(db);
    QStringList values = settings.load();
    values[0] = QStringLiteral("株式会社甲");
    settings.save(values, QStringLiteral("1"));
    RowReader rows = execSql(db, QStringLiteral("SELECT Code FROM 規程 WHERE 文章形式Code = '1' AND 選択フラグ = 1"));
    QStringList documents;
    while (rows.next())
        documents << rows.value(0).toString();
    for (const QString &document : documents)
        EffectiveDates(db, document).add(QStringLiteral("1"), QDate(2026, 4, 1));
}

const UpdateEntry *entryAt(const UpdateResult &result, const QString &place)
{
    for (const UpdateEntry &e : result.entries) {
        if (e.place == place)
            return &e;
    }
    return nullptr;
}

// The release company name records, in whichever store it is kept.
QString releaseIn(const TestRoot &root, const QString &name)
{
    QString release;
    inCompany(root.layout(), name, OpenMode::ReadOnly, [&](QSqlDatabase db) { release = recordedRelease(db); });
    return release;
}

// Every paragraph of the company in stored order.
QString allParagraphs(const TestRoot &root)
{
    return columnInCompany(root.layout(), kCompany, QStringLiteral("SELECT 項 FROM 項 ORDER BY ID")).join(QString());
}

} // namespace

class TestUpdate : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void releaseFileRoundTrip();
    void damagedReleaseFile();
    void everyKindOfChange();
    void threeClausesAndAStockArticle();
    void companyWithoutRecord();
    void newerCompanyRefused();
    void dryRunKeepsTheCompany();
    void recordTravelsWithCopies();
    void allCompanies();
    void commandLine();
    void dialog();

private:
    // A program folder whose seed file is that of release a, with every release recorded.
    void install(const TestRoot &root, const QString &seed) const;
    void customise(QSqlDatabase db) const;
    QString seedOf(const QString &name) const { return m_dir.path() + u'/' + name + QStringLiteral(".sqlite"); }

    QTemporaryDir m_dir;
    Release m_first, m_every, m_three;
    QString m_probationChapter, m_probationArticle, m_probationParagraph;
};

void TestUpdate::initTestCase()
{
    const QString first = m_dir.path() + QStringLiteral("/first");
    copySources(first);
    m_first = makeRelease(first, readText(first + QStringLiteral("/release.txt")).trimmed(), seedOf(QStringLiteral("first")));

    // Changes of every kind to document 01.
    const QString every = m_dir.path() + QStringLiteral("/every");
    copySources(every);
    editDocument01(every, [](QStringList lines) {
        lines = appendToParagraph(lines, QStringLiteral("0001"), QStringLiteral("02"), QStringLiteral("（改）"));
        lines = appendToParagraph(lines, QStringLiteral("0004"), QStringLiteral("02"), QStringLiteral("（改）"));
        lines = appendToParagraph(lines, QStringLiteral("0005"), QStringLiteral("01"), QStringLiteral("（改）"));
        lines = replaceLine(lines, QStringLiteral("語句 0002 試用期間 = ３か月"), QStringLiteral("語句 0002 試用の期間 = ６か月"));
        lines = replaceLine(lines, QStringLiteral("参照 0001 条0002 項01 号01"), QStringLiteral("参照 0001 条0002 項01 号02"));
        lines = removeParagraph(lines, QStringLiteral("0006"), QStringLiteral("03"));
        lines = removeParagraph(lines, QStringLiteral("0014"), QStringLiteral("02"));
        lines =
            appendArticle(lines, QStringLiteral("6901"), QStringLiteral("在庫の条"), QStringLiteral("在庫として加える条文である。"), true);
        lines =
            appendArticle(lines, QStringLiteral("6902"), QStringLiteral("標準の条"), QStringLiteral("標準案に加える条文である。"), false);
        return lines;
    });
    m_every = makeRelease(every, kNewer, seedOf(QStringLiteral("every")));

    // Three clauses of 01 changed and one stock article added.
    const QString three = m_dir.path() + QStringLiteral("/three");
    copySources(three);
    editDocument01(three, [](QStringList lines) {
        lines = appendToParagraph(lines, QStringLiteral("0001"), QStringLiteral("02"), QStringLiteral("（改）"));
        lines = appendToParagraph(lines, QStringLiteral("0004"), QStringLiteral("02"), QStringLiteral("（改）"));
        lines = appendToParagraph(lines, QStringLiteral("0005"), QStringLiteral("01"), QStringLiteral("（改）"));
        lines =
            appendArticle(lines, QStringLiteral("6901"), QStringLiteral("在庫の条"), QStringLiteral("在庫として加える条文である。"), true);
        return lines;
    });
    m_three = makeRelease(three, kNewest, seedOf(QStringLiteral("three")));

    {
        QSqlDatabase db = openDatabase(seedOf(QStringLiteral("first")), QStringLiteral("test_probe_seed"), OpenMode::ReadOnly);
        RowReader rows =
            execSql(db, QStringLiteral("SELECT 章Code, 条Code, 項Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND Code = '0002'"));
        QVERIFY(rows.next());
        m_probationChapter = rows.value(0).toString();
        m_probationArticle = rows.value(1).toString();
        m_probationParagraph = rows.value(2).toString();
    }
    closeDatabase(QStringLiteral("test_probe_seed"));
}

// The company edits 条0005 項01 through the level editor, sets a word, keeps entries of its own.
void TestUpdate::customise(QSqlDatabase db) const
{
    ScriptedPrompt prompt;
    const dictionary::EntryEditor paragraphs(db, QStringLiteral("1"), QStringLiteral("01"), Level::Paragraph,
                                             {QStringLiteral("01"), QStringLiteral("0005")});
    dictionary::SegmentEditor editor(db, paragraphs.placeOf(QStringLiteral("01")), paragraphs.documentKind());
    QVERIFY(editor.open(prompt));
    editor.segments()[0].text += QStringLiteral("（当社）");
    QCOMPARE(editor.update(prompt), Outcome::Done);
    EmbeddedWords(db, QStringLiteral("1"), QStringLiteral("01"))
        .save(m_probationChapter, m_probationArticle, {{QStringLiteral("0002"), QStringLiteral("２か月")}});
    addUserChain(db);
}

void TestUpdate::install(const TestRoot &root, const QString &seed) const
{
    QFile::remove(root.layout().seedFile());
    QVERIFY(QFile::copy(seed, root.layout().seedFile()));
    const QString releases = releasesFolder(root.path());
    QDir(releases).removeRecursively();
    QDir().mkpath(releases);
    for (const Release *r : {&m_first, &m_every, &m_three})
        writeText(releases + u'/' + r->name + QStringLiteral(".tsv"), releaseFileText(*r));
}

void TestUpdate::releaseFileRoundTrip()
{
    const QString path = m_dir.path() + u'/' + m_every.name + QStringLiteral(".tsv");
    writeText(path, releaseFileText(m_every));
    const Release read = parseReleaseFile(path);
    QCOMPARE(read.name, m_every.name);
    QCOMPARE(read.prints.size(), m_every.prints.size());
    QVERIFY(read.prints == m_every.prints);
    const QString key = QStringLiteral("1|4|01|01|0001|02|||");
    QCOMPARE(read.prints.value(key).text, m_every.prints.value(key).text);
    QVERIFY(read.prints.value(key).text.endsWith(QStringLiteral("（改）")));
    QCOMPARE(releaseNumber(QStringLiteral("2026.11")), 202611);
    QCOMPARE(releaseName(202611), QStringLiteral("2026.11"));
    QCOMPARE(releaseNumber(QStringLiteral("2026.13")), 0);
}

void TestUpdate::damagedReleaseFile()
{
    const QString path = m_dir.path() + u'/' + m_first.name + QStringLiteral(".tsv");
    QString text = releaseFileText(m_first);
    const qsizetype at = text.lastIndexOf(u'\t') + 1;
    text[at] = text[at] == u'あ' ? u'い' : u'あ';
    writeText(path, text);
    QVERIFY_THROWS_EXCEPTION(Failure, parseReleaseFile(path));
    writeText(path, releaseFileText(m_first).section(u'\n', 0, 10));
    QVERIFY_THROWS_EXCEPTION(Failure, parseReleaseFile(path));
}

void TestUpdate::everyKindOfChange()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    QSqlDatabase db = root.openCompany(kCompany);
    QCOMPARE(recordedRelease(db), m_first.name);
    ScriptedPrompt prompt;
    customise(db);
    const QString companyText = clauseText(db, QStringLiteral("1"), QStringLiteral("0005"), QStringLiteral("01"));
    const QString ownBefore = userRows(db);
    dateDocuments(db);
    const int composedBefore = scalar(db, QStringLiteral("SELECT COUNT(*) FROM 作成データ補助項～")).toInt();

    install(root, seedOf(QStringLiteral("every")));
    prompt.clear();
    UpdateResult result;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, {}, result), Outcome::Done);
    QVERIFY2(prompt.lines().isEmpty(), qUtf8Printable(prompt.lines().join(u'\n')));
    QCOMPARE(result.from, m_first.name);
    QCOMPARE(result.to, kNewer);
    QVERIFY(QFileInfo::exists(result.backup + u'/' + kCompany + QStringLiteral(".sqlite")));
    QVERIFY(result.backup.startsWith(root.layout().backupRoot()));

    struct Expected {
        QString place;
        UpdateKind kind;
    };
    const QString probation = QStringLiteral(":規程01:章%1:条%2:項%3").arg(m_probationChapter, m_probationArticle, m_probationParagraph);
    const QList<Expected> expected = {
        {QStringLiteral("1:規程01:章01:条0001:項02"), UpdateKind::Replaced},
        {QStringLiteral("2:規程01:章01:条0001:項02"), UpdateKind::Replaced},
        {QStringLiteral("1:規程01:章01:条0004:項02"), UpdateKind::Replaced},
        {QStringLiteral("1:規程01:章01:条0005:項01"), UpdateKind::Conflict},
        {QStringLiteral("2:規程01:章01:条0005:項01"), UpdateKind::Replaced},
        {QStringLiteral("1:規程01:章01:条0003:項01"), UpdateKind::Replaced},
        {QStringLiteral("1") + probation, UpdateKind::Replaced},
        {QStringLiteral("2") + probation, UpdateKind::Replaced},
        {QStringLiteral("1:規程01:章01:条0006:項03"), UpdateKind::Kept},
        {QStringLiteral("2:規程01:章01:条0006:項03"), UpdateKind::Removed},
        {QStringLiteral("1:規程01:章02:条0014:項02"), UpdateKind::Removed},
        {QStringLiteral("1:規程01:章14:条6902"), UpdateKind::Proposed},
        {QStringLiteral("2:規程01:章14:条6902"), UpdateKind::Added},
    };
    for (const Expected &e : expected) {
        const UpdateEntry *found = entryAt(result, e.place);
        QVERIFY2(found, qUtf8Printable(e.place + QStringLiteral(" not listed:\n") + updateReportText(result)));
        QVERIFY2(found->kind == e.kind, qUtf8Printable(e.place + u' ' + updateKindCaption(found->kind) + u' ' + found->note));
    }
    // The stock article and its 項 are in the stock.
    bool stockArticle = false;
    for (const UpdateEntry &e : result.entries)
        stockArticle = stockArticle || (e.place.endsWith(QStringLiteral(":条6901")) && e.kind == UpdateKind::Added);
    QVERIFY(stockArticle);
    QCOMPARE(scalar(db, QStringLiteral("SELECT 選択フラグ FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '01' AND Code = '6901'")).toInt(),
             0);
    QCOMPARE(scalar(db, QStringLiteral("SELECT 選択フラグ FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '01' AND Code = '6902'")).toInt(),
             0);

    // The 競合 with its three texts; the company's text is kept.
    const UpdateEntry *conflict = entryAt(result, QStringLiteral("1:規程01:章01:条0005:項01"));
    QCOMPARE(conflict->company, companyText);
    QCOMPARE(conflict->offered, conflict->shipped + QStringLiteral("（改）"));
    QVERIFY(conflict->company.endsWith(QStringLiteral("（当社）")));
    QCOMPARE(conflict->article, QStringLiteral("第５条"));
    QCOMPARE(clauseText(db, QStringLiteral("1"), QStringLiteral("0005"), QStringLiteral("01")), companyText);
    QVERIFY(clauseText(db, QStringLiteral("1"), QStringLiteral("0001"), QStringLiteral("02")).endsWith(QStringLiteral("（改）")));

    // The word: the new caption, the company's value.
    RowReader word =
        execSql(db, QStringLiteral("SELECT 表示名称, 語句, 選択フラグ FROM 変数テーブル語句 WHERE 規程Code = '01' AND Code = '0002'"));
    QVERIFY(word.next());
    QCOMPARE(word.value(0).toString(), QStringLiteral("試用の期間"));
    QCOMPARE(word.value(1).toString(), QStringLiteral("２か月"));
    QCOMPARE(word.value(2).toInt(), 1);
    QVERIFY(!word.next());
    // The reference's new target.
    QCOMPARE(scalar(db, QStringLiteral(
                            "SELECT 変換参照■号Code FROM 変数テーブル番号 WHERE 規程Code = '01' AND 条Code = '0003' AND Code = '0001'"))
                 .toString(),
             QStringLiteral("02"));
    // The removed stock clause is gone with its rows; the composed one stays in style 1 only.
    QVERIFY(!scalar(db, QStringLiteral("SELECT 1 FROM 項 WHERE 規程Code = '01' AND 条Code = '0014' AND Code = '02'")).isValid());
    QCOMPARE(
        scalar(db, QStringLiteral("SELECT COUNT(DISTINCT 文章形式Code) FROM 項 WHERE 規程Code = '01' AND 条Code = '0006' AND Code = '03'"))
            .toInt(),
        1);
    QVERIFY(
        scalar(db, QStringLiteral("SELECT 1 FROM 変数テーブル番号 WHERE 規程Code = '01' AND 条Code = '0006' AND 項Code = '03'")).isValid());

    // Composition intact: the same rows, the replaced clause's text followed.
    QCOMPARE(scalar(db, QStringLiteral("SELECT COUNT(*) FROM 作成データ補助項～")).toInt(), composedBefore);
    QVERIFY(
        scalar(db, QStringLiteral("SELECT 文章 FROM 作成データ補助項～ WHERE 文章形式Code = '1' AND 規程Code = '01' AND 条Code = '0001' "
                                  "AND 項Code = '02' AND 種別 = '4'"))
            .toString()
            .endsWith(QStringLiteral("（改）")));
    QCOMPARE(userRows(db), ownBefore);
    QCOMPARE(recordedRelease(db), kNewer);

    // The 新旧対照表 of 01: exactly the replaced clauses that print differently.
    const DocumentComparison *comparison = nullptr;
    for (const DocumentComparison &c : result.comparisons) {
        if (c.style == u"1" && c.document == u"01")
            comparison = &c;
    }
    QVERIFY(comparison);
    QVERIFY(comparison->before && comparison->after && comparison->before != comparison->after);
    for (const QString &label : {QStringLiteral("第１条"), QStringLiteral("第３条"), QStringLiteral("第４条")})
        QVERIFY2(comparison->text.contains(label), qUtf8Printable(label + u'\n' + comparison->text));
    for (const QString &label : {QStringLiteral("第５条"), QStringLiteral("第６条"), QStringLiteral("第２条")})
        QVERIFY2(!comparison->text.contains(label), qUtf8Printable(label + u'\n' + comparison->text));

    // The second run changes nothing.
    prompt.clear();
    UpdateResult again;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, {}, again), Outcome::Done);
    QVERIFY(again.entries.isEmpty());
    QVERIFY(again.backup.isEmpty());

    // Taking the new text later is a new release's business; the report says where.
    const QString text = updateReportText(result);
    QVERIFY(text.contains(QStringLiteral("［競合］1:規程01:章01:条0005:項01　就業規則　第５条")));
    QVERIFY(text.contains(QStringLiteral("出荷時の文章:")));
    const QString xlsx = root.path() + QStringLiteral("/report.xlsx");
    writeUpdateReport(xlsx, result);
    QVERIFY(QFileInfo(xlsx).size() > 0);
}

void TestUpdate::threeClausesAndAStockArticle()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    QSqlDatabase db = root.openCompany(kCompany);
    ScriptedPrompt prompt;
    customise(db);
    const QString ownBefore = userRows(db);
    dateDocuments(db);

    install(root, seedOf(QStringLiteral("three")));
    UpdateResult result;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, {}, result), Outcome::Done);
    QCOMPARE(result.from, m_first.name);
    QCOMPARE(result.to, kNewest);
    QStringList styleOne;
    for (const UpdateEntry &e : result.entries) {
        if (e.place.startsWith(u"1:"))
            styleOne << updateKindCaption(e.kind) + u' ' + e.place;
    }
    styleOne.sort();
    QStringList expected{QStringLiteral("置換 1:規程01:章01:条0001:項02"), QStringLiteral("置換 1:規程01:章01:条0004:項02"),
                         QStringLiteral("追加 1:規程01:章14:条6901"), QStringLiteral("追加 1:規程01:章14:条6901:項01"),
                         QStringLiteral("競合 1:規程01:章01:条0005:項01")};
    expected.sort();
    QCOMPARE(styleOne, expected);
    const UpdateEntry *conflict = entryAt(result, QStringLiteral("1:規程01:章01:条0005:項01"));
    QVERIFY(conflict->company.endsWith(QStringLiteral("（当社）")));
    QVERIFY(conflict->offered.endsWith(QStringLiteral("（改）")));
    QVERIFY(!conflict->shipped.contains(QStringLiteral("（")) || conflict->shipped != conflict->company);
    QCOMPARE(scalar(db, QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE 規程Code = '01' AND Code = '0002'")).toString(),
             QStringLiteral("２か月"));
    QCOMPARE(userRows(db), ownBefore);
    QCOMPARE(scalar(db, QStringLiteral("SELECT 選択フラグ FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '01' AND Code = '6901'")).toInt(),
             0);
    for (const DocumentComparison &c : result.comparisons) {
        if (c.style != u"1" || c.document != u"01") {
            QVERIFY2(c.text.isEmpty(), qUtf8Printable(c.name + u'\n' + c.text));
            continue;
        }
        QVERIFY2(c.text.contains(QStringLiteral("第１条")),
                 qUtf8Printable(QStringLiteral("%1 %2 %3 %4").arg(c.before).arg(c.after).arg(c.note, c.text)));
        QVERIFY(c.text.contains(QStringLiteral("第４条")));
        QVERIFY(!c.text.contains(QStringLiteral("第５条")));
        QCOMPARE(c.text.count(QStringLiteral("（改）")), 2);
    }
}

void TestUpdate::companyWithoutRecord()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    root.makeCompany(kCompany);
    inCompany(root.layout(), kCompany, OpenMode::ReadWrite,
              [](QSqlDatabase db) { execSql(db, SqlDialect::of(db).writeReleaseSql.arg(0)); });
    install(root, seedOf(QStringLiteral("every")));
    ScriptedPrompt prompt;
    UpdateResult result;
    UpdateOptions options;
    options.compare = false;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, options, result), Outcome::Done);
    QCOMPARE(prompt.lines(),
             QStringList{kTitleLine
                         + QStringLiteral("『甲』には辞書の版が記録されていません。最もよく一致する版 %1 で作成されたものとして扱います。")
                               .arg(m_first.name)});
    QVERIFY(result.guessed);
    QCOMPARE(result.from, m_first.name);
    QVERIFY(entryAt(result, QStringLiteral("1:規程01:章01:条0001:項02")));
    QCOMPARE(releaseIn(root, kCompany), kNewer);
}

void TestUpdate::newerCompanyRefused()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("every")));
    root.makeCompany(kCompany);
    QCOMPARE(releaseIn(root, kCompany), kNewer);
    install(root, seedOf(QStringLiteral("first")));
    ScriptedPrompt prompt;
    UpdateResult result;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, {}, result), Outcome::Stopped);
    QCOMPARE(prompt.lines(), QStringList{kTitleLine + QStringLiteral("『甲』は、このプログラムより新しい辞書で作成されています。")});
    QCOMPARE(releaseIn(root, kCompany), kNewer);
    QVERIFY(!QDir(root.layout().backupRoot()).exists() || QDir(root.layout().backupRoot()).isEmpty());
}

void TestUpdate::dryRunKeepsTheCompany()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    root.makeCompany(kCompany);
    install(root, seedOf(QStringLiteral("three")));
    const QString before = allParagraphs(root);
    ScriptedPrompt prompt;
    UpdateResult result;
    UpdateOptions options;
    options.dryRun = true;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, options, result), Outcome::Done);
    QVERIFY(entryAt(result, QStringLiteral("1:規程01:章01:条0005:項01")));
    QVERIFY(result.backup.isEmpty());
    QVERIFY(result.summary().endsWith(QStringLiteral("（試行のみ）")));
    QCOMPARE(allParagraphs(root), before);
    QCOMPARE(releaseIn(root, kCompany), m_first.name);

    // Taking the new text of a 競合.
    execInCompany(
        root.layout(), kCompany,
        QStringLiteral("UPDATE 項 SET 項 = 項 || '（当社）' WHERE 規程Code = '01' AND 条Code = '0005' AND Code = '01' AND 結合 <= '1'"));
    options.dryRun = false;
    options.compare = false;
    options.take = {QStringLiteral("1:規程01:章01:条0005:項01")};
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, options, result), Outcome::Done);
    const UpdateEntry *taken = entryAt(result, QStringLiteral("1:規程01:章01:条0005:項01"));
    QVERIFY(taken);
    QCOMPARE(updateKindCaption(taken->kind), QStringLiteral("置換"));
    QCOMPARE(taken->note, QStringLiteral("新しい文章にする"));
    QVERIFY(columnInCompany(root.layout(), kCompany,
                            QStringLiteral("SELECT 項 FROM 項 WHERE 文章形式Code = '1' AND 規程Code = '01' AND 条Code = '0005' AND "
                                           "Code = '01' ORDER BY CAST(結合 AS INTEGER)"))
                .join(QString())
                .endsWith(QStringLiteral("（改）")));
}

void TestUpdate::recordTravelsWithCopies()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    root.makeCompany(kCompany);
    ScriptedPrompt prompt;
    prompt.answer({true});
    QCOMPARE(CompanyFiles(root.layout(), prompt).createFromCompany(QStringLiteral("乙"), kCompany), Outcome::Done);
    QCOMPARE(releaseIn(root, QStringLiteral("乙")), m_first.name);
    install(root, seedOf(QStringLiteral("three")));
    UpdateResult result;
    UpdateOptions options;
    options.compare = false;
    QCOMPARE(CompanyUpdate(root.layout(), prompt).update(kCompany, options, result), Outcome::Done);
    // The snapshot before the update records the release it was made from.
    QCOMPARE(valueIn(result.backup + u'/' + kCompany + QStringLiteral(".sqlite"), QStringLiteral("PRAGMA user_version")).toInt(),
             releaseNumber(m_first.name));
}

void TestUpdate::allCompanies()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    for (const QString &name : {QStringLiteral("乙"), QStringLiteral("丙"), kCompany})
        root.makeCompany(name);
    install(root, seedOf(QStringLiteral("three")));
    ScriptedPrompt prompt;
    UpdateOptions options;
    options.compare = false;
    QStringList lines;
    {
        // 丙 is kept by another program: named and skipped.
        const auto held = CompanyStore::of(root.layout())->hold(QStringLiteral("丙"));
        QCOMPARE(CompanyUpdate(root.layout(), prompt)
                     .updateAll(options,
                                [&](int done, int total, const QString &name, Outcome outcome, const UpdateResult &r) {
                                    QCOMPARE(total, 3);
                                    lines << QString::number(done) + u' '
                                                 + (outcome == Outcome::Done ? r.summary().section(u'（', 0, 0)
                                                                             : name + QStringLiteral(" 使用中"));
                                }),
                 Outcome::Stopped);
    }
    QCOMPARE(prompt.lines(),
             QStringList{
                 kProgramTitle
                 + QStringLiteral(": 『丙』は他のプログラムが使用中です。そのプログラムで会社を閉じてから、もう一度やり直してください。")});
    const QString counts = QStringLiteral(": %1 → %2 置換 6、競合 0、追加 4、追加候補 0、削除 0、残置 0").arg(m_first.name, kNewest);
    QStringList expected;
    for (const QString &name : companiesOf(root.layout()))
        expected << QString::number(expected.size() + 1) + u' ' + name + (name == u"丙" ? QStringLiteral(" 使用中") : counts);
    QCOMPARE(lines, expected);
}

void TestUpdate::commandLine()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    root.makeCompany(kCompany);
    install(root, seedOf(QStringLiteral("three")));
    const QString text = root.path() + QStringLiteral("/更新.txt");
    const QString xlsx = root.path() + QStringLiteral("/更新.xlsx");
    const QString pdf = root.path() + QStringLiteral("/更新.pdf");
    CliRun r = runCli(root.layout(), {QStringLiteral("company"), QStringLiteral("update"), kCompany, QStringLiteral("--text"), text,
                                      QStringLiteral("--report"), xlsx, QStringLiteral("--pdf"), pdf});
    QCOMPARE(r.err, QString());
    QCOMPARE(r.status, 0);
    const QString counts =
        QStringLiteral("甲: %1 → %2 置換 6、競合 0、追加 4、追加候補 0、削除 0、残置 0（バックアップ: ").arg(m_first.name, kNewest);
    QVERIFY2(r.out.startsWith(counts), qUtf8Printable(r.out));
    QVERIFY(QFileInfo(xlsx).size() > 0);
    const QString report = readText(text);
    QVERIFY(report.contains(QStringLiteral("［置換］1:規程01:章01:条0001:項02　就業規則　第１条")));
    QVERIFY(report.contains(QStringLiteral("■ 就業規則（である調）")));
    // The PDF page: its title, the company, the summary, the entries and the 新旧対照表; only
    // the finished file is left.
    QString error;
    const QString page = pdfText(pdf, &error).remove(u' ');
    QVERIFY2(error.isEmpty(), qUtf8Printable(error));
    for (const QString &expected : {QStringLiteral("ディクショナリ更新"), QStringLiteral("甲"), QStringLiteral("置換6、競合0、追加4"),
                                    QStringLiteral("区分"), QStringLiteral("新しい文章"), QStringLiteral("■就業規則（である調）")})
        QVERIFY2(page.contains(expected), qUtf8Printable(expected + u'\n' + page));
    QCOMPARE(QDir(root.path()).entryList({QStringLiteral("更新*")}, QDir::Files),
             (QStringList{QStringLiteral("更新.pdf"), QStringLiteral("更新.txt"), QStringLiteral("更新.xlsx")}));

    r = runCli(root.layout(), {QStringLiteral("company"), QStringLiteral("update"), QStringLiteral("--all")});
    QCOMPARE(r.status, 0);
    QCOMPARE(r.out, QStringLiteral("甲: %1 → %1 置換 0、競合 0、追加 0、追加候補 0、削除 0、残置 0\n").arg(kNewest));

    r = runCli(root.layout(), {QStringLiteral("company"), QStringLiteral("update")});
    QCOMPARE(r.status, 2);
    QCOMPARE(r.err, QStringLiteral("ディクショナリ更新: 会社名か --all のどちらかを指定してください。\n"));

    install(root, seedOf(QStringLiteral("first")));
    r = runCli(root.layout(), {QStringLiteral("company"), QStringLiteral("update"), kCompany, QStringLiteral("--dry-run")});
    QCOMPARE(r.status, 1);
    QCOMPARE(r.err, QStringLiteral("ディクショナリ更新: 『甲』は、このプログラムより新しい辞書で作成されています。\n"));
}

void TestUpdate::dialog()
{
    TestRoot root;
    install(root, seedOf(QStringLiteral("first")));
    QSqlDatabase db = root.openCompany(kCompany);
    customise(db);
    install(root, seedOf(QStringLiteral("three")));
    ScriptedPrompt prompt;
    setUiPrompt(&prompt);
    frmDicUpdate form;
    const auto button = [&form](const char *name) { return form.findChild<QPushButton *>(QString::fromLatin1(name)); };
    const auto text = [&form](const char *name) { return form.findChild<QPlainTextEdit *>(QString::fromLatin1(name))->toPlainText(); };
    QVERIFY(form.findChild<QRadioButton *>(QStringLiteral("Option1_0"))->isChecked());
    QVERIFY(!button("Command2")->isEnabled());

    // The summary first, then the 競合 with its three texts.
    button("Command1")->click();
    QVERIFY2(prompt.lines().isEmpty(), qUtf8Printable(prompt.lines().join(u'\n')));
    QVERIFY2(text("Text1").startsWith(
                 QStringLiteral("ディクショナリ更新　甲: %1 → %2 置換 5、競合 1、追加 4、追加候補 0、削除 0、残置 0（試行のみ）")
                     .arg(m_first.name, kNewest)),
             qUtf8Printable(text("Text1")));
    QCOMPARE(form.findChild<QLabel *>(QStringLiteral("Label2"))->text(),
             QStringLiteral("競合 1／1　1:規程01:章01:条0005:項01　就業規則　第５条"));
    QVERIFY(text("Text3").endsWith(QStringLiteral("（当社）")));
    QVERIFY(text("Text4").endsWith(QStringLiteral("（改）")));
    QCOMPARE(text("Text2") + QStringLiteral("（当社）"), text("Text3"));
    QVERIFY(!button("Command2")->isEnabled());
    QCOMPARE(clauseText(db, QStringLiteral("1"), QStringLiteral("0001"), QStringLiteral("02")).endsWith(QStringLiteral("（改）")), false);

    // 新しい文章にする, then the update.
    button("Command4")->click();
    QVERIFY(button("Command2")->isEnabled());
    button("Command2")->click();
    QCOMPARE(prompt.lines(), QStringList{kTitleLine + QStringLiteral("更新が完了しました。")});
    QVERIFY(clauseText(db, QStringLiteral("1"), QStringLiteral("0005"), QStringLiteral("01")).endsWith(QStringLiteral("（改）")));
    QVERIFY(text("Text1").contains(QStringLiteral("［置換］1:規程01:章01:条0005:項01　就業規則　第５条（新しい文章にする）")));
    setUiPrompt(nullptr);
}

QTEST_MAIN(TestUpdate)
#include "tst_update.moc"
