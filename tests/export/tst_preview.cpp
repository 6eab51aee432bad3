// Wordで確認: one article of hand-made work rows typed as its preview, recorded by
// the TextTypist: one line per paragraph, "<i-2>" for a hanging indent of two
// characters, "{blue:…}" and "{red:…}" for coloured text.

#include "DocxContent.h"
#include "ExportFixture.h"
#include "WorkRows.h"
#include "export/ArticlePreview.h"
#include "fileformats/TextTypist.h"

#include <QFile>
#include <QFileInfo>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kDoc = QStringLiteral("01");
const QString kHeading = QStringLiteral("第●条（目的）");

// The parents of a clause of level, one row each: a 項 above a 号, and so on.
Draft &withParents(Draft &draft, Level level)
{
    for (int parent = int(Level::Paragraph); parent < int(level); ++parent)
        draft.clause(Level(parent), QStringLiteral("01"), 1, QStringLiteral("上位"));
    return draft;
}

} // namespace

class PreviewTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<OpenCompany> m_company;
    bool m_typed = false;

    QStringList preview(const QString &chapter = QStringLiteral("01"), const QString &article = QStringLiteral("0001"),
                        const QString &style = kStyle)
    {
        TextTypist typist;
        m_typed = ArticlePreview(m_company->db, style, kDoc).type(typist, chapter, article);
        return typist.lines();
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

private slots:
    void init() { m_company = std::make_unique<OpenCompany>(); }
    void cleanup() { m_company.reset(); }

    void nothingToShow()
    {
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("本文")).write(m_company->db);
        QVERIFY(preview(QStringLiteral("01"), QStringLiteral("0002")).isEmpty());
        QVERIFY(!m_typed);
        QVERIFY(preview(QStringLiteral("01"), QStringLiteral("0001"), QStringLiteral("2")).isEmpty());
        QVERIFY(!m_typed);
    }

    // The article's rows alone, of its style and document; its heading unnumbered.
    void onlyTheArticle()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("第一条の本文"))
            .article(QStringLiteral("0002"), 2, QStringLiteral("適用範囲"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("全従業員に適用する。"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("パートタイマーは別に定める。"))
            .chapter(QStringLiteral("02"), 2, QStringLiteral("採用"))
            .article(QStringLiteral("0002"), 3, QStringLiteral("採用手続"))
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("別の章の本文"))
            .closing()
            .write(m_company->db);
        Draft(QStringLiteral("2"))
            .document(QStringLiteral("就業規則"))
            .chapter(QStringLiteral("01"), 1, QStringLiteral("総則"))
            .article(QStringLiteral("0002"), 2, QStringLiteral("別の形式"))
            .write(m_company->db, QStringLiteral("02"));
        const QStringList expected = {
            QStringLiteral("第●条（適用範囲）"),
            QStringLiteral("<i-1>●  全従業員に適用する。"),
            QStringLiteral("<i-1>●  パートタイマーは別に定める。"),
        };
        QCOMPARE(preview(QStringLiteral("01"), QStringLiteral("0002")), expected);
        QVERIFY(m_typed);
    }

    // One clause of one row: the label in place of its number, or with 改行 the
    // blank prefix of a continued line. 結合 '0' is a row of its own as well.
    void levels_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("join");
        QTest::addColumn<bool>("lineBreak");
        QTest::addColumn<QString>("line");
        const int kou = int(Level::Paragraph), gou = int(Level::Item), maru = int(Level::Maru), iroha = int(Level::Iroha);
        QTest::newRow("項") << kou << QString() << false << QStringLiteral("<i-1>●  対象");
        QTest::newRow("号") << gou << QString() << false << QStringLiteral("<i-2>(●)  対象");
        QTest::newRow("①") << maru << QString() << false << QStringLiteral("<i-3>    ●  対象");
        QTest::newRow("イ") << iroha << QString() << false << QStringLiteral("<i-4>      ●  対象");
        QTest::newRow("項, 改行") << kou << QString() << true << QStringLiteral("<i-1>    対象");
        QTest::newRow("号, 改行") << gou << QString() << true << QStringLiteral("<i-2>      対象");
        QTest::newRow("①, 改行") << maru << QString() << true << QStringLiteral("<i-3>        対象");
        QTest::newRow("イ, 改行") << iroha << QString() << true << QStringLiteral("<i-4>          対象");
        QTest::newRow("項, 結合 0") << kou << QStringLiteral("0") << false << QStringLiteral("<i-1>●  対象");
        QTest::newRow("号, 結合 0, 改行") << gou << QStringLiteral("0") << true << QStringLiteral("<i-2>      対象");
    }
    void levels()
    {
        QFETCH(int, level);
        QFETCH(QString, join);
        QFETCH(bool, lineBreak);
        QFETCH(QString, line);
        Draft draft = Draft::opening();
        withParents(draft, Level(level));
        if (lineBreak)
            draft.withLineBreak();
        // A number of two digits changes nothing: the preview numbers nothing.
        draft.clause(Level(level), QStringLiteral("12"), 12, QStringLiteral("対象"), join).write(m_company->db);
        const QStringList typed = preview();
        QCOMPARE(typed.first(), kHeading);
        QCOMPARE(typed.size(), level - int(Level::Article) + 1);
        QCOMPARE(typed.last(), line);
    }

    // '1' 前段, '2' 、中段 running on, '3' 後段 on a new line with the level's blank
    // prefix, '4' 、末尾 running on again: one clause, two paragraphs.
    void chains_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("項") << int(Level::Paragraph)
                            << QStringList{QStringLiteral("<i-1>●  前段、中段"), QStringLiteral("<i-1>    後段、末尾"),
                                           QStringLiteral("<i-1>●  次")};
        QTest::newRow("号") << int(Level::Item)
                            << QStringList{QStringLiteral("<i-2>(●)  前段、中段"), QStringLiteral("<i-2>      後段、末尾"),
                                           QStringLiteral("<i-2>(●)  次")};
        QTest::newRow("①") << int(Level::Maru)
                           << QStringList{QStringLiteral("<i-3>    ●  前段、中段"), QStringLiteral("<i-3>        後段、末尾"),
                                          QStringLiteral("<i-3>    ●  次")};
        QTest::newRow("イ") << int(Level::Iroha)
                            << QStringList{QStringLiteral("<i-4>      ●  前段、中段"), QStringLiteral("<i-4>          後段、末尾"),
                                           QStringLiteral("<i-4>      ●  次")};
    }
    void chains()
    {
        QFETCH(int, level);
        QFETCH(QStringList, expected);
        Draft draft = Draft::opening();
        withParents(draft, Level(level))
            .clause(Level(level), QStringLiteral("01"), 1, QStringLiteral("前段"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QStringLiteral("、中段"))
            .segment(QStringLiteral("3"), QStringLiteral("後段"), true)
            .segment(QStringLiteral("4"), QStringLiteral("、末尾"))
            .clause(Level(level), QStringLiteral("02"), 2, QStringLiteral("次"))
            .write(m_company->db);
        const QStringList typed = preview();
        QCOMPARE(linesFrom(typed, QStringLiteral("前段"), 4), expected);
        // Nothing after the article's last row but the paragraph it ends.
        QCOMPARE(typed.last(), expected.last());
    }

    // A chain that skips a number ends there; the segment after the gap has no head
    // and is dropped, its row still ending a paragraph.
    void brokenChain()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("前段"), QStringLiteral("1"))
            .segment(QStringLiteral("3"), QStringLiteral("迷子"))
            .clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("次"))
            .write(m_company->db);
        QCOMPARE(preview(), (QStringList{kHeading, QStringLiteral("<i-1>●  前段"), QStringLiteral("<i-1>"), QStringLiteral("<i-1>●  次")}));
    }

    // A row without text is the place of a template: the red line at the margin.
    // A segment of a chain is typed as it stands, its line left blank but for the prefix.
    void templates()
    {
        Draft::opening()
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("様式は"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QString(), true, QStringLiteral("0012"))
            .segment(QStringLiteral("3"), QStringLiteral("とする。"))
            .templateRow(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("0005"))
            .clause(Level::Paragraph, QStringLiteral("03"), 3, QStringLiteral("本文"))
            .write(m_company->db);
        const QStringList expected = {
            kHeading,
            QStringLiteral("<i-2>(●)  様式は"),
            QStringLiteral("<i-2>      とする。"),
            QStringLiteral("{red:          ★テンプレート0005を挿入してください★}"),
            QStringLiteral("<i-1>●  本文"),
        };
        QCOMPARE(preview(), expected);
    }

    // Blue for a row whose text holds a word's marker ★, on the heading as on a
    // clause; the markers ◆ and ☆ are not the preview's concern. Each segment of a
    // chain by its own text, at every level.
    void blueRows_data()
    {
        QTest::addColumn<int>("level");         // 3 for the heading alone
        QTest::addColumn<QStringList>("texts"); // the head, then the segments running on
        QTest::addColumn<QString>("line");
        const int kou = int(Level::Paragraph), maru = int(Level::Maru), iroha = int(Level::Iroha);
        QTest::newRow("heading with a word") << int(Level::Article) << QStringList{QStringLiteral("★0001★の扱い")}
                                             << QStringLiteral("{blue:第●条（★0001★の扱い）}");
        QTest::newRow("heading with a setting")
            << int(Level::Article) << QStringList{QStringLiteral("☆0001☆の扱い")} << QStringLiteral("第●条（☆0001☆の扱い）");
        QTest::newRow("項 with a word") << kou << QStringList{QStringLiteral("休日は★0002★とする。")}
                                        << QStringLiteral("<i-1>{blue:●  休日は★0002★とする。}");
        QTest::newRow("項 with a reference") << kou << QStringList{QStringLiteral("休日は◆0003◆による。")}
                                             << QStringLiteral("<i-1>●  休日は◆0003◆による。");
        QTest::newRow("項: the head blue, the plain tail black")
            << kou << QStringList{QStringLiteral("★0001★を"), QStringLiteral("定める。")}
            << QStringLiteral("<i-1>{blue:●  ★0001★を}定める。");
        QTest::newRow("①: the head blue, the plain tail black")
            << maru << QStringList{QStringLiteral("★0001★を"), QStringLiteral("定める。")}
            << QStringLiteral("<i-3>{blue:    ●  ★0001★を}定める。");
        QTest::newRow("イ: a marked tail blue, the next black")
            << iroha << QStringList{QStringLiteral("次の"), QStringLiteral("★0002★"), QStringLiteral("に従う。")}
            << QStringLiteral("<i-4>      ●  次の{blue:★0002★}に従う。");
        QTest::newRow("項: a tail with a setting black")
            << kou << QStringList{QStringLiteral("次の"), QStringLiteral("☆0001☆")} << QStringLiteral("<i-1>●  次の☆0001☆");
    }
    void blueRows()
    {
        QFETCH(int, level);
        QFETCH(QStringList, texts);
        QFETCH(QString, line);
        if (level == int(Level::Article)) {
            Draft::opening().article(QStringLiteral("0002"), 2, texts.first()).write(m_company->db);
            QCOMPARE(preview(QStringLiteral("01"), QStringLiteral("0002")), QStringList{line});
            return;
        }
        Draft draft = Draft::opening();
        withParents(draft, Level(level))
            .clause(Level(level), QStringLiteral("01"), 1, texts.first(), texts.size() > 1 ? QStringLiteral("1") : QString());
        for (qsizetype i = 1; i < texts.size(); ++i)
            draft.segment(QString::number(i + 1), texts[i]);
        draft.clause(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("後続"));
        draft.write(m_company->db);
        const QStringList typed = preview();
        QCOMPARE(linesFrom(typed, texts.first(), 1), QStringList{line});
        // The colour is set again for the row after.
        QCOMPARE(typed.last(), QStringLiteral("<i-1>●  後続"));
    }

    // A whole article: every row one paragraph, the indent of each set anew.
    void wholeArticle()
    {
        Draft::opening()
            .clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("従業員は、次の事項を守る。"))
            .clause(Level::Item, QStringLiteral("01"), 1, QStringLiteral("★0001★に従うこと"))
            .clause(Level::Maru, QStringLiteral("01"), 1, QStringLiteral("始業時刻"))
            .clause(Level::Iroha, QStringLiteral("01"), 1, QStringLiteral("交替制のとき"))
            .clause(Level::Item, QStringLiteral("02"), 2, QStringLiteral("職場の秩序を保つこと"))
            .templateRow(Level::Paragraph, QStringLiteral("02"), 2, QStringLiteral("0007"))
            .clause(Level::Paragraph, QStringLiteral("03"), 3, QStringLiteral("前項の"), QStringLiteral("1"))
            .segment(QStringLiteral("2"), QStringLiteral("様式は別に定める。"))
            .closing()
            .write(m_company->db);
        const QStringList expected = {
            kHeading,
            QStringLiteral("<i-1>●  従業員は、次の事項を守る。"),
            QStringLiteral("<i-2>{blue:(●)  ★0001★に従うこと}"),
            QStringLiteral("<i-3>    ●  始業時刻"),
            QStringLiteral("<i-4>      ●  交替制のとき"),
            QStringLiteral("<i-2>(●)  職場の秩序を保つこと"),
            QStringLiteral("{red:          ★テンプレート0007を挿入してください★}"),
            QStringLiteral("<i-1>●  前項の様式は別に定める。"),
        };
        QCOMPARE(preview(), expected);
    }

    void writesADocx()
    {
        Draft::opening().clause(Level::Paragraph, QStringLiteral("01"), 1, QStringLiteral("★0001★とする。")).write(m_company->db);
        ArticlePreview article(m_company->db, kStyle, kDoc);
        QCOMPARE(article.write(QStringLiteral("01"), QStringLiteral("0002")), QString());
        const QString path = article.write(QStringLiteral("01"), QStringLiteral("0001"));
        QVERIFY(path.endsWith(QStringLiteral(".docx")));
        QVERIFY(QFileInfo(path).fileName().startsWith(QStringLiteral("normaris_01_")));
        const DocxBody body = readBody(zipEntries(path).value(QStringLiteral("word/document.xml")));
        QFile::remove(path);
        QVERIFY2(body.error.isEmpty(), qPrintable(body.error));
        QCOMPARE(body.paragraphs.size(), 3); // the document's last paragraph is the one the cursor is in
        QCOMPARE(body.paragraphs[0].text(), kHeading);
        QCOMPARE(body.paragraphs[1].text(), QStringLiteral("●  ★0001★とする。"));
        // The 項 indent and the blue of an unsettled marker come from their styles.
        QCOMPARE(body.paragraphs[1].props.value(QStringLiteral("pStyle@val")), QStringLiteral("Paragraph"));
        QCOMPARE(body.paragraphs[1].runs.first().props.value(QStringLiteral("rStyle@val")), QStringLiteral("Unsettled"));
    }
};

QTEST_MAIN(PreviewTest)
#include "tst_preview.moc"
