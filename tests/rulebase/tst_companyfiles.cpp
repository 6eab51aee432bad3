// The company life cycle through the core, with the user's questions scripted.

#include "CompanyDump.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyStore.h"
#include "base/Database.h"
#include "base/AppState.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

class CompanyFilesTest : public QObject {
    Q_OBJECT
private slots:
    void createFromSeed()
    {
        TestRoot root;
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromSeed(QStringLiteral("株式会社テスト")), Outcome::Done);
        const QString name = QStringLiteral("株式会社テスト");
        if (TestServer::requested()) {
            QCOMPARE(prompt.lines(), QStringList{QStringLiteral("ファイル作成の確認: サーバーに『株式会社テスト』のデータを作成します。")});
        } else {
            QCOMPARE(prompt.lines(),
                     QStringList{QStringLiteral(
                         "ファイル作成の確認: 新しいフォルダ『株式会社テスト』を作成し、その中にデータファイルを作成します。")});
            QCOMPARE(QDir(root.layout().companyDir(name)).entryList(QDir::Files), QStringList{QStringLiteral("株式会社テスト.sqlite")});
        }
        for (const char *table : {"施行日", "作成データ置換前", "作成データ"})
            QCOMPARE(
                valueInCompany(root.layout(), name, QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QString::fromUtf8(table))).toInt(),
                0);
        // The dictionary comes along; the company is not opened.
        QVERIFY(valueInCompany(root.layout(), name, QStringLiteral("SELECT count(*) FROM 項")).toInt() > 0);
        QVERIFY(!AppState::instance().isCompanyOpen());
    }

    void newNameChecks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("empty") << QString() << QStringLiteral("名前の変更: 名前を入力してください。");
        QTest::newRow("32 bytes") << QString(16, QChar(u'会')) << QStringLiteral("名前の変更: 会社名の長さが制限(30)を越えています。");
        QTest::newRow("bad character before duplicate")
            << QStringLiteral("既存,") << QStringLiteral("名前の変更: ファイル名には次の文字は使えません。\n\\ / : , ; * ? \" < > |");
        QTest::newRow("duplicate") << QStringLiteral("既存") << QStringLiteral("名前の変更: 名前が重複しています。");
        QTest::newRow("parent folder") << QStringLiteral("..") << QStringLiteral("名前の変更: 「.」と「..」は会社名に使えません。");
    }
    void newNameChecks()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        TestRoot root;
        root.makeCompany(QStringLiteral("既存"));
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromSeed(name), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{message});
        QCOMPARE(companiesOf(root.layout()), QStringList{QStringLiteral("既存")});
    }

    void thirtyBytesFit()
    {
        TestRoot root;
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromSeed(QString(15, QChar(u'会'))), Outcome::Done);
    }

    void answeringNoCreatesNothing()
    {
        TestRoot root;
        ScriptedPrompt prompt;
        prompt.answer({false});
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromSeed(QStringLiteral("新会社")), Outcome::Stopped);
        QVERIFY(companiesOf(root.layout()).isEmpty());
    }

    // A copy that can't be finished leaves no folder that looks like a company.
    void failedCreationLeavesNothing()
    {
        TestRoot root;
        QFile seed(root.layout().seedFile());
        QVERIFY(seed.open(QIODevice::WriteOnly | QIODevice::Truncate));
        seed.write("not a database");
        seed.close();
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromSeed(QStringLiteral("壊れ")), Outcome::Failed);
        QCOMPARE(prompt.shown().size(), 2);
        QCOMPARE(prompt.shown().last().title, kProgramTitle);
        QVERIFY(companiesOf(root.layout()).isEmpty());
    }

    void createFromOpenCompanyAsksToCloseIt()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("元"));
        ScriptedPrompt prompt;
        CompanyFiles files(root.layout(), prompt);
        prompt.answer({true});
        QCOMPARE(files.select(QStringLiteral("元")), Outcome::Done);
        prompt.clear();

        prompt.answer({false});
        QCOMPARE(files.createFromCompany(QStringLiteral("写し"), QStringLiteral("元")), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("データ指定の確認: 現在使用中の『元』を閉じますか？")});
        QVERIFY(AppState::instance().isOpenCompany(QStringLiteral("元")));

        prompt.clear();
        prompt.answer({true, true});
        QCOMPARE(files.createFromCompany(QStringLiteral("写し"), QStringLiteral("元")), Outcome::Done);
        QCOMPARE(AppState::instance().companyPanel(), NoCompanyPrompt);
        QVERIFY(!AppState::cn().isOpen());
        // Closed for the copy, which the main window's commands do not follow.
        QVERIFY(AppState::instance().lastClose() == AppState::ClosedBy::Copying);
        QCOMPARE(companiesOf(root.layout()), (QStringList{QStringLiteral("元"), QStringLiteral("写し")}));
    }

    void createFromCompanyNeedsASource()
    {
        TestRoot root;
        ScriptedPrompt prompt;
        QCOMPARE(CompanyFiles(root.layout(), prompt).createFromCompany(QStringLiteral("写し"), QString()), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("未選択: ソースファイルを選択してください。")});
    }

    void selectOpensTheConnection()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        CompanyFiles files(root.layout(), prompt);
        QCOMPARE(files.select(QString()), Outcome::Stopped);
        prompt.answer({false, true});
        QCOMPARE(files.select(QStringLiteral("甲")), Outcome::Stopped);
        QVERIFY(!AppState::instance().isCompanyOpen());
        QCOMPARE(files.select(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("会社指定の確認: 処理する会社を指定してください。"),
                                              QStringLiteral("会社指定の確認: 『甲』を指定します。"),
                                              QStringLiteral("会社指定の確認: 『甲』を指定します。")}));
        QCOMPARE(AppState::instance().companyPanel(), QStringLiteral("甲"));
        QVERIFY(AppState::cn().isOpen());
        QVERIFY(!AppState::instance().lastClose());
    }

    void aBrokenCompanyLeavesTheOpenOneOpen()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        root.makeCompany(QStringLiteral("乙"));
        ScriptedPrompt prompt;
        CompanyFiles files(root.layout(), prompt);
        prompt.answer({true, true});
        QCOMPARE(files.select(QStringLiteral("甲")), Outcome::Done);
        if (TestServer::requested()) {
            const QString store = root.layout().store;
            const QString schema =
                TestServer::value(store, QStringLiteral("SELECT スキーマ FROM normaris.会社 WHERE 名前 = ?"), {QStringLiteral("乙")})
                    .toString();
            TestServer::value(store, QStringLiteral("DROP TABLE %1.\"項\"").arg(schema));
        } else {
            QFile::remove(root.layout().companyFile(QStringLiteral("乙")));
        }
        QCOMPARE(files.select(QStringLiteral("乙")), Outcome::Failed);
        QCOMPARE(AppState::instance().companyPanel(), QStringLiteral("甲"));
        QVERIFY(AppState::cn().isOpen());
    }

    void deleteCompany()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        root.makeCompany(QStringLiteral("乙"));
        ScriptedPrompt prompt;
        CompanyFiles files(root.layout(), prompt);
        prompt.answer({true});
        QCOMPARE(files.select(QStringLiteral("甲")), Outcome::Done);
        prompt.clear();

        QCOMPARE(files.remove(QString()), Outcome::Stopped);
        QCOMPARE(files.remove(QStringLiteral("甲")), Outcome::Stopped);
        prompt.answer({false, true});
        QCOMPARE(files.remove(QStringLiteral("乙")), Outcome::Stopped);
        QCOMPARE(files.remove(QStringLiteral("乙")), Outcome::Done);
        QCOMPARE(files.remove(QStringLiteral("丙")), Outcome::Stopped);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("会社削除の確認: 削除する会社を選択してください。"),
                                              QStringLiteral("会社削除の確認: 『甲』は現在使用中なので削除できません。"),
                                              QStringLiteral("会社削除の確認: 『乙』を削除します。"),
                                              QStringLiteral("会社削除の確認: 『乙』を削除します。"),
                                              QStringLiteral("会社削除の確認: 『丙』という会社はありません。")}));
        QCOMPARE(companiesOf(root.layout()), QStringList{QStringLiteral("甲")});
    }

    // Deleting never follows a link out of the data folder.
    void deleteRefusesALinkedFolder()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP("a company's folder: only the folder store keeps its companies in folders");
        QTemporaryDir elsewhere;
        QFile keep(elsewhere.path() + QStringLiteral("/keep.txt"));
        QVERIFY(keep.open(QIODevice::WriteOnly));
        keep.close();
        QVERIFY(QFile::link(elsewhere.path(), root.layout().companyDir(QStringLiteral("リンク"))));
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).remove(QStringLiteral("リンク")), Outcome::Failed);
        QVERIFY(QFile::exists(elsewhere.path() + QStringLiteral("/keep.txt")));
    }

    // A company half made or half deleted by a program that died is in a work folder:
    // never listed, and removed by the next start, but not while a program holds it.
    void leftoverWorkFoldersAreNotCompanies()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP("the work folders of the data folder: only the folder store makes companies in folders");
        const DataLayout layout = root.layout();
        QVERIFY(QDir().mkpath(layout.newCompanyWorkDir(QStringLiteral("甲"))));
        QVERIFY(QDir().mkpath(layout.deletedCompanyWorkDir(QStringLiteral("乙"))));
        const QString held = layout.newCompanyWorkDir(QStringLiteral("丙"));
        QVERIFY(QDir().mkpath(held));
        QLockFile holder(held + QStringLiteral("/work.lock"));
        QVERIFY(holder.tryLock(0));
        QVERIFY(layout.companyList().isEmpty());
        layout.removeLeftoverWorkFolders();
        QVERIFY(!QFileInfo::exists(layout.newCompanyWorkDir(QStringLiteral("甲"))));
        QVERIFY(!QFileInfo::exists(layout.deletedCompanyWorkDir(QStringLiteral("乙"))));
        QVERIFY(QFileInfo::exists(held));
        // The name is free for a new company.
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(layout, prompt).createFromSeed(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(layout.companyList(), QStringList{QStringLiteral("甲")});
        QCOMPARE(QDir(layout.dataDir()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot).size(), 2);
    }

    // A deletion takes the whole folder away at once, and the lock of a company in use stops it.
    void deleteWaitsForNoOtherProgram()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        qputenv("NORMARIS_LOCK_WAIT_MS", "100");
        {
            // Another program: a lock file of another process, or a hold on a connection of its own.
            QLockFile other(root.layout().companyDir(QStringLiteral("甲")) + QStringLiteral("/甲.lock"));
            std::unique_ptr<CompanyHold> held;
            if (TestServer::requested())
                held = CompanyStore::of(root.layout())->hold(QStringLiteral("甲"));
            else
                QVERIFY(other.tryLock(0));
            ScriptedPrompt prompt;
            prompt.answer({true});
            QCOMPARE(CompanyFiles(root.layout(), prompt).remove(QStringLiteral("甲")), Outcome::Stopped);
            QCOMPARE(prompt.lines().last(),
                     kProgramTitle
                         + QStringLiteral(
                             ": 『甲』は他のプログラムが使用中です。そのプログラムで会社を閉じてから、もう一度やり直してください。"));
        }
        qunsetenv("NORMARIS_LOCK_WAIT_MS");
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).remove(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(QDir(root.layout().dataDir()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
        QCOMPARE(companiesOf(root.layout()), QStringList());
    }

    void seedIsNotACompany()
    {
        TestRoot root;
        QVERIFY(QFile::exists(root.layout().seedFile()));
        QVERIFY(companiesOf(root.layout()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(CompanyFilesTest)
#include "tst_companyfiles.moc"
