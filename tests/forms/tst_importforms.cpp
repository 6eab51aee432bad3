// 他社データ取込 offscreen: the three steps walked to an import and back out, and a
// source that is refused keeping the wizard on its first step.

#include "DialogDriver.h"
#include "FormSession.h"
#include "TestServer.h"
#include "UserEntries.h"
#include "import/SourceCompany.h"
#include "import/forms/frmCopy01.h"
#include "app/forms/frmMain01.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kSource = QStringLiteral("乙");

// Picks the entry of code in the list, as the user does: open it, choose, close.
void pick(QWidget *form, const QString &list, const QString &code)
{
    auto *combo = form->findChild<QComboBox *>(list);
    QVERIFY(combo);
    combo->showPopup();
    const int index = combo->findData(code);
    QVERIFY2(index >= 0, qUtf8Printable(list + u' ' + code));
    combo->setCurrentIndex(index);
    combo->hidePopup();
    emit combo->activated(index);
}

} // namespace

class ImportFormsTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_session = std::make_unique<FormSession>();
        m_session->root.makeCompany(kSource);
        addUserChain(m_session->root.layout(), kSource);
    }
    void cleanup() { m_session.reset(); }

    void walksTheThreeStepsToAnImport()
    {
        ScriptedPrompt &prompt = m_session->prompt;
        prompt.answer({true});
        frmMain01 main;
        main.show();
        QVERIFY(main.command(4)->isVisible());
        const int played =
            play([&] { main.command(4)->click(); },
                 {
                     {QStringLiteral("frmCopy01"),
                      [&](QWidget *form) {
                          // By the keyboard: the list, then Enter on the default 次へ.
                          auto *list = form->findChild<QListWidget *>(QStringLiteral("List1"));
                          list->setFocus();
                          list->setCurrentItem(list->findItems(kSource, Qt::MatchExactly).value(0));
                          QTest::keyClick(form, Qt::Key_Return);
                      }},
                     {QStringLiteral("frmCopy02"),
                      [&](QWidget *form) {
                          click(form, QStringLiteral("Command1")); // no style yet
                          QCOMPARE(prompt.lines().last(), QStringLiteral("文章形式の指定: 文章形式を指定してください。"));
                          click(form, QStringLiteral("Option1_0"));
                          click(form, QStringLiteral("Command1"));
                      }},
                     {QStringLiteral("frmCopy03"),
                      [&](QWidget *form) {
                          QCOMPARE(form->findChild<QLabel *>(QStringLiteral("Label10"))->text(), QStringLiteral("である調"));
                          click(form, QStringLiteral("Option2_2"));
                          QCOMPARE(form->findChild<QLabel *>(QStringLiteral("Label11"))->text(),
                                   QStringLiteral("「規則・規程・労使協定」～「条」を指定してください"));
                          QVERIFY(form->findChild<QComboBox *>(QStringLiteral("DataCombo3"))->isVisibleTo(form));
                          QVERIFY(!form->findChild<QComboBox *>(QStringLiteral("DataCombo4"))->isVisibleTo(form));
                          // A list whose parent is not chosen stays shut and says which.
                          form->findChild<QComboBox *>(QStringLiteral("DataCombo2"))->showPopup();
                          QCOMPARE(prompt.lines().last(), QStringLiteral("未指定: 「規則・規程・労使協定」を指定してください"));
                          click(form, QStringLiteral("Command1"));
                          QCOMPARE(prompt.lines().last(), QStringLiteral("未指定: 「規則・規程・労使協定」を指定してください"));
                          pick(form, QStringLiteral("DataCombo1"), QStringLiteral("75"));
                          QCOMPARE(form->findChild<QLabel *>(QStringLiteral("Label7_0"))->text(), QStringLiteral("75"));
                          pick(form, QStringLiteral("DataCombo2"), QStringLiteral("70"));
                          pick(form, QStringLiteral("DataCombo3"), QStringLiteral("7001"));
                          // The current company lacks document 75: the parent test refuses.
                          click(form, QStringLiteral("Command1"));
                          QCOMPARE(prompt.lines().last(),
                                   QStringLiteral("処理不可: 自社データに章Code：70が存在しないためデータ取込を中止します。"));
                          // The document itself goes in, and the step stays for the next one.
                          click(form, QStringLiteral("Option2_0"));
                          QCOMPARE(form->findChild<QComboBox *>(QStringLiteral("DataCombo1"))->currentIndex(), -1);
                          pick(form, QStringLiteral("DataCombo1"), QStringLiteral("75"));
                          click(form, QStringLiteral("Command1"));
                          QCOMPARE(prompt.lines().last(), QStringLiteral("処理完了: データ取込処理が完了しました。"));
                          QVERIFY(form->isVisible());
                          QVERIFY(!form->findChild<QPushButton *>(QStringLiteral("cmdRenumber"))->isVisible());
                          click(form, QStringLiteral("cmdBack"));
                      }},
                     // 戻る goes back one step, and the step before keeps its place.
                     {QStringLiteral("frmCopy02"), [](QWidget *form) { click(form, QStringLiteral("cmdBack")); }},
                     {QStringLiteral("frmCopy01"), [](QWidget *form) { click(form, QStringLiteral("Command3")); }},
                 });
        QCOMPARE(played, 5);
        QVERIFY(!SourceCompany::isOpen());
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 条 WHERE Code = '7001'")).toInt(), 1);
    }

    // 閉じる on a later step closes the whole wizard; every step after the first has 戻る,
    // and each opens where the step before it stands.
    void closingALaterStepClosesTheWizard()
    {
        frmMain01 main;
        main.show();
        QRect firstPlace;
        const int played = play([&] { main.command(4)->click(); },
                                {
                                    {QStringLiteral("frmCopy01"),
                                     [&](QWidget *form) {
                                         firstPlace = form->geometry();
                                         QVERIFY(!form->findChild<QPushButton *>(QStringLiteral("Command1"))->isEnabled()); // 戻る
                                         auto *list = form->findChild<QListWidget *>(QStringLiteral("List1"));
                                         list->setCurrentItem(list->findItems(kSource, Qt::MatchExactly).value(0));
                                         m_session->prompt.answer({true});
                                         click(form, QStringLiteral("Command2"));
                                     }},
                                    {QStringLiteral("frmCopy02"),
                                     [&](QWidget *form) {
                                         QCOMPARE(form->geometry().topLeft(), firstPlace.topLeft());
                                         QVERIFY(form->findChild<QPushButton *>(QStringLiteral("cmdBack"))->isEnabled());
                                         click(form, QStringLiteral("Option1_0"));
                                         click(form, QStringLiteral("Command1"));
                                     }},
                                    {QStringLiteral("frmCopy03"),
                                     [&](QWidget *form) {
                                         QCOMPARE(form->geometry().topLeft(), firstPlace.topLeft());
                                         click(form, QStringLiteral("Command2"));
                                     }},
                                });
        QCOMPARE(played, 3);
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(!SourceCompany::isOpen());
    }

    void aRefusedSourceStaysOnStepOne()
    {
        if (TestServer::requested())
            QSKIP("A source file of its own kind: only the folder store keeps a company in a file");
        execIn(m_session->root.layout().companyFile(kSource), QStringLiteral("CREATE VIEW 一覧 AS SELECT * FROM 章"));
        ScriptedPrompt &prompt = m_session->prompt;
        prompt.answer({true});
        frmCopy01 first;
        first.show();
        auto *list = first.findChild<QListWidget *>(QStringLiteral("List1"));
        click(&first, QStringLiteral("Command2"));
        QCOMPARE(prompt.lines().last(), QStringLiteral("会社指定の確認: 処理する会社を指定してください。"));
        list->setCurrentItem(list->findItems(kSource, Qt::MatchExactly).value(0));
        click(&first, QStringLiteral("Command2"));
        QCOMPARE(prompt.lines().last(),
                 QStringLiteral("会社指定の確認: 『乙』のデータは取り込めません。ビュー「一覧」を含むファイルは取り込めません。"));
        QVERIFY(first.isVisible());
        QVERIFY(!SourceCompany::isOpen());
    }

private:
    std::unique_ptr<FormSession> m_session;
};

QTEST_MAIN(ImportFormsTest)
#include "tst_importforms.moc"
