// Importing a user's entry from another company: the checks and their messages, the
// copy at each level, and the refusal of every source that can't be trusted.

#include "base/ServerMessages.h"
#include "base/SqliteMessages.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "UserEntries.h"
#include "base/AppState.h"
#include "base/CompanyLock.h"
#include "import/EntryImport.h"
#include "import/ImportLists.h"
#include "import/SourceCompany.h"
#include "import/SourceValues.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/ServerStore.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kTarget = QStringLiteral("取込先");
const QString kSource = QStringLiteral("取込元");

// The place of the chain's entry at a level.
ImportPlace placeAt(Level level, const QString &style = QStringLiteral("1"))
{
    return ImportPlace{style, level, kUserCodes.mid(0, ImportPlace::depthOf(level) + 1)};
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int count(QSqlDatabase db, const QString &table, const QString &where)
{
    return scalar(db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(table, where)).toInt();
}

// A user's clause text as stored, segments joined in order.
QString paragraphText(QSqlDatabase db)
{
    RowReader q = execSql(db, QStringLiteral("SELECT 項 FROM 項 WHERE 規程Code = '75' AND 条Code = '7001' ORDER BY CAST(結合 AS INTEGER)"));
    QString text;
    while (q.next())
        text += q.value(0).toString();
    return text;
}

} // namespace

class ImportTest : public QObject {
    Q_OBJECT

    // Two companies: the source with the user chain, the target open as `cn`.
    struct Pair {
        TestRoot root;
        QSqlDatabase target;
        Pair()
        {
            root.makeCompany(kSource);
            addUserChain(root.layout(), kSource);
            target = root.openCompany(kTarget);
        }
        ~Pair() { SourceCompany::close(); } // before the folder goes, with the source's lock
        QString targetFile() const { return root.layout().companyFile(kTarget); }
        QString sourceFile() const { return root.layout().companyFile(kSource); }
        Outcome openSource(ScriptedPrompt &prompt, const QString &name = kSource) const
        {
            return SourceCompany::open(prompt, root.layout(), name);
        }
        Outcome import(ScriptedPrompt &prompt, const ImportPlace &place) const
        {
            return importEntry(target, SourceCompany::connection(), prompt, place);
        }
        // The target's document already has a marker row of the code, elsewhere in it.
        void addTargetMarker(const QString &table, const QString &code)
        {
            execSql(
                target,
                QStringLiteral("INSERT INTO \"%1\" (Code, 規程Code, 章Code, 条Code, 種別) VALUES (?, '75', '01', '0001', '4')").arg(table),
                {code});
        }
        // The rows above the level, as the chain has them, put straight into the target.
        void addParents(Level level)
        {
            QList<QPair<QString, QVariantList>> rows;
            inCompany(root.layout(), kSource, OpenMode::ReadOnly, [&](QSqlDatabase source) {
                for (Level at : kImportLevels) {
                    if (at == level)
                        break;
                    const QString table = dictionaryTable(at);
                    const QString columns = schemaTable(table).columnNames().join(u',');
                    const KeyFilter filter = keyFilter(at, QStringLiteral("1"), kUserCodes.mid(0, ImportPlace::depthOf(at) + 1));
                    RowReader q =
                        execSql(source, QStringLiteral("SELECT %2 FROM \"%1\" WHERE %3 ORDER BY ID").arg(table, columns, filter.where()),
                                filter.values);
                    while (q.next()) {
                        QVariantList values;
                        for (int i = 0; i < q.record().count(); ++i)
                            values << q.value(i);
                        rows << qMakePair(table, values);
                    }
                }
            });
            for (const auto &row : rows)
                insertRow(target, row.first, row.second);
        }
    };

private slots:
    void cleanup() { SourceCompany::close(); }

    void copiesEachLevel_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QStringList>("copied"); // tables that gain rows
        const QStringList all = {
            QStringLiteral("規程"), QStringLiteral("前文"), QStringLiteral("章"),         QStringLiteral("条"),
            QStringLiteral("項"),   QStringLiteral("号"),   QStringLiteral("号の細分丸"), QStringLiteral("号の細分イロハ")};
        QTest::newRow("規程") << 0 << all;
        QTest::newRow("章") << 1 << all.mid(2);
        QTest::newRow("条") << 2 << all.mid(3);
        QTest::newRow("項") << 3 << all.mid(4);
        QTest::newRow("号") << 4 << all.mid(5);
        QTest::newRow("①～⑳") << 5 << all.mid(6);
        QTest::newRow("イ～ネ") << 6 << all.mid(7);
    }
    void copiesEachLevel()
    {
        QFETCH(int, depth);
        QFETCH(QStringList, copied);
        Pair pair;
        const Level level = kImportLevels.at(depth);
        pair.addParents(level);
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(level)), Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("処理完了: データ取込処理が完了しました。")});
        for (const QString &table : copied) {
            const QString where = table == QStringLiteral("規程") ? QStringLiteral("Code = '75'") : QStringLiteral("規程Code = '75'");
            QVERIFY2(count(pair.target, table, where) > 0, qUtf8Printable(table));
        }
        // The words and references go with the 項 that uses them.
        const int markers = depth <= 3 ? 1 : 0;
        QCOMPARE(count(pair.target, QStringLiteral("変数テーブル語句"), QStringLiteral("規程Code = '75'")), markers);
        QCOMPARE(count(pair.target, QStringLiteral("変数テーブル番号"), QStringLiteral("規程Code = '75'")), markers);
    }

    void copyKeepsTextAndUnselectsTheDocument()
    {
        Pair pair;
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(Level::Document)), Outcome::Done);
        QCOMPARE(paragraphText(pair.target), paragraphText(SourceCompany::connection()));
        QCOMPARE(count(pair.target, QStringLiteral("項"), QStringLiteral("規程Code = '75'")), 3); // all three segments
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 選択フラグ FROM 規程 WHERE Code = '75'")).toInt(), 0);
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE Code = '7501'")).toString(),
                 QStringLiteral("就業規則"));
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 選択フラグ FROM 変数テーブル語句 WHERE Code = '7501'")).toInt(), 0);
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 変換参照■種別 FROM 変数テーブル番号 WHERE Code = '7502'")).toString(),
                 QStringLiteral("3"));
    }

    // The source is read as immutable: while it is open as the source no other program
    // may have it, and one that has it keeps the import out.
    void sourceHeldByAnotherProgram()
    {
        qputenv("NORMARIS_LOCK_WAIT_MS", "100");
        Pair pair;
        ScriptedPrompt prompt;
        const auto store = CompanyStore::of(pair.root.layout());
        {
            const auto other = store->hold(kSource);
            QCOMPARE(pair.openSource(prompt), Outcome::Stopped);
            QCOMPARE(prompt.lines(), QStringList{kProgramTitle
                                                 + QStringLiteral(": 『取込元』は他のプログラムが使用中です。"
                                                                  "そのプログラムで会社を閉じてから、もう一度やり直してください。")});
        }
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QVERIFY_THROWS_EXCEPTION(CompanyInUse, store->hold(kSource));
        SourceCompany::close();
        const auto afterwards = store->hold(kSource);
        qunsetenv("NORMARIS_LOCK_WAIT_MS");
    }

    void refusals_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("withParents");
        QTest::addColumn<QString>("message");
        const QString missing = QStringLiteral("処理不可: 自社データに%1Code：%2が存在しないためデータ取込を中止します。");
        QTest::newRow("章 without its document") << 1 << false << missing.arg(QStringLiteral("規則・規程・労使協定"), QStringLiteral("75"));
        QTest::newRow("条 without its 章") << 2 << false << missing.arg(QStringLiteral("章"), QStringLiteral("70"));
        QTest::newRow("項 without its 条") << 3 << false << missing.arg(QStringLiteral("条"), QStringLiteral("7001"));
        QTest::newRow("号 without its 項") << 4 << false << missing.arg(QStringLiteral("項"), QStringLiteral("70"));
        QTest::newRow("① without its 号") << 5 << false << missing.arg(QStringLiteral("号"), QStringLiteral("70"));
        QTest::newRow("イ without its ①") << 6 << false << missing.arg(QStringLiteral("①～⑳"), QStringLiteral("70"));
        const QString duplicate = QStringLiteral("Code重複: 自社データに%1の重複Codeがあるためデータ取込を中止します。\n%2の重複Code：%3");
        const QString doc = QStringLiteral("規則・規程・労使協定");
        QTest::newRow("規程 twice") << 0 << true << duplicate.arg(doc, doc, QStringLiteral("75"));
        QTest::newRow("章 twice") << 1 << true << duplicate.arg(QStringLiteral("章"), QStringLiteral("項"), QStringLiteral("70"));
        QTest::newRow("条 twice") << 2 << true << duplicate.arg(QStringLiteral("条"), QStringLiteral("項"), QStringLiteral("7001"));
        QTest::newRow("項 twice") << 3 << true << duplicate.arg(QStringLiteral("項"), QStringLiteral("項"), QStringLiteral("70"));
        QTest::newRow("号 twice") << 4 << true << duplicate.arg(QStringLiteral("号"), QStringLiteral("号"), QStringLiteral("70"));
        QTest::newRow("① twice") << 5 << true << duplicate.arg(QStringLiteral("①～⑳"), QStringLiteral("①～⑳"), QStringLiteral("70"));
        QTest::newRow("イ twice") << 6 << true << duplicate.arg(QStringLiteral("イ～ネ"), QStringLiteral("イ～ネ"), QStringLiteral("70"));
    }
    void refusals()
    {
        QFETCH(int, depth);
        QFETCH(bool, withParents);
        QFETCH(QString, message);
        Pair pair;
        const Level level = kImportLevels.at(depth);
        if (withParents) {
            ScriptedPrompt first;
            QCOMPARE(pair.openSource(first), Outcome::Done);
            pair.addParents(level);
            QCOMPARE(pair.import(first, placeAt(level)), Outcome::Done);
        }
        const QByteArray before = contentDigest(pair.root.layout(), kTarget);
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(level)), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{message});
        QCOMPARE(prompt.shown().first().icon, Prompt::Icon::Error);
        QCOMPARE(contentDigest(pair.root.layout(), kTarget), before);
    }

    void markerConflicts_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("word used by the text")
            << QStringLiteral("変数テーブル語句") << QStringLiteral("7501")
            << QStringLiteral("Code重複: 自社データに埋込語句の重複Codeがあるためデータ取込を中止します。\n埋込語句の重複Code：7501");
        QTest::newRow("reference used by the text")
            << QStringLiteral("変数テーブル番号") << QStringLiteral("7502")
            << QStringLiteral(
                   "Code重複: 自社データに参照条文番号の重複Codeがあるためデータ取込を中止します。\n参照条文番号の重複Code：7502");
        QTest::newRow("word the text does not use") << QStringLiteral("変数テーブル語句") << QStringLiteral("7502") << QString();
    }
    void markerConflicts()
    {
        QFETCH(QString, table);
        QFETCH(QString, code);
        QFETCH(QString, message);
        Pair pair;
        pair.addParents(Level::Article);
        pair.addTargetMarker(table, code);
        // The source also has an unused word row of 7502 under the entry.
        execInCompany(pair.root.layout(), kSource,
                      QStringLiteral("INSERT INTO 変数テーブル語句 (Code, 規程Code, 章Code, 条Code, 項Code, 結合, 種別) "
                                     "VALUES ('7502', '75', '70', '7001', '70', '1', '4')"));
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        const Outcome outcome = pair.import(prompt, placeAt(Level::Article));
        if (message.isEmpty()) {
            QCOMPARE(outcome, Outcome::Done);
            QCOMPARE(count(pair.target, QStringLiteral("変数テーブル語句"), QStringLiteral("Code = '7502'")), 1); // not copied
        } else {
            QCOMPARE(outcome, Outcome::Stopped);
            QCOMPARE(prompt.lines(), QStringList{message});
            QCOMPARE(count(pair.target, QStringLiteral("条"), QStringLiteral("Code = '7001'")), 0);
        }
    }

    // コードを振り直して取り込む: the conflicting code gets the document's next free
    // one, in its row and in the marker of the copied text; the refusal stays where
    // the conflict is not one of codes of words and references.
    void renumbersConflictingMarkers_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("change");
        QTest::newRow("word") << QStringLiteral("変数テーブル語句") << QStringLiteral("7501")
                              << QStringLiteral("従業員は、★7502★を守り、◆7502◆に従う。") << QStringLiteral("埋込語句のCode：7501→7502");
        QTest::newRow("reference") << QStringLiteral("変数テーブル番号") << QStringLiteral("7502")
                                   << QStringLiteral("従業員は、★7501★を守り、◆7503◆に従う。")
                                   << QStringLiteral("参照条文番号のCode：7502→7503");
    }
    void renumbersConflictingMarkers()
    {
        QFETCH(QString, table);
        QFETCH(QString, code);
        QFETCH(QString, text);
        QFETCH(QString, change);
        Pair pair;
        pair.addParents(Level::Article);
        pair.addTargetMarker(table, code);
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QVERIFY(importRenumberable(pair.target, SourceCompany::connection(), placeAt(Level::Article)));
        prompt.clear();
        QCOMPARE(importEntry(pair.target, SourceCompany::connection(), prompt, placeAt(Level::Article), MarkerCodes::Renumber),
                 Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("処理完了: データ取込処理が完了しました。\n") + change});
        QCOMPARE(paragraphText(pair.target), text);
        // The word and the reference say what they said in the source, under their codes here.
        QCOMPARE(
            scalar(pair.target, QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE 規程Code = '75' AND 条Code = '7001'")).toString(),
            QStringLiteral("就業規則"));
        QCOMPARE(
            scalar(pair.target, QStringLiteral("SELECT Code FROM 変数テーブル語句 WHERE 規程Code = '75' AND 条Code = '7001'")).toString(),
            text.mid(text.indexOf(u'★') + 1, 4));
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 変換参照■条Code || '/' || Code FROM 変数テーブル番号 WHERE 規程Code = '75' "
                                                    "AND 条Code = '7001'"))
                     .toString(),
                 QStringLiteral("7001/") + text.mid(text.indexOf(u'◆') + 1, 4));
        QCOMPARE(count(pair.target, table, QStringLiteral("Code = '%1' AND 条Code = '0001'").arg(code)), 1); // the target's own stays
        // Nothing is left to renumber, and the entry is there now: a refusal of its own code.
        QVERIFY(!importRenumberable(pair.target, SourceCompany::connection(), placeAt(Level::Article)));
    }

    // With no company of one's own open, the import stops at its first step.
    void refusedWithoutACompanyToTakeIt()
    {
        TestRoot root;
        root.makeCompany(kSource);
        AppState::instance().reset();
        ScriptedPrompt prompt;
        QCOMPARE(SourceCompany::open(prompt, root.layout(), kSource), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral(
                                     "会社指定の確認: 取込先の会社が開かれていません。会社指定で会社を開いてから取り込んでください。")});
        QVERIFY(!SourceCompany::isOpen());
    }

    void sameCodeTwiceKeepsTheLater()
    {
        Pair pair;
        pair.addParents(Level::Article);
        execInCompany(pair.root.layout(), kSource,
                      QStringLiteral("INSERT INTO 変数テーブル語句 (Code, 語句, 規程Code, 章Code, 条Code, 項Code, 結合, 種別) "
                                     "VALUES ('7501', '後の語句', '75', '70', '7001', '70', '2', '4')"));
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(Level::Article)), Outcome::Done);
        QCOMPARE(count(pair.target, QStringLiteral("変数テーブル語句"), QStringLiteral("Code = '7501'")), 1);
        QCOMPARE(scalar(pair.target, QStringLiteral("SELECT 語句 FROM 変数テーブル語句 WHERE Code = '7501'")).toString(),
                 QStringLiteral("後の語句"));
    }

    void failureInTheWordsRollsBackTheClauses()
    {
        Pair pair;
        const QString failure = refuseEvery(pair.target, kTarget, QStringLiteral("INSERT"), QStringLiteral("変数テーブル語句"));
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(Level::Document)), Outcome::Failed);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("取消: 処理中にエラーが発生しました。処理を取り消します。\n") + failure});
        for (const QString &table : {QStringLiteral("章"), QStringLiteral("条"), QStringLiteral("項")})
            QCOMPARE(count(pair.target, table, QStringLiteral("規程Code = '75'")), 0);
        QCOMPARE(count(pair.target, QStringLiteral("規程"), QStringLiteral("Code = '75'")), 0);
    }

    void olderFormSourceGetsTheKindFromTheText()
    {
        if (TestServer::requested())
            QSKIP("The older form is that of company files: only the folder store has such a company");
        Pair pair;
        for (const QString &table : {QStringLiteral("前文"), QStringLiteral("項"), QStringLiteral("号"), QStringLiteral("号の細分丸")})
            execIn(pair.sourceFile(), QStringLiteral("ALTER TABLE \"%1\" DROP COLUMN 結合種別").arg(table));
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        QCOMPARE(pair.import(prompt, placeAt(Level::Document)), Outcome::Done);
        RowReader q = execSql(pair.target, QStringLiteral("SELECT 結合種別 FROM 項 WHERE 規程Code = '75' ORDER BY 結合"));
        QStringList kinds;
        while (q.next())
            kinds << q.value(0).toString();
        QCOMPARE(kinds, (QStringList{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("0")}));
    }

    void listsOfferTheUsersOwnAtTheLevel()
    {
        Pair pair;
        ScriptedPrompt prompt;
        QCOMPARE(pair.openSource(prompt), Outcome::Done);
        const QSqlDatabase source = SourceCompany::connection();
        const QList<CodeAndName> own = importChoices(source, QStringLiteral("1"), Level::Document, {}, true);
        QCOMPARE(own, (QList<CodeAndName>{{QStringLiteral("75"), QStringLiteral("テスト規程")}}));
        QVERIFY(importChoices(source, QStringLiteral("1"), Level::Document, {}, false).size() > 1);
        // A clause in three segments is offered once.
        QCOMPARE(importChoices(source, QStringLiteral("1"), Level::Paragraph, kUserCodes.mid(0, 3), true).size(), 1);
        QCOMPARE(importChoices(source, QStringLiteral("2"), Level::Document, {}, true).size(), 0);
        QCOMPARE(importLevelPrompt(Level::Document), QStringLiteral("規則・規程・労使協定を指定してください"));
        QCOMPARE(importLevelPrompt(Level::Chapter), QStringLiteral("「規則・規程・労使協定」と「章」を指定してください"));
        QCOMPARE(importLevelPrompt(Level::Maru), QStringLiteral("「規則・規程・労使協定」～「①～⑳」を指定してください"));
    }

    void valueTests_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("segment of 250 bytes") << QStringLiteral("項") << QStringLiteral("項") << QVariant(QString(125, u'あ')) << true;
        QTest::newRow("segment of 252 bytes") << QStringLiteral("項") << QStringLiteral("項") << QVariant(QString(126, u'あ')) << false;
        QTest::newRow("control character") << QStringLiteral("章") << QStringLiteral("章") << QVariant(QStringLiteral("総\x01則")) << false;
        QTest::newRow("word of 82 bytes") << QStringLiteral("変数テーブル語句") << QStringLiteral("語句") << QVariant(QString(41, u'あ'))
                                          << false;
        QTest::newRow("code with a letter") << QStringLiteral("条") << QStringLiteral("Code") << QVariant(QStringLiteral("70a1")) << false;
        QTest::newRow("empty place code") << QStringLiteral("項") << QStringLiteral("号Code") << QVariant(QString()) << true;
        QTest::newRow("flag of 2") << QStringLiteral("項") << QStringLiteral("選択フラグ") << QVariant(2) << false;
    }
    void valueTests()
    {
        QFETCH(QString, table);
        QFETCH(QString, column);
        QFETCH(QVariant, value);
        QFETCH(bool, accepted);
        QCOMPARE(valueRefusal(table, column, value).isEmpty(), accepted);
    }

    void hostileSources_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("message");
        const QString refused = QStringLiteral("会社指定の確認: 『取込元』のデータは取り込めません。");
        QTest::newRow("not SQLite") << QStringLiteral("text") << refused + QStringLiteral("データベースのファイルではありません。");
        QTest::newRow("empty") << QStringLiteral("empty") << refused + QStringLiteral("データベースのファイルではありません。");
        QTest::newRow("another schema") << QStringLiteral("schema")
                                        << refused + QStringLiteral("本システムの会社データではありません。表「文章形式」がありません。");
        QTest::newRow("trigger") << QStringLiteral("trigger")
                                 << refused + QStringLiteral("トリガー「watch」を含むファイルは取り込めません。");
        QTest::newRow("view") << QStringLiteral("view") << refused + QStringLiteral("ビュー「一覧」を含むファイルは取り込めません。");
        QTest::newRow("virtual table") << QStringLiteral("virtual")
                                       << refused + QStringLiteral("仮想表「索引」を含むファイルは取り込めません。");
        QTest::newRow("symbolic link out of Data")
            << QStringLiteral("link") << refused + QStringLiteral("データフォルダの外を指すファイルは取り込めません。");
        QTest::newRow("10 MB clause text") << QStringLiteral("huge")
                                           << QStringLiteral("処理不可: 取込元の項（規程Code：75 章Code：70 条Code：7001 Code：70 "
                                                             "結合：2）の「項」の長さが制限(250)を越えています。データ取込を中止します。");
        QTest::newRow("the current company itself")
            << QStringLiteral("self")
            << QStringLiteral(
                   "会社指定の確認: 『取込先』のデータは取り込めません。取込先の会社と同じです。取込元には別の会社を指定してください。");
    }
    void hostileSources()
    {
        QFETCH(QString, kind);
        QFETCH(QString, message);
        const bool aboutTheFile = kind != QStringLiteral("huge") && kind != QStringLiteral("self");
        if (aboutTheFile && TestServer::requested())
            QSKIP("A source file of its own kind: only the folder store keeps a company in a file");
        TestRoot root;
        const DataLayout layout = root.layout();
        root.makeCompany(kSource);
        const QString file = layout.companyFile(kSource);
        QString sourceName = kSource;
        QTemporaryDir outside;
        if (kind == QStringLiteral("text") || kind == QStringLiteral("empty") || kind == QStringLiteral("schema")) {
            QFile::remove(file);
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            if (kind == QStringLiteral("text"))
                f.write("これはデータベースではありません。\n");
            f.close();
            if (kind == QStringLiteral("schema"))
                execIn(file, QStringLiteral("CREATE TABLE 他の表 (ID INTEGER PRIMARY KEY, 名前 TEXT)"));
        } else if (kind == QStringLiteral("trigger")) {
            execIn(file, QStringLiteral("CREATE TRIGGER watch AFTER INSERT ON 章 BEGIN DELETE FROM 章; END"));
        } else if (kind == QStringLiteral("virtual")) {
            execIn(file, QStringLiteral("CREATE VIRTUAL TABLE 索引 USING fts5(本文)"));
        } else if (kind == QStringLiteral("view")) {
            execIn(file, QStringLiteral("CREATE VIEW 一覧 AS SELECT * FROM 章"));
        } else if (kind == QStringLiteral("link")) {
            const QString away = outside.path() + QStringLiteral("/away.sqlite");
            QVERIFY(QFile::rename(file, away));
            QVERIFY(QFile::link(away, file));
        } else if (kind == QStringLiteral("huge")) {
            addUserChain(layout, kSource);
            execInCompany(layout, kSource, QStringLiteral("UPDATE 項 SET 項 = ? WHERE 規程Code = '75' AND 結合 = '2'"),
                          {QString(10 * 1024 * 1024, u'x')});
        }
        QSqlDatabase target;
        if (kind == QStringLiteral("self")) {
            sourceName = kTarget;
            root.makeCompany(kTarget);
            addUserChain(layout, kTarget);
            ScriptedPrompt none;
            QCOMPARE(CompanyFiles(layout, none).open(kTarget), Outcome::Done);
            target = AppState::cn();
        } else {
            target = root.openCompany(kTarget);
        }
        const QString sourceFile = layout.companyFile(sourceName);
        const QFileInfo sourceBefore(sourceFile);
        const QByteArray targetBefore = contentDigest(layout, kTarget);
        // A source of the folder store may be no database at all: its bytes are compared.
        const auto sourceContent = [&] { return layout.store.isEmpty() ? fileBytes(sourceFile) : contentDigest(layout, sourceName); };
        const QByteArray sourceDigest = sourceContent();

        ScriptedPrompt prompt;
        Outcome outcome = SourceCompany::open(prompt, layout, sourceName);
        if (outcome == Outcome::Done) {
            QVERIFY(kind == QStringLiteral("huge"));
            outcome = importEntry(target, SourceCompany::connection(), prompt, placeAt(Level::Document));
            SourceCompany::close();
        } else {
            QVERIFY(!SourceCompany::isOpen());
        }
        QVERIFY(outcome != Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{message});
        QCOMPARE(contentDigest(layout, kTarget), targetBefore);
        QCOMPARE(sourceContent(), sourceDigest);
        if (layout.store.isEmpty()) {
            const QFileInfo sourceAfter(sourceFile);
            QCOMPARE(sourceAfter.size(), sourceBefore.size());
            QCOMPARE(sourceAfter.lastModified(), sourceBefore.lastModified());
            QVERIFY(!QFile::exists(sourceFile + QStringLiteral("-journal")));
            QVERIFY(!QFile::exists(sourceFile + QStringLiteral("-wal")));
        }
    }

    // A source whose program stopped in the middle of a write (its journal hot beside
    // it) is refused before anything is read; opened once normally, which rolls the
    // write back, it imports what it held before that write.
    void sourceThatStoppedInAWrite()
    {
        if (TestServer::requested())
            QSKIP("A journal beside a company file: only the folder store keeps a company in a file");
        Pair p;
        const QString file = p.sourceFile();
        const QString before = valueIn(file, QStringLiteral("SELECT group_concat(項, '') FROM (SELECT 項 FROM 項 WHERE 規程Code = '75' "
                                                            "AND 条Code = '7001' ORDER BY CAST(結合 AS INTEGER))"))
                                   .toString();
        QVERIFY(!before.isEmpty());
        QTemporaryDir crash;
        const QString torn = crash.path() + QStringLiteral("/torn.sqlite");
        {
            QSqlDatabase writer = openDatabase(file, QStringLiteral("writer"));
            // A small cache spills the changed pages into the file before the commit, after
            // the journal holding the old ones has been synced: a crash now leaves it hot.
            execSql(writer, QStringLiteral("PRAGMA cache_size = 10"));
            execSql(writer, QStringLiteral("BEGIN IMMEDIATE"));
            execSql(writer, QStringLiteral("UPDATE 項 SET 項 = 項 || '（書きかけ）'"));
            execSql(writer, QStringLiteral("UPDATE 条 SET 条 = 条 || '（書きかけ）'"));
            QVERIFY(QFile::copy(file, torn));
            QVERIFY(QFile::copy(file + QStringLiteral("-journal"), torn + QStringLiteral("-journal")));
            execSql(writer, QStringLiteral("ROLLBACK"));
        }
        closeDatabase(QStringLiteral("writer"));
        QVERIFY(QFile::remove(file));
        QVERIFY(QFile::copy(torn, file));
        QVERIFY(QFile::copy(torn + QStringLiteral("-journal"), file + QStringLiteral("-journal")));
        {
            QFile journal(file + QStringLiteral("-journal"));
            QVERIFY(journal.open(QIODevice::ReadOnly));
            QCOMPARE(journal.read(8).toHex(), QByteArray("d9d505f920a163d7"));
        }

        ScriptedPrompt prompt;
        QCOMPARE(p.openSource(prompt), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("会社指定の確認: 『取込元』のデータは取り込めません。"
                                                            "取込元の会社データは書き込みの途中で終わっています。"
                                                            "取込元の会社を一度このプログラムで開いてから、やり直してください。")});
        QVERIFY(QFile::exists(file + QStringLiteral("-journal")));

        // The company opened as the program opens it: SQLite rolls the write back.
        openCompanyDatabase(file, QStringLiteral("normal"));
        closeDatabase(QStringLiteral("normal"));
        QVERIFY(!QFile::exists(file + QStringLiteral("-journal")));

        prompt.clear();
        QCOMPARE(p.openSource(prompt), Outcome::Done);
        QCOMPARE(p.import(prompt, placeAt(Level::Document)), Outcome::Done);
        SourceCompany::close();
        QCOMPARE(paragraphText(p.target), before);
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "tst_import.moc"
