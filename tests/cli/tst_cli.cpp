// The CLI frame: exit statuses, one line per box on stderr, --yes, and --root laid out.

#include "TestRoot.h"
#include "cli/Cli.h"
#include "base/AppState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "CliRun.h"

#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

using namespace normaris;

namespace {

using Run = CliRun;

} // namespace

class CliTest : public QObject {
    Q_OBJECT
private slots:
    void companyLifeCycle()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + QStringLiteral("/r");
        Run r = runCli(root, {QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("株式会社テスト")});
        QCOMPARE(r.status, 1); // not confirmed without --yes
        QCOMPARE(r.err,
                 QStringLiteral("ファイル作成の確認: 新しいフォルダ『株式会社テスト』を作成し、その中にデータファイルを作成します。\n"));
        QVERIFY(QFile::exists(root + QStringLiteral("/Data/規程原本db.sqlite")));
        QVERIFY(QFile::exists(root + QStringLiteral("/help/2.html")));

        r = runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("株式会社テスト")});
        QCOMPARE(r.status, 0);
        QVERIFY(QFile::exists(root + QStringLiteral("/Data/株式会社テスト/株式会社テスト.sqlite")));

        r = runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("写し"),
                          QStringLiteral("--from"), QStringLiteral("株式会社テスト")});
        QCOMPARE(r.status, 0);
        r = runCli(root, {QStringLiteral("company"), QStringLiteral("list")});
        QCOMPARE(r.out, QStringLiteral("株式会社テスト\n写し\n")); // in Japanese collation order

        r = runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("backup"), QStringLiteral("写し")});
        QCOMPARE(r.status, 0);
        QVERIFY(QFile::exists(root + QStringLiteral("/BackupDB/写し/写し.sqlite")));
        r = runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("compact"), QStringLiteral("写し")});
        QCOMPARE(r.status, 0);
        r = runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("delete"), QStringLiteral("写し")});
        QCOMPARE(r.status, 0);
        QCOMPARE(r.err, QStringLiteral("会社削除の確認: 『写し』を削除します。\n"));
        QVERIFY(!QDir(root + QStringLiteral("/Data/写し")).exists());
    }

    void settingsDatesAndWordsRoundTrip()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        const QStringList company = {QStringLiteral("--company"), QStringLiteral("甲")};
        QCOMPARE(runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status, 0);

        Run r = runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("set")} + company
                                 + QStringList{QStringLiteral("事業所名=株式会社テスト"), QStringLiteral("労働者数=120")});
        QCOMPARE(r.status, 0);
        r = runCli(root,
                   QStringList{QStringLiteral("settings"), QStringLiteral("representative")} + company + QStringList{QStringLiteral("1")});
        QCOMPARE(r.status, 0);
        r = runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("show")} + company);
        QVERIFY2(r.out.startsWith(QStringLiteral("事業所名=株式会社テスト\n郵便番号=\n所在地1=☆0003☆\n")), qUtf8Printable(r.out));
        QVERIFY(r.out.contains(QStringLiteral("\n労働者数=120\n")));
        QVERIFY(r.out.endsWith(QStringLiteral("代表労働者=1\n")));

        // A refused value changes nothing, not even the good values beside it.
        r = runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("set")} + company
                             + QStringList{QStringLiteral("業種=製造業"), QStringLiteral("労働者数=10000000")});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("入力エラー: 1～9999999を入力してください。･･･労働者数\n"));
        QVERIFY(runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("show")} + company)
                    .out.contains(QStringLiteral("業種=☆0013☆")));

        const QStringList dates = QStringList{QStringLiteral("dates")};
        const QStringList doc = company + QStringList{QStringLiteral("--doc"), QStringLiteral("01")};
        QCOMPARE(runCli(root, dates + QStringList{QStringLiteral("add")} + doc + QStringList{QStringLiteral("令和8年4月1日")}).status, 0);
        QCOMPARE(runCli(root, dates + QStringList{QStringLiteral("add")} + doc + QStringList{QStringLiteral("2009/1/1")}).status, 0);
        r = runCli(root, dates + QStringList{QStringLiteral("add")} + doc + QStringList{QStringLiteral("2009/2/30")});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("入力エラー: 日付の入力が正しくありません。･･･年月日\n"));
        QCOMPARE(runCli(root, dates + QStringList{QStringLiteral("list")} + doc).out, QStringLiteral("2009/01/01\t1\n2026/04/01\t1\n"));
        QCOMPARE(runCli(root, QStringList{QStringLiteral("--yes")} + dates + QStringList{QStringLiteral("delete")} + doc
                                  + QStringList{QStringLiteral("2009-01-01")})
                     .status,
                 0);
        QCOMPARE(runCli(root, dates + QStringList{QStringLiteral("list")} + doc).out, QStringLiteral("2026/04/01\t1\n"));

        // Some article of the standard draft holds a word.
        const QString place = test::valueIn(root + QStringLiteral("/Data/甲/甲.sqlite"),
                                            QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND "
                                                           "種別 <> '10' AND 選択フラグ = 1 LIMIT 1"))
                                  .toString();
        const QStringList article =
            doc
            + QStringList{QStringLiteral("--chapter"), place.section(u' ', 0, 0), QStringLiteral("--article"), place.section(u' ', 1, 1)};
        const QString word = runCli(root, QStringList{QStringLiteral("words"), QStringLiteral("list")} + article).out.section(u'\n', 0, 0);
        const QString code = word.section(u'\t', 0, 0);
        QVERIFY2(!code.isEmpty(), "the seed's article holds no word");
        QCOMPARE(runCli(root,
                        QStringList{QStringLiteral("words"), QStringLiteral("set")} + article + QStringList{code + QStringLiteral("=２年")})
                     .status,
                 0);
        QVERIFY(runCli(root, QStringList{QStringLiteral("words"), QStringLiteral("list")} + article)
                    .out.startsWith(code + u'\t' + word.section(u'\t', 1, 1) + QStringLiteral("\t２年\n")));
        QCOMPARE(runCli(root, QStringList{QStringLiteral("words"), QStringLiteral("set")} + article + QStringList{code + u'='}).status, 0);
        QVERIFY(runCli(root, QStringList{QStringLiteral("words"), QStringLiteral("list")} + article).out.contains(u'★' + code + u'★'));
    }

    // Releasing a 章 and adding it again brings back its 条 and their clauses.
    void composeReleaseAndAddBack()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        QCOMPARE(runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status, 0);
        const QStringList doc = {QStringLiteral("--company"), QStringLiteral("甲"),    QStringLiteral("--style"),
                                 QStringLiteral("1"),         QStringLiteral("--doc"), QStringLiteral("01")};
        const QString before = runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc).out;
        const QStringList lines = before.split(u'\n', Qt::SkipEmptyParts);
        // The second chapter's row, and the row above it (the first chapter's last 条).
        int chapterRow = -1, seen = 0;
        for (const QString &line : lines) {
            if (line.section(u'\t', 2, 2) == u"2" && ++seen == 2)
                chapterRow = line.section(u'\t', 0, 0).toInt();
        }
        QVERIFY(chapterRow > 0);
        const QString chapter = lines[chapterRow].section(u'\t', 4, 4);

        Run r = runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("release")} + doc
                                 + QStringList{QStringLiteral("--row"), QString::number(chapterRow)});
        QCOMPARE(r.status, 1); // asked, and not answered yes
        QVERIFY(r.err.startsWith(QStringLiteral("選択解除の確認: ")));
        r = runCli(root, QStringList{QStringLiteral("--yes"), QStringLiteral("compose"), QStringLiteral("release")} + doc
                             + QStringList{QStringLiteral("--row"), QString::number(chapterRow)});
        QCOMPARE(r.status, 0);
        QVERIFY(r.err.endsWith(QStringLiteral("確認: 処理を終了しました。\n")));
        QVERIFY(!runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc).out.contains(u'\t' + chapter + u'\t'));

        r = runCli(root, QStringList{QStringLiteral("--yes"), QStringLiteral("compose"), QStringLiteral("add")} + doc
                             + QStringList{QStringLiteral("--row"), QString::number(chapterRow - 1), QStringLiteral("--action"),
                                           QStringLiteral("3"), QStringLiteral("--pick"), chapter});
        QCOMPARE(r.status, 0);
        QCOMPARE(runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc).out, before);

        // A refused position says why and changes nothing.
        r = runCli(root, QStringList{QStringLiteral("--yes"), QStringLiteral("compose"), QStringLiteral("add")} + doc
                             + QStringList{QStringLiteral("--row"), QString::number(chapterRow + 1), QStringLiteral("--action"),
                                           QStringLiteral("3"), QStringLiteral("--pick"), chapter});
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("処理位置の確認: 前章の「最後の条」の位置で処理してください。\n"));
    }

    // docs remove asks before the composition goes; without --yes it changes nothing.
    void docsRemoveAsksFirst()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        QCOMPARE(runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status, 0);
        const QStringList doc = {QStringLiteral("--company"), QStringLiteral("甲"),    QStringLiteral("--style"),
                                 QStringLiteral("1"),         QStringLiteral("--doc"), QStringLiteral("01")};
        const QStringList list = {QStringLiteral("docs"),    QStringLiteral("list"), QStringLiteral("--company"), QStringLiteral("甲"),
                                  QStringLiteral("--style"), QStringLiteral("1"),    QStringLiteral("--selected")};
        const QString rows = runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc).out;
        Run r = runCli(root, QStringList{QStringLiteral("docs"), QStringLiteral("remove")} + doc);
        QCOMPARE(r.status, 1);
        QVERIFY(r.err.startsWith(QStringLiteral("リストから外す確認: 『就業規則』をリストから外します。 ")));
        QCOMPARE(runCli(root, QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc).out, rows);
        QVERIFY(runCli(root, list).out.contains(QStringLiteral("\t01\t就業規則\t")));
        r = runCli(root, QStringList{QStringLiteral("--yes"), QStringLiteral("docs"), QStringLiteral("remove")} + doc);
        QCOMPARE(r.status, 0);
        QVERIFY(!runCli(root, list).out.contains(QStringLiteral("\t01\t就業規則\t")));
    }

    // The chain on the seed: the work rules cite the article before, a paragraph two
    // before, and the leave rules by name and article.
    void exportChain()
    {
        QTemporaryDir dir;
        const QString root = dir.path();
        const QStringList company = {QStringLiteral("--company"), QStringLiteral("甲")};
        QCOMPARE(runCli(root, {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status, 0);
        QCOMPARE(runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("set")} + company
                                  + QStringList{QStringLiteral("事業所名=株式会社テスト")})
                     .status,
                 0);
        const QStringList documents = {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")};
        const QStringList style = {QStringLiteral("--style"), QStringLiteral("1")};
        auto doc = [&](const QString &d) { return company + style + QStringList{QStringLiteral("--doc"), d}; };

        // Substitution waits for the documents it cites.
        QCOMPARE(runCli(root, QStringList{QStringLiteral("dates"), QStringLiteral("add")} + company
                                  + QStringList{QStringLiteral("--doc"), QStringLiteral("01"), QStringLiteral("2026/4/1")})
                     .status,
                 0);
        QCOMPARE(runCli(root, QStringList{QStringLiteral("build")} + doc(QStringLiteral("01"))).err,
                 QStringLiteral("処理完了: データ作成が完了しました。\n"));
        Run r = runCli(root, QStringList{QStringLiteral("substitute")} + doc(QStringLiteral("01")));
        QCOMPARE(r.status, 1);
        QCOMPARE(r.err, QStringLiteral("作成順序: 他の規則・規程等を参照している条文があります。 「育児・介護休業規程」「賃金規程」 "
                                       "先に参照先の規則・規程等を作成してください。\n"));

        for (const QString &d : documents.mid(1)) {
            QCOMPARE(runCli(root, QStringList{QStringLiteral("dates"), QStringLiteral("add")} + company
                                      + QStringList{QStringLiteral("--doc"), d, QStringLiteral("2026/4/1")})
                         .status,
                     0);
            QCOMPARE(runCli(root, QStringList{QStringLiteral("build")} + doc(d)).status, 0);
        }
        for (const QString &d : documents) {
            r = runCli(root, QStringList{QStringLiteral("substitute")} + doc(d));
            QCOMPARE(r.err, QStringLiteral("処理完了: 置換処理が完了しました。\n"));
        }
        const QString file = root + QStringLiteral("/Data/甲/甲.sqlite");
        const QString texts =
            test::valueIn(file, QStringLiteral("SELECT group_concat(文章, '\n') FROM 作成データ WHERE 規程Code = '01'")).toString();
        const QString out = root + QStringLiteral("/01.docx");
        const QString text = root + QStringLiteral("/01.txt");
        r = runCli(root, QStringList{QStringLiteral("export")} + doc(QStringLiteral("01"))
                             + QStringList{QStringLiteral("--out"), out, QStringLiteral("--text"), text});
        QCOMPARE(r.status, 0);
        QVERIFY(QFileInfo(out).size() > 0);
        QFile textFile(text);
        QVERIFY(textFile.open(QIODevice::ReadOnly));
        const QString document = QString::fromUtf8(textFile.readAll());
        for (const QString &wording : {QStringLiteral("前条第１項に定める方法により"), QStringLiteral("第２項第２号に掲げる労働条件"),
                                       QStringLiteral("育児・介護休業規程第４条に")}) {
            QVERIFY2(texts.contains(wording), qUtf8Printable(wording));
            QVERIFY2(document.contains(wording), qUtf8Printable(wording));
        }
        QVERIFY(!texts.contains(u'◆'));
        QVERIFY(document.contains(QStringLiteral("株式会社テスト")));

        // A setting changed after the substitution: the work data are out of date, and
        // the export says so and stops, unless told yes (build, substitute, export).
        QCOMPARE(runCli(root, QStringList{QStringLiteral("settings"), QStringLiteral("set")} + company
                                  + QStringList{QStringLiteral("事業所名=株式会社新名")})
                     .status,
                 0);
        const QString stale = QStringLiteral("データ作成の確認: 「就業規則」の語句が変更されています。データ作成からやり直しますか？\n");
        for (const QStringList &command :
             {QStringList{QStringLiteral("export"), QStringLiteral("--out"), out}, QStringList{QStringLiteral("substitute")}}) {
            r = runCli(root, command + doc(QStringLiteral("01")));
            QCOMPARE(r.status, 1);
            QCOMPARE(r.err, stale);
        }
        r = runCli(root, QStringList{QStringLiteral("--yes"), QStringLiteral("export")} + doc(QStringLiteral("01"))
                             + QStringList{QStringLiteral("--out"), out, QStringLiteral("--text"), text});
        QCOMPARE(r.status, 0);
        QCOMPARE(r.err, stale + QStringLiteral("処理完了: データ作成が完了しました。\n処理完了: 置換処理が完了しました。\n"));
        textFile.close();
        QVERIFY(textFile.open(QIODevice::ReadOnly));
        const QString again = QString::fromUtf8(textFile.readAll());
        QVERIFY(again.contains(QStringLiteral("株式会社新名")));
        QVERIFY(!again.contains(QStringLiteral("株式会社テスト")));

        // The filing forms need no document; a bad option is refused.
        r = runCli(root, QStringList{QStringLiteral("export")} + company
                             + QStringList{QStringLiteral("--kind"), QStringLiteral("filing"), QStringLiteral("--out"),
                                           root + QStringLiteral("/todoke.docx")});
        QCOMPARE(r.status, 0);
        r = runCli(root, QStringList{QStringLiteral("export")} + doc(QStringLiteral("01"))
                             + QStringList{QStringLiteral("--cover"), QStringLiteral("half"), QStringLiteral("--out"), out});
        QCOMPARE(r.status, 2);
    }

    void exitStatuses_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("err");
        const QString yes = QStringLiteral("--yes");
        const QString company = QStringLiteral("company");
        QTest::newRow("parent folder") << QStringList{yes, company, QStringLiteral("new"), QStringLiteral("..")} << 1
                                       << QStringLiteral("名前の変更: 「.」と「..」は会社名に使えません。\n");
        QTest::newRow("slash") << QStringList{yes, company, QStringLiteral("new"), QStringLiteral("a/b")} << 1
                               << QStringLiteral("名前の変更: ファイル名には次の文字は使えません。 \\ / : , ; * ? \" < > |\n");
        // A name of the program's own work folders would be taken for a crash's leftover.
        QTest::newRow("work folder name") << QStringList{yes, company, QStringLiteral("new"), QStringLiteral(".normaris-work-new-丙社")}
                                          << 1 << QStringLiteral("名前の変更: 会社名の先頭に「.」は使えません。\n");
        QTest::newRow("name that was not UTF-8") << QStringList{yes, company, QStringLiteral("new"), QStringLiteral("\uFFFD\uFFFD")} << 1
                                                 << QStringLiteral("名前の変更: 会社名に文字化けした文字（U+FFFD）は使えません。\n");
        const QStringList settings = {QStringLiteral("settings"), QStringLiteral("set"), QStringLiteral("--company"), QStringLiteral("甲")};
        QTest::newRow("marker in a setting") << settings + QStringList{QStringLiteral("事業所名=株式会社★0003★")} << 1
                                             << QStringLiteral("入力のエラー: 項目中に ★ を含むことはできません。 ･･･事業所名\n");
        QTest::newRow("a setting's own marker: not given yet")
            << settings + QStringList{QStringLiteral("事業所名=☆0001☆")} << 0 << QString();
        QTest::newRow("setting that was not UTF-8")
            << settings + QStringList{QStringLiteral("事業所名=株式会社\uFFFD")} << 1
            << QStringLiteral("入力のエラー: 項目中に文字化けした文字（U+FFFD）を含むことはできません。 ･･･事業所名\n");
        QTest::newRow("stale work file") << QStringList{yes, company, QStringLiteral("compact"), QStringLiteral("甲")} << 1 << QString();
        QTest::newRow("unknown command") << QStringList{QStringLiteral("nothing")} << 2 << QString();
        QTest::newRow("missing name") << QStringList{company, QStringLiteral("new")} << 2 << QString();
        QTest::newRow("option without value") << QStringList{company, QStringLiteral("backup"), QStringLiteral("甲"),
                                                             QStringLiteral("--to")}
                                              << 2 << QString();
    }
    void exitStatuses()
    {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QString, err);
        QTemporaryDir dir;
        QCOMPARE(
            runCli(dir.path(), {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status,
            0);
        QFile stale(dir.path() + QStringLiteral("/Data/甲/甲.sqlitewk"));
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.close();
        const QStringList companies =
            QDir(dir.path() + QStringLiteral("/Data")).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
        const Run r = runCli(dir.path(), args);
        QCOMPARE(r.status, status);
        if (!err.isEmpty())
            QCOMPARE(r.err, err);
        // A refused name makes no folder, and the next command removes none.
        if (status == 1) {
            QCOMPARE(runCli(dir.path(), {QStringLiteral("company"), QStringLiteral("list")}).status, 0);
            QCOMPARE(QDir(dir.path() + QStringLiteral("/Data")).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden), companies);
        }
    }

    // A line the command does not declare runs nothing: the reason and the command's
    // usage go to stderr, and the status is 2.
    void refusedCommandLines_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("usage");
        const QString company = QStringLiteral("company");
        const QString list = QStringLiteral("usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] company list\n");
        const QString commands = QStringLiteral("commands:\n");
        const QStringList doc = {QStringLiteral("--company"), QStringLiteral("甲"), QStringLiteral("--doc"), QStringLiteral("01")};
        QTest::newRow("misspelt global") << QStringList{QStringLiteral("--rot"), QStringLiteral("/tmp/x"), company, QStringLiteral("list")}
                                         << QStringLiteral("unknown option '--rot'") << commands;
        QTest::newRow("unknown option") << QStringList{company, QStringLiteral("list"), QStringLiteral("--colour"), QStringLiteral("red")}
                                        << QStringLiteral("Unknown option 'colour'.") << list;
        QTest::newRow("stray argument") << QStringList{company, QStringLiteral("list"), QStringLiteral("extra")}
                                        << QStringLiteral("unexpected argument 'extra'") << list;
        QTest::newRow("missing value") << QStringList{company, QStringLiteral("backup"), QStringLiteral("甲"), QStringLiteral("--to")}
                                       << QStringLiteral("Missing value after '--to'.")
                                       << QStringLiteral("usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] company backup [--to DIR] NAME\n");
        QTest::newRow("style out of range")
            << QStringList{QStringLiteral("dates"), QStringLiteral("add")} + doc
                   + QStringList{QStringLiteral("--style"), QStringLiteral("9"), QStringLiteral("2026/4/1")}
            << QStringLiteral("--style takes 1|2, not '9'")
            << QStringLiteral("usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] dates add --company NAME --doc CODE [--style 1|2] DATE\n");
        QTest::newRow("required option") << QStringList{QStringLiteral("compose"), QStringLiteral("rows")} + doc
                                         << QStringLiteral("--style is required")
                                         << QStringLiteral("compose rows --company NAME --doc CODE --style 1|2");
        QTest::newRow("choice out of range") << QStringList{QStringLiteral("export")} + doc
                                                    + QStringList{QStringLiteral("--cover"), QStringLiteral("half"),
                                                                  QStringLiteral("--out"), QStringLiteral("x.docx")}
                                             << QStringLiteral("--cover takes both|cover|toc|none, not 'half'")
                                             << QStringLiteral("[--cover both|cover|toc|none]");
        QTest::newRow("unknown command") << QStringList{company, QStringLiteral("rename")}
                                         << QStringLiteral("unknown command 'company rename'") << commands;
    }
    void refusedCommandLines()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, reason);
        QFETCH(QString, usage);
        QTemporaryDir dir;
        QCOMPARE(
            runCli(dir.path(), {QStringLiteral("--yes"), QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("甲")}).status,
            0);
        const QString file = dir.path() + QStringLiteral("/Data/甲/甲.sqlite");
        const auto dates = [&] { return test::valueIn(file, QStringLiteral("SELECT count(*) FROM 施行日")).toInt(); };
        const int before = dates();
        const Run r = runCli(dir.path(), args);
        QCOMPARE(r.status, 2);
        QCOMPARE(r.out, QString());
        QVERIFY2(r.err.startsWith(QStringLiteral("normaris-cli: ") + reason + u'\n'), qUtf8Printable(r.err));
        QVERIFY2(r.err.contains(usage), qUtf8Printable(r.err));
        QCOMPARE(dates(), before); // nothing ran: a refused date is not stored
    }

    // Help goes to stdout with status 0: the list of commands, or one command's usage.
    void help_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("out");
        const QString all = QStringLiteral("usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] COMMAND ...\n");
        QTest::newRow("--help") << QStringList{QStringLiteral("--help")} << all;
        QTest::newRow("-h") << QStringList{QStringLiteral("-h")} << all;
        QTest::newRow("after --yes") << QStringList{QStringLiteral("--yes"), QStringLiteral("-h")} << all;
        QTest::newRow("command") << QStringList{QStringLiteral("company"), QStringLiteral("new"), QStringLiteral("--help")}
                                 << QStringLiteral("usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] company new [--from SOURCE] NAME\n");
        QTest::newRow("command -h") << QStringList{QStringLiteral("build"), QStringLiteral("-h")}
                                    << QStringLiteral(
                                           "usage: normaris-cli [--root DIR] [--store CONNINFO] [--yes] build --company NAME --doc CODE --style 1|2\n");
    }
    void help()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, out);
        QTemporaryDir dir;
        const Run r = runCli(dir.path(), args);
        QCOMPARE(r.status, 0);
        QCOMPARE(r.err, QString());
        QVERIFY2(r.out.startsWith(out), qUtf8Printable(r.out));
        if (args.size() == 1) {
            for (const cli::Command &c : cli::allCommands())
                QVERIFY2(r.out.contains(QStringLiteral("\n  ") + c.usage() + u'\n'), qUtf8Printable(c.usage()));
        }
    }
};

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"
