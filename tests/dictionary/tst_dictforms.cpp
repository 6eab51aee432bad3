// The dictionary's dialogs offscreen: the whole path from the navigator to a 前文 of
// the user's own, by the mouse, and the navigator's refusals; the level editors from
// a new article to its exported text.

#include "../forms/FormSession.h"
#include "DialogDriver.h"
#include "base/Database.h"
#include "composition/Panels.h"
#include "composition/PanelStep.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "fileformats/TextOutput.h"
#include "versions/VersionOutput.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/EffectiveDates.h"
#include "dictionary/forms/frmDic01.h"
#include "dictionary/forms/frmDic03.h"
#include "dictionary/forms/frmDicsentaku.h"
#include "dictionary/forms/frmDicsentakuSub.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace normaris;
using namespace normaris::test;

namespace {

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

    // The keys of a record form while browsing, from the first record.
    void documentMasterKeys_data()
    {
        QTest::addColumn<QList<QKeyCombination>>("keys");
        QTest::addColumn<QString>("record"); // "last" for the last record
        QTest::newRow("End") << QList<QKeyCombination>{Qt::Key_End} << QStringLiteral("last");
        QTest::newRow("End, Home") << QList<QKeyCombination>{Qt::Key_End, Qt::Key_Home} << QStringLiteral("1");
        QTest::newRow("Down") << QList<QKeyCombination>{Qt::Key_Down} << QStringLiteral("2");
        QTest::newRow("Page Down twice") << QList<QKeyCombination>{Qt::Key_PageDown, Qt::Key_PageDown} << QStringLiteral("3");
        QTest::newRow("Ctrl+Down") << QList<QKeyCombination>{Qt::ControlModifier | Qt::Key_Down} << QStringLiteral("last");
        QTest::newRow("Up at the first stays") << QList<QKeyCombination>{Qt::Key_Up} << QStringLiteral("1");
        QTest::newRow("Ctrl+Up after End") << QList<QKeyCombination>{Qt::Key_End, Qt::ControlModifier | Qt::Key_Up} << QStringLiteral("1");
    }
    void documentMasterKeys()
    {
        QFETCH(QList<QKeyCombination>, keys);
        QFETCH(QString, record);
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDic01 master;
        master.show();
        for (QKeyCombination key : keys)
            QTest::keyClick(&master, key.key(), key.keyboardModifiers());
        const int documents = scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 規程 WHERE 文章形式Code = '1'")).toInt();
        const QString expected = record == u"last" ? QString::number(documents) : record;
        QCOMPARE(find<QLabel>(&master, QStringLiteral("lblStatus"))->text(), QStringLiteral("Record: ") + expected);
    }

    // Escape closes a record form while browsing, never in the middle of an edit.
    void escapeWaitsForTheEdit()
    {
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDic01 master;
        master.show();
        click(&master, QStringLiteral("cmdEdit"));
        QTest::keyClick(&master, Qt::Key_Escape);
        QVERIFY(master.isVisible());
        click(&master, QStringLiteral("cmdCancel"));
        QTest::keyClick(&master, Qt::Key_Escape);
        QVERIFY(!master.isVisible());
    }

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

    // The grids show their flags as check marks, not as words.
    void flagsAreCheckMarks()
    {
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDic01 master;
        const QAbstractItemModel *model = find<QTableView>(&master, QStringLiteral("DataGrid1"))->model();
        QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("01"));
        QCOMPARE(model->index(0, 2).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked)); // 変更フラグ
        QCOMPARE(model->index(0, 4).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));   // 選択フラグ: on the list
        QVERIFY(model->index(0, 4).data().toString().isEmpty());
        QVERIFY(!(model->flags(model->index(0, 4)) & Qt::ItemIsUserCheckable));
    }

    // Back from an editor, the focus comes back to a picker with the window: no focus
    // event fills it, so it is filled as the user opens it.
    void aPickerThatHasTheFocusFillsAsItOpens()
    {
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDicsentakuSub sub;
        sub.show();
        find<QRadioButton>(&sub, QStringLiteral("Option2_2"))->click();
        auto *documents = find<QComboBox>(&sub, QStringLiteral("DataCombo1"));
        auto *chapters = find<QComboBox>(&sub, QStringLiteral("DataCombo2"));
        focusByTab(documents);
        documents->setCurrentIndex(documents->findData(QStringLiteral("01")));
        sub.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&sub));
        chapters->setFocus(Qt::ActiveWindowFocusReason);
        QVERIFY(chapters->hasFocus());
        QCOMPARE(chapters->count(), 0);
        QTest::mousePress(chapters, Qt::LeftButton);
        QVERIFY(chapters->count() > 0);
        chapters->hidePopup();
        QVERIFY(m_session->prompt.lines().isEmpty());
    }

    // The user's own article, from the navigator to the exported text: 条 7001 under a
    // chapter of the work rules, its 項 with a text, a new word and a reference, then
    // composed after 条 0016, built, substituted and exported.
    void addAnArticleWithAWordAndAReference()
    {
        ScriptedPrompt &prompt = m_session->prompt;
        AppState::instance().CurBunshoKeishikiCode = QStringLiteral("1");
        frmDicsentakuSub sub;
        sub.show();
        // The position: a level, then its pickers from the top, as the Tab key fills them.
        const auto choose = [&sub](int level, const QStringList &codes) {
            find<QRadioButton>(&sub, QStringLiteral("Option2_%1").arg(level))->click();
            for (int i = 0; i < codes.size(); ++i) {
                auto *picker = find<QComboBox>(&sub, QStringLiteral("DataCombo%1").arg(i + 1));
                focusByTab(picker);
                picker->setCurrentIndex(picker->findData(codes[i]));
                QCOMPARE(find<QLabel>(&sub, QStringLiteral("Label7_%1").arg(i))->text(), codes[i]);
            }
        };
        choose(2, {QStringLiteral("01"), QStringLiteral("03")});
        const QList<Step> article = {
            {QStringLiteral("frmDic03"),
             [](QWidget *editor) {
                 QCOMPARE(editor->windowTitle(), QStringLiteral("「条」の設定"));
                 click(editor, QStringLiteral("cmdAdd"));
                 type(editor, QStringLiteral("txtFields_0"), QStringLiteral("7001"));
                 type(editor, QStringLiteral("txtFields_1"), QStringLiteral("テレワーク勤務"));
                 type(editor, QStringLiteral("txtFields_2"), QStringLiteral("テレワーク勤務"));
                 click(editor, QStringLiteral("cmdUpdate"));
                 QCOMPARE(find<QLineEdit>(editor, QStringLiteral("txtFields_0"))->text(), QStringLiteral("7001"));
                 QVERIFY(!find<QPushButton>(editor, QStringLiteral("cmdAdd"))->isHidden());
                 click(editor, QStringLiteral("cmdClose"));
             }},
        };
        QCOMPARE(play([&] { click(&sub, QStringLiteral("Command1")); }, article), 1);
        QCOMPARE(prompt.lines(), QStringList());

        choose(3, {QStringLiteral("01"), QStringLiteral("03"), QStringLiteral("7001")});
        prompt.answer({true, true});
        const QList<Step> paragraph = {
            {QStringLiteral("frmDic03"),
             [](QWidget *editor) {
                 QCOMPARE(editor->windowTitle(), QStringLiteral("「項」の設定"));
                 click(editor, QStringLiteral("cmdAdd"));
                 type(editor, QStringLiteral("txtFields_0"), QStringLiteral("70"));
                 // The code fixes the clause's place as the keyboard leaves it.
                 QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
                 QApplication::sendEvent(find<QLineEdit>(editor, QStringLiteral("txtFields_0")), &leave);
                 type(editor, QStringLiteral("Text1_0"), QStringLiteral("在宅勤務は、"));
                 find<QRadioButton>(editor, QStringLiteral("Option2_1"))->click();
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label5_1"))->text(), QStringLiteral("未"));
                 click(editor, QStringLiteral("Command4_1"));
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label5_1"))->text(), QStringLiteral("既"));
                 QCOMPARE(find<QLabel>(editor, QStringLiteral("Label6_1"))->text(), QStringLiteral("週２日"));
                 type(editor, QStringLiteral("Text1_2"), QStringLiteral("までとし、"));
                 find<QRadioButton>(editor, QStringLiteral("Option3_3"))->click();
                 click(editor, QStringLiteral("Command4_3"));
                 QVERIFY(find<QLabel>(editor, QStringLiteral("Label8_3"))->text().size() == 4);
                 type(editor, QStringLiteral("Text1_4"), QStringLiteral("の者に限る。"));
                 click(editor, QStringLiteral("cmdUpdate"));
                 QVERIFY(!find<QPushButton>(editor, QStringLiteral("cmdAdd"))->isHidden());
                 QCOMPARE(find<QLineEdit>(editor, QStringLiteral("txtFields_0"))->text(), QStringLiteral("70"));
                 click(editor, QStringLiteral("cmdClose"));
             }},
            {QStringLiteral("frmDic_goku"),
             [](QWidget *words) {
                 type(words, QStringLiteral("txtCaption"), QStringLiteral("在宅勤務の上限日数"));
                 type(words, QStringLiteral("txtWord"), QStringLiteral("週２日"));
                 click(words, QStringLiteral("cmdCreate"));
             }},
            {QStringLiteral("frmDic_bangou"),
             [](QWidget *picker) {
                 find<QRadioButton>(picker, QStringLiteral("Option1_4"))->setChecked(true);
                 const QStringList codes = {QStringLiteral("01"), QStringLiteral("01"), QStringLiteral("0002"), QStringLiteral("01"),
                                            QStringLiteral("01")};
                 for (int i = 0; i < codes.size(); ++i) {
                     auto *combo = find<QComboBox>(picker, QStringLiteral("DataCombo%1").arg(i + 1));
                     combo->setCurrentIndex(combo->findData(codes[i]));
                     QVERIFY2(combo->currentIndex() >= 0, qPrintable(codes[i]));
                 }
                 click(picker, QStringLiteral("Command1"));
             }},
        };
        QCOMPARE(play([&] { click(&sub, QStringLiteral("Command1")); }, paragraph), 3);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("変更の確認: 処理する種別を変更しますか？"),
                                              QStringLiteral("変更の確認: 処理する種別を変更しますか？")}));
        prompt.clear();

        // Composed after 条 0016, then the export chain prints it in its place.
        QSqlDatabase db = AppState::cn();
        const QString style = QStringLiteral("1"), document = QStringLiteral("01");
        const QList<PanelRow> rows = articlePanel(db, style, document);
        int after = -1;
        for (int i = 0; i < rows.size(); ++i) {
            if (rows[i].level == Level::Article && rows[i].codes[1] == u"0016")
                after = i;
        }
        QVERIFY(after >= 0);
        prompt.answer({true});
        const PanelChoice add = choosePanelStep(db, prompt, {style, document, false, rows, after, QStringLiteral("4")});
        QCOMPARE(add.kind, PanelChoice::Kind::Add);
        QCOMPARE(carryOutAdd(db, prompt, add.add, QStringLiteral("7001")), Outcome::Done);
        // The work rules cite the other documents of the company: they are built first.
        for (const QString &cited :
             {QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"), QStringLiteral("05"), QStringLiteral("31"), document})
            QCOMPARE(WorkDataBuild(db, prompt).build(style, cited), Outcome::Done);
        EffectiveDates(db, document).add(style, QDate(2026, 4, 1));
        execSql(db, QStringLiteral("INSERT INTO 企業情報 DEFAULT VALUES"));
        const Outcome substituted = SettingSubstitution(db, prompt).run(style, document);
        QVERIFY2(substituted == Outcome::Done, qPrintable(prompt.lines().join(u"|")));
        QTemporaryDir out;
        const QString text = out.filePath(QStringLiteral("01.txt"));
        prompt.clear();
        DocxOutput docx(out.filePath(QStringLiteral("01.docx")));
        TextOutput record(text);
        VersionOutput version(db, style, document);
        const Outcome exported = DocumentExport(db, prompt).write(style, document, RenderOptions(), {&docx, &record, &version});
        QVERIFY2(exported == Outcome::Done, qPrintable(prompt.lines().join(u'|')));
        QFile file(text);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString printed = QString::fromUtf8(file.readAll());
        QVERIFY2(printed.contains(QStringLiteral("（テレワーク勤務）")), qPrintable(printed.left(2000)));
        QVERIFY2(printed.contains(QStringLiteral("在宅勤務は、週２日までとし、第２条第１項第１号の者に限る。")),
                 qPrintable(printed.section(QStringLiteral("（テレワーク勤務）"), -1).left(300)));
    }

    // A standard entry keeps its code and cannot be deleted; the refusals come through the prompt.
    void levelEditorProtectsStandardEntries()
    {
        AppState &state = AppState::instance();
        state.CurShubetsu = Level::Chapter;
        state.DicKiteiCode = QStringLiteral("01");
        frmDic03 editor;
        editor.show();
        QCOMPARE(editor.windowTitle(), QStringLiteral("「章」の設定"));
        QCOMPARE(find<QLineEdit>(&editor, QStringLiteral("txtFields_0"))->text(), QStringLiteral("01"));
        QVERIFY(find<QLineEdit>(&editor, QStringLiteral("txtFields_2"))->isHidden());
        click(&editor, QStringLiteral("cmdDelete"));
        click(&editor, QStringLiteral("cmdEdit"));
        type(&editor, QStringLiteral("txtFields_0"), QStringLiteral("75"));
        click(&editor, QStringLiteral("cmdUpdate"));
        QCOMPARE(find<QLineEdit>(&editor, QStringLiteral("txtFields_0"))->text(), QStringLiteral("01"));
        click(&editor, QStringLiteral("cmdCancel"));
        QVERIFY(!find<QPushButton>(&editor, QStringLiteral("cmdAdd"))->isHidden());
        QCOMPARE(m_session->prompt.lines(), (QStringList{QStringLiteral("削除制限: ユーザー追加データ以外は削除できません。"),
                                                         QStringLiteral("入力エラー: 01～69は変更できません。･･･Code")}));
    }

private:
    std::unique_ptr<FormSession> m_session;
};

QTEST_MAIN(DictionaryFormsTest)
#include "tst_dictforms.moc"
