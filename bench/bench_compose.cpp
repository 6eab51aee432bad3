// Adding and releasing clauses in a large document: a synthetic document of about
// 3,000 composition rows is composed in a temporary company by the same adds a user
// makes, then a 章, a 条 and a 項 are added and released again at the start, in the
// middle and at the end. One line per operation, in milliseconds.

#include "base/RuntimeFolder.h"
#include "composition/ClauseAdder.h"
#include "composition/ClauseReleaser.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "composition/Panels.h"
#include "rulebase/CompanyFiles.h"
#include "base/DataLayout.h"
#include "base/Database.h"
#include "rulebase/Schema.h"
#include "base/AppState.h"
#include "shell/ProgramFolder.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

using namespace normaris;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kDoc = QStringLiteral("70"); // a document of the user's own

// The shape of the synthetic document.
constexpr int kChapters = 20;  // 章 on the draft; one more waits in stock
constexpr int kArticles = 22;  // 条 per 章
constexpr int kParagraphs = 2; // 項 per 条
constexpr int kItems = 2;      // 号 per 項
const QString kStockChapter = QString::number(kChapters + 1);
const QString kStockParagraph = QStringLiteral("70");

// Answers every question yes and shows nothing but the unexpected.
class QuietPrompt : public Prompt {
public:
    void message(Icon icon, const QString &title, const QString &text) override
    {
        if (icon != Icon::Information)
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(title), qUtf8Printable(text));
    }
    bool question(const QString &, const QString &) override { return true; }
};

QString code(int n, int width) { return QStringLiteral("%1").arg(n, width, 10, QChar(u'0')); }
QString chapterCode(int c) { return code(c, 2); }
QString articleCode(int c, int a) { return code((c - 1) * kArticles + a, 4); }
// Each 章 has one 条 in stock, with a code of the user's range.
QString stockArticle(int c) { return code(7000 + c, 4); }

const QString kSentence =
    QStringLiteral("会社は、従業員の申出があった場合には、業務の運営に支障がない範囲で、その事情を考慮して必要な措置を講ずるものとする。");

// A 条 with its 項 and 号, all selected, and a 項 in stock.
void writeArticle(QSqlDatabase db, const QString &chapter, const QString &article, bool selected)
{
    insertRow(db, QStringLiteral("条"),
              {kStyle, kDoc, chapter, article, QStringLiteral("条の見出し") + article, 0, QString(), selected ? 1 : 0});
    for (int p = 1; p <= kParagraphs + 1; ++p) {
        const bool stock = p > kParagraphs;
        const QString paragraph = stock ? kStockParagraph : code(p, 2);
        // 文章形式Code 規程Code 章Code 条Code Code 項 結合 改行 テンプレート 変数語句 変数番号 変更フラグ 選択フラグ 結合種別
        insertRow(db, QStringLiteral("項"),
                  {kStyle, kDoc, chapter, article, paragraph, kSentence, QStringLiteral("0"), 0, QStringLiteral("0"), 0, 0, 0,
                   stock ? 0 : 1, QString()});
        for (int i = 1; i <= kItems; ++i)
            insertRow(db, QStringLiteral("号"),
                      {kStyle, kDoc, chapter, article, paragraph, code(i, 2), kSentence, QStringLiteral("0"), 0, QStringLiteral("0"), 0, 0,
                       0, 1, QString()});
    }
}

void writeDictionary(QSqlDatabase db)
{
    Transaction transaction(db);
    insertRow(db, QStringLiteral("規程"),
              {kStyle, kDoc, QStringLiteral("大規模規程"), 0, QStringLiteral("大規模規程"), 0, QStringLiteral("1")});
    for (int c = 1; c <= kChapters + 1; ++c) {
        insertRow(db, QStringLiteral("章"), {kStyle, kDoc, chapterCode(c), QStringLiteral("第%1の章").arg(c), 0, 0});
        for (int a = 1; a <= kArticles; ++a)
            writeArticle(db, chapterCode(c), articleCode(c, a), true);
        writeArticle(db, chapterCode(c), stockArticle(c), false);
    }
    transaction.commit();
}

QList<CompositionRow> articleRows() { return readArticleRows(AppState::cn(), kStyle, kDoc); }

int rowCount(const QString &table)
{
    return scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ?").arg(table),
                  {kStyle, kDoc})
        .toInt();
}

// The place of the last 条 of a 章 on the 条 panel.
int lastArticleOf(const QString &chapter)
{
    const QList<CompositionRow> rows = articleRows();
    int last = -1;
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].level == Level::Article && rows[i].codes[0] == chapter)
            last = i;
    }
    return last;
}

int firstArticleOf(const QString &chapter)
{
    const QList<CompositionRow> rows = articleRows();
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].level == Level::Article && rows[i].codes[0] == chapter)
            return i;
    }
    return -1;
}

void report(const QString &what, double ms)
{
    std::printf("%9.2f ms  %s\n", ms, qUtf8Printable(what));
    std::fflush(stdout);
}

double timed(const std::function<Outcome()> &step, const QString &what)
{
    QElapsedTimer clock;
    clock.start();
    const Outcome outcome = step();
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    report(outcome == Outcome::Done ? what : what + QStringLiteral(" (FAILED)"), ms);
    return ms;
}

// The whole draft by the adds a user makes: each 章 with its 条 and their clauses below the last row.
void compose(Prompt &prompt)
{
    DocumentList(AppState::cn()).addToList(kStyle, kDoc);
    ClauseAdder adder(AppState::cn(), prompt);
    QElapsedTimer clock;
    clock.start();
    for (int c = 1; c <= kChapters; ++c) {
        const QList<CompositionRow> rows = articleRows();
        const CompositionRow &last = rows.last();
        AddRequest r{kStyle, kDoc, last.level, Level::Chapter, false, int(rows.size()) - 1, last.codes, chapterCode(c)};
        const Outcome outcome = c == 1 ? Tuika0102(adder, r) : Tuika0302(adder, r);
        if (outcome != Outcome::Done)
            std::fprintf(stderr, "composing 章 %d failed\n", c);
    }
    report(QStringLiteral("compose: %1 章 added one by one").arg(kChapters), double(clock.nsecsElapsed()) / 1e6);
}

struct Place {
    const char *name;
    int chapter; // the 章 the operation works in
    bool atEnd;  // below the last 条 of that 章 rather than its first
};
const Place kPlaces[] = {{"start", 1, false}, {"middle", kChapters / 2, true}, {"end", kChapters, true}};

void chapters(Prompt &prompt)
{
    ClauseAdder adder(AppState::cn(), prompt);
    ClauseReleaser releaser(AppState::cn(), prompt);
    for (const Place &place : kPlaces) {
        // At the start the 章 goes straight below the 規則 row.
        const int i = place.atEnd ? lastArticleOf(chapterCode(place.chapter)) : 0;
        const CompositionRow row = articleRows().at(i);
        AddRequest add{kStyle, kDoc, row.level, Level::Chapter, false, i, row.codes, kStockChapter};
        timed([&] { return i == 0 ? Tuika0102(adder, add) : Tuika0302(adder, add); },
              QStringLiteral("add 章 with %1 条 at the %2").arg(kArticles).arg(QString::fromLatin1(place.name)));
        timed(
            [&] {
                return Kaijo02(releaser, {kStyle, kDoc, Level::Chapter, i + 1, {kStockChapter, {}, {}, {}, {}, {}}});
            },
            QStringLiteral("release 章 with %1 条 at the %2").arg(kArticles).arg(QString::fromLatin1(place.name)));
    }
}

void articles(Prompt &prompt)
{
    ClauseAdder adder(AppState::cn(), prompt);
    ClauseReleaser releaser(AppState::cn(), prompt);
    for (const Place &place : kPlaces) {
        const QString chapter = chapterCode(place.chapter);
        const int i = place.atEnd ? lastArticleOf(chapter) : firstArticleOf(chapter);
        const CompositionRow row = articleRows().at(i);
        timed(
            [&] {
                return Tuika0303(adder, {kStyle, kDoc, Level::Article, Level::Article, false, i, row.codes, stockArticle(place.chapter)});
            },
            QStringLiteral("add 条 at the %1").arg(QString::fromLatin1(place.name)));
        timed(
            [&] {
                return Kaijo03(releaser, {kStyle, kDoc, Level::Article, i + 1, {chapter, stockArticle(place.chapter), {}, {}, {}, {}}});
            },
            QStringLiteral("release 条 at the %1").arg(QString::fromLatin1(place.name)));
    }
}

void paragraphs(Prompt &prompt)
{
    ClauseAdder adder(AppState::cn(), prompt);
    ClauseReleaser releaser(AppState::cn(), prompt);
    for (const Place &place : kPlaces) {
        const QString chapter = chapterCode(place.chapter);
        const CompositionRow article = articleRows().at(place.atEnd ? lastArticleOf(chapter) : firstArticleOf(chapter));
        const QStringList codes = {chapter, article.codes[1], QStringLiteral("01"), {}, {}, {}};
        timed(
            [&] {
                return Tuika0400(adder, {kStyle, kDoc, Level::Paragraph, Level::Paragraph, true, 0, codes, kStockParagraph});
            },
            QStringLiteral("add 項 with %1 号 at the %2").arg(kItems).arg(QString::fromLatin1(place.name)));
        timed(
            [&] {
                return Kaijo04(releaser, {kStyle, kDoc, Level::Paragraph, 0, {chapter, article.codes[1], kStockParagraph, {}, {}, {}}});
            },
            QStringLiteral("release 項 with %1 号 at the %2").arg(kItems).arg(QString::fromLatin1(place.name)));
    }
}

void panels()
{
    QElapsedTimer clock;
    clock.start();
    const qsizetype rows = articlePanel(AppState::cn(), kStyle, kDoc).size();
    report(QStringLiteral("条 panel rows with their texts (%1 rows)").arg(rows), double(clock.nsecsElapsed()) / 1e6);
    const CompositionRow article = articleRows().at(lastArticleOf(chapterCode(kChapters)));
    clock.restart();
    const qsizetype clauses = paragraphPanel(AppState::cn(), kStyle, kDoc, article.codes[0], article.codes[1]).size();
    report(QStringLiteral("項 panel rows with their texts (%1 rows)").arg(clauses), double(clock.nsecsElapsed()) / 1e6);
}

void printRowCount(const char *when)
{
    const int articleTable = rowCount(kArticleRowsTable), clauseTable = rowCount(kClauseRowsTable);
    std::printf("rows %s: %d (%s %d, %s %d)\n", when, articleTable + clauseTable, qUtf8Printable(kArticleRowsTable), articleTable,
                qUtf8Printable(kClauseRowsTable), clauseTable);
}

} // namespace

int main(int argc, char **argv)
{
    settleRuntimeFolder();
    QCoreApplication app(argc, argv);
    QTemporaryDir root;
    if (!root.isValid())
        return 2;
    // Whatever the way out, the company is closed, and its lock given back, before the folder goes.
    struct CloseCompany {
        ~CloseCompany() { AppState::instance().reset(); }
    } closeCompany;
    QuietPrompt prompt;
    try {
        prepareProgramFolder(root.path(), QStringLiteral(NORMARIS_APP_DIR));
        AppState::instance().AppPath = root.path();
        CompanyFiles companies(DataLayout{root.path()}, prompt);
        if (companies.createFromSeed(QStringLiteral("計測")) != Outcome::Done || companies.open(QStringLiteral("計測")) != Outcome::Done)
            return 2;
        writeDictionary(AppState::cn());
        std::printf("bench_compose: a synthetic document of %d 章 x %d 条 x %d 項 x %d 号\n", kChapters, kArticles, kParagraphs, kItems);
        compose(prompt);
        printRowCount("composed");
        panels();
        chapters(prompt);
        articles(prompt);
        paragraphs(prompt);
        printRowCount("after the adds and releases");
    } catch (const std::exception &e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 2;
    }
    return 0;
}
