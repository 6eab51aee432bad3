// The dictionary's dialogs offscreen: the whole path from the navigator to a 前文 of
// the user's own, by the mouse, and the navigator's refusals.

#include "../forms/FormSession.h"
#include "base/Database.h"
#include "dictionary/forms/frmDicsentaku.h"
#include "dictionary/forms/frmDicsentakuSub.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

using namespace normaris;
using namespace normaris::test;

namespace {

template<class T>
T *find(QWidget *form, const QString &name)
{
    auto *w = form->findChild<T *>(name);
    if (!w)
        qFatal("%s has no %s", qPrintable(form->objectName()), qPrintable(name));
    return w;
}

void click(QWidget *form, const QString &button) { find<QPushButton>(form, button)->click(); }
void type(QWidget *form, const QString &box, const QString &text) { find<QLineEdit>(form, box)->setText(text); }

struct Step {
    QString form;
    std::function<void(QWidget *)> act;
};

// Runs start, which opens the first modal form, and plays each step on the modal form
// that comes up next, in order. A step runs from a timer of its own, so that a step
// that opens a further modal form leaves the watch free to play the next one. A form
// out of turn, or one left open for twenty seconds, ends the flow.
int play(const std::function<void()> &start, const QList<Step> &steps)
{
    int played = 0;
    QPointer<QWidget> last;
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto *form = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!form || (form == last && clock.elapsed() < 20000))
            return;
        if (form == last || played >= steps.size() || form->objectName() != steps[played].form || QTest::currentTestFailed()) {
            qWarning("unexpected form %s at step %d", qPrintable(form->objectName()), played);
            form->done(QDialog::Rejected);
            return;
        }
        last = form;
        clock.restart();
        const auto act = steps[played++].act;
        QTimer::singleShot(0, form, [act, form] { act(form); });
    });
    timer.start();
    start();
    return played;
}

// The focus as the Tab key brings it, whether or not the window is active.
void focusByTab(QWidget *w)
{
    QFocusEvent event(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(w, &event);
}

} // namespace

class DictionaryFormsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_session = std::make_unique<FormSession>(); }
    void cleanup() { m_session.reset(); }

    void addADocumentAndItsPreamble()
    {
        ScriptedPrompt &prompt = m_session->prompt;
        prompt.answer({true, true, true});
        frmDicsentaku navigator;
        navigator.show();
        click(&navigator, QStringLiteral("Command1"));
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("文章形式の指定: 文章形式を指定してください。")});
        prompt.clear();
        prompt.answer({true, true, true});
        find<QRadioButton>(&navigator, QStringLiteral("Option1_0"))->setChecked(true);
        const QList<Step> steps = {
            {QStringLiteral("frmDicsentakuSub"),
             [](QWidget *sub) {
                 QVERIFY(find<QRadioButton>(sub, QStringLiteral("Option2_0"))->isChecked());
                 QVERIFY(find<QComboBox>(sub, QStringLiteral("DataCombo1"))->isHidden());
                 click(sub, QStringLiteral("Command1"));
                 click(sub, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmDic01"),
             [](QWidget *master) {
                 click(master, QStringLiteral("cmdAdd"));
                 QCOMPARE(find<QLabel>(master, QStringLiteral("lblStatus"))->text(), QStringLiteral("ﾚｺｰﾄﾞを追加します。"));
                 QVERIFY(find<QPushButton>(master, QStringLiteral("cmdAdd"))->isHidden());
                 type(master, QStringLiteral("txtFields_0"), QStringLiteral("75"));
                 type(master, QStringLiteral("txtFields_1"), QStringLiteral("安全衛生規程"));
                 type(master, QStringLiteral("txtFields_2"), QStringLiteral("安全衛生規程"));
                 find<QRadioButton>(master, QStringLiteral("Option1_0"))->setChecked(true);
                 click(master, QStringLiteral("cmdUpdate"));
                 QVERIFY(!find<QPushButton>(master, QStringLiteral("cmdAdd"))->isHidden());
                 click(master, QStringLiteral("cmdLast"));
                 QCOMPARE(find<QLineEdit>(master, QStringLiteral("txtFields_0"))->text(), QStringLiteral("75"));
                 QVERIFY(find<QLabel>(master, QStringLiteral("Label6"))->isHidden());
                 click(master, QStringLiteral("Command2"));
                 // Back from the editor: the document has its 前文 now.
                 QVERIFY(!find<QLabel>(master, QStringLiteral("Label6"))->isHidden());
                 click(master, QStringLiteral("cmdClose"));
             }},
            {QStringLiteral("frmDic02_2"),
             [](QWidget *editor) {
                 QVERIFY(!find<QRadioButton>(editor, QStringLiteral("Option2_0"))->isEnabled());
                 type(editor, QStringLiteral("Text1_0"), QStringLiteral("この規程は、"));
                 find<QRadioButton>(editor, QStringLiteral("Option4_1"))->click();
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label5_1"))->text(), QStringLiteral("未"));
                 QVERIFY(find<QLineEdit>(editor, QStringLiteral("Text1_1"))->isHidden());
                 click(editor, QStringLiteral("Command4_1"));
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label8_1"))->text(), QStringLiteral("0001"));
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label5_1"))->text(), QStringLiteral("既"));
                 click(editor, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmDic_kihongoku"),
             [](QWidget *chooser) {
                 auto *choice = find<QComboBox>(chooser, QStringLiteral("Combo1"));
                 QCOMPARE(choice->currentIndex(), -1);
                 choice->setCurrentIndex(choice->findText(QStringLiteral("事業場名")));
                 click(chooser, QStringLiteral("Command1"));
             }},
        };
        QCOMPARE(play([&] { click(&navigator, QStringLiteral("Command1")); }, steps), 4);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("変更の確認: 処理する種別を変更しますか？"),
                                              QStringLiteral("確認: 更新しました。フォームを閉じますか？"),
                                              QStringLiteral("更新完了: データ更新が完了しました。\nフォームを閉じますか？")}));
        RowReader q =
            execSql(AppState::cn(),
                    QStringLiteral("SELECT 結合 || '|' || 前文 || '|' || 結合種別 FROM 前文 WHERE 文章形式Code = '1' AND 規程Code = '75' "
                                   "ORDER BY CAST(結合 AS INTEGER)"));
        QStringList rows;
        while (q.next())
            rows << q.value(0).toString();
        QCOMPARE(rows, (QStringList{QStringLiteral("1|この規程は、|0"), QStringLiteral("2|☆0001☆|3")}));
    }

    void navigatorRefusesAnUnsetPicker()
    {
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDicsentakuSub sub;
        sub.show();
        find<QRadioButton>(&sub, QStringLiteral("Option2_2"))->click();
        QVERIFY(!find<QComboBox>(&sub, QStringLiteral("DataCombo2"))->isHidden());
        QVERIFY(find<QComboBox>(&sub, QStringLiteral("DataCombo3"))->isHidden());
        QCOMPARE(find<QLabel>(&sub, QStringLiteral("Label11"))->text(),
                 QStringLiteral("「規則・規程・労使協定」と「章」を指定してください"));
        click(&sub, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("未指定: 「規則・規程・労使協定」を指定してください")});
        // The pickers fill as the focus comes to them, and a change above empties those below.
        auto *documents = find<QComboBox>(&sub, QStringLiteral("DataCombo1"));
        auto *chapters = find<QComboBox>(&sub, QStringLiteral("DataCombo2"));
        focusByTab(documents);
        documents->setCurrentIndex(documents->findData(QStringLiteral("01")));
        QCOMPARE(find<QLabel>(&sub, QStringLiteral("Label7_0"))->text(), QStringLiteral("01"));
        focusByTab(chapters);
        QVERIFY(chapters->count() > 0);
        chapters->setCurrentIndex(0);
        documents->setCurrentIndex(documents->findData(QStringLiteral("02")));
        QCOMPARE(chapters->count(), 0);
        QCOMPARE(find<QLabel>(&sub, QStringLiteral("Label7_1"))->text(), QString());
    }

private:
    std::unique_ptr<FormSession> m_session;
};

QTEST_MAIN(DictionaryFormsTest)
#include "tst_dictforms.moc"
