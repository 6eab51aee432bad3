// データ作成: the merge of the composition rows into the work tables, the text
// taken from the dictionary, the closing row, the other style, and the rollback.

#include "ExportFixture.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "rulebase/EffectiveDates.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataAge.h"
#include "export/WorkDataBuild.h"

#include <QSqlRecord>

using namespace normaris;
using namespace normaris::test;

namespace {
const QString kWorkRules = QStringLiteral("01");
const QString kDearu = QStringLiteral("1");
const QString kDesumasu = QStringLiteral("2");

// The work rules built, with the documents they cite, a date each and the company's settings.
void buildTheWorkRules(QSqlDatabase db, ScriptedPrompt &prompt)
{
    execSql(db, QStringLiteral("INSERT INTO 企業情報 (事業所名) VALUES ('株式会社見本')"));
    for (const QString &document : {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")}) {
        EffectiveDates(db, document).add(kDearu, QDate(2026, 4, 1));
        QCOMPARE(WorkDataBuild(db, prompt).build(kDearu, document), Outcome::Done);
    }
}
} // namespace

class WorkDataTest : public QObject {
    Q_OBJECT
private slots:
    // The work rules, and the wage rules whose draft holds templates.
    void buildsTheSeedDraft_data()
    {
        QTest::addColumn<QString>("document");
        QTest::newRow("work rules") << kWorkRules;
        QTest::newRow("wage rules") << QStringLiteral("02");
    }
    void buildsTheSeedDraft()
    {
        QFETCH(QString, document);
        OpenCompany company;
        ScriptedPrompt prompt;
        QCOMPARE(WorkDataBuild(company.db, prompt).build(kDearu, document), Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("処理完了: データ作成が完了しました。")});

        const QList<CompositionRow> frozen = readWorkRows(company.db, kFrozenRowsTable, kDearu, document);
        const QList<CompositionRow> output = readWorkRows(company.db, kOutputRowsTable, kDearu, document);
        const int articleRows =
            scalar(company.db, QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = '1' AND 規程Code = ?"),
                   {document})
                .toInt();
        const int clauseRows =
            scalar(company.db, QStringLiteral("SELECT count(*) FROM 作成データ補助項～ WHERE 文章形式Code = '1' AND 規程Code = ?"),
                   {document})
                .toInt();
        QCOMPARE(frozen.size(), articleRows + clauseRows);
        QCOMPARE(output.size(), frozen.size() + 1);

        bool sawTemplate = false;
        for (qsizetype i = 0; i < frozen.size(); ++i) {
            const CompositionRow &f = frozen[i];
            const CompositionRow &o = output[i];
            QCOMPARE(f.order, int(i) + 1); // numbered anew, densely
            QCOMPARE(o.order, f.order);
            QVERIFY2(f.join != u"0" && f.templateCode != u"0", "a clause in one piece has no 結合, a row without template no テンプレート");
            QCOMPARE(o.codes, f.codes);
            QVERIFY(o.formalName.isEmpty());
            if (!o.templateCode.isEmpty()) {
                sawTemplate = true;
                QVERIFY2(o.text.isEmpty(), "a template row has no text");
            } else {
                QVERIFY2(!o.text.isEmpty(), qPrintable(QStringLiteral("row %1 has no text").arg(o.order)));
            }
            // Each clause follows its article.
            if (i > 0 && isClauseLevel(f.level))
                QCOMPARE(f.codes.mid(0, 2), frozen[i - 1].codes.mid(0, 2));
        }
        // Every template of the draft comes out as a row of its own.
        const bool draftHasTemplates =
            scalar(
                company.db,
                QStringLiteral(
                    "SELECT count(*) FROM 作成データ補助項～ WHERE 文章形式Code = '1' AND 規程Code = ? AND テンプレート NOT IN ('', '0')"),
                {document})
                .toInt()
            > 0;
        QCOMPARE(sawTemplate, draftHasTemplates);
        if (document != kWorkRules)
            QVERIFY(sawTemplate);
        const CompositionRow &closing = output.last();
        QCOMPARE(closing.level, Level::Closing);
        QCOMPARE(closing.order, frozen.size() + 1);
        QCOMPARE(closing.text, QStringLiteral("ダミーの行"));

        // The texts by level: the document's and an article's formal name, a clause's own text.
        QCOMPARE(
            output.first().text,
            scalar(company.db, QStringLiteral("SELECT 正式名称 FROM 規程 WHERE 文章形式Code = '1' AND Code = ?"), {document}).toString());
        for (const CompositionRow &o : output) {
            if (o.level == Level::Article) {
                QCOMPARE(
                    o.text,
                    scalar(company.db,
                           QStringLiteral("SELECT 正式名称 FROM 条 WHERE 文章形式Code = '1' AND 規程Code = ? AND 章Code = ? AND Code = ?"),
                           {document, o.codes[0], o.codes[1]})
                        .toString());
                break;
            }
        }
    }

    // 改行 comes from the dictionary for the clause levels, and reads "1" or nothing.
    void lineBreaksFromTheDictionary()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        WorkDataBuild(company.db, prompt).build(kDearu, kWorkRules);
        const QString dictionaryBreaks =
            scalar(company.db,
                   QStringLiteral("SELECT count(*) FROM 作成データ補助項～ h JOIN 項 d ON d.文章形式Code = h.文章形式Code "
                                  "AND d.規程Code = h.規程Code AND d.章Code = h.章Code AND d.条Code = h.条Code AND d.Code = h.項Code "
                                  "AND d.結合 = h.結合 WHERE h.種別 = '4' AND h.規程Code = '01' AND h.文章形式Code = '1' AND d.改行 = 1"))
                .toString();
        QVERIFY(dictionaryBreaks.toInt() > 0);
        QCOMPARE(scalar(company.db, QStringLiteral("SELECT count(*) FROM 作成データ WHERE 規程Code = '01' AND 種別 = '4' AND 改行 = '1'"))
                     .toString(),
                 dictionaryBreaks);
        QCOMPARE(scalar(company.db, QStringLiteral("SELECT count(*) FROM 作成データ WHERE 改行 NOT IN ('', '1')")).toInt(), 0);
    }

    void buildingTwiceGivesTheSameRows()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        WorkDataBuild(company.db, prompt).build(kDearu, kWorkRules);
        const QStringList first = tableLines(company.db, kOutputRowsTable, kDearu, kWorkRules);
        // Substituted text is taken back too.
        execSql(company.db, QStringLiteral("UPDATE 作成データ SET 文章 = '書き換え' WHERE 種別 = '4'"));
        WorkDataBuild(company.db, prompt).build(kDearu, kWorkRules);
        QCOMPARE(tableLines(company.db, kOutputRowsTable, kDearu, kWorkRules), first);
        QCOMPARE(tableLines(company.db, kFrozenRowsTable, kDearu, kWorkRules).size(), first.size() - 1);
    }

    void aClauseMissingFromTheDictionaryRollsBack()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        WorkDataBuild(company.db, prompt).build(kDearu, kWorkRules);
        const QStringList before = tableLines(company.db, kOutputRowsTable, kDearu, kWorkRules);
        const QStringList frozenBefore = tableLines(company.db, kFrozenRowsTable, kDearu, kWorkRules);
        execSql(company.db, QStringLiteral("DELETE FROM 号 WHERE ID = (SELECT d.ID FROM 号 d JOIN 作成データ補助項～ h ON d.文章形式Code = "
                                           "h.文章形式Code AND d.規程Code = h.規程Code "
                                           "AND d.章Code = h.章Code AND d.条Code = h.条Code AND d.項Code = h.項Code AND d.Code = h.号Code "
                                           "WHERE h.種別 = '5' AND h.規程Code = '01' AND h.文章形式Code = '1' LIMIT 1)"));
        prompt.clear();
        QCOMPARE(WorkDataBuild(company.db, prompt).build(kDearu, kWorkRules), Outcome::Failed);
        QCOMPARE(prompt.lines().size(), 1);
        QVERIFY2(prompt.lines().first().startsWith(
                     QStringLiteral("取消: 処理中にエラーが発生しました。処理を取り消します。\n辞書に 号 の行がありません（")),
                 qUtf8Printable(prompt.lines().first()));
        QCOMPARE(prompt.shown().first().icon, Prompt::Icon::Information);
        QCOMPARE(tableLines(company.db, kOutputRowsTable, kDearu, kWorkRules), before);
        QCOMPARE(tableLines(company.db, kFrozenRowsTable, kDearu, kWorkRules), frozenBefore);
    }

    // The work data know what they were made from: a change of what a step that has
    // run took makes them out of date; a word changed before the substitution, or a
    // clause saved again as it was, does not.
    void workDataKnowTheirInputs_data()
    {
        QTest::addColumn<bool>("substituted");
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("stale");
        const QString word =
            QStringLiteral("UPDATE 変数テーブル語句 SET 語句 = '新しい語句' WHERE ID = (SELECT min(ID) FROM 変数テーブル語句 "
                           "WHERE 規程Code = '%1')");
        QTest::newRow("a word") << true << word.arg(QStringLiteral("01")) << true;
        QTest::newRow("a word before the substitution") << false << word.arg(QStringLiteral("01")) << false;
        QTest::newRow("another document's word") << true << word.arg(QStringLiteral("05")) << false;
        QTest::newRow("a setting") << true << QStringLiteral("UPDATE 企業情報 SET 事業所名 = '株式会社別名'") << true;
        QTest::newRow("a date") << true
                                << QStringLiteral("INSERT INTO 施行日 (文章形式Code, 規程Code, 年月日) VALUES ('1', '01', '2027-04-01')")
                                << true;
        const QString paragraph =
            QStringLiteral("(SELECT min(ID) FROM 項 WHERE 文章形式Code = '1' AND 規程Code = '01' AND 選択フラグ = 1)");
        QTest::newRow("a dictionary row") << false << QStringLiteral("UPDATE 項 SET 項 = 項 || '追記' WHERE ID = ") + paragraph << true;
        QTest::newRow("a row saved again as it was")
            << true << QStringLiteral("UPDATE 項 SET ID = (SELECT max(ID) + 1 FROM 項) WHERE ID = ") + paragraph << false;
    }
    void workDataKnowTheirInputs()
    {
        QFETCH(bool, substituted);
        QFETCH(QString, change);
        QFETCH(bool, stale);
        OpenCompany company;
        ScriptedPrompt prompt;
        const WorkDataAge age(company.db, prompt);
        QVERIFY(!age.recorded(WorkDataStep::Build, kDearu, kWorkRules).isValid());
        QVERIFY(!age.isStale(kDearu, kWorkRules)); // never built: nothing to be out of date
        buildTheWorkRules(company.db, prompt);
        QVERIFY(age.recorded(WorkDataStep::Build, kDearu, kWorkRules).secsTo(QDateTime::currentDateTime()) < 60);
        QVERIFY(!age.recorded(WorkDataStep::Substitution, kDearu, kWorkRules).isValid());
        if (substituted) {
            QCOMPARE(SettingSubstitution(company.db, prompt).run(kDearu, kWorkRules), Outcome::Done);
            QVERIFY(age.recorded(WorkDataStep::Substitution, kDearu, kWorkRules).isValid());
        }
        QVERIFY(!age.isStale(kDearu, kWorkRules));
        execSql(company.db, change);
        QCOMPARE(age.isStale(kDearu, kWorkRules), stale);
        QVERIFY(!age.isStale(kDesumasu, kWorkRules));
    }

    // 設定項目の置換 on work data older than their words asks first: いいえ leaves
    // everything as it was, はい builds the data again and substitutes the new word.
    void substitutionAsksAboutOldWorkData()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        buildTheWorkRules(company.db, prompt);
        execSql(company.db, QStringLiteral("UPDATE 企業情報 SET 事業所名 = '株式会社旧名'"));
        QCOMPARE(SettingSubstitution(company.db, prompt).run(kDearu, kWorkRules), Outcome::Done);
        auto texts = [&] {
            QStringList all;
            RowReader q = execSql(company.db,
                                  QStringLiteral("SELECT 文章 FROM 作成データ WHERE 文章形式Code = '1' AND 規程Code = '01' ORDER BY 順番"));
            while (q.next())
                all << q.value(0).toString();
            return all.join(u'/');
        };
        QVERIFY(texts().contains(QStringLiteral("株式会社旧名")));
        execSql(company.db, QStringLiteral("UPDATE 企業情報 SET 事業所名 = '株式会社新名'"));
        const QString before = texts();

        prompt.clear();
        prompt.answer({false});
        QCOMPARE(SettingSubstitution(company.db, prompt).run(kDearu, kWorkRules), Outcome::Stopped);
        const QString question = QStringLiteral("データ作成の確認: 「就業規則」の語句が変更されています。データ作成からやり直しますか？");
        QCOMPARE(prompt.lines(), QStringList{question});
        QCOMPARE(texts(), before);

        prompt.clear();
        prompt.answer({true});
        QCOMPARE(SettingSubstitution(company.db, prompt).run(kDearu, kWorkRules), Outcome::Done);
        QCOMPARE(prompt.lines(), (QStringList{question, QStringLiteral("処理完了: データ作成が完了しました。"),
                                              QStringLiteral("処理完了: 置換処理が完了しました。")}));
        QVERIFY(texts().contains(QStringLiteral("株式会社新名")));
        QVERIFY(!texts().contains(QStringLiteral("株式会社旧名")));
        QVERIFY(!WorkDataAge(company.db, prompt).isStale(kDearu, kWorkRules));
    }

    void nothingComposed()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        QCOMPARE(WorkDataBuild(company.db, prompt).build(kDesumasu, kWorkRules), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("データの確認: データがありません。")});
    }

    void theOtherStyle_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<QString>("question");
        QTest::newRow("rules, kept") << kWorkRules << false
                                     << "置換の確認: "
                                        "である調の同Codeの規則・規程がデータ作成済です。\nそのデータを未選択の状態に戻し、ですます調のデー"
                                        "タと置き換えますか？\n※である調はリストから外します！";
        QTest::newRow("rules, replaced") << kWorkRules << true
                                         << "置換の確認: "
                                            "である調の同Codeの規則・規程がデータ作成済です。\nそのデータを未選択の状態に戻し、ですます調の"
                                            "データと置き換えますか？\n※である調はリストから外します！";
        QTest::newRow("agreement, replaced") << QStringLiteral("31") << true
                                             << "置換の確認: "
                                                "である調の同Codeの協約・協定がデータ作成済です。\nそのデータを未選択の状態に戻し、ですます"
                                                "調のデータと置き換えますか？\n※である調はリストから外します！";
    }
    void theOtherStyle()
    {
        QFETCH(QString, document);
        QFETCH(bool, answer);
        QFETCH(QString, question);
        OpenCompany company;
        ScriptedPrompt prompt;
        QCOMPARE(WorkDataBuild(company.db, prompt).build(kDearu, document), Outcome::Done);
        const QStringList dearu = tableLines(company.db, kOutputRowsTable, kDearu, document);
        DocumentList(company.db).addToList(kDesumasu, document);

        prompt.clear();
        prompt.answer({answer});
        const Outcome outcome = WorkDataBuild(company.db, prompt).build(kDesumasu, document);
        QCOMPARE(prompt.lines().value(0), question);
        const bool dearuOnList = DocumentList(company.db).isOnList(kDearu, document);
        if (answer) {
            QCOMPARE(outcome, Outcome::Done);
            QCOMPARE(prompt.lines().value(1), QStringLiteral("処理完了: データ作成が完了しました。"));
            QVERIFY(tableLines(company.db, kOutputRowsTable, kDearu, document).isEmpty());
            QVERIFY(tableLines(company.db, kFrozenRowsTable, kDearu, document).isEmpty());
            QVERIFY(!tableLines(company.db, kOutputRowsTable, kDesumasu, document).isEmpty());
            QVERIFY(!dearuOnList);
            // Its composition stays for when it comes back.
            QVERIFY(!readArticleRows(company.db, kDearu, document).isEmpty());
        } else {
            QCOMPARE(outcome, Outcome::Stopped);
            QCOMPARE(prompt.lines().value(1), QStringLiteral("確認: 処理を実行しません。"));
            QCOMPARE(tableLines(company.db, kOutputRowsTable, kDearu, document), dearu);
            QVERIFY(tableLines(company.db, kOutputRowsTable, kDesumasu, document).isEmpty());
            QVERIFY(dearuOnList);
        }
    }

    // Every document a new company starts with prints its 項 numbers 1, 2, 3 … in each
    // article and its 号 numbers 1, 2, 3 … in each 項, never a list of a single 号; a
    // template line stands inside the clause it completes, where it takes no number of its own.
    void standardDocumentsNumberWithoutGaps()
    {
        OpenCompany company;
        RowReader standard = execSql(company.db, QStringLiteral("SELECT 文章形式Code, Code FROM 規程 WHERE 選択フラグ = 1 ORDER BY Code"));
        QStringList documents, problems;
        while (standard.next()) {
            const QString style = standard.value(0).toString(), document = standard.value(1).toString();
            documents << document;
            ScriptedPrompt prompt;
            QCOMPARE(WorkDataBuild(company.db, prompt).build(style, document), Outcome::Done);
            int nextParagraph = 1, nextItem = 1;
            QString paragraph;
            for (const CompositionRow &r : readWorkRows(company.db, kOutputRowsTable, style, document)) {
                const QString where = QStringLiteral("規程%1 %2: ").arg(document, r.codes.join(u'/'));
                const bool head = r.join.isEmpty() || r.join == u"1";
                if (!r.templateCode.isEmpty() && (r.join.toInt() < 2 || !r.lineBreak))
                    problems << where + QStringLiteral("a template is a clause of its own");
                if (!head
                    || (r.level != Level::Article && r.level != Level::Paragraph && r.level != Level::Item && r.level != Level::Closing))
                    continue;
                if (r.level != Level::Item) {
                    if (nextItem == 2)
                        problems << paragraph + QStringLiteral("a single 号");
                    nextItem = 1;
                    paragraph = where;
                }
                if (r.level == Level::Article)
                    nextParagraph = 1;
                else if (r.level == Level::Paragraph && r.number != nextParagraph++)
                    problems << where + QStringLiteral("項 numbered %1").arg(r.number);
                else if (r.level == Level::Item && r.number != nextItem++)
                    problems << where + QStringLiteral("号 numbered %1").arg(r.number);
            }
        }
        QCOMPARE(problems, QStringList());
        QCOMPARE(documents, (QStringList{QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"),
                                         QStringLiteral("05"), QStringLiteral("31")}));
    }
};

QTEST_GUILESS_MAIN(WorkDataTest)
#include "tst_workdata.moc"
