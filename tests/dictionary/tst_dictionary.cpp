// The dictionary's documents and their 前文 through the core: the code checks, the
// renumbering and the delete with everything that hangs on a document, and the two
// editors of a 前文 with their protections.

#include "base/SqliteMessages.h"
#include "ScriptedPrompt.h"
#include "CompanyProbe.h"
#include "TestRoot.h"
#include "base/Database.h"
#include "dictionary/BasicPhrases.h"
#include "dictionary/ClauseTransfer.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/InlineSegmentEditor.h"
#include "dictionary/SegmentEditor.h"
#include "rulebase/Schema.h"

#include <QTest>

using namespace normaris;
using namespace normaris::dictionary;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kOther = QStringLiteral("2");
using Mode = DocumentMaster::Mode;

int count(QSqlDatabase db, const QString &sql, const QVariantList &binds = {}) { return scalar(db, sql, binds).toInt(); }

// A clause 項 of one row at 章 01, 条 0001 of a document.
void addParagraph(QSqlDatabase db, const QString &style, const QString &doc, const QString &code, const QString &text)
{
    insertRow(db, QStringLiteral("項"),
              {style, doc, QStringLiteral("01"), QStringLiteral("0001"), code, text, QStringLiteral("0"), 0, QStringLiteral("0"), 0, 0, 0,
               0, QStringLiteral("0")});
}

void addWord(QSqlDatabase db, const QString &code, const QString &doc, const QString &kou, const QString &level)
{
    insertRow(db, QStringLiteral("変数テーブル語句"),
              {code, QStringLiteral("語") + code, doc, QStringLiteral("01"), QStringLiteral("0001"), kou, QString(), QString(), QString(),
               QString(), level, QStringLiteral("見出し"), 0});
}

// A reference ◆code◆ standing in 項 kou of doc, pointing at 項 targetKou of target.
void addReference(QSqlDatabase db, const QString &code, const QString &doc, const QString &kou, const QString &target,
                  const QString &targetKou)
{
    insertRow(db, QStringLiteral("変数テーブル番号"),
              {code, doc, QStringLiteral("01"), QStringLiteral("0001"), kou, QString(), QString(), QString(), QString(),
               QStringLiteral("4"), target, QStringLiteral("01"), QStringLiteral("0001"), targetKou, QString(), QString(), QString(),
               QString(), QStringLiteral("4")});
}

void addComposition(QSqlDatabase db, const QString &table, const QString &style, const QString &doc, const QString &level)
{
    insertRow(db, table,
              {1, level, doc, 1, QString(), QString(), QString(), QString(), QString(), QString(), QString(), QString(), QString(),
               QStringLiteral("x"), 0, 0, 0, style, QString()});
}

} // namespace

class DictionaryTest : public QObject {
    Q_OBJECT

    DocumentRecord record(const QString &code, const QString &name = QStringLiteral("社内規程"))
    {
        DocumentRecord r;
        r.code = code;
        r.name = name;
        r.formalName = name;
        return r;
    }
    void addDocument(const QString &style, const QString &code)
    {
        QCOMPARE(DocumentMaster(m_db, style).update(m_prompt, Mode::Add, {}, record(code)), Outcome::Done);
    }
    void compose75()
    {
        execSql(m_db, QStringLiteral("UPDATE 規程 SET 選択フラグ = 1 WHERE Code = '75'"));
        addComposition(m_db, QStringLiteral("作成データ補助～条"), kStyle, QStringLiteral("75"), QStringLiteral("10"));
    }
    // The preamble of 75 in two segments, through the segment editor.
    void writeTwoSegments()
    {
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        editor.segments()[0].text = QStringLiteral("当社は");
        editor.setKind(1, SegmentKind::BasicWord);
        editor.setChosenValue(1, QStringLiteral("0001"), QString());
        QCOMPARE(editor.update(m_prompt), Outcome::Done);
    }
    QStringList preambleRows(const QString &doc, const QString &style = kStyle)
    {
        RowReader q =
            execSql(m_db,
                    QStringLiteral("SELECT 結合, 改行, 前文, 変数語句, 結合種別 FROM 前文 WHERE 文章形式Code = ? AND 規程Code = ? "
                                   "ORDER BY CAST(結合 AS INTEGER)"),
                    {style, doc});
        QStringList rows;
        while (q.next())
            rows << QStringLiteral("%1|%2|%3|%4|%5")
                        .arg(q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString(),
                             q.value(4).toString());
        return rows;
    }

private slots:
    void init()
    {
        m_root = std::make_unique<TestRoot>();
        m_db = m_root->openCompany(QStringLiteral("甲"));
        m_prompt.clear();
        addDocument(kStyle, QStringLiteral("75"));
        m_prompt.clear();
    }
    void cleanup()
    {
        m_db = QSqlDatabase();
        m_root.reset();
    }

    void codeCheck_data()
    {
        QTest::addColumn<bool>("editing");
        QTest::addColumn<QString>("saved");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("result");
        const QString range = QStringLiteral("入力エラー: 70～99を入力してください。･･･Code");
        QTest::newRow("one digit padded, below 70") << false << QString() << "5" << range << "05";
        QTest::newRow("99 passes") << false << QString() << "99" << QString() << "99";
        QTest::newRow("100 refused") << false << QString() << "100" << range << "100";
        QTest::newRow("standard code refused on add") << false << QString() << "01" << range << "01";
        QTest::newRow("duplicate") << false << QString() << "75"
                                   << "入力エラー: Codeが重複しています。"
                                   << "75";
        QTest::newRow("empty with rows") << false << QString() << ""
                                         << "入力エラー: 未入力は許されません。･･･Code"
                                         << "";
        QTest::newRow("quote") << false << QString() << "7'" << range << "7'";
        QTest::newRow("standard code kept") << true << "01"
                                            << "01" << QString() << "01";
        QTest::newRow("standard code changed goes back") << true << "01"
                                                         << "02"
                                                         << "入力エラー: 01～69は変更できません。･･･Code"
                                                         << "01";
        QTest::newRow("own code kept") << true << "75"
                                       << "75" << QString() << "75";
        QTest::newRow("own code to a free one") << true << "75"
                                                << "76" << QString() << "76";
        QTest::newRow("own code below 70") << true << "75"
                                           << "69" << range << "69";
        QTest::newRow("own code onto a taken one") << true << "76"
                                                   << "75"
                                                   << "入力エラー: Codeが重複しています。"
                                                   << "75";
    }
    void codeCheck()
    {
        QFETCH(bool, editing);
        QFETCH(QString, saved);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QString, result);
        QString code = typed;
        const bool ok = DocumentMaster(m_db, kStyle).checkCode(m_prompt, code, editing ? Mode::Edit : Mode::Add, saved);
        QCOMPARE(ok, message.isEmpty());
        QCOMPARE(m_prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(code, result);
    }

    void emptyStyleAcceptsAnEmptyCode()
    {
        execSql(m_db, QStringLiteral("DELETE FROM 規程 WHERE 文章形式Code = '2'"));
        QString code;
        QVERIFY(DocumentMaster(m_db, kOther).checkCode(m_prompt, code, Mode::Add, QString()));
        QCOMPARE(DocumentMaster(m_db, kOther).update(m_prompt, Mode::Add, {}, record(QString())), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList());
    }

    void namesAreChecked_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("ok");
        QTest::newRow("forty full-width") << QString(40, u'規') << true;
        QTest::newRow("forty-one full-width") << QString(41, u'規') << false;
        QTest::newRow("quote") << QStringLiteral("規\"程") << false;
        QTest::newRow("control") << QStringLiteral("規\t程") << false;
    }
    void namesAreChecked()
    {
        QFETCH(QString, name);
        QFETCH(bool, ok);
        QCOMPARE(DocumentMaster(m_db, kStyle).update(m_prompt, Mode::Add, {}, record(QStringLiteral("80"), name)),
                 ok ? Outcome::Done : Outcome::Stopped);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = '80'")), ok ? 1 : 0);
    }

    void editSetsTheChangedFlag()
    {
        DocumentMaster master(m_db, kStyle);
        DocumentRecord saved = *master.document(QStringLiteral("01"));
        QVERIFY(!saved.changed);
        DocumentRecord same = saved;
        QCOMPARE(master.update(m_prompt, Mode::Edit, saved, same), Outcome::Done);
        QVERIFY(!master.document(QStringLiteral("01"))->changed);
        DocumentRecord renamed = saved;
        renamed.name = QStringLiteral("就業規則（本社）");
        QCOMPARE(master.update(m_prompt, Mode::Edit, saved, renamed), Outcome::Done);
        QVERIFY(master.document(QStringLiteral("01"))->changed);
    }

    // Renumbering carries the rows of this style, and only what this style's clauses use.
    void codeChangeCarriesEverything()
    {
        addDocument(kOther, QStringLiteral("75"));
        addParagraph(m_db, kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("期間は★0012★とし◆0001◆に従う"));
        addParagraph(m_db, kOther, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("期間は★0013★です"));
        addWord(m_db, QStringLiteral("0012"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("4"));
        addWord(m_db, QStringLiteral("0013"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("4"));
        addWord(m_db, QStringLiteral("0014"), QStringLiteral("75"), QString(), QStringLiteral("10"));
        addReference(m_db, QStringLiteral("0001"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("01"), QStringLiteral("01"));
        // 就業規則 refers to 75's 項 01.
        addParagraph(m_db, kStyle, QStringLiteral("01"), QStringLiteral("91"), QStringLiteral("◆0951◆を見よ"));
        addReference(m_db, QStringLiteral("0951"), QStringLiteral("01"), QStringLiteral("91"), QStringLiteral("75"), QStringLiteral("01"));
        insertRow(m_db, QStringLiteral("施行日"), {kStyle, QStringLiteral("75"), QStringLiteral("2026-04-01")});
        insertRow(m_db, QStringLiteral("施行日"), {kOther, QStringLiteral("75"), QStringLiteral("2026-04-01")});
        for (const QString &table : {QStringLiteral("作成データ補助～条"), QStringLiteral("作成データ補助項～"),
                                     QStringLiteral("作成データ置換前"), QStringLiteral("作成データ")})
            addComposition(m_db, table, kStyle, QStringLiteral("75"), QStringLiteral("4"));
        writeTwoSegments();

        DocumentMaster master(m_db, kStyle);
        const DocumentRecord saved = *master.document(QStringLiteral("75"));
        DocumentRecord moved = saved;
        moved.code = QStringLiteral("76");
        QCOMPARE(master.update(m_prompt, Mode::Edit, saved, moved), Outcome::Done);

        const auto rowsOf = [&](const QString &sql) { return count(m_db, sql); };
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = '1' AND Code = '76'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = '2' AND Code = '75'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 前文 WHERE 規程Code = '76'")), 2);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = '1' AND 規程Code = '76'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = '2' AND 規程Code = '75'")), 1);
        // The word tables hold the seed's words too: the test's own are told by their documents.
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = '0012' AND 規程Code = '76'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = '0013' AND 規程Code = '75'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = '0014' AND 規程Code = '75'")),
                 1); // a 前文 word stays
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE Code = '0001' AND 規程Code = '76'")), 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT 変換参照■規程Code = '76' AND 規程Code = '01' FROM 変数テーブル番号 WHERE Code = '0951'")),
                 1);
        QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM 施行日 WHERE 規程Code = '76'")), 2);
        for (const QString &table : {QStringLiteral("作成データ補助～条"), QStringLiteral("作成データ補助項～"),
                                     QStringLiteral("作成データ置換前"), QStringLiteral("作成データ")})
            QCOMPARE(rowsOf(QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 規程Code = '75'").arg(table)), 0);
    }

    void deleteRefusals_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("setup");
        QTest::addColumn<QString>("message");
        QTest::newRow("standard document") << "01" << 0 << "削除制限: ユーザー追加データ以外は削除できません。";
        QTest::newRow("composed") << "75" << 1 << "削除制限: 作成データとして使用中なので削除できません。";
        QTest::newRow("referred to")
            << "75" << 2
            << "削除制限(参照条文番号): 「本Code又は本Codeに含まれる下位Code」が「他条文」から参照されているため削除できません。";
    }
    void deleteRefusals()
    {
        QFETCH(QString, code);
        QFETCH(int, setup);
        QFETCH(QString, message);
        if (setup == 1)
            compose75();
        if (setup == 2) {
            addParagraph(m_db, kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("本文"));
            // The other document's clause, scanned after 75's own (Code order).
            addParagraph(m_db, kStyle, QStringLiteral("01"), QStringLiteral("91"), QStringLiteral("◆0951◆を見よ"));
            addReference(m_db, QStringLiteral("0951"), QStringLiteral("01"), QStringLiteral("91"), QStringLiteral("75"),
                         QStringLiteral("02"));
        }
        QCOMPARE(DocumentMaster(m_db, kStyle).remove(m_prompt, code), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{message});
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = '1' AND Code = ?"), {code}), 1);
    }

    // A reference of the document's own clause to itself clears the flag at that row.
    void ownReferenceDoesNotBlock()
    {
        addParagraph(m_db, kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("◆0952◆による"));
        addReference(m_db, QStringLiteral("0952"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("75"), QStringLiteral("02"));
        m_prompt.answer({true});
        QCOMPARE(DocumentMaster(m_db, kStyle).remove(m_prompt, QStringLiteral("75")), Outcome::Done);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '75'")), 0);
    }

    void deleteLeavesTheOtherStyle()
    {
        addDocument(kOther, QStringLiteral("75"));
        addParagraph(m_db, kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("★0012★"));
        addParagraph(m_db, kOther, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("★0013★"));
        addWord(m_db, QStringLiteral("0012"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("4"));
        addWord(m_db, QStringLiteral("0013"), QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("4"));
        writeTwoSegments();
        // Off the list, its composition kept for its return does not hold the delete.
        addComposition(m_db, QStringLiteral("作成データ補助～条"), kStyle, QStringLiteral("75"), QStringLiteral("1"));
        m_prompt.answer({false});
        QCOMPARE(DocumentMaster(m_db, kStyle).remove(m_prompt, QStringLiteral("75")), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(),
                 QStringList{QStringLiteral(
                     "削除の確認:  75 社内規程 を削除しますか？\n前文および章以下のデータがある場合は、それらも一緒に削除します。")});
        m_prompt.answer({true});
        QCOMPARE(DocumentMaster(m_db, kStyle).remove(m_prompt, QStringLiteral("75")), Outcome::Done);
        for (const QString &table : {QStringLiteral("前文"), QStringLiteral("項"), QStringLiteral("作成データ補助～条")})
            QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE 文章形式Code = '1' AND 規程Code = '75'").arg(table)), 0);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = '75'")), 1);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = '2' AND 規程Code = '75'")), 1);
        QCOMPARE(test::columnIn(m_db, QStringLiteral("SELECT Code FROM 変数テーブル語句 WHERE 規程Code = '75' ORDER BY ID")).join(u','),
                 QStringLiteral("0013"));
    }

    void aFailedCascadeLeavesNothing()
    {
        addParagraph(m_db, kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("本文"));
        insertRow(m_db, QStringLiteral("施行日"), {kStyle, QStringLiteral("75"), QStringLiteral("2026-04-01")});
        addComposition(m_db, QStringLiteral("作成データ補助項～"), kStyle, QStringLiteral("75"), QStringLiteral("4"));
        // The last table of the cascade refuses: everything before it must come back.
        const QString failure =
            test::refuseEvery(m_db, QStringLiteral("甲"), QStringLiteral("DELETE"), QStringLiteral("作成データ補助項～"));
        m_prompt.answer({true});
        QCOMPARE(DocumentMaster(m_db, kStyle).remove(m_prompt, QStringLiteral("75")), Outcome::Failed);
        QCOMPARE(m_prompt.lines().last(), QStringLiteral("取消: 処理中にエラーが発生しました。処理を取り消します。\n") + failure);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 項 WHERE 規程Code = '75'")), 1);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 施行日 WHERE 規程Code = '75'")), 1);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 規程 WHERE Code = '75'")), 1);
    }

    // The chain of rows: gaps close, one filled segment is "0", a break above the first is lost.
    void segmentRows_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QList<bool>>("breaks");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("gaps close") << QStringList{"甲", "", "", "乙"} << QList<bool>{false, false, false, true}
                                    << QStringList{"1|0|甲|0|0", "2|1|乙|0|0"};
        QTest::newRow("one segment") << QStringList{"", "甲"} << QList<bool>{false, true} << QStringList{"0|0|甲|0|0"};
        QTest::newRow("all blank") << QStringList{} << QList<bool>{} << QStringList{};
    }
    void segmentRows()
    {
        QFETCH(QStringList, texts);
        QFETCH(QList<bool>, breaks);
        QFETCH(QStringList, rows);
        writeTwoSegments();
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        editor.setKind(1, SegmentKind::Text);
        for (int k = 0; k < SegmentEditor::kSegments; ++k) {
            editor.segments()[k].text = texts.value(k);
            editor.segments()[k].lineBreak = breaks.value(k);
        }
        QCOMPARE(editor.update(m_prompt), Outcome::Done);
        QCOMPARE(preambleRows(QStringLiteral("75")), rows);
        // The editor shows what it wrote.
        QCOMPARE(editor.rowCount(), int(rows.size()));
    }

    void segmentProtections_data()
    {
        QTest::addColumn<bool>("inUse");
        QTest::addColumn<int>("change");
        QTest::addColumn<QString>("message");
        const QString kinds = QStringLiteral("編集制限: 使用中のデータがあるため、種別を変更できません。");
        const QString segments = QStringLiteral("編集制限: 使用中のデータがあるため、分割の数を変更できません。");
        QTest::newRow("text edited in use") << true << 0 << QString();
        QTest::newRow("kind changed in use") << true << 1 << kinds;
        QTest::newRow("segment added in use") << true << 2 << segments;
        QTest::newRow("segment moved in use") << true << 3 << QString();
        QTest::newRow("kind changed, not in use") << false << 1 << QString();
        QTest::newRow("segment added, not in use") << false << 2 << QString();
        // A 語句 or 番号 segment whose word or reference was never given: the whole update is refused.
        QTest::newRow("word never given") << false << 4 << QStringLiteral("更新エラー: 語句の更新でエラーが発生しました。");
        QTest::newRow("reference never given") << false << 5 << QStringLiteral("更新エラー: 参照の更新でエラーが発生しました。");
    }
    void segmentProtections()
    {
        QFETCH(bool, inUse);
        QFETCH(int, change);
        QFETCH(QString, message);
        writeTwoSegments();
        if (inUse)
            compose75();
        const QStringList before = preambleRows(QStringLiteral("75"));
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        editor.segments()[0].text = QStringLiteral("本社は");
        if (change == 1) {
            editor.setKind(1, SegmentKind::Text);
            editor.segments()[1].text = QStringLiteral("文");
        }
        if (change == 2)
            editor.segments()[2].text = QStringLiteral("増えた");
        if (change == 3)
            std::swap(editor.segments()[1], editor.segments()[4]);
        if (change == 4 || change == 5) {
            editor.setKind(2, change == 4 ? SegmentKind::Word : SegmentKind::Reference);
            editor.setChosenValue(2, QStringLiteral("9999"), QString());
        }
        m_prompt.clear();
        QCOMPARE(editor.update(m_prompt), message.isEmpty() ? Outcome::Done : Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        if (!message.isEmpty()) {
            QCOMPARE(preambleRows(QStringLiteral("75")), before);
            // Back to the kinds of the opening with the texts of the last save.
            QCOMPARE(editor.segments()[0].text, QStringLiteral("当社は"));
            QCOMPARE(editor.segments()[1].kind, SegmentKind::BasicWord);
            QCOMPARE(editor.segments()[1].code, QStringLiteral("0001"));
        }
    }

    void kindChanges_data()
    {
        QTest::addColumn<int>("segment");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<QString>("result");
        QTest::newRow("text to basic word") << 0 << SegmentKind::BasicWord << true << true << SegmentKind::BasicWord;
        QTest::newRow("text to basic word, no") << 0 << SegmentKind::BasicWord << false << true << SegmentKind::Text;
        QTest::newRow("basic word to text") << 1 << SegmentKind::Text << true << true << SegmentKind::Text;
        QTest::newRow("same kind asks nothing") << 1 << SegmentKind::BasicWord << true << false << SegmentKind::BasicWord;
        QTest::newRow("word to text") << 2 << SegmentKind::Text << true << true << SegmentKind::Text;
    }
    void kindChanges()
    {
        QFETCH(int, segment);
        QFETCH(QString, kind);
        QFETCH(bool, answer);
        QFETCH(bool, asked);
        QFETCH(QString, result);
        writeTwoSegments();
        addWord(m_db, QStringLiteral("0007"), QStringLiteral("75"), QString(), QStringLiteral("10"));
        insertRow(m_db, QStringLiteral("前文"),
                  {kStyle, QStringLiteral("75"), QStringLiteral("01"), QStringLiteral("3"), 0, QStringLiteral("★0007★"), 1, 1, 0,
                   QStringLiteral("1")});
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        QCOMPARE(editor.segments()[2].word, QStringLiteral("語0007"));
        QVERIFY(editor.segments()[2].hasValue);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句更新後")), 1);
        m_prompt.answer({answer});
        QCOMPARE(editor.changeKind(m_prompt, segment, kind), asked && answer);
        QCOMPARE(m_prompt.lines(), asked ? QStringList{QStringLiteral("変更の確認: 処理する種別を変更しますか？")} : QStringList());
        QCOMPARE(editor.segments()[segment].kind, result);
        // A word that left its segment leaves the words the clause uses, and the update deletes it.
        const bool wordLeft = segment == 2 && answer;
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句更新後")), wordLeft ? 0 : 1);
        if (wordLeft) {
            editor.segments()[2].text = QStringLiteral("文");
            QCOMPARE(editor.update(m_prompt), Outcome::Done);
            QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = '0007' AND 規程Code = '75'")), 0);
        }
    }

    // The fourth segment's word look-up fails, and with it the opening.
    void aWordInTheFourthSegmentFailsTheOpening()
    {
        addWord(m_db, QStringLiteral("0007"), QStringLiteral("75"), QString(), QStringLiteral("10"));
        for (int i = 1; i <= 4; ++i)
            insertRow(m_db, QStringLiteral("前文"),
                      {kStyle, QStringLiteral("75"), QStringLiteral("01"), QString::number(i), 0,
                       i == 4 ? QStringLiteral("★0007★") : QStringLiteral("文"), i == 4, 1, 0,
                       i == 4 ? QStringLiteral("1") : QStringLiteral("0")});
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(!editor.open(m_prompt));
        QCOMPARE(m_prompt.shown().size(), 1);
    }

    void wordPositions()
    {
        addWord(m_db, QStringLiteral("0007"), QStringLiteral("75"), QString(), QStringLiteral("10"));
        SegmentEditor editor(m_db, ClausePlace::preamble(kStyle, QStringLiteral("75")), QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        editor.segments()[0].text = QStringLiteral("甲");
        editor.setKind(1, SegmentKind::Word);
        editor.provideWord(QStringLiteral("0007"), QStringLiteral("新しい語"), QStringLiteral("見出し"));
        editor.setChosenValue(1, QStringLiteral("0007"), QStringLiteral("新しい語"));
        QCOMPARE(editor.update(m_prompt), Outcome::Done);
        QCOMPARE(test::columnIn(m_db, QStringLiteral("SELECT 結合 || '|' || 語句 || '|' || 種別 FROM 変数テーブル語句 WHERE Code = "
                                                     "'0007' AND 規程Code = '75' ORDER BY ID"))
                     .join(u','),
                 QStringLiteral("2|新しい語|10"));
        QCOMPARE(preambleRows(QStringLiteral("75")), (QStringList{"1|0|甲|0|0", "2|0|★0007★|1|1"}));
    }

    void inlineProtections_data()
    {
        QTest::addColumn<bool>("inUse");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("message");
        // The standard 前文 of 31: ☆0001☆ / （以下…）と / ☆0010☆… / とは、…
        QTest::newRow("edited in use") << true
                                       << QStringList{"☆0001☆", "（以下「当社」という。）と", "☆0010☆（以下「従業員代表」という。）",
                                                      "とは、協定する。"}
                                       << QString();
        QTest::newRow("marker moved in use") << true << QStringList{"（以下）と", "☆0001☆", "☆0010☆（以下）", "とは、協定する。"}
                                             << "編集制限: 使用中のデータがあるため、埋込記号の移動・削除はできません。";
        QTest::newRow("count changed in use") << true << QStringList{"☆0001☆", "☆0010☆"}
                                              << "編集制限: 使用中のデータがあるため、分割の数を変更できません。";
        QTest::newRow("count changed, not in use") << false << QStringList{"☆0001☆と☆0010☆は協定する。"} << QString();
        QTest::newRow("emptied agreement") << false << QStringList{} << "削除制限: ユーザー追加データ以外は削除できません。";
    }
    void inlineProtections()
    {
        QFETCH(bool, inUse);
        QFETCH(QStringList, texts);
        QFETCH(QString, message);
        const QString doc = QStringLiteral("31");
        execSql(m_db, QStringLiteral("DELETE FROM 作成データ補助～条 WHERE 規程Code = '31' AND 種別 = '10'"));
        if (inUse)
            addComposition(m_db, QStringLiteral("作成データ補助～条"), kStyle, doc, QStringLiteral("10"));
        const QStringList before = preambleRows(doc);
        InlineSegmentEditor editor(m_db, ClausePlace::preamble(kStyle, doc), QStringLiteral("2"));
        editor.open();
        QCOMPARE(editor.rowCount(), 4);
        editor.texts = {};
        for (int k = 0; k < texts.size(); ++k)
            editor.texts[k] = texts[k];
        QCOMPARE(editor.update(m_prompt), message.isEmpty() ? Outcome::Done : Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        if (message.isEmpty()) {
            QCOMPARE(preambleRows(doc).size(), texts.size());
        } else {
            QCOMPARE(preambleRows(doc), before);
            QCOMPARE(editor.texts, editor.loadedTexts()); // modoshi
        }
    }

    void basicPhraseChoice()
    {
        QString code;
        QCOMPARE(chooseBasicPhrase(m_prompt, m_db, QStringLiteral("2"), code, QString()), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("基本語句の選択: 基本語句を選択してください。")});
        QCOMPARE(chooseBasicPhrase(m_prompt, m_db, QStringLiteral("2"), code, QStringLiteral("事業場名")), Outcome::Done);
        QCOMPARE(code, QStringLiteral("0001"));
        QCOMPARE(chooseBasicPhrase(m_prompt, m_db, QStringLiteral("2"), code, QStringLiteral("日付")), Outcome::Done);
        QCOMPARE(code, QStringLiteral("0030"));
        QCOMPARE(test::columnIn(m_db, QStringLiteral("SELECT Code || ':' || 語句 FROM 基本語句更新後 ORDER BY ID")).join(u','),
                 QStringLiteral("0030:2"));
    }

    // The text of a 前文 read back through its editor changes nothing.
    void roundTrip_data()
    {
        QTest::addColumn<QString>("doc");
        QTest::newRow("standard agreement") << "31";
        QTest::newRow("standard rules") << "01";
        QTest::newRow("own document") << "75";
    }
    void roundTrip()
    {
        QFETCH(QString, doc);
        if (doc == u"75")
            writeTwoSegments();
        const QString text = preambleText(m_db, kStyle, doc);
        const QStringList before = preambleRows(doc);
        QVERIFY(!before.isEmpty());
        ClauseSource source;
        source.file = QStringLiteral("t.txt");
        for (const QString &line : text.split(u'\n')) {
            if (line.startsWith(QStringLiteral("=↵ ")))
                source.segments << SourceSegment{line.mid(3), true, 1, {}};
            else if (line.startsWith(QStringLiteral("= ")))
                source.segments << SourceSegment{line.mid(2), false, 1, {}};
        }
        QCOMPARE(putPreamble(m_prompt, m_db, kStyle, doc, source), Outcome::Done);
        QCOMPARE(m_prompt.lines(), QStringList());
        QCOMPARE(preambleRows(doc), before);
        QCOMPARE(preambleText(m_db, kStyle, doc), text);
    }

private:
    std::unique_ptr<TestRoot> m_root;
    QSqlDatabase m_db;
    ScriptedPrompt m_prompt;
};

QTEST_GUILESS_MAIN(DictionaryTest)
#include "tst_dictionary.moc"
