// The desktop program offscreen: start, 新規作成, 会社指定, and the five commands.

#include "DialogDriver.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "base/AppState.h"
#include "shell/HelpContext.h"
#include "shell/forms/FormHelpers.h"
#include "app/forms/frmMain01.h"

#include <QAction>
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
                 (QStringList{
                     QStringLiteral("ファイル作成の確認: 新しいフォルダ『株式会社テスト』を作成し、その中にデータファイルを作成します。"),
                     QStringLiteral("ファイル作成の確認: 『株式会社テスト』を作成し、開きました。")}));
        QCOMPARE(root.layout().companyList(), QStringList{QStringLiteral("株式会社テスト")});
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

    void everyDialogHasItsHelpPage()
    {
        TestRoot root;
        const QHash<QString, int> &contexts = helpContexts();
        QCOMPARE(contexts.size(), 33);
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
