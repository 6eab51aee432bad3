// Backup and optimisation: where copies land, what they overwrite, and that the
// user's data file is whole after every path, good or bad.

#include "CompanyDump.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/Maintenance.h"
#include "base/AppState.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

int rowCount(const QString &file, const char *table)
{
    return valueIn(file, QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QString::fromUtf8(table))).toInt();
}

// How the optimisation's message names company name: its file, or the company on the server.
QString optimisedPlace(const TestRoot &root, const QString &name)
{
    return TestServer::requested() ? u'『' + name + u'』' : root.layout().companyFile(name);
}

const char *const kFilesOnly = "the company's file itself: only the folder store keeps its companies in files";

} // namespace

class MaintenanceTest : public QObject {
    Q_OBJECT
private slots:
    void backupToTheStandardPlaceOverwrites()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        Maintenance maintenance(root.layout(), prompt);
        prompt.answer({true, true});
        QCOMPARE(maintenance.backup(QStringLiteral("甲")), Outcome::Done);
        const QString copy = root.layout().backupDir(QStringLiteral("甲")) + QStringLiteral("/甲.sqlite");
        writeFile(copy, "stale");
        // A journal that an earlier crash left beside the old backup would roll the new one back.
        writeFile(copy + QStringLiteral("-journal"), "stale journal");
        // Nor may the company's own journal or lock travel into the backup.
        const bool files = !TestServer::requested();
        if (files)
            writeFile(root.layout().companyFile(QStringLiteral("甲")) + QStringLiteral("-wal"), "live");
        QCOMPARE(maintenance.backup(QStringLiteral("甲")), Outcome::Done);
        if (files)
            QFile::remove(root.layout().companyFile(QStringLiteral("甲")) + QStringLiteral("-wal"));
        QCOMPARE(QDir(root.layout().backupDir(QStringLiteral("甲"))).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("甲.sqlite")});
        // A snapshot through SQLite: the same rows, not the same bytes.
        QCOMPARE(valueIn(copy, QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        QCOMPARE(rowCount(copy, "項"),
                 valueInCompany(root.layout(), QStringLiteral("甲"), QStringLiteral("SELECT count(*) FROM 項")).toInt());
        QVERIFY(rowCount(copy, "項") > 0);
        // Each backup ends saying that it was written, and where.
        const QString written = QStringLiteral("バックアップの確認: 『甲』のバックアップを作成しました。\n保存先：")
                                + root.layout().backupDir(QStringLiteral("甲"));
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("バックアップの確認: 『甲』をバックアップします。"), written,
                                              QStringLiteral("バックアップの確認: 『甲』をバックアップします。"), written}));
    }

    void backupIntoAChosenFolder()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        QTemporaryDir target;
        const QString folder = target.path() + QStringLiteral("/新しいフォルダ");
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(Maintenance(root.layout(), prompt).backup(QStringLiteral("甲"), folder), Outcome::Done);
        // The content lands in the folder itself, with no sub-folder named after the company.
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{QStringLiteral("甲.sqlite")});
    }

    void backupRefusesTheDataFolder()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        prompt.answer({true});
        const QString inside = root.layout().companyDir(QStringLiteral("甲")) + QStringLiteral("/sub");
        QCOMPARE(Maintenance(root.layout(), prompt).backup(QStringLiteral("甲"), inside), Outcome::Failed);
        QCOMPARE(prompt.lines().last(),
                 QStringLiteral("バックアップの確認: バックアップに失敗しました。\nバックアップ先にデータフォルダの中は選べません。"));
        QVERIFY(!QDir(inside).exists());
    }

    void backupChecks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("none chosen") << QString() << QStringLiteral("バックアップの確認: バックアップするデータを選択してください。");
        QTest::newRow("unknown") << QStringLiteral("丙") << QStringLiteral("バックアップの確認: 『丙』という会社はありません。");
        QTest::newRow("outside the data folder")
            << QStringLiteral("../x") << QStringLiteral("名前の変更: ファイル名には次の文字は使えません。\n\\ / : , ; * ? \" < > |");
    }
    void backupChecks()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        TestRoot root;
        ScriptedPrompt prompt;
        QCOMPARE(Maintenance(root.layout(), prompt).backup(name), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{message});
    }

    void backupOfTheOpenCompanyClosesIt()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        prompt.answer({true, false});
        QCOMPARE(CompanyFiles(root.layout(), prompt).select(QStringLiteral("甲")), Outcome::Done);
        Maintenance maintenance(root.layout(), prompt);
        QCOMPARE(maintenance.backup(QStringLiteral("甲")), Outcome::Stopped);
        QVERIFY(AppState::instance().isOpenCompany(QStringLiteral("甲")));
        prompt.answer({true});
        QCOMPARE(maintenance.backup(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(prompt.lines().mid(prompt.lines().size() - 2),
                 (QStringList{QStringLiteral("バックアップの確認: 『甲』は現在使用中ですが、閉じてバックアップしますか？"),
                              QStringLiteral("バックアップの確認: 『甲』のバックアップを作成しました。\n保存先：")
                                  + root.layout().backupDir(QStringLiteral("甲"))}));
        QVERIFY(!AppState::instance().isCompanyOpen());
        // Closed for maintenance: the main window offers no command then.
        QVERIFY(AppState::instance().lastClose() == AppState::ClosedBy::Maintenance);
    }

    void compactShrinksAndKeepsTheData()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        if (TestServer::requested()) {
            // The server's own maintenance of the company's tables: the data stays.
            const QStringList before = dumpCompany(root.layout(), QStringLiteral("甲"));
            ScriptedPrompt prompt;
            prompt.answer({true});
            QCOMPARE(Maintenance(root.layout(), prompt).optimise(QStringLiteral("甲")), Outcome::Done);
            QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("データ最適化の確認: 『甲』を最適化します。"),
                                                  QStringLiteral("データ最適化の確認: 『甲』の最適化に成功しました。")}));
            QCOMPARE(dumpCompany(root.layout(), QStringLiteral("甲")), before);
            return;
        }
        const QString file = root.layout().companyFile(QStringLiteral("甲"));
        const int paragraphs = rowCount(file, "項");
        {
            QSqlDatabase db = openCompanyDatabase(file, QStringLiteral("fill"));
            Transaction t(db);
            for (int i = 0; i < 2000; ++i)
                execSql(db, QStringLiteral("INSERT INTO 作成データ (文章) VALUES (?)"), {QString(200, QChar(u'埋'))});
            t.commit();
            execSql(db, QStringLiteral("DELETE FROM 作成データ"));
        }
        closeDatabase(QStringLiteral("fill"));
        const qint64 before = QFileInfo(file).size();
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(Maintenance(root.layout(), prompt).optimise(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("データ最適化の確認: 『甲』を最適化します。"),
                                              QStringLiteral("データ最適化の確認: ") + file + QStringLiteral("の最適化に成功しました。")}));
        QVERIFY2(QFileInfo(file).size() < before, "the file did not shrink");
        QCOMPARE(rowCount(file, "項"), paragraphs);
        QVERIFY(!QFile::exists(workFileOf(file)));
    }

    // The data file is compacted in place: its permissions stay, and a link to it stays a link.
    void compactKeepsPermissionsAndLinks()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP(kFilesOnly);
        root.makeCompany(QStringLiteral("甲"));
        const QString file = root.layout().companyFile(QStringLiteral("甲"));
        QTemporaryDir elsewhere;
        const QString real = elsewhere.path() + QStringLiteral("/real.sqlite");
        QVERIFY(QFile::rename(file, real));
        QVERIFY(QFile::link(real, file));
        QVERIFY(QFile::setPermissions(real, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(Maintenance(root.layout(), prompt).optimise(QStringLiteral("甲")), Outcome::Done);
        QVERIFY(QFileInfo(file).isSymLink());
        QCOMPARE(QFileInfo(file).symLinkTarget(), real);
        const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
                                                | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
        QCOMPARE(QFile::permissions(real) & others, QFileDevice::Permissions());
        QVERIFY(QFile::permissions(real).testFlags(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
        QCOMPARE(valueIn(real, QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
    }

    void compactWithAStaleWorkFileChangesNothing()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP(kFilesOnly);
        root.makeCompany(QStringLiteral("甲"));
        const QString file = root.layout().companyFile(QStringLiteral("甲"));
        const QByteArray original = readFile(file);
        writeFile(workFileOf(file), "left over");
        ScriptedPrompt prompt;
        QVERIFY(!CompactDataFile(prompt, file));
        QCOMPARE(prompt.lines(),
                 QStringList{QStringLiteral("処理の中止: ") + workFileOf(file) + QStringLiteral(" (ﾜｰｸﾌｧｲﾙ) があるので処理できません。")});
        QCOMPARE(prompt.shown().first().icon, Prompt::Icon::Error);
        QCOMPARE(readFile(file), original);
        QCOMPARE(readFile(workFileOf(file)), QByteArray("left over"));
    }

    void aFailedCompactionLeavesTheFileWhole()
    {
        TestRoot root;
        if (TestServer::requested())
            QSKIP(kFilesOnly);
        root.makeCompany(QStringLiteral("甲"));
        const QString file = root.layout().companyFile(QStringLiteral("甲"));
        writeFile(file, QByteArray(8192, 'x')); // no longer a database: the compaction fails
        ScriptedPrompt prompt;
        QVERIFY(CompactDataFile(prompt, file)); // reported, and counted as done
        QCOMPARE(prompt.lines(),
                 QStringList{QStringLiteral("データ最適化失敗: 最適化に失敗しました。もう一度やり直してください。\n"
                                            "「%1」は本システムの会社データではありません。（データベースとして読めません。）")
                                 .arg(file)});
        QCOMPARE(readFile(file), QByteArray(8192, 'x'));
        QVERIFY(!QFile::exists(workFileOf(file)));
    }

    void optimiseTheOpenCompany()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        prompt.answer({true});
        QCOMPARE(CompanyFiles(root.layout(), prompt).select(QStringLiteral("甲")), Outcome::Done);
        prompt.clear();
        Maintenance maintenance(root.layout(), prompt);
        prompt.answer({false});
        QCOMPARE(maintenance.optimise(QStringLiteral("甲")), Outcome::Stopped);
        QVERIFY(AppState::instance().isOpenCompany(QStringLiteral("甲")));
        prompt.answer({true});
        QCOMPARE(maintenance.optimise(QStringLiteral("甲")), Outcome::Done);
        QCOMPARE(prompt.lines().mid(0, 4),
                 (QStringList{QStringLiteral("データ最適化の確認: 『甲』は現在使用中ですが、閉じて最適化しますか？"),
                              QStringLiteral("データ最適化の確認: 『甲』は現在使用中ですが、閉じて最適化しますか？"),
                              QStringLiteral("データ最適化の確認: 最適化の準備ができました。"),
                              QStringLiteral("データ最適化の確認: ") + optimisedPlace(root, QStringLiteral("甲"))
                                  + QStringLiteral("の最適化に成功しました。")}));
        QVERIFY(!AppState::instance().isCompanyOpen());
        QVERIFY(AppState::instance().lastClose() == AppState::ClosedBy::Maintenance);
    }

    void optimiseNeedsAChoice()
    {
        TestRoot root;
        ScriptedPrompt prompt;
        QCOMPARE(Maintenance(root.layout(), prompt).optimise(QString()), Outcome::Stopped);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("データ最適化の確認: 最適化するデータを指定してください。")});
    }
};

QTEST_GUILESS_MAIN(MaintenanceTest)
#include "tst_maintenance.moc"
