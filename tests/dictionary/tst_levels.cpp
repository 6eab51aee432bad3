// The entries of the levels 章 to イ～ネ through the core: add, edit, code change and
// delete by one routine over the level table, the protections of standard and composed
// clauses, the word dialog and the reference targets.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "base/Database.h"
#include "dictionary/BasicPhrases.h"
#include "dictionary/DocumentWords.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/EntryText.h"
#include "dictionary/ReferenceTargets.h"
#include "dictionary/SegmentEditor.h"
#include "rulebase/Schema.h"

#include <QTest>

using namespace normaris;
using namespace normaris::dictionary;
using namespace normaris::test;

Q_DECLARE_METATYPE(normaris::Level)

namespace {

const QString kStyle = QStringLiteral("1");
const QString kDoc = QStringLiteral("01");
using Mode = EntryEditor::Mode;

int count(QSqlDatabase db, const QString &sql, const QVariantList &binds = {}) { return scalar(db, sql, binds).toInt(); }

// The code a new word or reference of the work rules takes: the one after the highest of the table.
QString nextCode(QSqlDatabase db, const QString &table, int step = 1)
{
    return QStringLiteral("%1").arg(
        count(db, QStringLiteral("SELECT max(CAST(Code AS INTEGER)) FROM \"%1\" WHERE 規程Code = '01'").arg(table)) + step, 4, 10,
        QChar(u'0'));
}

// The user's chain 章 70, 条 7001, 項 70, 号 70, ①～⑳ 70 above each level.
const QStringList kUserChain = {QStringLiteral("70"), QStringLiteral("7001"), QStringLiteral("70"), QStringLiteral("70"),
                                QStringLiteral("70")};

} // namespace

class LevelsTest : public QObject {
    Q_OBJECT

    // Adds the entry at codes (its level from their count): a heading, or a clause of
    // one text segment.
    Outcome add(const QStringList &codes, const QString &text = QStringLiteral("本文"))
    {
        const Level level = levelOfDepth(int(codes.size()));
        EntryEditor editor(m_db, kStyle, kDoc, level, codes.mid(0, codes.size() - 1));
        if (!levelInfo(level).segmented) {
            LevelEntry e;
            e.code = codes.last();
            e.name = text;
            return editor.updateHeading(m_prompt, Mode::Add, {}, e);
        }
        SegmentEditor segments(m_db, editor.placeOf(codes.last()), editor.documentKind());
        if (!segments.open(m_prompt))
            return Outcome::Failed;
        segments.segments()[0].text = text;
        return editor.addClause(m_prompt, segments);
    }
    void addChainAbove(int depth)
    {
        for (int i = 1; i < depth; ++i)
            QCOMPARE(add(kUserChain.mid(0, i)), Outcome::Done);
    }
    static QString firstText(const std::optional<LevelEntry> &e) { return e ? e->name : QString(); }

private slots:
    void init()
    {
        m_root = std::make_unique<TestRoot>();
        m_db = m_root->openCompany(QStringLiteral("甲"));
        m_prompt.clear();
    }
    void cleanup()
    {
        m_db = QSqlDatabase();
        m_root.reset();
    }

    void lifeCycle_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("moved");
        QTest::newRow("章") << 1 << "70"
                            << "71";
        QTest::newRow("条") << 2 << "7001"
                            << "7002";
        QTest::newRow("項") << 3 << "70"
                            << "71";
        QTest::newRow("号") << 4 << "70"
                            << "71";
        QTest::newRow("①～⑳") << 5 << "70"
                              << "71";
        QTest::newRow("イ～ネ") << 6 << "70"
                                << "71";
    }
    // Add, edit, code change and delete of a user's entry, with a word below it, a clause
    // under it and its composition row following it.
    void lifeCycle()
    {
        QFETCH(int, depth);
        QFETCH(QString, code);
        QFETCH(QString, moved);
        addChainAbove(depth);
        const QStringList parents = kUserChain.mid(0, depth - 1);
        const Level level = levelOfDepth(depth);
        EntryEditor editor(m_db, kStyle, kDoc, level, parents);
        // A new word takes the code after the document's highest.
        const QString wordCode = nextCode(m_db, QStringLiteral("変数テーブル語句"));

        QCOMPARE(add(parents + QStringList{code}, QStringLiteral("初め")), Outcome::Done);
        QCOMPARE(m_prompt.lines(), QStringList());
        std::optional<LevelEntry> entry = editor.entry(code);
        QVERIFY(entry);
        QVERIFY(!entry->standard);
        QCOMPARE(editor.entries().last().code, code);

        // Edit: a heading is renamed, a clause gets a new text and a word.
        if (!levelInfo(level).segmented) {
            LevelEntry renamed = *entry;
            renamed.name = QStringLiteral("改めて");
            QCOMPARE(editor.updateHeading(m_prompt, Mode::Edit, *entry, renamed), Outcome::Done);
        } else {
            SegmentEditor segments(m_db, editor.placeOf(code), editor.documentKind());
            QVERIFY(segments.open(m_prompt));
            segments.segments()[0].text = QStringLiteral("改めて");
            QString created;
            QCOMPARE(DocumentWords(m_db, kDoc).create(m_prompt, segments, 1, QStringLiteral("日数"), QStringLiteral("５日"), &created),
                     Outcome::Done);
            QCOMPARE(created, wordCode);
            QCOMPARE(segments.update(m_prompt), Outcome::Done);
            QCOMPARE(count(m_db,
                           QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = '01' AND Code = ? AND 種別 = ? "
                                          "AND 結合 = '2' AND %1 = ?")
                               .arg(placeColumns()[depth - 1]),
                           {wordCode, levelCode(level), code}),
                     1);
        }
        QCOMPARE(firstText(editor.entry(code)), QStringLiteral("改めて"));

        // Something below, and a composition row of the entry.
        const QStringList place = parents + QStringList{code};
        if (depth < 6)
            QCOMPARE(add(place + QStringList{depth == 1 ? QStringLiteral("7001") : QStringLiteral("70")}), Outcome::Done);
        QVariantList row = {1, levelCode(level), kDoc, 1};
        for (int i = 0; i < 6; ++i)
            row << (i < depth ? place[i] : QString());
        row << QStringLiteral("0") << QString() << QString() << QStringLiteral("x") << 0 << 0 << 0 << kStyle << QString();
        insertRow(m_db, QStringLiteral("作成データ補助項～"), row);

        QCOMPARE(editor.changeCode(m_prompt, code, moved), Outcome::Done);
        QVERIFY(!editor.entry(code));
        QCOMPARE(firstText(editor.entry(moved)), QStringLiteral("改めて"));
        const QString column = placeColumns()[depth - 1];
        const QString where = QStringLiteral("%1 = '%2'").arg(column, moved);
        if (depth < 6)
            QCOMPARE(
                count(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(dictionaryTable(levelOfDepth(depth + 1)), where)),
                1);
        if (levelInfo(level).segmented)
            QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = ? AND ") + where, {wordCode}), 1);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 作成データ補助項～ WHERE ") + where), 1);

        // The delete: refused while composed, then everything below goes.
        QCOMPARE(editor.remove(m_prompt, moved), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("削除制限: 作成データとして使用中なので削除できません。")});
        execSql(m_db, QStringLiteral("DELETE FROM 作成データ補助項～ WHERE ") + where);
        m_prompt.clear();
        m_prompt.answer({true});
        QCOMPARE(editor.remove(m_prompt, moved), Outcome::Done);
        QVERIFY(m_prompt.lines().value(0).startsWith(QStringLiteral("削除の確認:  %1 ").arg(moved)));
        QVERIFY(!editor.entry(moved));
        // The entry's own table keys it by Code, the tables below by its place column.
        for (int d = depth; d <= 6; ++d)
            QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2")
                                     .arg(dictionaryTable(levelOfDepth(d)), d == depth ? QStringLiteral("Code = '%1'").arg(moved) : where)),
                     0);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE Code = ?"), {wordCode}), 0);
    }

    void codeChecks_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("result");
        const QString range = QStringLiteral("入力エラー: 70～99を入力してください。･･･Code");
        const QString articleRange = QStringLiteral("入力エラー: 7000～9999を入力してください。･･･Code");
        QTest::newRow("章 padded, standard") << 1 << "5" << range << "05";
        QTest::newRow("章 70") << 1 << "70" << QString() << "70";
        QTest::newRow("章 100") << 1 << "100" << range << "100";
        QTest::newRow("章 duplicate of a standard") << 1 << "03" << range << "03";
        QTest::newRow("条 padded, standard") << 2 << "12" << articleRange << "0012";
        QTest::newRow("条 7000") << 2 << "7000" << QString() << "7000";
        QTest::newRow("条 letters") << 2 << "70a1" << articleRange << "70a1";
        QTest::newRow("項 empty") << 3 << ""
                                  << "入力エラー: 未入力は許されません。･･･Code"
                                  << "";
        QTest::newRow("項 99") << 3 << "99" << QString() << "99";
        QTest::newRow("イ～ネ 69") << 6 << "69" << range << "69";
    }
    void codeChecks()
    {
        QFETCH(int, depth);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        QFETCH(QString, result);
        // Under the dictionary's own places: 章 03, 条 0016, 項 01 … as far as they go.
        const QStringList parents = QStringList{"02", "0008", "01", "08", "02"}.mid(0, depth - 1);
        EntryEditor editor(m_db, kStyle, kDoc, levelOfDepth(depth), parents);
        QString code = typed;
        QCOMPARE(editor.checkCode(m_prompt, code, Mode::Add, QString()), message.isEmpty());
        QCOMPARE(m_prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(code, result);
    }

    void duplicateUserCode()
    {
        addChainAbove(3);
        EntryEditor editor(m_db, kStyle, kDoc, Level::Article, {QStringLiteral("70")});
        QString code = QStringLiteral("7001");
        QVERIFY(!editor.checkCode(m_prompt, code, Mode::Add, QString()));
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("入力エラー: Codeが重複しています。")});
    }

    void standardEntries_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("章") << 1 << "03"
                            << "入力エラー: 01～69は変更できません。･･･Code";
        QTest::newRow("条") << 2 << "0008"
                            << "入力エラー: 0001～6999は変更できません。･･･Code";
        QTest::newRow("①～⑳") << 5 << "01"
                              << "入力エラー: 01～69は変更できません。･･･Code";
    }
    // A standard entry keeps its code and cannot be deleted.
    void standardEntries()
    {
        QFETCH(int, depth);
        QFETCH(QString, code);
        QFETCH(QString, message);
        const QStringList parents = QStringList{"02", "0008", "01", "08"}.mid(0, depth - 1);
        EntryEditor editor(m_db, kStyle, kDoc, levelOfDepth(depth), parents);
        QVERIFY(editor.entry(code));
        QVERIFY(editor.entry(code)->standard);
        QCOMPARE(editor.changeCode(m_prompt, code, QStringLiteral("7500").right(levelInfo(levelOfDepth(depth)).codeWidth)),
                 Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{message});
        m_prompt.clear();
        QCOMPARE(editor.remove(m_prompt, code), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("削除制限: ユーザー追加データ以外は削除できません。")});
        QVERIFY(editor.entry(code));
    }

    void composedStandardClause_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("message");
        QTest::newRow("text edited, marker kept") << "この規則は、◆0001◆に定める正社員に限り適用する。" << QString();
        QTest::newRow("marker removed") << "この規則は、正社員に適用する。"
                                        << "編集制限: 使用中のデータがあるため、埋込記号の移動・削除はできません。";
        QTest::newRow("marker added") << "この規則は、◆0001◆に定める★0001★に適用する。"
                                      << "編集制限: 使用中のデータがあるため、埋込記号の移動・削除はできません。";
    }
    // 条 0003 項 01 of the composed work rules holds ◆0001◆.
    void composedStandardClause()
    {
        QFETCH(QString, first);
        QFETCH(QString, message);
        const ClausePlace place{Level::Paragraph, kStyle, kDoc, {QStringLiteral("01"), QStringLiteral("0003"), QStringLiteral("01")}};
        SegmentEditor editor(m_db, place, QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        QVERIFY(editor.isInUse());
        editor.segments()[0].text = first;
        QCOMPARE(editor.update(m_prompt), message.isEmpty() ? Outcome::Done : Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 規程Code = '01' AND Code = '0001'")), 1);
        QCOMPARE(count(m_db,
                       QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = '1' AND 規程Code = '01' AND 条Code = '0003' "
                                      "AND Code = '01' AND 項 = ?"),
                       {message.isEmpty() ? first : QStringLiteral("この規則は、◆0001◆に定める正社員に適用する。")}),
                 1);
    }

    void composedClauseKeepsItsSegments()
    {
        const ClausePlace place{Level::Paragraph, kStyle, kDoc, {QStringLiteral("01"), QStringLiteral("0003"), QStringLiteral("01")}};
        SegmentEditor editor(m_db, place, QStringLiteral("1"));
        QVERIFY(editor.open(m_prompt));
        editor.segments()[1].text = QStringLiteral("追加");
        QCOMPARE(editor.update(m_prompt), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("編集制限: 使用中のデータがあるため、分割の数を変更できません。")});
    }

    // The word dialog chooses a word of the document, and a new one takes the next code
    // past those it has already handed out.
    void wordDialog()
    {
        addChainAbove(3);
        EntryEditor entries(m_db, kStyle, kDoc, Level::Paragraph, kUserChain.mid(0, 2));
        SegmentEditor editor(m_db, entries.placeOf(QStringLiteral("70")), entries.documentKind());
        QVERIFY(editor.open(m_prompt));
        DocumentWords words(m_db, kDoc);
        const QString first = nextCode(m_db, QStringLiteral("変数テーブル語句"));
        const QString second = nextCode(m_db, QStringLiteral("変数テーブル語句"), 2);
        QCOMPARE(words.words().first().code, QStringLiteral("0001"));
        QCOMPARE(words.nextCode(&editor), first);
        QCOMPARE(words.create(m_prompt, editor, 0, QStringLiteral("上限"), QStringLiteral("週２日")), Outcome::Done);
        QCOMPARE(words.nextCode(&editor), second);
        QCOMPARE(words.choose(m_prompt, editor, 1, QStringLiteral("0119")), Outcome::Done);
        QCOMPARE(words.create(m_prompt, editor, 2, QString(), QStringLiteral("x")), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("入力のエラー: 未入力は許されません。 ･･･表示名称")});
        QCOMPARE(words.choose(m_prompt, editor, 2, QStringLiteral("0999")), Outcome::Stopped);
        QCOMPARE(entries.addClause(m_prompt, editor), Outcome::Done);
        QCOMPARE(count(m_db,
                       QStringLiteral("SELECT count(*) FROM 変数テーブル語句 WHERE 規程Code = '01' AND 条Code = '7001' AND 項Code = '70' "
                                      "AND 種別 = '4' AND ((Code = ? AND 結合 = '1' AND 語句 = '週２日') "
                                      "OR (Code = '0119' AND 結合 = '2' AND 表示名称 = '懲戒解雇の対象となる無断欠勤の日数'))"),
                       {first}),
                 2);
    }

    void basicPhrasesByLevel()
    {
        QCOMPARE(basicPhrasesAt(Level::Preamble).size(), 3);
        QCOMPARE(basicPhrasesAt(Level::Item).size(), 17);
        QCOMPARE(basicPhraseName(Level::Iroha, QStringLiteral("0016")), QStringLiteral("管轄の労働基準監督署"));
        QCOMPARE(basicPhraseName(Level::Paragraph, QStringLiteral("0030")), QStringLiteral("日付"));
        QCOMPARE(basicPhraseName(Level::Preamble, QStringLiteral("0016")), QString());
    }

    void referenceTargets_data()
    {
        QTest::addColumn<Level>("level");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QStringList>("codes");
        QTest::addColumn<QString>("join");
        QTest::addColumn<bool>("stands");
        QTest::newRow("規程") << Level::Document << "02" << QStringList() << QString() << true;
        QTest::newRow("章") << Level::Chapter << "01" << QStringList{"02"} << QString() << true;
        QTest::newRow("条") << Level::Article << "01" << QStringList{"01", "0002"} << QString() << true;
        QTest::newRow("項") << Level::Paragraph << "01" << QStringList{"01", "0002", "01"} << QString() << true;
        QTest::newRow("号") << Level::Item << "01" << QStringList{"01", "0002", "01", "01"} << QString() << true;
        QTest::newRow("①～⑳") << Level::Maru << "01" << QStringList{"02", "0008", "01", "08", "01"} << QString() << true;
        QTest::newRow("イ～ネ") << Level::Iroha << "01" << QStringList{"02", "0008", "01", "08", "02", "01"} << QString() << true;
        QTest::newRow("missing 条") << Level::Article << "01" << QStringList{"01", "0999"} << QString() << false;
        QTest::newRow("missing segment") << Level::Paragraph << "01" << QStringList{"01", "0002", "01"} << "7" << false;
        QTest::newRow("level and codes differ") << Level::Item << "01" << QStringList{"01", "0002", "01"} << QString() << false;
    }
    // A reference to each level is written with the clause, at its place and segment.
    void referenceTargets()
    {
        QFETCH(Level, level);
        QFETCH(QString, document);
        QFETCH(QStringList, codes);
        QFETCH(QString, join);
        QFETCH(bool, stands);
        addChainAbove(3);
        EntryEditor entries(m_db, kStyle, kDoc, Level::Paragraph, kUserChain.mid(0, 2));
        SegmentEditor editor(m_db, entries.placeOf(QStringLiteral("70")), entries.documentKind());
        QVERIFY(editor.open(m_prompt));
        editor.segments()[0].text = QStringLiteral("前に");
        ReferenceTargets targets(m_db, kStyle);
        const QString code = nextCode(m_db, QStringLiteral("変数テーブル番号"));
        QCOMPARE(targets.stands({level, document, codes, join}), stands);
        QString marker;
        QCOMPARE(targets.make(m_prompt, editor, 1, {level, document, codes, join}, &marker), stands ? Outcome::Done : Outcome::Stopped);
        if (!stands) {
            QVERIFY(m_prompt.lines().value(0).startsWith(QStringLiteral("入力エラー: 参照先がありません。")));
            return;
        }
        QCOMPARE(marker, QStringLiteral("◆%1◆").arg(code));
        QCOMPARE(editor.segments()[1].kind, SegmentKind::Reference);
        QCOMPARE(entries.addClause(m_prompt, editor), Outcome::Done);
        const ReferenceRow row = documentReferences(m_db, kDoc).last();
        QCOMPARE(row.code, code);
        QCOMPARE(row.place.mid(0, 3), kUserChain.mid(0, 2) + QStringList{QStringLiteral("70")});
        QCOMPARE(row.join, QStringLiteral("2"));
        QCOMPARE(row.level, QStringLiteral("4"));
        QCOMPARE(row.targetDocument, document);
        QCOMPARE(row.targetLevel, levelCode(level));
        QCOMPARE(row.targetPlace.mid(0, codes.size()), codes);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 項 WHERE 条Code = '7001' AND 項 = ? AND 結合種別 = '2' AND 変数番号 = 1"),
                       {marker}),
                 1);
    }

    // A clause outside the entry that cites something inside it blocks the delete; one
    // inside does not.
    void citedFromOutside()
    {
        addChainAbove(4); // 章 70, 条 7001, 項 70
        QCOMPARE(add({QStringLiteral("70"), QStringLiteral("7002")}), Outcome::Done);
        const ReferenceTarget inside{Level::Paragraph, kDoc, kUserChain.mid(0, 3), QString()};
        const auto cite = [&](const QString &article) {
            EntryEditor entries(m_db, kStyle, kDoc, Level::Paragraph, {QStringLiteral("70"), article});
            SegmentEditor editor(m_db, entries.placeOf(QStringLiteral("71")), entries.documentKind());
            QVERIFY(editor.open(m_prompt));
            QCOMPARE(ReferenceTargets(m_db, kStyle).make(m_prompt, editor, 0, inside), Outcome::Done);
            QCOMPARE(entries.addClause(m_prompt, editor), Outcome::Done);
        };
        cite(QStringLiteral("7001"));
        EntryEditor articles(m_db, kStyle, kDoc, Level::Article, {QStringLiteral("70")});
        cite(QStringLiteral("7002"));
        QCOMPARE(articles.remove(m_prompt, QStringLiteral("7001")), Outcome::Stopped);
        QCOMPARE(m_prompt.lines(),
                 QStringList{QStringLiteral(
                     "削除制限(参照条文番号): 「本Code又は本Codeに含まれる下位Code」が「他条文」から参照されているため削除できません。")});
        m_prompt.clear();
        m_prompt.answer({true});
        QCOMPARE(articles.remove(m_prompt, QStringLiteral("7002")), Outcome::Done);
        m_prompt.answer({true});
        QCOMPARE(articles.remove(m_prompt, QStringLiteral("7001")), Outcome::Done);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 条Code IN ('7001', '7002')")), 0);
    }

    // A code change carries the references that point into the entry.
    void codeChangeCarriesTheReferencesToIt()
    {
        addChainAbove(4);
        EntryEditor entries(m_db, kStyle, kDoc, Level::Paragraph, {QStringLiteral("03"), QStringLiteral("0016")});
        SegmentEditor editor(m_db, entries.placeOf(QStringLiteral("70")), entries.documentKind());
        QVERIFY(editor.open(m_prompt));
        QCOMPARE(ReferenceTargets(m_db, kStyle).make(m_prompt, editor, 0, {Level::Paragraph, kDoc, kUserChain.mid(0, 3), QString()}),
                 Outcome::Done);
        QCOMPARE(entries.addClause(m_prompt, editor), Outcome::Done);
        QCOMPARE(EntryEditor(m_db, kStyle, kDoc, Level::Article, {QStringLiteral("70")})
                     .changeCode(m_prompt, QStringLiteral("7001"), QStringLiteral("7009")),
                 Outcome::Done);
        QCOMPARE(count(m_db, QStringLiteral("SELECT count(*) FROM 変数テーブル番号 WHERE 条Code = '0016' AND 変換参照■条Code = '7009'")),
                 1);
    }

private:
    std::unique_ptr<TestRoot> m_root;
    QSqlDatabase m_db;
    ScriptedPrompt m_prompt;
};

QTEST_GUILESS_MAIN(LevelsTest)
#include "tst_levels.moc"
