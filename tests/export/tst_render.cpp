// Typing a finished document from hand-made work rows, recorded by the TextTypist:
// one line per paragraph, "<C>"/"<R>" for centred and right-aligned paragraphs,
// "<i-2>" for a hanging indent, "{14pt bold:…}", "{blue:…}", "{red:…}",
// "{dstrike:…}" for text that is not in the base format.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "WorkRows.h"
#include "export/DocumentRenderer.h"
#include "fileformats/TextTypist.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/JapaneseDate.h"
#include "rulebase/Schema.h"
#include "base/AppState.h"

#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kDoc = QStringLiteral("01");

// Fails like a word processor that stops answering: at the first text that holds needle.
class FailingTypist : public TextTypist {
public:
    explicit FailingTypist(QString needle) : m_needle(std::move(needle)) {}
    void typeText(const QString &text) override
    {
        if (text.contains(m_needle))
            throw Failure(QStringLiteral("文書に書き込めません。"));
        TextTypist::typeText(text);
    }

private:
    QString m_needle;
};

QStringList repeated(const QString &line, int count) { return QStringList(count, line); }

const QString kDateLine = formatEraDate(QDate::currentDate()).left(2) + QStringLiteral("　　　　年　　　　月　　　　日");

} // namespace

class RenderTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<TestRoot> m_root;
    QSqlDatabase m_db;
    ScriptedPrompt m_prompt;
    Outcome m_outcome = Outcome::Done;

    RenderOptions bodyOnly() const { return RenderOptions{ExportKind::Rules, CoverChoice::None, true, false}; }

    QStringList render(const RenderOptions &options, const QString &style = kStyle, const QString &document = kDoc)
    {
        TextTypist typist;
        m_outcome = DocumentRenderer(m_db, m_prompt).render(typist, style, document, options);
        return typist.lines();
    }

    void setSetting(const QString &column, const QString &value)
    {
        execSql(m_db, QStringLiteral("UPDATE 企業情報 SET \"%1\" = ?").arg(column), {value});
    }
    void setParty(const QString &party) { execSql(m_db, QStringLiteral("UPDATE 代表労働者の選択 SET 代表労働者 = ?"), {party}); }
    void setDates(const QStringList &isoDates)
    {
        execSql(m_db, QStringLiteral("DELETE FROM 施行日"));
        for (const QString &date : isoDates)
            insertRow(m_db, QStringLiteral("施行日"), {kStyle, kDoc, date});
    }

    // The lines from the first that holds needle on, count of them.
    static QStringList linesFrom(const QStringList &lines, const QString &needle, int count)
    {
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (lines[i].contains(needle))
                return lines.mid(i, count);
        }
        return {QStringLiteral("no line holds ") + needle};
    }
    // The lines of a body between the heading 第１条（目的） and the paragraph that
    // starts the 付則 or the signature block.
    static QStringList clauseLines(const QStringList &lines)
    {
        const qsizetype start = lines.indexOf(QStringLiteral("第１条（目的）"));
        qsizetype end = start + 1;
        while (end < lines.size() && !lines[end].contains(QStringLiteral("付則　")) && !lines[end].contains(kDateLine))
            ++end;
        return lines.mid(start + 1, end - start - 2);
    }

private slots:
    void init()
    {
        m_root = std::make_unique<TestRoot>();
        m_db = m_root->openCompany(QStringLiteral("甲"));
        m_prompt.clear();
        BasicSettings(m_db).save({QStringLiteral("株式会社ノルマ"), QStringLiteral("100-0001"), QStringLiteral("東京都千代田区千代田1-1"),
                                  QStringLiteral("ノルマビル3階"), QStringLiteral("03-5555-0123"), QStringLiteral("代表取締役"),
                                  QStringLiteral("山田太郎"), QStringLiteral("ノルマ労働組合"), QStringLiteral("総務課長"),
                                  QStringLiteral("佐藤花子"), QStringLiteral("販売主任"), QStringLiteral("鈴木一郎"),
                                  QStringLiteral("小売業"), QStringLiteral("25"), QStringLiteral("13101123456000"), QStringLiteral("中央")},
                                 QStringLiteral("2"));
        setDates({QStringLiteral("2026-04-01")});
        execSql(m_db, QStringLiteral("UPDATE 規程 SET 正式名称 = ? WHERE 文章形式Code = ? AND Code = ?"),
                {QStringLiteral("就業規則"), kStyle, kDoc});
    }
    void cleanup()
    {
        m_db = QSqlDatabase();
        m_root.reset();
    }

    // ---- The opening checks -------------------------------------------------

    void openingChecks_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("style");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("remove"); // a table emptied before the run
        QTest::addColumn<QString>("box");
        const int rules = int(ExportKind::Rules), agreement = int(ExportKind::Agreement), filing = int(ExportKind::Filing);
        QTest::newRow("no style") << rules << QString() << kDoc << QString()
                                  << QStringLiteral("文章形式の指定: 文章形式を指定してください。");
        QTest::newRow("no document") << rules << kStyle << QString() << QString()
                                     << QStringLiteral("種別の指定: 規則・規程の種別を指定してください。");
        QTest::newRow("no document, agreement")
            << agreement << kStyle << QString() << QString() << QStringLiteral("種別の指定: 規則・規程の種別を指定してください。");
        QTest::newRow("no rows") << rules << kStyle << QStringLiteral("02") << QString()
                                 << QStringLiteral("データの確認: データがありません。");
        QTest::newRow("rows of the other style only")
            << rules << QStringLiteral("2") << kDoc << QString() << QStringLiteral("データの確認: データがありません。");
        QTest::newRow("no rows comes before no dates")
            << rules << kStyle << QStringLiteral("02") << QStringLiteral("施行日") << QStringLiteral("データの確認: データがありません。");
        QTest::newRow("no dates") << rules << kStyle << kDoc << QStringLiteral("施行日")
                                  << QStringLiteral("データの確認: 日付のデータがありません。");
        QTest::newRow("no dates, agreement") << agreement << kStyle << kDoc << QStringLiteral("施行日")
                                             << QStringLiteral("データの確認: 日付のデータがありません。");
        QTest::newRow("no settings") << rules << kStyle << kDoc << QStringLiteral("企業情報")
                                     << QStringLiteral("データの確認: 基本設定のデータがありません。");
        QTest::newRow("filing forms without settings") << filing << QString() << QString() << QStringLiteral("企業情報")
                                                       << QStringLiteral("データの確認: 基本設定のデータがありません。");
    }
    void openingChecks()
    {
        QFETCH(int, kind);
        QFETCH(QString, style);
        QFETCH(QString, document);
        QFETCH(QString, remove);
        QFETCH(QString, box);
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).closing().write(m_db);
        if (!remove.isEmpty())
            execSql(m_db, QStringLiteral("DELETE FROM \"%1\"").arg(remove));
        RenderOptions options;
        options.kind = ExportKind(kind);
        const QStringList typed = render(options, style, document);
        QCOMPARE(m_outcome, Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{box});
        QCOMPARE(m_prompt.shown().first().icon, Prompt::Icon::Error);
        QVERIFY(typed.isEmpty());
    }

    // Both prose styles of a document share one list of dates.
    void datesEnteredUnderTheOtherStyleCount()
    {
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).write(m_db);
        execSql(m_db, QStringLiteral("UPDATE 施行日 SET 文章形式Code = '2'"));
        render(bodyOnly());
        QCOMPARE(m_outcome, Outcome::Done);
        QVERIFY(m_prompt.lines().isEmpty());
    }

    // ---- Cover and table of contents ----------------------------------------

    void coverTitleSize_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("titleLine");
        QTest::addColumn<int>("blankLinesAfter"); // between the title and the company's name
        const auto title = [](int characters) { return QString(characters, QChar(u'規')); };
        QTest::newRow("5 characters") << title(5) << QStringLiteral("<C>{72pt:規規規規規}") << 11;
        QTest::newRow("5 half-width characters count double too") << QStringLiteral("Rules") << QStringLiteral("<C>{72pt:Rules}") << 11;
        QTest::newRow("6 characters") << title(6) << QStringLiteral("<C>{36pt:%1}").arg(title(6)) << 13;
        QTest::newRow("10 characters") << title(10) << QStringLiteral("<C>{36pt:%1}").arg(title(10)) << 13;
        QTest::newRow("11 characters") << title(11) << QStringLiteral("<C>{24pt:%1}").arg(title(11)) << 14;
        QTest::newRow("15 characters") << title(15) << QStringLiteral("<C>{24pt:%1}").arg(title(15)) << 14;
        QTest::newRow("16 characters") << title(16) << QStringLiteral("<C>{18pt:%1}").arg(title(16)) << 14;
        QTest::newRow("20 characters") << title(20) << QStringLiteral("<C>{18pt:%1}").arg(title(20)) << 14;
        QTest::newRow("21 characters") << title(21) << QStringLiteral("<C>{12pt:%1}").arg(title(21)) << 15;
        QTest::newRow("30 characters") << title(30) << QStringLiteral("<C>{12pt:%1}").arg(title(30)) << 15;
        QTest::newRow("31 characters: the base size") << title(31) << QStringLiteral("<C>%1").arg(title(31)) << 15;
    }
    void coverTitleSize()
    {
        QFETCH(QString, title);
        QFETCH(QString, titleLine);
        QFETCH(int, blankLinesAfter);
        execSql(m_db, QStringLiteral("UPDATE 規程 SET 正式名称 = ? WHERE 文章形式Code = ? AND Code = ?"), {title, kStyle, kDoc});
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).write(m_db);
        const QStringList expected = repeated(QStringLiteral("<C>"), 10) + QStringList{titleLine}
                                     + repeated(QStringLiteral("<C>"), blankLinesAfter)
                                     + QStringList{QStringLiteral("<C>{12pt:株式会社ノルマ}"), QStringLiteral("<改ページ>")};
        const QStringList typed = render({ExportKind::Rules, CoverChoice::CoverOnly, true, false});
        QCOMPARE(typed.mid(0, expected.size()), expected);
        // The body follows on the next page.
        QCOMPARE(typed.value(expected.size()), QStringLiteral("<C>{14pt bold:就業規則}"));
    }

    void tableOfContents()
    {
        Draft()
            .document(QStringLiteral("就業規則"))
            .chapter(QStringLiteral("00"), 1, QStringLiteral("章なし"))
            .article(QStringLiteral("0001"), 1, QStringLiteral("目的"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("この規則は労働条件を定める。"))
            .chapter(QStringLiteral("01"), 1, QStringLiteral("総則"))
            .article(QStringLiteral("0002"), 2, QStringLiteral("適用範囲"))
            .closing()
            .write(m_db);
        execSql(m_db, QStringLiteral("UPDATE 規程 SET 正式名称 = ? WHERE 文章形式Code = ? AND Code = ?"),
                {QStringLiteral("株式会社ノルマ就業規則"), kStyle, kDoc});
        const QStringList typed = render({ExportKind::Rules, CoverChoice::TocOnly, true, false});
        const QStringList expected = {
            QStringLiteral("<C>{18pt:目　次}"),
            QStringLiteral("<C>"),
            QStringLiteral("{12pt:株式会社ノルマ就業規則}"), // the formal name, not the body's title
            QStringLiteral("　第１条（目的）"),              // chapter 00 has no line
            QStringLiteral("第１章  総則"),
            QStringLiteral("　第２条（適用範囲）"),
            QStringLiteral("<改ページ>"),
            QStringLiteral("<C>{14pt bold:就業規則}"),
        };
        QCOMPARE(typed.mid(0, expected.size()), expected);
    }

    void coverAndContentsByChoice_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<int>("pageBreaks");
        QTest::addColumn<bool>("contents");
        QTest::newRow("both") << int(CoverChoice::Both) << 2 << true;
        QTest::newRow("cover only") << int(CoverChoice::CoverOnly) << 1 << false;
        QTest::newRow("contents only") << int(CoverChoice::TocOnly) << 1 << true;
        QTest::newRow("none") << int(CoverChoice::None) << 0 << false;
    }
    void coverAndContentsByChoice()
    {
        QFETCH(int, choice);
        QFETCH(int, pageBreaks);
        QFETCH(bool, contents);
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).closing().write(m_db);
        const QStringList typed = render({ExportKind::Rules, CoverChoice(choice), true, false});
        QCOMPARE(typed.count(QStringLiteral("<改ページ>")), pageBreaks);
        QCOMPARE(typed.contains(QStringLiteral("<C>{18pt:目　次}")), contents);
    }

    // An agreement has neither cover nor contents, whatever the choice.
    void agreementHasNoCoverNorContents()
    {
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).closing().write(m_db);
        const QStringList typed = render({ExportKind::Agreement, CoverChoice::Both, true, false});
        QCOMPARE(typed.first(), QStringLiteral("<C>{14pt bold:就業規則}"));
        QVERIFY(!typed.contains(QStringLiteral("<改ページ>")));
    }

    // ---- The body --------------------------------------------------------------

    void chapterHeadings_data()
    {
        QTest::addColumn<QString>("chapterCode");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("chapter 01") << QStringLiteral("01")
                                    << QStringList{QStringLiteral("<C>{14pt bold:就業規則}"), QStringLiteral("<C>"),
                                                   QStringLiteral("<C>{bold:第１章  総則}"), QStringLiteral("<C>"),
                                                   QStringLiteral("第１条（目的）")};
        QTest::newRow("chapter 00 prints nothing and takes no paragraph")
            << QStringLiteral("00")
            << QStringList{QStringLiteral("<C>{14pt bold:就業規則}"), QStringLiteral("<C>"), QStringLiteral("第１条（目的）")};
    }
    void chapterHeadings()
    {
        QFETCH(QString, chapterCode);
        QFETCH(QStringList, expected);
        Draft()
            .document(QStringLiteral("就業規則"))
            .chapter(chapterCode, 1, QStringLiteral("総則"))
            .article(QStringLiteral("0001"), 1, QStringLiteral("目的"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文"))
            .write(m_db);
        QCOMPARE(render(bodyOnly()).mid(0, expected.size()), expected);
    }

    void kouLabel_data()
    {
        QTest::addColumn<bool>("showFirst");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("line");
        QTest::newRow("表示する, 1") << true << 1 << QStringLiteral("01") << QStringLiteral("<i-1>１  本文");
        QTest::newRow("表示する, 2") << true << 2 << QStringLiteral("02") << QStringLiteral("<i-1>２  本文");
        QTest::newRow("表示する, 10") << true << 10 << QStringLiteral("10") << QStringLiteral("<i-1>10  本文");
        QTest::newRow("表示する, 10 with code 01") << true << 10 << QStringLiteral("01") << QStringLiteral("<i-1>10  本文");
        QTest::newRow("表示しない, 1") << false << 1 << QStringLiteral("01") << QStringLiteral("<i-1>    本文");
        QTest::newRow("表示しない, 1 with another code") << false << 1 << QStringLiteral("05") << QStringLiteral("<i-1>    本文");
        QTest::newRow("表示しない, 2") << false << 2 << QStringLiteral("02") << QStringLiteral("<i-1>２  本文");
        QTest::newRow("表示しない, 2 with code 01") << false << 2 << QStringLiteral("01") << QStringLiteral("<i-1>２  本文");
        QTest::newRow("表示しない, 10") << false << 10 << QStringLiteral("10") << QStringLiteral("<i-1>10  本文");
        QTest::newRow("表示しない, 10 with code 01") << false << 10 << QStringLiteral("01") << QStringLiteral("<i-1>    本文");
    }
    void kouLabel()
    {
        QFETCH(bool, showFirst);
        QFETCH(int, number);
        QFETCH(QString, code);
        QFETCH(QString, line);
        Draft::opening().clause(Level::Paragraph, code, number, QStringLiteral("本文")).write(m_db);
        QCOMPARE(clauseLines(render({ExportKind::Rules, CoverChoice::None, showFirst, false})), QStringList{line});
    }

    void itemLabel_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("chain");
        QTest::addColumn<QString>("line");
        const int gou = int(Level::Item), maru = int(Level::Maru), iroha = int(Level::Iroha);
        QTest::newRow("号 1") << gou << 1 << false << QStringLiteral("<i-2> (1)  対象");
        QTest::newRow("号 9") << gou << 9 << false << QStringLiteral("<i-2> (9)  対象");
        QTest::newRow("号 10 drops the leading blank") << gou << 10 << false << QStringLiteral("<i-2>(10)  対象");
        QTest::newRow("号 12") << gou << 12 << false << QStringLiteral("<i-2>(12)  対象");
        QTest::newRow("号 10 at the head of a chain keeps it") << gou << 10 << true << QStringLiteral("<i-2> (10)  対象、続き");
        QTest::newRow("① 1") << maru << 1 << false << QStringLiteral("<i-3>    ①  対象");
        QTest::newRow("① 20") << maru << 20 << false << QStringLiteral("<i-3>    ⑳  対象");
        QTest::newRow("① 21") << maru << 21 << false << QStringLiteral("<i-3>    ●  対象");
        QTest::newRow("イ 1") << iroha << 1 << false << QStringLiteral("<i-4>      イ  対象");
        QTest::newRow("イ 20") << iroha << 20 << false << QStringLiteral("<i-4>      ネ  対象");
        QTest::newRow("イ 21") << iroha << 21 << false << QStringLiteral("<i-4>      ■  対象");
    }
    void itemLabel()
    {
        QFETCH(int, level);
        QFETCH(int, number);
        QFETCH(bool, chain);
        QFETCH(QString, line);
        Draft draft = Draft::opening();
        for (int parent = int(Level::Paragraph); parent < level; ++parent)
            draft.clause(Level(parent), QStringLiteral("01"), 1, QStringLiteral("上位"));
        draft.clause(Level(level), QStringLiteral("01"), number, QStringLiteral("対象"), chain ? QStringLiteral("1") : QString());
        if (chain)
            draft.segment(QStringLiteral("2"), QStringLiteral("、続き"));
        draft.write(m_db);
        QCOMPARE(linesFrom(render(bodyOnly()), QStringLiteral("対象"), 1), QStringList{line});
    }

    // '1' 前段, '2' 、中段 running on, '3' 後段 on a new line with the level's blank prefix.
    void chains_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("項") << int(Level::Paragraph)
                            << QStringList{QStringLiteral("<i-1>１  前段、中段"), QStringLiteral("<i-1>    後段"),
                                           QStringLiteral("<i-1>２  次")};
        QTest::newRow("号") << int(Level::Item)
                            << QStringList{QStringLiteral("<i-2> (1)  前段、中段"), QStringLiteral("<i-2>      後段"),
                                           QStringLiteral("<i-2> (2)  次")};
        QTest::newRow("①") << int(Level::Maru)
                           << QStringList{QStringLiteral("<i-3>    ①  前段、中段"), QStringLiteral("<i-3>        後段"),
                                          QStringLiteral("<i-3>    ②  次")};
        QTest::newRow("イ") << int(Level::Iroha)
                            << QStringList{QStringLiteral("<i-4>      イ  前段、中段"), QStringLiteral("<i-4>          後段"),
                                           QStringLiteral("<i-4>      ロ  次")};
    }
    void chains()
    {
        QFETCH(int, level);
        QFETCH(QStringList, expected);
        Draft draft = Draft::opening();
        for (int parent = int(Level::Paragraph); parent < level; ++parent)
            draft.clause(Level(parent), QStringLiteral("01"), 1, QStringLiteral("上位"));
        draft.clause(Level(level), QStringLiteral("01"), 1, QStringLiteral("前段"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QStringLiteral("、中段"))
            .segment(QStringLiteral("3"), QStringLiteral("後段"), true);
        // A second entry, so that no lone-item line follows.
        draft.clause(Level(level), QStringLiteral("02"), 2, QStringLiteral("次"));
        draft.closing().write(m_db);
        QCOMPARE(linesFrom(render(bodyOnly()), QStringLiteral("前段"), 3), expected);
    }

    void preamble()
    {
        Draft()
            .document(QStringLiteral("就業規則"))
            .preamble(QStringLiteral("この規則は、"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QStringLiteral("☆0001☆の"))
            .segment(QStringLiteral("3"), QStringLiteral("従業員に適用する。"))
            .segment(QStringLiteral("4"), QStringLiteral("労使は誠実に守る。"), true)
            .chapter(QStringLiteral("01"), 1, QStringLiteral("総則"))
            .write(m_db);
        const QStringList expected = {
            QStringLiteral("<C>{14pt bold:就業規則}"),
            QStringLiteral("<C>"),
            // Each segment in the colour of its own marks.
            QStringLiteral("  この規則は、{blue:☆0001☆の}従業員に適用する。"),
            QStringLiteral("  労使は誠実に守る。"),
            QString(),
            QStringLiteral("<C>{bold:第１章  総則}"),
        };
        QCOMPARE(render(bodyOnly()).mid(0, expected.size()), expected);
    }

    void segmentColours_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("head");
        QTest::addColumn<QString>("tail");
        QTest::addColumn<QString>("line");
        const QString marked = QStringLiteral("★0001★を");
        const QString plain = QStringLiteral("次の");
        QTest::newRow("項: the head blue, the plain tail black")
            << int(Level::Paragraph) << marked << QStringLiteral("定める。") << QStringLiteral("<i-1>{blue:１  ★0001★を}定める。");
        QTest::newRow("項: a marked tail blue")
            << int(Level::Paragraph) << plain << QStringLiteral("◆0001◆") << QStringLiteral("<i-1>１  次の{blue:◆0001◆}");
        QTest::newRow("号: the head blue, the plain tail black")
            << int(Level::Item) << marked << QStringLiteral("定める。") << QStringLiteral("<i-2>{blue: (1)  ★0001★を}定める。");
        QTest::newRow("①: the tail keeps the head's blue")
            << int(Level::Maru) << marked << QStringLiteral("定める。") << QStringLiteral("<i-3>{blue:    ①  ★0001★を定める。}");
        QTest::newRow("①: a marked tail keeps the head's black")
            << int(Level::Maru) << plain << QStringLiteral("☆0001☆") << QStringLiteral("<i-3>    ①  次の☆0001☆");
        QTest::newRow("イ: the tail keeps the head's blue")
            << int(Level::Iroha) << marked << QStringLiteral("定める。") << QStringLiteral("<i-4>{blue:      イ  ★0001★を定める。}");
    }
    void segmentColours()
    {
        QFETCH(int, level);
        QFETCH(QString, head);
        QFETCH(QString, tail);
        QFETCH(QString, line);
        Draft draft = Draft::opening();
        for (int parent = int(Level::Paragraph); parent < level; ++parent)
            draft.clause(Level(parent), QStringLiteral("01"), 1, QStringLiteral("上位"));
        draft.clause(Level(level), QStringLiteral("01"), 1, head, QStringLiteral("1")).segment(QStringLiteral("2"), tail).write(m_db);
        QCOMPARE(linesFrom(render(bodyOnly()), head, 1), QStringList{line});
    }

    void markedRowsAreBlue()
    {
        Draft::opening()
            .article(QStringLiteral("0002"), 2, QStringLiteral("☆0001☆の休日"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("休日は◆0003◆による。"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("休日は日曜日とする。"))
            .write(m_db);
        const QStringList expected = {QString(), QStringLiteral("{blue:第２条（☆0001☆の休日）}"),
                                      QStringLiteral("<i-1>{blue:１  休日は◆0003◆による。}"),
                                      QStringLiteral("<i-1>２  休日は日曜日とする。")};
        QCOMPARE(clauseLines(render(bodyOnly())), expected);
    }

    void templates()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("届出は次の様式による。"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QString(), true, QStringLiteral("0003"))
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("様式は"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QString(), true, QStringLiteral("0012"))
            .segment(QStringLiteral("3"), QStringLiteral("とする。"))
            .clause(Level::Item, QStringLiteral("02"), 2, QStringLiteral("写し"))
            // A row of its own with no text stands for a template in the body loop.
            .article(QStringLiteral("0002"), 2, QStringLiteral("様式"))
            .templateRow(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("0005"))
            .write(m_db);
        const QStringList expected = {
            QStringLiteral("<i-1>１  届出は次の様式による。"),
            QStringLiteral("<i-1>{red:          ★テンプレート0003を挿入してください★}"),
            QStringLiteral("<i-2> (1)  様式は"),
            QStringLiteral("<i-2>{red:          ★テンプレート0012を挿入してください★}とする。"),
            QStringLiteral("<i-2> (2)  写し"),
            QStringLiteral("<i-2>"),
            QStringLiteral("<i-2>第２条（様式）"),
            QStringLiteral("<i-2>{red:          ★テンプレート0005を挿入してください★}"),
        };
        QCOMPARE(clauseLines(render(bodyOnly())), expected);
    }

    // A segment whose chain has no head is dropped with nothing typed; the row still
    // ends its (empty) paragraph.
    void orphanTailsAreDropped()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文"))
            .segment(QStringLiteral("3"), QStringLiteral("迷子"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("前段"), QStringLiteral("1"))
            .segment(QStringLiteral("3"), QStringLiteral("飛んだ"))
            .write(m_db);
        const QStringList typed = render(bodyOnly());
        QCOMPARE(clauseLines(typed), (QStringList{QStringLiteral("<i-1>１  本文"), QStringLiteral("<i-1>"), QStringLiteral("<i-1>２  前段"),
                                                  QStringLiteral("<i-1>")}));
        QVERIFY(!typed.join(u'\n').contains(QStringLiteral("迷子")));
        QVERIFY(!typed.join(u'\n').contains(QStringLiteral("飛んだ")));
    }

    void loneItemWarning_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("warning");
        const int rules = int(ExportKind::Rules), agreement = int(ExportKind::Agreement);
        QTest::newRow("号, rules") << rules << int(Level::Item)
                                   << QStringLiteral("<i-2>{red:          ◆◆◆「号」が１つだけです（本行は必ず削除してください）◆◆ }");
        QTest::newRow("①, rules") << rules << int(Level::Maru)
                                  << QStringLiteral("<i-3>{red:          ◆◆◆「①」が１つだけです（本行は必ず削除してください）◆◆ }");
        QTest::newRow("イ, rules") << rules << int(Level::Iroha)
                                   << QStringLiteral("<i-4>{red:          ◆◆◆「イ」が１つだけです（本行は必ず削除してください）◆◆ }");
        QTest::newRow("号, agreement") << agreement << int(Level::Item)
                                       << QStringLiteral("<i-2>{red:          ◆◆「号」が１つだけです（本行は必ず削除してください）◆◆ }");
        QTest::newRow("①, agreement") << agreement << int(Level::Maru)
                                      << QStringLiteral("<i-3>{red:          ◆◆「①」が１つだけです（本行は必ず削除してください）◆◆ }");
        QTest::newRow("イ, agreement") << agreement << int(Level::Iroha)
                                       << QStringLiteral("<i-4>{red:          ◆◆「イ」が１つだけです（本行は必ず削除してください）◆◆ }");
    }
    void loneItemWarning()
    {
        QFETCH(int, kind);
        QFETCH(int, level);
        QFETCH(QString, warning);
        // Each parent has a sibling, so that only the level under test stands alone.
        Draft draft = Draft::opening();
        for (int parent = int(Level::Paragraph); parent < level; ++parent)
            draft.clause(Level(parent), QStringLiteral("01"), 1, QStringLiteral("上位"));
        draft.clause(Level(level), QStringLiteral("01"), 1, QStringLiteral("唯一"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QStringLiteral("の項目"), true);
        for (int parent = level - 1; parent >= int(Level::Paragraph); --parent)
            draft.clause(Level(parent), QStringLiteral("02"), 2, QStringLiteral("兄弟"));
        draft.closing().write(m_db);
        const QStringList typed = render({ExportKind(kind), CoverChoice::None, true, false});
        // After the last segment of the chain, and only for the level under test.
        const QStringList lines = linesFrom(typed, QStringLiteral("唯一"), 3);
        QCOMPARE(lines.value(2), warning);
        QCOMPARE(typed.join(u'\n').count(QStringLiteral("が１つだけです")), 1);
    }

    // Only a list of one entry gets the line, in a second 項 as well.
    void loneItemsPerList()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("第一項"))
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("甲"))
            .clause(Level::Item, QStringLiteral("02"), 2, QStringLiteral("乙"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("第二項"))
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("丙"))
            .closing()
            .write(m_db);
        const QStringList expected = {
            QStringLiteral("<i-1>１  第一項"),
            QStringLiteral("<i-2> (1)  甲"),
            QStringLiteral("<i-2> (2)  乙"),
            QStringLiteral("<i-1>２  第二項"),
            QStringLiteral("<i-2> (1)  丙"),
            QStringLiteral("<i-2>{red:          ◆◆◆「号」が１つだけです（本行は必ず削除してください）◆◆ }"),
            QStringLiteral("<i-2>"),
        };
        QCOMPARE(clauseLines(render(bodyOnly())), expected);
    }

    // ---- 付則 ----------------------------------------------------------------

    void supplementaryProvision_data()
    {
        QTest::addColumn<QString>("style");
        QTest::addColumn<QStringList>("dates");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("one date") << QStringLiteral("1") << QStringList{QStringLiteral("2026-04-01")}
                                  << QStringList{QStringLiteral("付則　この規則は令和08年4月1日から施行する。")};
        QTest::newRow("ですます調") << QStringLiteral("2") << QStringList{QStringLiteral("2026-04-01")}
                                    << QStringList{QStringLiteral("付則　この規則は令和08年4月1日から施行します。")};
        QTest::newRow("three dates, the later two revisions oldest first")
            << QStringLiteral("1") << QStringList{QStringLiteral("2028-04-01"), QStringLiteral("2009-01-01"), QStringLiteral("2026-10-15")}
            << QStringList{QStringLiteral("付則　この規則は平成21年1月1日から施行する。"), QStringLiteral("　　　令和08年10月15日改訂"),
                           QStringLiteral("　　　令和10年4月1日改訂")};
    }
    void supplementaryProvision()
    {
        QFETCH(QString, style);
        QFETCH(QStringList, dates);
        QFETCH(QStringList, expected);
        setDates(dates);
        Draft(style)
            .document(QStringLiteral("就業規則"))
            .chapter(QStringLiteral("01"), 1, QStringLiteral("総則"))
            .article(QStringLiteral("0001"), 1, QStringLiteral("目的"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文"))
            .write(m_db);
        const QStringList typed = render(bodyOnly(), style);
        QCOMPARE(m_outcome, Outcome::Done);
        // The lines carry on in the paragraph format of the last clause: a 項's hanging indent.
        for (QString &line : expected)
            line.prepend(QStringLiteral("<i-1>"));
        QCOMPARE(typed.mid(typed.size() - expected.size()), expected);
        QCOMPARE(typed.count(), 5 + 2 + expected.size());
    }

    // ---- A whole document ------------------------------------------------------

    void wholeRules()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("この規則は、☆0001☆の従業員の労働条件を定める。"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("従業員は、次の事項を守る。"))
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("誠実に勤務すること"))
            .closing()
            .write(m_db);
        const QStringList typed = render({ExportKind::Rules, CoverChoice::Both, false, false});
        const QStringList expected = repeated(QStringLiteral("<C>"), 10) + QStringList{QStringLiteral("<C>{72pt:就業規則}")}
                                     + repeated(QStringLiteral("<C>"), 11)
                                     + QStringList{
                                         QStringLiteral("<C>{12pt:株式会社ノルマ}"),
                                         QStringLiteral("<改ページ>"),
                                         QStringLiteral("<C>{18pt:目　次}"),
                                         QStringLiteral("<C>"),
                                         QStringLiteral("{12pt:就業規則}"),
                                         QStringLiteral("第１章  総則"),
                                         QStringLiteral("　第１条（目的）"),
                                         QStringLiteral("<改ページ>"),
                                         QStringLiteral("<C>{14pt bold:就業規則}"),
                                         QStringLiteral("<C>"),
                                         QStringLiteral("<C>{bold:第１章  総則}"),
                                         QStringLiteral("<C>"),
                                         QStringLiteral("第１条（目的）"),
                                         QStringLiteral("<i-1>{blue:    この規則は、☆0001☆の従業員の労働条件を定める。}"),
                                         QStringLiteral("<i-1>２  従業員は、次の事項を守る。"),
                                         QStringLiteral("<i-2> (1)  誠実に勤務すること"),
                                         QStringLiteral("<i-2>{red:          ◆◆◆「号」が１つだけです（本行は必ず削除してください）◆◆ }"),
                                         QStringLiteral("<i-2>"), // the closing row of the work data
                                         QStringLiteral("<i-2>"),
                                         // The indent of the last clause carries on; on one line it shows nothing.
                                         QStringLiteral("<i-2>付則　この規則は令和08年4月1日から施行する。"),
                                     };
        QCOMPARE(typed, expected);
        QCOMPARE(m_outcome, Outcome::Done);
    }

    // ---- Signature block of an agreement ---------------------------------------

    void signatureBlock_data()
    {
        QTest::addColumn<QString>("party");
        QTest::addColumn<QStringList>("workersLines");
        const QString b20(20, QChar(u'　'));
        QTest::newRow("労働組合") << QStringLiteral("1")
                                  << QStringList{b20 + QStringLiteral("ノルマ労働組合"), b20 + QStringLiteral("総務課長　佐藤花子　印")};
        QTest::newRow("従業員代表: the company's name first, no title")
            << QStringLiteral("2") << QStringList{b20 + QStringLiteral("株式会社ノルマ"), b20 + QStringLiteral("労働代表者　佐藤花子　印")};
        QTest::newRow("パート代表") << QStringLiteral(
            "3") << QStringList{b20 + QStringLiteral("株式会社ノルマ"), b20 + QStringLiteral("労働代表者　鈴木一郎　印")};
        QTest::newRow("unknown party: neither line") << QStringLiteral("4") << QStringList{};
    }
    void signatureBlock()
    {
        QFETCH(QString, party);
        QFETCH(QStringList, workersLines);
        setParty(party);
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("時間外労働は月45時間以内とする。"))
            .closing()
            .write(m_db);
        const QString b20(20, QChar(u'　'));
        // The paragraphs take the hanging indent of the last clause, as a new
        // paragraph takes the format of the one before it; on one line it shows nothing.
        QStringList expected = {
            QStringLiteral("<i-1>１  時間外労働は月45時間以内とする。"),
            QStringLiteral("<i-1>"), // the closing row of the work data
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>") + kDateLine,
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>") + b20 + QStringLiteral("株式会社ノルマ"),
            QStringLiteral("<i-1>") + b20 + QStringLiteral("代表取締役　山田太郎　印"),
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>"),
        };
        for (const QString &line : workersLines)
            expected << QStringLiteral("<i-1>") + line;
        const QStringList typed = render({ExportKind::Agreement, CoverChoice::None, true, false});
        QCOMPARE(m_outcome, Outcome::Done);
        QCOMPARE(linesFrom(typed, QStringLiteral("時間外労働は"), 100), expected);
    }

    void signatureBlockOfUntouchedSettings()
    {
        BasicSettings(m_db).save(QStringList(16), QStringLiteral("1"));
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).closing().write(m_db);
        const QString b20(20, QChar(u'　'));
        const QStringList typed = render({ExportKind::Agreement, CoverChoice::None, true, false});
        const QStringList expected = {
            QStringLiteral("<i-1>{blue:%1☆0001☆}").arg(b20),
            QStringLiteral("<i-1>{blue:%1☆0006☆　☆0007☆　印}").arg(b20),
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>"),
            QStringLiteral("<i-1>{blue:%1☆0008☆}").arg(b20),
            QStringLiteral("<i-1>{blue:%1☆0009☆　☆0010☆　印}").arg(b20),
        };
        QCOMPARE(linesFrom(typed, QStringLiteral("☆0001☆"), 6), expected);
    }

    // ---- 就業規則届 and 意見書 ---------------------------------------------------

    void filingForms()
    {
        setParty(QStringLiteral("2"));
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        QCOMPARE(m_outcome, Outcome::Done);
        const QString era = formatEraDate(QDate::currentDate()).left(2);
        const QStringList expected = QStringList{
                                         QStringLiteral("<C>{20pt:就業規則}{20pt dstrike:（変更）}{20pt:届}"),
                                         QStringLiteral("<C>"),
                                         QStringLiteral("<R>{12pt:%1}").arg(kDateLine),
                                         QStringLiteral("<R>"),
                                         QStringLiteral("{12pt:中央労働基準監督署長　殿}"),
                                         QString(),
                                         QString(),
                                         QStringLiteral("{12pt:　今回、別添のとおり当社の就業規則を作成}{12pt dstrike:・変更}{12pt:しましたので、}"),
                                         QStringLiteral("{12pt:　意見書を添えて届け出します。}"),
                                     }
                                     + repeated(QString(), 4)
                                     + QStringList{
                                         QStringLiteral("{12pt:労働保険番号　　13101123456000}"),
                                         QString(),
                                         QStringLiteral("{12pt:　　事業場名　　株式会社ノルマ}"),
                                         QString(),
                                         QStringLiteral("{12pt:　　　所在地　　100-0001}"),
                                         QStringLiteral("{12pt:　　　　　　　　東京都千代田区千代田1-1}"),
                                         QStringLiteral("{12pt:　　　　　　　　ノルマビル3階}"),
                                         QString(),
                                         QStringLiteral("{12pt:　　　ＴＥＬ　　03-5555-0123}"),
                                         QString(),
                                         QStringLiteral("{12pt:代表者職氏名　　代表取締役　山田太郎　印}"),
                                         QString(),
                                         QStringLiteral("{12pt:　　　　業種　　小売業}"),
                                         QString(),
                                         QStringLiteral("{12pt:　　労働者数　　２５人}"),
                                         QStringLiteral("<改ページ>"),
                                         QStringLiteral("<C>{20pt:意見書}"),
                                         QStringLiteral("<C>"),
                                         QStringLiteral("<R>{12pt:%1}").arg(kDateLine),
                                         QStringLiteral("<R>"),
                                         QStringLiteral("{12pt:株式会社ノルマ}"),
                                         QStringLiteral("{12pt:代表取締役　山田太郎　殿}"),
                                         QString(),
                                         QString(),
                                         QStringLiteral("{12pt:　%1　　　年　　　月　　　日付をもって意見を求められた就業規則について、下記のとおり意見を提出します。}").arg(era),
                                         QString(),
                                         QStringLiteral("<C>{12pt:記}"),
                                     }
                                     + repeated(QString(), 16)
                                     + QStringList{QStringLiteral("<R>{12pt:労働代表者　総務課長　佐藤花子　印}")};
        QCOMPARE(typed, expected);
        // The blank date lines are for the era the forms are filed in.
        QVERIFY(kDateLine.startsWith(QStringLiteral("令和")));
    }

    void filingChangeOrMaking_data()
    {
        QTest::addColumn<bool>("isChange");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("作成") << false << QStringLiteral("<C>{20pt:就業規則}{20pt dstrike:（変更）}{20pt:届}")
                              << QStringLiteral(
                                     "{12pt:　今回、別添のとおり当社の就業規則を作成}{12pt dstrike:・変更}{12pt:しましたので、}");
        QTest::newRow("変更") << true << QStringLiteral("<C>{20pt:就業規則（変更）届}")
                              << QStringLiteral(
                                     "{12pt:　今回、別添のとおり当社の就業規則を}{12pt dstrike:作成・}{12pt:変更しましたので、}");
    }
    void filingChangeOrMaking()
    {
        QFETCH(bool, isChange);
        QFETCH(QString, heading);
        QFETCH(QString, sentence);
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, isChange}, QString(), QString());
        QCOMPARE(typed.value(0), heading);
        QCOMPARE(linesFrom(typed, QStringLiteral("今回"), 1), QStringList{sentence});
    }

    void filingAddress_data()
    {
        QTest::addColumn<QString>("postcode");
        QTest::addColumn<QString>("secondLine");
        QTest::addColumn<QStringList>("expected"); // from the 所在地 line to the ＴＥＬ line
        const QString tel = QStringLiteral("{12pt:　　　ＴＥＬ　　03-5555-0123}");
        QTest::newRow("postcode and two lines") << QStringLiteral("100-0001") << QStringLiteral("ノルマビル3階")
                                                << QStringList{QStringLiteral("{12pt:　　　所在地　　100-0001}"),
                                                               QStringLiteral("{12pt:　　　　　　　　東京都千代田区千代田1-1}"),
                                                               QStringLiteral("{12pt:　　　　　　　　ノルマビル3階}"), QString(), tel};
        QTest::newRow("postcode, one line") << QStringLiteral("100-0001") << QString()
                                            << QStringList{QStringLiteral("{12pt:　　　所在地　　100-0001}"),
                                                           QStringLiteral("{12pt:　　　　　　　　東京都千代田区千代田1-1}"), QString(),
                                                           tel};
        QTest::newRow("no postcode: the address on the 所在地 line")
            << QString() << QStringLiteral("ノルマビル3階")
            << QStringList{QStringLiteral("{12pt:　　　所在地　　東京都千代田区千代田1-1}"),
                           QStringLiteral("{12pt:　　　　　　　　ノルマビル3階}"), QString(), tel};
        QTest::newRow("no postcode, one line") << QString() << QString()
                                               << QStringList{QStringLiteral("{12pt:　　　所在地　　東京都千代田区千代田1-1}"), QString(),
                                                              tel};
    }
    void filingAddress()
    {
        QFETCH(QString, postcode);
        QFETCH(QString, secondLine);
        QFETCH(QStringList, expected);
        setSetting(QStringLiteral("郵便番号"), postcode);
        setSetting(QStringLiteral("所在地2"), secondLine);
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        QCOMPARE(linesFrom(typed, QStringLiteral("所在地"), int(expected.size())), expected);
    }

    void filingWithoutInsuranceNumber()
    {
        setSetting(QStringLiteral("労働保険番号"), QString());
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        QVERIFY(!typed.join(u'\n').contains(QStringLiteral("労働保険番号")));
        QCOMPARE(linesFrom(typed, QStringLiteral("届け出します"), 6),
                 (QStringList{QStringLiteral("{12pt:　意見書を添えて届け出します。}"), QString(), QString(), QString(), QString(),
                              QStringLiteral("{12pt:　　事業場名　　株式会社ノルマ}")}));
    }

    void opinionSignature_data()
    {
        QTest::addColumn<QString>("party");
        QTest::addColumn<QString>("line");
        QTest::newRow("労働組合") << QStringLiteral("1") << QStringLiteral("<R>{12pt:ノルマ労働組合　総務課長　佐藤花子　印}");
        QTest::newRow("従業員代表") << QStringLiteral("2") << QStringLiteral("<R>{12pt:労働代表者　総務課長　佐藤花子　印}");
        QTest::newRow("パート代表") << QStringLiteral("3") << QStringLiteral("<R>{12pt:労働代表者　販売主任　鈴木一郎　印}");
        QTest::newRow("unknown party: no line") << QStringLiteral("4") << QString();
    }
    void opinionSignature()
    {
        QFETCH(QString, party);
        QFETCH(QString, line);
        setParty(party);
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        QCOMPARE(typed.last(), line);
    }

    // An untouched setting holds its own marker: the forms show the markers, in blue.
    void filingFormsOfUntouchedSettings()
    {
        BasicSettings(m_db).save(QStringList(16), QStringLiteral("3"));
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        const QStringList expected = {
            QStringLiteral("{12pt blue:☆0016☆労働基準監督署長　殿}"),
            QStringLiteral("{12pt blue:　　事業場名　　☆0001☆}"),
            QStringLiteral("{12pt blue:　　　所在地　　☆0003☆}"),
            QStringLiteral("{12pt blue:　　　ＴＥＬ　　☆0005☆}"),
            QStringLiteral("{12pt blue:代表者職氏名　　☆0006☆　☆0007☆　印}"),
            QStringLiteral("{12pt blue:　　　　業種　　☆0013☆}"),
            QStringLiteral("{12pt blue:　　労働者数　　☆００１４☆人}"),
            QStringLiteral("{12pt blue:☆0001☆}"),
            QStringLiteral("{12pt blue:☆0006☆　☆0007☆　殿}"),
            QStringLiteral("<R>{12pt blue:労働代表者　☆0011☆　☆0012☆　印}"),
        };
        QStringList blue;
        for (const QString &line : typed) {
            if (line.contains(QStringLiteral("blue")))
                blue << line;
        }
        QCOMPARE(blue, expected);
    }

    // One unset field colours the whole line; an empty one prints nothing and stays black.
    void oneUnsetFieldColoursItsLine()
    {
        setSetting(QStringLiteral("使用者氏名"), QStringLiteral("☆0007☆"));
        setSetting(QStringLiteral("業種"), QString());
        const QStringList typed = render({ExportKind::Filing, CoverChoice::Both, true, false}, QString(), QString());
        QCOMPARE(linesFrom(typed, QStringLiteral("代表者職氏名"), 1),
                 QStringList{QStringLiteral("{12pt blue:代表者職氏名　　代表取締役　☆0007☆　印}")});
        QCOMPARE(linesFrom(typed, QStringLiteral("業種"), 1), QStringList{QStringLiteral("{12pt:　　　　業種　　}")});
    }

    // ---- Size --------------------------------------------------------------------

    // A long document is typed whole from the rows read once: 1,000 articles of 30
    // rows each (the article, four 項 in three segments, two 号 under each, and five
    // ① that each stand alone under the last 号).
    void thirtyThousandRows()
    {
        Draft draft = Draft().document(QStringLiteral("就業規則")).chapter(QStringLiteral("01"), 1, QStringLiteral("総則"));
        for (int a = 1; a <= 1000; ++a) {
            draft.article(QStringLiteral("%1").arg(a, 4, 10, QChar(u'0')), a, QStringLiteral("条"));
            for (int k = 1; k <= 4; ++k) {
                draft
                    .clause(Level::Paragraph, QStringLiteral("%1").arg(k, 2, 10, QChar(u'0')), k, QStringLiteral("項"), QStringLiteral("1"))
                    .segment(QStringLiteral("2"), QStringLiteral("続き"))
                    .segment(QStringLiteral("3"), QStringLiteral("改行"), true);
                for (int g = 1; g <= 2; ++g)
                    draft.clause(Level::Item, QStringLiteral("%1").arg(g, 2, 10, QChar(u'0')), g, QStringLiteral("号"));
            }
            for (int m = 1; m <= 4; ++m)
                draft.clause(Level::Maru, QStringLiteral("01"), 1, QStringLiteral("丸"), QStringLiteral("1"))
                    .segment(QStringLiteral("2"), QStringLiteral("続き"));
            draft.clause(Level::Maru, QStringLiteral("01"), 1, QStringLiteral("丸"));
        }
        draft.closing();
        {
            Transaction transaction(m_db);
            draft.write(m_db);
            transaction.commit();
        }
        QCOMPARE(scalar(m_db, QStringLiteral("SELECT count(*) FROM 作成データ")).toInt(), 3 + 1000 * 30);
        const QStringList typed = render(bodyOnly());
        QCOMPARE(m_outcome, Outcome::Done);
        QCOMPARE(typed.count(QStringLiteral("<i-1>    改行")), 4000);
        QCOMPARE(typed.count(QStringLiteral("<i-3>{red:          ◆◆◆「①」が１つだけです（本行は必ず削除してください）◆◆ }")), 1000 * 5);
        QVERIFY(!typed.join(u'\n').contains(QStringLiteral("「号」")));
    }

    // ---- Failures --------------------------------------------------------------

    void failureWhileTyping()
    {
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).closing().write(m_db);
        FailingTypist typist(QStringLiteral("第１条"));
        const Outcome outcome = DocumentRenderer(m_db, m_prompt).render(typist, kStyle, kDoc, bodyOnly());
        QCOMPARE(outcome, Outcome::Failed);
        QCOMPARE(m_prompt.lines(), QStringList{kProgramTitle + QStringLiteral(": 文書に書き込めません。")});
        // What was typed before the failure stays.
        QCOMPARE(typist.lines(), (QStringList{QStringLiteral("<C>{14pt bold:就業規則}"), QStringLiteral("<C>"),
                                              QStringLiteral("<C>{bold:第１章  総則}"), QStringLiteral("<C>")}));
    }

    // The cover and the contents name the document by its 規程 row.
    // ---- The refusals before an empty or misnumbered document ----------------

    // Headings without a clause would make a document without a word of rules.
    void refusesDocumentWithoutClauses_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("rules") << int(ExportKind::Rules);
        QTest::newRow("agreement") << int(ExportKind::Agreement);
    }
    void refusesDocumentWithoutClauses()
    {
        QFETCH(int, kind);
        Draft::opening().article(QStringLiteral("0002"), 2, QStringLiteral("定義")).closing().write(m_db);
        const QStringList typed = render({ExportKind(kind), CoverChoice::Both, true, false});
        QCOMPARE(m_outcome, Outcome::Stopped);
        QCOMPARE(m_prompt.lines(),
                 QStringList{QStringLiteral("データの確認: 条文のデータがありません。条文を選択してからデータ作成を行ってください。")});
        QCOMPARE(m_prompt.shown().first().icon, Prompt::Icon::Error);
        QVERIFY(typed.isEmpty());
    }

    // 章 and 条 each run 1, 2, 3 … through the document; the first that does not
    // is named in a question, and no stops the step before anything is typed.
    void asksAboutNumbersOutOfOrder_data()
    {
        QTest::addColumn<QList<int>>("chapters"); // the 番号 of chapters 01, 02
        QTest::addColumn<QList<int>>("articles"); // the 番号 of the articles, one clause each, two in each chapter
        QTest::addColumn<QString>("question");    // empty: none asked
        QTest::newRow("in order") << QList<int>{1, 2} << QList<int>{1, 2, 3, 4} << QString();
        QTest::newRow("第０条") << QList<int>{1, 2} << QList<int>{0, 1, 2, 3} << QStringLiteral("第０条（条0）");
        QTest::newRow("第３条 before 第１条") << QList<int>{1, 2} << QList<int>{3, 1, 2, 4} << QStringLiteral("第３条（条0）");
        QTest::newRow("a gap") << QList<int>{1, 2} << QList<int>{1, 2, 4, 5} << QStringLiteral("第４条（条2）");
        QTest::newRow("chapters out of order") << QList<int>{2, 1} << QList<int>{1, 2, 3, 4} << QStringLiteral("第２章  章0");
    }
    void asksAboutNumbersOutOfOrder()
    {
        QFETCH(QList<int>, chapters);
        QFETCH(QList<int>, articles);
        QFETCH(QString, question);
        for (bool goOn : {false, true}) {
            Draft draft;
            draft.document(QStringLiteral("就業規則"));
            for (int c = 0; c < 2; ++c) {
                draft.chapter(QStringLiteral("0%1").arg(c + 1), chapters[c], QStringLiteral("章%1").arg(c));
                for (int a = 2 * c; a < 2 * c + 2; ++a) {
                    draft.article(QStringLiteral("%1").arg(a + 1, 4, 10, QChar(u'0')), articles[a], QStringLiteral("条%1").arg(a));
                    draft.clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文"));
                }
            }
            execSql(m_db, QStringLiteral("DELETE FROM 作成データ"));
            draft.closing().write(m_db);
            m_prompt.clear();
            m_prompt.answer({goOn});
            const QStringList typed = render(bodyOnly());
            if (question.isEmpty()) {
                QVERIFY(m_prompt.shown().isEmpty());
                QCOMPARE(m_outcome, Outcome::Done);
                return;
            }
            QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("番号の確認: 「%1」から番号が１、２、３…の順になっていません。"
                                                                  "このまま文書を作成しますか？")
                                                       .arg(question)});
            QVERIFY(m_prompt.shown().first().question);
            QCOMPARE(m_outcome, goOn ? Outcome::Done : Outcome::Stopped);
            QCOMPARE(typed.isEmpty(), !goOn);
        }
    }

    void documentRowMissing_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<int>("outcome");
        QTest::newRow("with a cover") << int(CoverChoice::CoverOnly) << int(Outcome::Failed);
        QTest::newRow("with contents") << int(CoverChoice::TocOnly) << int(Outcome::Failed);
        QTest::newRow("without either") << int(CoverChoice::None) << int(Outcome::Done);
    }
    void documentRowMissing()
    {
        QFETCH(int, choice);
        QFETCH(int, outcome);
        execSql(m_db, QStringLiteral("DELETE FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {kStyle, kDoc});
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).write(m_db);
        const QStringList typed = render({ExportKind::Rules, CoverChoice(choice), true, false});
        QCOMPARE(int(m_outcome), outcome);
        if (m_outcome == Outcome::Failed) {
            QCOMPARE(m_prompt.lines(), QStringList{kProgramTitle + QStringLiteral(": 規程のデータがありません。")});
            QVERIFY(typed.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(RenderTest)
#include "tst_render.moc"
