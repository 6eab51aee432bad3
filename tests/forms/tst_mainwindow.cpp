// The desktop program offscreen: start, 新規作成, 会社指定, and the five commands.

#include "DialogDriver.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "TestServer.h"
#include "base/AppState.h"
#include "rulebase/CompanyCopy.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/ServerStore.h"
#include "rulebase/forms/frmDBSentaku.h"
#include "rulebase/forms/frmBackup.h"
#include "rulebase/forms/frmKihon.h"
#include "rulebase/forms/frmSaiteki.h"
#include "shell/HelpContext.h"
#include "shell/forms/FormHelpers.h"
#include "app/forms/frmMain01.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <memory>
#include <QDialog>
#include <QFile>
#include <QSet>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace normaris;
using namespace normaris::test;

namespace {

QAction *fileMenu(frmMain01 &main, int index) { return main.findChild<QAction *>(QStringLiteral("mnuFileNo_%1").arg(index)); }

// Writes the company name of the test's store as a company file at path.
QString companyFileOf(const TestRoot &root, const QString &name, const QString &path)
{
    const QString connection = QStringLiteral("test_file_source");
    {
        QSqlDatabase db = CompanyStore::of(root.layout())->open(name, connection, OpenMode::ReadOnly);
        writeCompanyFile(db, path);
    }
    closeDatabase(connection);
    return path;
}

// What a step says when the server has ended the program's connections.
const QString kServerGone =
    QStringLiteral("サーバーが停止しているため、『甲』の処理を続けられません。サーバーの管理者に連絡してください。");

bool commandsShown(frmMain01 &main)
{
    for (int i = 0; i < 5; ++i) {
        if (main.command(i)->isHidden())
            return false;
    }
    return true;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        setUiPrompt(&m_prompt);
        m_prompt.clear();
    }
    void cleanup() { setUiPrompt(nullptr); }

    // Every command works on the open company: whatever closed it, none stays on view.
    void commandsAfterAClose_data()
    {
        QTest::addColumn<int>("why");
        QTest::newRow("main window") << int(AppState::ClosedBy::MainWindow);
        QTest::newRow("backup or optimise") << int(AppState::ClosedBy::Maintenance);
        QTest::newRow("copying") << int(AppState::ClosedBy::Copying);
    }
    void commandsAfterAClose()
    {
        QFETCH(int, why);
        TestRoot root;
        frmMain01 main;
        AppState &state = AppState::instance();
        state.markCompanyOpen(QStringLiteral("甲"));
        QVERIFY(commandsShown(main));
        state.closeCompany(AppState::ClosedBy(why));
        for (int i = 0; i < 5; ++i)
            QVERIFY(main.command(i)->isHidden());
        state.reset();
        QVERIFY(main.command(4)->isHidden());
    }

    void newCompanyThenChooseIt()
    {
        TestRoot root;
        frmMain01 main;
        main.show();
        QCOMPARE(main.windowTitle(), QStringLiteral("ハルモニアワークス【ノルマリス】"));
        QCOMPARE(main.companyPanelText(), QStringLiteral("処理する会社を指定してください"));
        QVERIFY(!main.command(0)->isVisibleTo(&main));

        // 新規作成 with no company open asks nothing and opens the source choice.
        m_prompt.answer({true});
        whenModal(QStringLiteral("frmDBSakuseiSub"), [](QWidget *sub) {
            whenModal(QStringLiteral("frmDBSakusei"), [](QWidget *create) {
                click(create, QStringLiteral("Command4")); // help: the page is there, nothing to report
                create->findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral("株式会社テスト"));
                click(create, QStringLiteral("Command2"));
            });
            click(sub, QStringLiteral("Command2"));
        });
        fileMenu(main, 0)->trigger();
        QCOMPARE(m_prompt.lines(),
                 (QStringList{TestServer::requested()
                                  ? QStringLiteral("ファイル作成の確認: サーバーに『株式会社テスト』のデータを作成します。")
                                  : QStringLiteral(
                                      "ファイル作成の確認: 新しいフォルダ『株式会社テスト』を作成し、その中にデータファイルを作成します。"),
                              QStringLiteral("ファイル作成の確認: 『株式会社テスト』を作成し、開きました。")}));
        QCOMPARE(companiesOf(root.layout()), QStringList{QStringLiteral("株式会社テスト")});
        QCOMPARE(main.companyPanelText(), QStringLiteral("株式会社テスト")); // made and opened
        QVERIFY(commandsShown(main));

        // 会社指定 closes it first, then opens the one chosen and shows the five commands.
        m_prompt.clear();
        m_prompt.answer({true, true});
        whenModal(QStringLiteral("frmDBSentaku"), [](QWidget *choose) {
            auto *list = choose->findChild<QListWidget *>(QStringLiteral("List1"));
            list->setCurrentRow(0);
            click(choose, QStringLiteral("Command2"));
        });
        fileMenu(main, 1)->trigger();
        QCOMPARE(m_prompt.lines(), (QStringList{QStringLiteral("データ指定の確認: 『株式会社テスト』を閉じて、別の会社を指定しますか？"),
                                                QStringLiteral("会社指定の確認: 『株式会社テスト』を指定します。")}));
        QCOMPARE(main.companyPanelText(), QStringLiteral("株式会社テスト"));
        QVERIFY(commandsShown(main));
        QCOMPARE(main.command(2)->text(), QStringLiteral("データをWordへ送る(&E)"));

        // With a company open, 新規作成 asks first; no keeps it open.
        m_prompt.clear();
        m_prompt.answer({false});
        fileMenu(main, 0)->trigger();
        QCOMPARE(m_prompt.lines(),
                 QStringList{QStringLiteral("データ指定の確認: 作業中の『株式会社テスト』を閉じて、新規データを作成しますか？")});
        QCOMPARE(main.companyPanelText(), QStringLiteral("株式会社テスト"));

        // 会社指定 answered yes closes it before the dialog; cancelling leaves no company.
        m_prompt.clear();
        m_prompt.answer({true});
        whenModal(QStringLiteral("frmDBSentaku"), [](QWidget *choose) { click(choose, QStringLiteral("Command3")); });
        fileMenu(main, 1)->trigger();
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("データ指定の確認: 『株式会社テスト』を閉じて、別の会社を指定しますか？")});
        QCOMPARE(main.companyPanelText(), NoCompanyPrompt);
        QVERIFY(!AppState::cn().isOpen());
        QVERIFY(!commandsShown(main));
    }

    void commandsComeBackEnabled()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        frmMain01 main;
        main.show();
        AppState::instance().markCompanyOpen(QStringLiteral("甲"));
        bool disabledWhileOpen = false;
        main.setCommandDialog(0, [&](QWidget *parent) -> QDialog * {
            disabledWhileOpen = !main.command(0)->isEnabled() && !main.command(4)->isEnabled();
            auto *d = new QDialog(parent);
            QTimer::singleShot(0, d, &QDialog::accept);
            return d;
        });
        main.command(0)->click();
        QVERIFY(disabledWhileOpen);
        for (int i = 0; i < 5; ++i)
            QVERIFY(main.command(i)->isEnabled());
    }

    void quitAsksFirst()
    {
        TestRoot root;
        frmMain01 main;
        main.show();
        m_prompt.answer({false});
        fileMenu(main, 8)->trigger();
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("終了の確認: 終了しますか？")});
        QVERIFY(main.isVisible());
    }

    // The status bar names the store beside the open company, and so does the company
    // chooser's title; 持ち出し and 持ち帰り are offered on the server only, and say why not.
    void theStoreIsNamed()
    {
        TestRoot root;
        frmMain01 main;
        main.show();
        const QString title =
            TestServer::requested()
                ? QStringLiteral("サーバー（%1）").arg(root.layout().store)
                : QStringLiteral("会社データフォルダ（%1）").arg(QDir::toNativeSeparators(root.path() + QStringLiteral("/Data")));
        QCOMPARE(main.storePanelText(), title);
        QCOMPARE(CompanyStore::of(root.layout())->title(), title);
        QCOMPARE(main.companyPanelText(), NoCompanyPrompt);
        frmDBSentaku chooser;
        QCOMPARE(chooser.windowTitle(), QStringLiteral("会社指定 － ") + title);

        const QStringList captions = {QStringLiteral("会社データの読込(&I)..."), QStringLiteral("持ち出し(&T)..."),
                                      QStringLiteral("持ち帰り(&R)...")};
        for (int i = 0; i < 3; ++i) {
            QAction *action = fileMenu(main, 10 + i);
            QCOMPARE(action->text(), captions[i]);
            QCOMPARE(action->isEnabled(), i == 0 || TestServer::requested());
            const QString why = QStringLiteral("持ち出しと持ち帰りは、会社を事務所のサーバーに置いているときに使えます。");
            QCOMPARE(action->toolTip() == why, i > 0 && !TestServer::requested());
        }
    }

    // 会社データの読込: the file first, the name its base name until the user types another;
    // the dialog asks for what is missing before the step.
    void importFileDialog()
    {
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        QTemporaryDir away;
        const QString file = companyFileOf(root, QStringLiteral("甲"), away.filePath(QStringLiteral("乙社.sqlite")));
        frmMain01 main;
        main.show();
        whenModal(QStringLiteral("frmDBYomikomi"), [&](QWidget *dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("会社データの読込"));
            click(dialog, QStringLiteral("cmdOK"));
            QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("会社データの読込: 会社データのファイルを指定してください。")});
            type(dialog, QStringLiteral("File1"), away.filePath(QStringLiteral("丙.sqlite")));
            QCOMPARE(find<QLineEdit>(dialog, QStringLiteral("Text1"))->text(), QStringLiteral("丙"));
            type(dialog, QStringLiteral("File1"), QDir::toNativeSeparators(file));
            QCOMPARE(find<QLineEdit>(dialog, QStringLiteral("Text1"))->text(), QStringLiteral("乙社"));
            m_prompt.clear();
            m_prompt.answer({true});
            click(dialog, QStringLiteral("cmdOK"));
            QVERIFY(!dialog->isVisible());
        });
        fileMenu(main, 10)->trigger();
        QCOMPARE(m_prompt.lines(), (QStringList{QStringLiteral("会社データの読込: ファイル「%1」を『乙社』として読み込みます。").arg(file),
                                                QStringLiteral("会社データの読込: 『乙社』を読み込みました。")}));
        QCOMPARE(companiesOf(root.layout()), (QStringList{QStringLiteral("乙社"), QStringLiteral("甲")}));
        // バックアップ and 最適化 offer the companies of the store.
        frmBackup backup;
        QCOMPARE(find<QComboBox>(&backup, QStringLiteral("Combo1"))->count(), 2);
        frmSaiteki optimise;
        QCOMPARE(find<QListWidget>(&optimise, QStringLiteral("List1"))->count(), 2);

        // A name of the user's own stays when the file changes.
        whenModal(QStringLiteral("frmDBYomikomi"), [&](QWidget *dialog) {
            type(dialog, QStringLiteral("Text1"), QStringLiteral("丁"));
            type(dialog, QStringLiteral("File1"), file);
            QCOMPARE(find<QLineEdit>(dialog, QStringLiteral("Text1"))->text(), QStringLiteral("丁"));
            click(dialog, QStringLiteral("cmdCancel"));
        });
        fileMenu(main, 10)->trigger();
        QCOMPARE(companiesOf(root.layout()).size(), 2);
    }

    // 持ち出し of the open company closes it after a question; the company taken out opens
    // for reading, and 持ち帰り, offering the open company, puts the file back.
    void checkoutAndCheckinDialogs()
    {
        TestRoot root;
        if (!TestServer::requested())
            QSKIP("持ち出し and 持ち帰り are offered only on the server store");
        root.makeCompany(QStringLiteral("乙"));
        root.openCompany(QStringLiteral("甲"));
        QTemporaryDir away;
        const QString file = away.filePath(QStringLiteral("甲.sqlite"));
        frmMain01 main;
        main.show();
        whenModal(QStringLiteral("frmMochidashi"), [&](QWidget *dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("持ち出し"));
            auto *company = find<QComboBox>(dialog, QStringLiteral("Combo1"));
            QCOMPARE(company->currentText(), QStringLiteral("甲"));
            QCOMPARE(company->count(), 2);
            click(dialog, QStringLiteral("cmdOK"));
            QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("持ち出し: 持ち出し先のファイルを指定してください。")});
            type(dialog, QStringLiteral("File1"), file);
            company->setCurrentIndex(-1);
            m_prompt.clear();
            click(dialog, QStringLiteral("cmdOK"));
            QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("持ち出し: 会社を選択してください。")});
            // No keeps the company open and the dialog up.
            company->setCurrentText(QStringLiteral("甲"));
            m_prompt.clear();
            m_prompt.answer({false});
            click(dialog, QStringLiteral("cmdOK"));
            QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("持ち出し: 『甲』は現在使用中ですが、閉じて持ち出ししますか？")});
            QCOMPARE(main.companyPanelText(), QStringLiteral("甲"));
            m_prompt.clear();
            m_prompt.answer({true, true});
            click(dialog, QStringLiteral("cmdOK"));
            QVERIFY(!dialog->isVisible());
        });
        fileMenu(main, 11)->trigger();
        QCOMPARE(m_prompt.lines(),
                 (QStringList{
                     QStringLiteral("持ち出し: 『甲』は現在使用中ですが、閉じて持ち出ししますか？"),
                     QStringLiteral("持ち出し: 『甲』をファイル「%1」に持ち出します。持ち帰るまで、サーバーでは変更できません。").arg(file),
                     QStringLiteral("持ち出し: 『甲』を持ち出しました。\n保存先：") + file}));
        QCOMPARE(main.companyPanelText(), NoCompanyPrompt);
        QVERIFY(QFileInfo::exists(file));
        const std::optional<TakenOut> mark = ServerStore(root.layout()).takenOut(QStringLiteral("甲"));
        QVERIFY(mark.has_value());

        // 会社指定 opens it, and says for how long it is for reading only.
        m_prompt.clear();
        m_prompt.answer({true});
        whenModal(QStringLiteral("frmDBSentaku"), [](QWidget *choose) {
            find<QListWidget>(choose, QStringLiteral("List1"))->setCurrentRow(1);
            click(choose, QStringLiteral("Command2"));
        });
        fileMenu(main, 1)->trigger();
        QCOMPARE(m_prompt.lines(), (QStringList{QStringLiteral("会社指定の確認: 『甲』を指定します。"),
                                                QStringLiteral("会社指定の確認: 『甲』は持ち出し中です（持ち出した人：%1、日時：%2）。\n"
                                                               "読むことと印刷はできますが、持ち帰るまで変更はできません。")
                                                    .arg(mark->by, mark->at)}));
        QCOMPARE(main.companyPanelText(), QStringLiteral("甲"));

        m_prompt.clear();
        whenModal(QStringLiteral("frmMochikaeri"), [&](QWidget *dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("持ち帰り"));
            QCOMPARE(find<QComboBox>(dialog, QStringLiteral("Combo1"))->currentText(), QStringLiteral("甲"));
            type(dialog, QStringLiteral("File1"), file);
            m_prompt.answer({true, true});
            click(dialog, QStringLiteral("cmdOK"));
            QVERIFY(!dialog->isVisible());
        });
        fileMenu(main, 12)->trigger();
        QCOMPARE(m_prompt.lines(),
                 (QStringList{QStringLiteral("持ち帰り: 『甲』は現在使用中ですが、閉じて持ち帰りしますか？"),
                              QStringLiteral("持ち帰り: 『甲』をファイル「%1」の内容で置き換え、持ち出しを終わります。").arg(file),
                              QStringLiteral("持ち帰り: 『甲』を持ち帰りました。")}));
        QCOMPARE(main.companyPanelText(), NoCompanyPrompt);
        QVERIFY(!ServerStore(root.layout()).takenOut(QStringLiteral("甲")).has_value());
    }

    // The server going away while a company is open (the server ends the program's
    // connections): the next step says so in words, what was written stays, the company
    // still closes, and once the server is back the program goes on without a restart.
    void serverGoesAway()
    {
        TestRoot root;
        if (!TestServer::requested())
            QSKIP("the server going away is a matter of the server store only");
        root.openCompany(QStringLiteral("甲"));
        frmMain01 main;
        main.show();
        // What the user saved before stays.
        m_prompt.answer({true});
        frmKihon saved(&main);
        type(&saved, QStringLiteral("Text1_0"), QStringLiteral("株式会社テスト"));
        click(&saved, QStringLiteral("Command1"));
        QCOMPARE(saved.result(), int(QDialog::Accepted));
        auto form = std::make_unique<frmKihon>(&main);
        const QString store = root.layout().store;
        TestServer::value(store, QStringLiteral("SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity "
                                                "WHERE datname = current_database() AND pid <> pg_backend_pid()"));
        m_prompt.clear();
        m_prompt.answer({true});
        type(form.get(), QStringLiteral("Text1_2"), QStringLiteral("東京都"));
        click(form.get(), QStringLiteral("Command1"));
        QCOMPARE(m_prompt.lines(), (QStringList{QStringLiteral("更新の確認: 内容を変更します。\nよろしいですか。"),
                                                kProgramTitle + QStringLiteral(": ") + kServerGone}));
        QVERIFY(form->result() != QDialog::Accepted);
        form.reset();

        // 終了 closes the company all the same.
        AppState::instance().closeCompany(AppState::ClosedBy::MainWindow);
        QCOMPARE(main.companyPanelText(), NoCompanyPrompt);
        const QString schema =
            TestServer::value(store, QStringLiteral("SELECT スキーマ FROM normaris.会社 WHERE 名前 = ?"), {QStringLiteral("甲")})
                .toString();
        QCOMPARE(TestServer::value(store, QStringLiteral("SELECT 事業所名 FROM %1.企業情報").arg(schema)).toString(),
                 QStringLiteral("株式会社テスト"));

        // 会社指定 reaches the server again.
        m_prompt.clear();
        m_prompt.answer({true});
        whenModal(QStringLiteral("frmDBSentaku"), [](QWidget *choose) {
            find<QListWidget>(choose, QStringLiteral("List1"))->setCurrentRow(0);
            click(choose, QStringLiteral("Command2"));
        });
        fileMenu(main, 1)->trigger();
        QCOMPARE(m_prompt.lines(), QStringList{QStringLiteral("会社指定の確認: 『甲』を指定します。")});
        QCOMPARE(main.companyPanelText(), QStringLiteral("甲"));
    }

    void everyDialogHasItsHelpPage()
    {
        TestRoot root;
        const QHash<QString, int> &contexts = helpContexts();
        QCOMPARE(contexts.size(), 36);
        // One page per dialog, but for the three forms of the new company's wizard.
        QSet<int> numbers;
        for (int context : contexts)
            numbers.insert(context);
        QCOMPARE(numbers.size(), contexts.size() - 2);
        for (auto it = contexts.begin(); it != contexts.end(); ++it) {
            QFile page(helpPagePath(root.path(), it.value()));
            QVERIFY2(page.open(QIODevice::ReadOnly), qUtf8Printable(it.key()));
            const QString html = QString::fromUtf8(page.readAll());
            QVERIFY2(html.contains(QStringLiteral("<h1>")) && html.contains(QStringLiteral("lang=\"ja\"")), qUtf8Printable(it.key()));
        }
    }

    void windowDoesNotShrinkBelowItsLeast()
    {
        TestRoot root;
        frmMain01 main;
        main.show();
        main.resize(300, 200);
        QCOMPARE(main.size(), QSize(768, 536));
    }

private:
    ScriptedPrompt m_prompt;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
