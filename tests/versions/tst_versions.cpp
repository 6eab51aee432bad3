// The comparison of two versions: the character diff, the matching by codes, the
// text of a table and its .docx, on hand-made rows.

#include "DocxContent.h"
#include "VersionRows.h"
#include "versions/ComparisonDocx.h"
#include "versions/ComparisonText.h"
#include "versions/VersionComparison.h"
#include "versions/VersionRecorder.h"

#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

Q_DECLARE_METATYPE(normaris::PrintedRows)

namespace {

QString braced(const MarkedText &spans)
{
    QString out;
    for (const MarkedSpan &s : spans)
        out += s.changed ? u'{' + s.text + u'}' : s.text;
    return out;
}

QString braced(const ComparisonLine &line)
{
    return (line.labelChanged ? u'{' + line.label + u'}' : line.label) + u'|' + braced(line.text);
}

QStringList cell(const ComparisonCell &c)
{
    if (!c.placeholder.isEmpty())
        return {c.placeholder};
    QStringList lines;
    for (const ComparisonLine &l : c.lines)
        lines << braced(l);
    return lines;
}

const QString kHours = QStringLiteral("0040");

PrintedRows threeArticles()
{
    return {articleRow(QStringLiteral("0001"), 1, QStringLiteral("目的")),
            clauseRow(QStringLiteral("0001"), Level::Paragraph, QStringLiteral("01"), QString(),
                      QStringLiteral("この規則は、労働条件を定める。")),
            articleRow(QStringLiteral("0002"), 2, QStringLiteral("適用範囲")),
            clauseRow(QStringLiteral("0002"), Level::Paragraph, QStringLiteral("01"), QString(),
                      QStringLiteral("この規則は、従業員に適用する。")),
            articleRow(kHours, 3, QStringLiteral("労働時間")),
            clauseRow(kHours, Level::Paragraph, QStringLiteral("01"), QString(), QStringLiteral("所定労働時間は、週４０時間とする。")),
            clauseRow(kHours, Level::Paragraph, QStringLiteral("02"), QStringLiteral("２"),
                      QStringLiteral("前項の時間は、第２条の従業員に適用する。"))};
}

} // namespace

class VersionsTest : public QObject {
    Q_OBJECT
private slots:
    void characterDiff_data()
    {
        QTest::addColumn<QString>("oldText");
        QTest::addColumn<QString>("newText");
        QTest::addColumn<QString>("oldMarked");
        QTest::addColumn<QString>("newMarked");
        QTest::newRow("same") << "週４０時間"
                              << "週４０時間"
                              << "週４０時間"
                              << "週４０時間";
        QTest::newRow("replaced word") << "週４０時間とする。"
                                       << "週３８時間とする。"
                                       << "週{４０}時間とする。"
                                       << "週{３８}時間とする。";
        QTest::newRow("inserted") << "会社は支給する。"
                                  << "会社は速やかに支給する。"
                                  << "会社は支給する。"
                                  << "会社は{速やかに}支給する。";
        QTest::newRow("removed") << "会社は速やかに支給する。"
                                 << "会社は支給する。"
                                 << "会社は{速やかに}支給する。"
                                 << "会社は支給する。";
        QTest::newRow("from nothing") << ""
                                      << "新しい文"
                                      << ""
                                      << "{新しい文}";
        QTest::newRow("to nothing") << "古い文"
                                    << ""
                                    << "{古い文}"
                                    << "";
        // One unchanged character between two changes is taken into the change.
        QTest::newRow("gap of one") << "甲乙丙"
                                    << "丁乙戊"
                                    << "{甲乙丙}"
                                    << "{丁乙戊}";
        QTest::newRow("two places") << "毎月２５日に、通貨で支払う。"
                                    << "毎月２０日に、口座へ支払う。"
                                    << "毎月２{５}日に、{通貨で}支払う。"
                                    << "毎月２{０}日に、{口座へ}支払う。";
        QTest::newRow("surrogate pair") << "𠮷野家"
                                        << "𠮟野家"
                                        << "{𠮷}野家"
                                        << "{𠮟}野家";
    }
    void characterDiff()
    {
        QFETCH(QString, oldText);
        QFETCH(QString, newText);
        QFETCH(QString, oldMarked);
        QFETCH(QString, newMarked);
        const CharacterDiff diff = CharacterDiff::of(oldText, newText);
        QCOMPARE(braced(markedSpans(oldText, diff.oldChanged)), oldMarked);
        QCOMPARE(braced(markedSpans(newText, diff.newChanged)), newMarked);
    }

    void splitLabel_data()
    {
        QTest::addColumn<QString>("printed");
        QTest::addColumn<QString>("own");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("text");
        QTest::newRow("article") << "第５条（目的）"
                                 << "目的"
                                 << "第５条"
                                 << "（目的）";
        QTest::newRow("chapter") << "第１章  総則"
                                 << "総則"
                                 << "第１章"
                                 << "総則";
        QTest::newRow("paragraph") << "２  従業員は、"
                                   << "従業員は、"
                                   << "２"
                                   << "従業員は、";
        QTest::newRow("first paragraph hidden") << "    従業員は、"
                                                << "従業員は、"
                                                << ""
                                                << "従業員は、";
        QTest::newRow("item") << " (3)  欠勤"
                              << "欠勤"
                              << "(3)"
                              << "欠勤";
        QTest::newRow("maru") << "    ①  遅刻"
                              << "遅刻"
                              << "①"
                              << "遅刻";
        QTest::newRow("continued line") << "      次のとおり"
                                        << "次のとおり"
                                        << ""
                                        << "次のとおり";
        QTest::newRow("title") << "就業規則"
                               << "就業規則"
                               << ""
                               << "就業規則";
    }
    void splitLabel()
    {
        QFETCH(QString, printed);
        QFETCH(QString, own);
        QFETCH(QString, label);
        QFETCH(QString, text);
        const auto split = VersionRecorder::splitLabel(printed, own);
        QCOMPARE(split.first, label);
        QCOMPARE(split.second, text);
    }

    // A new article early on: only it is a row of the table; the ones after it
    // moved, and a citation that moved with its article is no change.
    void renumberingIsNoChange()
    {
        const PrintedRows before = threeArticles();
        PrintedRows after = before;
        after.insert(2, articleRow(QStringLiteral("7001"), 2, QStringLiteral("副業")));
        after.insert(
            3, clauseRow(QStringLiteral("7001"), Level::Paragraph, QStringLiteral("01"), QString(), QStringLiteral("副業は届け出る。")));
        after[4].label = QStringLiteral("第３条");
        after[6].label = QStringLiteral("第４条");
        after[8].text = QStringLiteral("前項の時間は、第３条の従業員に適用する。");

        const ComparisonTable table = compareVersions(version(1, before), version(2, after));
        QCOMPARE(table.entries.size(), 1);
        QCOMPARE(table.entries[0].kind, ChangeKind::Added);
        QCOMPARE(cell(table.entries[0].newer), QStringList({"{第２条}|{（副業）}", "|{副業は届け出る。}"}));
        QCOMPARE(cell(table.entries[0].older), QStringList{ComparisonTable::kAdded});
        QCOMPARE(table.renumbered.size(), 2);
        QCOMPARE(table.renumbered[0].line(), QStringLiteral("第２条 → 第３条（適用範囲）"));
        QCOMPARE(table.renumbered[1].line(), QStringLiteral("第３条 → 第４条（労働時間）"));
    }

    void changes_data()
    {
        QTest::addColumn<PrintedRows>("before");
        QTest::addColumn<PrintedRows>("after");
        QTest::addColumn<QStringList>("newer");
        QTest::addColumn<QStringList>("older");
        const PrintedRows before = threeArticles();

        PrintedRows word = before;
        word[5].text = QStringLiteral("所定労働時間は、週３８時間とする。");
        QTest::newRow("changed word") << before << word << QStringList{"第３条|（労働時間）", "|所定労働時間は、週{３８}時間とする。"}
                                      << QStringList{"第３条|（労働時間）", "|所定労働時間は、週{４０}時間とする。"};

        PrintedRows removed = before;
        removed.removeAt(6);
        QTest::newRow("removed paragraph") << before << removed << QStringList{"第３条|（労働時間）"}
                                           << QStringList{"第３条|（労働時間）", "{２}|{前項の時間は、第２条の従業員に適用する。}"};

        PrintedRows split = before;
        split[3].text = QStringLiteral("この規則は、正社員に適用する。");
        split.insert(4, clauseRow(QStringLiteral("0002"), Level::Paragraph, QStringLiteral("02"), QStringLiteral("２"),
                                  QStringLiteral("パートタイム社員には、別に定める規則を適用する。")));
        QTest::newRow("split paragraph") << before << split
                                         << QStringList{"第２条|（適用範囲）", "|この規則は、{正社}員に適用する。",
                                                        "{２}|{パートタイム社員には、別に定める規則を適用する。}"}
                                         << QStringList{"第２条|（適用範囲）", "|この規則は、{従業}員に適用する。"};

        PrintedRows withItems = before;
        withItems.insert(
            2, clauseRow(QStringLiteral("0001"), Level::Item, QStringLiteral("01.01"), QStringLiteral("(1)"), QStringLiteral("賃金")));
        withItems.insert(
            3, clauseRow(QStringLiteral("0001"), Level::Item, QStringLiteral("01.02"), QStringLiteral("(2)"), QStringLiteral("休暇")));
        PrintedRows items = withItems;
        items[3].text = QStringLiteral("休日及び休暇");
        QTest::newRow("changed item") << withItems << items << QStringList{"第１条|（目的）", "(2)|{休日及び}休暇"}
                                      << QStringList{"第１条|（目的）", "(2)|休暇"};
    }
    void changes()
    {
        QFETCH(PrintedRows, before);
        QFETCH(PrintedRows, after);
        QFETCH(QStringList, newer);
        QFETCH(QStringList, older);
        const ComparisonTable table = compareVersions(version(1, before), version(2, after));
        QCOMPARE(table.entries.size(), 1);
        QCOMPARE(table.entries[0].kind, ChangeKind::Changed);
        QCOMPARE(cell(table.entries[0].newer), newer);
        QCOMPARE(cell(table.entries[0].older), older);
        QVERIFY(table.renumbered.isEmpty());
    }

    // A clause of three segments, its second changed: one line for the clause, the segments joined.
    void chainedSegments()
    {
        {
            PrintedRows a = threeArticles();
            a[1] = clauseRow(QStringLiteral("0001"), Level::Paragraph, QStringLiteral("01"), QString(), QStringLiteral("この規則は、"),
                             QStringLiteral("1"));
            a.insert(2, clauseRow(QStringLiteral("0001"), Level::Paragraph, QStringLiteral("01"), QString(), QStringLiteral("甲社の"),
                                  QStringLiteral("2")));
            a.insert(3, clauseRow(QStringLiteral("0001"), Level::Paragraph, QStringLiteral("01"), QString(),
                                  QStringLiteral("労働条件を定める。"), QStringLiteral("3")));
            PrintedRows b = a;
            b[2].text = QStringLiteral("乙社の");
            const ComparisonTable table = compareVersions(version(1, a), version(2, b));
            QCOMPARE(table.entries.size(), 1);
            QCOMPARE(cell(table.entries[0].newer), QStringList({"第１条|（目的）", "|この規則は、{乙}社の労働条件を定める。"}));
        }
    }

    // A removed article stands where it stood, between the kept ones around it.
    void removedArticleInPlace()
    {
        PrintedRows before = threeArticles();
        PrintedRows after = before;
        after.remove(2, 2);
        after[2].label = QStringLiteral("第２条");
        after[3].text = QStringLiteral("所定労働時間は、週３８時間とする。");
        const ComparisonTable table = compareVersions(version(1, before), version(2, after));
        QCOMPARE(table.entries.size(), 2);
        QCOMPARE(table.entries[0].kind, ChangeKind::Removed);
        QCOMPARE(cell(table.entries[0].newer), QStringList{ComparisonTable::kRemoved});
        QCOMPARE(cell(table.entries[0].older), QStringList({"{第２条}|{（適用範囲）}", "|{この規則は、従業員に適用する。}"}));
        QCOMPARE(cell(table.entries[1].newer).first(), QStringLiteral("{第２条}|（労働時間）"));
        QCOMPARE(cell(table.entries[1].older).first(), QStringLiteral("{第３条}|（労働時間）"));
    }

    void tableAsText()
    {
        PrintedRows after = threeArticles();
        after[5].text = QStringLiteral("所定労働時間は、週３８時間とする。");
        after << articleRow(QStringLiteral("0004"), 4, QStringLiteral("休憩"))
              << clauseRow(QStringLiteral("0004"), Level::Paragraph, QStringLiteral("01"), QString(),
                           QStringLiteral("休憩は６０分とする。"))
              << clauseRow(QStringLiteral("0004"), Level::Item, QStringLiteral("01.01"), QStringLiteral("(1)"),
                           QStringLiteral("一斉に与える。"));
        ComparisonTable table = compareVersions(version(1, threeArticles()), version(2, after));
        table.company = QStringLiteral("株式会社テスト");
        QCOMPARE(comparisonText(table), QStringLiteral("就業規則新旧対照表\n"
                                                       "株式会社テスト\n"
                                                       "改正後：令和08年4月2日施行（版 2）　改正前：令和08年4月1日施行（版 1）\n"
                                                       "\n"
                                                       "―― 1 ――\n"
                                                       "【改正後】\n"
                                                       "第３条（労働時間）\n"
                                                       "所定労働時間は、週{u:３８}時間とする。\n"
                                                       "【改正前】\n"
                                                       "第３条（労働時間）\n"
                                                       "所定労働時間は、週{u:４０}時間とする。\n"
                                                       "\n"
                                                       "―― 2 ――\n"
                                                       "【改正後】\n"
                                                       "{u:第４条}{u:（休憩）}\n"
                                                       "{u:休憩は６０分とする。}\n"
                                                       "　{u:(1)}　{u:一斉に与える。}\n"
                                                       "【改正前】\n"
                                                       "（新設）\n"
                                                       "\n"
                                                       "（傍線部分は改正部分）\n"));
    }

    // The .docx: a landscape section with the page number at its foot, the header
    // row repeated, the changed characters underlined.
    void docxTable()
    {
        PrintedRows after = threeArticles();
        after[5].text = QStringLiteral("所定労働時間は、週３８時間とする。");
        const ComparisonTable table = compareVersions(version(1, threeArticles()), version(2, after));
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("table.docx"));
        saveComparisonDocx(table, path);
        const QMap<QString, QByteArray> parts = zipEntries(path);
        const QString document = QString::fromUtf8(parts.value(QStringLiteral("word/document.xml")));
        QVERIFY(document.contains(QStringLiteral("<w:pgSz w:w=\"16838\" w:h=\"11906\" w:orient=\"landscape\"/>")));
        QVERIFY(document.contains(QStringLiteral("<w:footerReference w:type=\"default\" r:id=\"rId3\"/>")));
        QCOMPARE(document.count(QStringLiteral("<w:tblHeader/>")), 1);
        QVERIFY(document.indexOf(QStringLiteral("<w:tblHeader/>")) < document.indexOf(QStringLiteral("<w:t>改正後</w:t>")));
        QCOMPARE(document.count(QStringLiteral("<w:gridCol w:w=\"7001\"/>")), 2);
        QVERIFY(document.contains(QStringLiteral("<w:r><w:rPr><w:u w:val=\"single\"/></w:rPr><w:t>３８</w:t></w:r>")));
        QVERIFY(document.contains(QStringLiteral("<w:r><w:rPr><w:u w:val=\"single\"/></w:rPr><w:t>４０</w:t></w:r>")));
        QVERIFY(document.contains(QStringLiteral("<w:t>所定労働時間は、週</w:t>")));
        QVERIFY(document.contains(ComparisonTable::kClosingNote));
        QVERIFY(QString::fromUtf8(parts.value(QStringLiteral("word/footer1.xml"))).contains(QStringLiteral(" PAGE ")));
        QVERIFY(QString::fromUtf8(parts.value(QStringLiteral("word/_rels/document.xml.rels"))).contains(QStringLiteral("footer1.xml")));
        QVERIFY(QString::fromUtf8(parts.value(QStringLiteral("[Content_Types].xml"))).contains(QStringLiteral("/word/footer1.xml")));
        QVERIFY(readBody(parts.value(QStringLiteral("word/document.xml"))).error.isEmpty());

        // With 備考 a narrow third column says what kind of change each row is.
        ComparisonTable remarked = table;
        remarked.remarks = true;
        saveComparisonDocx(remarked, path);
        const QString withRemarks = QString::fromUtf8(zipEntries(path).value(QStringLiteral("word/document.xml")));
        QCOMPARE(withRemarks.count(QStringLiteral("<w:gridCol w:w=\"6301\"/>")), 2);
        QCOMPARE(withRemarks.count(QStringLiteral("<w:gridCol w:w=\"1400\"/>")), 1);
        QVERIFY(withRemarks.contains(QStringLiteral("<w:t>備考</w:t>")));
        QVERIFY(withRemarks.contains(QStringLiteral("<w:t>（変更）</w:t>")));
        QVERIFY(comparisonText(remarked).contains(
            QStringLiteral("【改正前】\n第３条（労働時間）\n所定労働時間は、週{u:４０}時間とする。\n【備考】\n（変更）\n")));
        QVERIFY(!comparisonText(table).contains(ComparisonTable::kRemarksColumn));
    }
};

QTEST_GUILESS_MAIN(VersionsTest)
#include "tst_versions.moc"
