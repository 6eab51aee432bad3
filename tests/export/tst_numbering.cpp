// Reference markers become the wording of the clause they cite, seen from the
// referring clause: the ladder of 前条, 前項, 第N条 …, the paths out of the
// document, and the markers that stay.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "rulebase/CompositionRow.h"
#include "export/CrossReferences.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/Schema.h"
#include "base/AppState.h"

#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kDoc = QStringLiteral("70");
const QString kOtherDoc = QStringLiteral("71");

// A place written as "章/条/項/号/丸/イロハ", as far as it goes.
QStringList placeOf(const QString &path)
{
    QStringList codes = path.split(u'/', Qt::SkipEmptyParts);
    while (codes.size() < 6)
        codes << QString();
    return codes;
}

int levelOfPath(const QString &path) { return int(path.split(u'/', Qt::SkipEmptyParts).size()) + 1; }

CompositionRow builtRow(const QString &document, const QString &path, int number, const QString &text = QStringLiteral("本文"))
{
    CompositionRow r;
    r.level = Level(levelOfPath(path));
    r.document = document;
    r.number = number;
    r.codes = placeOf(path);
    r.join.clear();
    r.templateCode.clear();
    r.text = text;
    r.style = QStringLiteral("1");
    return r;
}

// Document 70 as built: 第1章 with articles 1 to 3, 第2章 with article 4; article 3
// has paragraphs 1 to 3, its 2nd paragraph items 1 to 3, and so on down; a ① and an
// イ numbered 21. Document 71 has a 第2章 with its 第5条 and a 第1項.
void writeBuiltDocuments(QSqlDatabase db)
{
    execSql(db, QStringLiteral("DELETE FROM 作成データ"));
    execSql(db, QStringLiteral("DELETE FROM 変数テーブル番号"));
    insertRow(db, QStringLiteral("規程"),
              {QStringLiteral("1"), kDoc, QStringLiteral("テスト規程"), 0, QStringLiteral("テスト規程"), 1, QStringLiteral("1")});
    insertRow(db, QStringLiteral("規程"),
              {QStringLiteral("1"), kOtherDoc, QStringLiteral("他規程"), 0, QStringLiteral("他の規程"), 1, QStringLiteral("1")});
    insertRow(db, QStringLiteral("規程"),
              {QStringLiteral("1"), QStringLiteral("72"), QStringLiteral("外規程"), 0, QStringLiteral("外の規程"), 0, QStringLiteral("1")});
    QList<CompositionRow> rows = {
        builtRow(kDoc, QString(), 0),
        builtRow(kDoc, QStringLiteral("01"), 1),
        builtRow(kDoc, QStringLiteral("01/0001"), 1),
        builtRow(kDoc, QStringLiteral("01/0001/01"), 1),
        builtRow(kDoc, QStringLiteral("01/0002"), 2),
        builtRow(kDoc, QStringLiteral("01/0003"), 3),
        builtRow(kDoc, QStringLiteral("01/0003/01"), 1),
        builtRow(kDoc, QStringLiteral("01/0003/02"), 2),
        builtRow(kDoc, QStringLiteral("01/0003/02/01"), 1),
        builtRow(kDoc, QStringLiteral("01/0003/02/02"), 2),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/01"), 1),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/02"), 2),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/02/01"), 1),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/02/02"), 2),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/03"), 21),
        builtRow(kDoc, QStringLiteral("01/0003/02/02/02/03"), 21),
        builtRow(kDoc, QStringLiteral("01/0003/02/03"), 3),
        builtRow(kDoc, QStringLiteral("01/0003/03"), 3),
        builtRow(kDoc, QStringLiteral("02"), 2),
        builtRow(kDoc, QStringLiteral("02/0004"), 4),
        builtRow(kDoc, QStringLiteral("02/0004/01"), 1),
        builtRow(kOtherDoc, QString(), 0),
        builtRow(kOtherDoc, QStringLiteral("02"), 2),
        builtRow(kOtherDoc, QStringLiteral("02/0007"), 5),
        builtRow(kOtherDoc, QStringLiteral("02/0007/01"), 1),
    };
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i].order = int(i) + 1;
    insertWorkRows(db, kOutputRowsTable, rows);
}

void addReference(QSqlDatabase db, const QString &code, const QString &from, const QString &targetDocument, const QString &target)
{
    QVariantList values = {code, kDoc};
    for (const QString &c : placeOf(from))
        values << c;
    values << QString() << QString::number(levelOfPath(from)) << targetDocument;
    for (const QString &c : placeOf(target))
        values << c;
    values << QString() << QString::number(levelOfPath(target));
    insertRow(db, QStringLiteral("変数テーブル番号"), values);
}

} // namespace

class NumberingTest : public QObject {
    Q_OBJECT

    TestRoot *m_root = nullptr;
    QSqlDatabase m_db;

    QString numbered(const QString &from, const QString &text, ScriptedPrompt &prompt)
    {
        CompositionRow row = builtRow(kDoc, from, placeOf(from).value(levelOfPath(from) - 2).toInt(), text);
        row.references = true;
        return CrossReferences(m_db, prompt, kDoc).replaceIn(row);
    }

private slots:
    void init()
    {
        m_root = new TestRoot;
        m_db = m_root->openCompany(QStringLiteral("甲"));
        writeBuiltDocuments(m_db);
    }
    void cleanup()
    {
        m_db = QSqlDatabase();
        delete m_root;
    }

    void wording_data()
    {
        QTest::addColumn<QString>("from");   // the referring clause
        QTest::addColumn<QString>("target"); // the cited clause, in document 70 unless told
        QTest::addColumn<QString>("targetDocument");
        QTest::addColumn<QString>("expected");
        const QString same = kDoc;
        // Paragraph numbers are the last code's digits here, so the current row's number is its code.
        QTest::newRow("the paragraph just before: 前項") << "01/0003/03"
                                                         << "01/0003/02" << same << "前項";
        QTest::newRow("two paragraphs before") << "01/0003/03"
                                               << "01/0003/01" << same << "第１項";
        QTest::newRow("a paragraph citing itself") << "01/0003/02"
                                                   << "01/0003/02" << same << "第２項";
        QTest::newRow("own article keeps the marker") << "01/0003/02"
                                                      << "01/0003" << same << "◆0001◆";
        QTest::newRow("the article before, over a chapter boundary") << "02/0004/01"
                                                                     << "01/0003" << same << "前条";
        QTest::newRow("the article after") << "01/0003/01"
                                           << "02/0004" << same << "第４条";
        QTest::newRow("a paragraph of another article") << "01/0001/01"
                                                        << "01/0003/02" << same << "第３条第２項";
        QTest::newRow("a paragraph of the article before") << "02/0004/01"
                                                           << "01/0003/02" << same << "前条第２項";
        QTest::newRow("an item of another article") << "01/0001/01"
                                                    << "01/0003/02/03" << same << "第３条第２項第３号";
        QTest::newRow("an item of the paragraph before") << "01/0003/03"
                                                         << "01/0003/02/03" << same << "前項第３号";
        QTest::newRow("a ① of another article") << "01/0001/01"
                                                << "01/0003/02/02/02" << same << "第３条第２項第２号②";
        QTest::newRow("an イ of another article") << "01/0001/01"
                                                  << "01/0003/02/02/02/02" << same << "第３条第２項第２号②ロ";
        // From below the paragraph, the rungs compare the article code with a shorter code:
        // the paragraph comes along even for a neighbour in the same paragraph.
        QTest::newRow("item to item of the same paragraph") << "01/0003/02/03"
                                                            << "01/0003/02/02" << same << "第２項第２号";
        QTest::newRow("① to ① of the same item") << "01/0003/02/02/02"
                                                 << "01/0003/02/02/01" << same << "第２項第２号①";
        QTest::newRow("イ to イ of the same ①") << "01/0003/02/02/02/02"
                                                << "01/0003/02/02/02/01" << same << "第２項第２号②イ";
        QTest::newRow("① past twenty") << "01/0001/01"
                                       << "01/0003/02/02/03" << same << "第３条第２項第２号●";
        QTest::newRow("イ past twenty") << "01/0001/01"
                                        << "01/0003/02/02/02/03" << same << "第３条第２項第２号②■";
        QTest::newRow("a chapter of the document") << "01/0001/01"
                                                   << "02" << same << "第２章";
        QTest::newRow("the document itself") << "01/0001/01"
                                             << "" << same << "テスト規程";
        QTest::newRow("another document") << "01/0003/02"
                                          << "" << kOtherDoc << "他の規程";
        QTest::newRow("another document's chapter") << "01/0003/02"
                                                    << "02" << kOtherDoc << "他の規程第２章";
        QTest::newRow("another document's article: no 前条") << "01/0003/02"
                                                             << "02/0007" << kOtherDoc << "他の規程第５条";
        QTest::newRow("another document's paragraph, no chapter in the path") << "01/0003/02"
                                                                              << "02/0007/01" << kOtherDoc << "他の規程第５条第１項";
    }
    void wording()
    {
        QFETCH(QString, from);
        QFETCH(QString, target);
        QFETCH(QString, targetDocument);
        QFETCH(QString, expected);
        addReference(m_db, QStringLiteral("0001"), from, targetDocument, target);
        ScriptedPrompt prompt;
        QCOMPARE(numbered(from, QStringLiteral("◆0001◆の規定"), prompt), expected + QStringLiteral("の規定"));
        QCOMPARE(prompt.lines(), QStringList());
    }

    void missingTargets_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("targetDocument");
        QTest::newRow("a paragraph not built") << "01/0003/09" << kDoc;
        QTest::newRow("an article not built") << "01/0009" << kDoc;
        QTest::newRow("a document off the list") << "" << QStringLiteral("72");
        QTest::newRow("another document's article not built") << "02/0008" << kOtherDoc;
    }
    void missingTargets()
    {
        QFETCH(QString, target);
        QFETCH(QString, targetDocument);
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("01/0001/01"), targetDocument, target);
        ScriptedPrompt prompt;
        QCOMPARE(numbered(QStringLiteral("01/0001/01"), QStringLiteral("◆0001◆による"), prompt), QStringLiteral("◆0001◆による"));
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("未置換: 参照先の条文番号◆0001◆が見つかりません。")});
    }

    // A failed reference ends the row: the markers after it stay, even when their targets exist.
    void aMissingTargetLeavesTheRestOfTheRow()
    {
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("01/0001/01"), kDoc, QStringLiteral("01/0009"));
        addReference(m_db, QStringLiteral("0002"), QStringLiteral("01/0001/01"), kDoc, QStringLiteral("01/0003"));
        ScriptedPrompt prompt;
        QCOMPARE(numbered(QStringLiteral("01/0001/01"), QStringLiteral("◆0001◆及び◆0002◆"), prompt), QStringLiteral("◆0001◆及び◆0002◆"));
        QCOMPARE(prompt.shown().size(), 1);
    }

    void everyMarkerOfARowAndEveryOccurrence()
    {
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("02/0004/01"), kDoc, QStringLiteral("01/0003"));
        addReference(m_db, QStringLiteral("0002"), QStringLiteral("02/0004/01"), kDoc, QStringLiteral("01/0001"));
        ScriptedPrompt prompt;
        QCOMPARE(numbered(QStringLiteral("02/0004/01"), QStringLiteral("◆0001◆、◆0002◆及び◆0001◆"), prompt),
                 QStringLiteral("前条、第１条及び前条"));
    }

    void aRowWithoutTheReferenceFlagIsLeftAlone()
    {
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("02/0004/01"), kDoc, QStringLiteral("01/0003"));
        CompositionRow row = builtRow(kDoc, QStringLiteral("02/0004/01"), 1, QStringLiteral("◆0001◆"));
        ScriptedPrompt prompt;
        QCOMPARE(CrossReferences(m_db, prompt, kDoc).bangou_kou(row), QStringLiteral("◆0001◆"));
    }

    // The 前 wording follows the numbers of the selection, not the codes.
    void previousFollowsTheNumbersNotTheCodes()
    {
        execSql(m_db, QStringLiteral("UPDATE 作成データ SET 番号 = 2 WHERE 規程Code = ? AND 種別 = '3' AND 条Code = '0001'"), {kDoc});
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("01/0003/01"), kDoc, QStringLiteral("01/0001"));
        ScriptedPrompt prompt;
        QCOMPARE(numbered(QStringLiteral("01/0003/01"), QStringLiteral("◆0001◆"), prompt), QStringLiteral("前条"));
    }
};

QTEST_GUILESS_MAIN(NumberingTest)
#include "tst_numbering.moc"
