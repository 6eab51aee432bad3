// The composition dialogs offscreen, driven by their control names: the document
// list, the two row panels, and adding and releasing clauses through them, with the
// panel rebuilt from the tables after every step.

#include "ScriptedPrompt.h"
#include "DialogDriver.h"
#include "FormSession.h"
#include "TestRoot.h"
#include "composition/Panels.h"
#include "composition/forms/CompositionFlow.h"
#include "composition/forms/CompositionPanel.h"
#include "composition/forms/frmMakesentaku.h"
#include "composition/forms/frmMakesentakuSub.h"
#include "composition/forms/frmMakesentakuSub2.h"
#include "composition/forms/frmMakesentaku_tsuika.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"
#include "app/forms/frmMain01.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace normaris;
using namespace normaris::test;

namespace {

QString labelText(QWidget *form, const QString &label) { return find<QLabel>(form, label)->text(); }

// The panel's lines as the user reads them: caption, code and text.
QStringList panelLines(QWidget *form)
{
    const QAbstractItemModel *model = find<QTableView>(form, QStringLiteral("Picture1"))->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column)
            cells << model->index(row, column).data().toString();
        lines << cells.join(u'|');
    }
    return lines;
}

// The row whose caption and code are as given, or -1.
int rowOf(QWidget *form, const QString &caption, const QString &code)
{
    const QStringList lines = panelLines(form);
    for (int row = 0; row < lines.size(); ++row) {
        if (lines[row].startsWith(caption + u'|' + code + u'|'))
            return row;
    }
    return -1;
}

// Selects the row on the panel and chooses the action by its code.
void chooseAction(QWidget *form, int row, const QString &action)
{
    auto *view = find<QTableView>(form, QStringLiteral("Picture1"));
    view->setCurrentIndex(view->model()->index(row, 0));
    auto *actions = find<QComboBox>(form, QStringLiteral("DataCombo1"));
    actions->setCurrentIndex(actions->findData(action));
    QVERIFY2(actions->currentIndex() >= 0, qPrintable(action));
}

void chooseStock(QWidget *form, const QString &code)
{
    auto *stock = find<QComboBox>(form, QStringLiteral("DataCombo1"));
    stock->setCurrentIndex(stock->findData(code));
    QVERIFY2(stock->currentIndex() >= 0, qPrintable(code));
}

} // namespace

class CompositionFormsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_session = std::make_unique<FormSession>(); }
    void cleanup() { m_session.reset(); }

    void entryPutsADocumentOnTheListAndTakesItOff()
    {
        frmMakesentaku entry;
        entry.show();
        auto *list = find<QListWidget>(&entry, QStringLiteral("DataList1"));
        const auto names = [list] {
            QStringList n;
            for (int i = 0; i < list->count(); ++i)
                n << list->item(i)->text();
            return n;
        };
        const auto pick = [list](const QString &name) { list->setCurrentItem(list->findItems(name, Qt::MatchExactly).value(0)); };
        QCOMPARE(entry.windowTitle(), QStringLiteral("データ作成（規則・規程・協定の指定）"));
        QCOMPARE(labelText(&entry, QStringLiteral("Label1")), QStringLiteral("規則・規程・協定を指定してください"));
        QCOMPARE(find<QPushButton>(&entry, QStringLiteral("Command1"))->text(), QStringLiteral("次へ(&N)"));
        QCOMPARE(names(), (QStringList{QStringLiteral("就業規則"), QStringLiteral("賃金規程"), QStringLiteral("育児・介護休業規程"),
                                       QStringLiteral("パートタイム・有期雇用労働者就業規則"), QStringLiteral("ハラスメント防止規程"),
                                       QStringLiteral("時間外労働及び休日労働に関する協定")}));
        QVERIFY(find<QListWidget>(&entry, QStringLiteral("DataList2"))->isHidden());

        // Nothing chosen, and a choice left in the hidden list, count as no choice.
        click(&entry, QStringLiteral("Command1"));
        auto *other = find<QListWidget>(&entry, QStringLiteral("DataList2"));
        other->setCurrentRow(0);
        click(&entry, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(), QStringList(2, QStringLiteral("データ指定の確認: 処理するデータを指定してください。")));

        find<QRadioButton>(&entry, QStringLiteral("Option2_1"))->click();
        QCOMPARE(labelText(&entry, QStringLiteral("Label1")), QStringLiteral("リストに追加する規則・規程・協定を指定してください"));
        QCOMPARE(find<QPushButton>(&entry, QStringLiteral("Command1"))->text(), QStringLiteral("更新(&U)"));
        pick(QStringLiteral("賃金控除に関する協定"));
        click(&entry, QStringLiteral("Command1"));
        QVERIFY(!names().contains(QStringLiteral("賃金控除に関する協定")));
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT count(*) || '|' || min(種別 || ' ' || 文章) FROM 作成データ補助～条 WHERE "
                                                       "文章形式Code = '1' AND 規程Code = '32'"))
                     .toString(),
                 QStringLiteral("1|1 賃金控除に関する協定"));

        find<QRadioButton>(&entry, QStringLiteral("Option2_2"))->click();
        QCOMPARE(labelText(&entry, QStringLiteral("Label1")), QStringLiteral("リストから外す規則・規程・協定を指定してください"));
        pick(QStringLiteral("賃金控除に関する協定"));
        m_session->prompt.answer({true});
        click(&entry, QStringLiteral("Command1"));
        QVERIFY(!names().contains(QStringLiteral("賃金控除に関する協定")));
        // A document of the dictionary's own loses its rows with it.
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 規程Code = '32'")).toInt(), 0);
        QCOMPARE(m_session->prompt.lines().size(), 3);
        QVERIFY(m_session->prompt.lines().last().startsWith(
            QStringLiteral("リストから外す確認: 『賃金控除に関する協定』をリストから外します。")));
    }

    void listButtonWritesTheWorkbook()
    {
        qputenv("TMPDIR", m_session->root.path().toUtf8());
        frmMakesentaku entry;
        auto *list = find<QListWidget>(&entry, QStringLiteral("DataList1"));
        list->setCurrentRow(0);
        click(&entry, QStringLiteral("Command5"));
        qunsetenv("TMPDIR");
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("処理完了: 処理が完了しました。")});
        QCOMPARE(QDir(m_session->root.path()).entryList({QStringLiteral("normaris-list2-*.xlsx")}).size(), 1);
    }

    // From the entry to the 条 panel; a stock 条 added below another, seen on the
    // rebuilt panel, then released again.
    void addAndReleaseAnArticleThroughThePanels()
    {
        frmMakesentaku entry;
        find<QListWidget>(&entry, QStringLiteral("DataList1"))->setCurrentRow(0);
        int at = -1;
        QStringList before;
        const auto toRelease = [&](QWidget *panel) {
            chooseAction(panel, at + 1, QStringLiteral("2"));
            m_session->prompt.answer({true});
            click(panel, QStringLiteral("Command1"));
        };
        const QList<Step> steps = {
            {QStringLiteral("frmMakesentakuSub"),
             [&](QWidget *panel) {
                 QCOMPARE(panel->windowTitle(), QStringLiteral("条までの設定"));
                 QCOMPARE(labelText(panel, QStringLiteral("Label10")), QStringLiteral("である調"));
                 before = panelLines(panel);
                 QCOMPARE(before.first(), QStringLiteral("規則||就業規則"));
                 QCOMPARE(before.at(2), QStringLiteral("前文|01|※上記の続き"));
                 at = rowOf(panel, QStringLiteral("条"), QStringLiteral("0013"));
                 QVERIFY(at > 0);
                 chooseAction(panel, at, QStringLiteral("4"));
                 m_session->prompt.answer({true});
                 click(panel, QStringLiteral("Command1"));
             }},
            {QStringLiteral("frmMakesentaku_tsuika"),
             [&](QWidget *add) {
                 QCOMPARE(add->windowTitle(), QStringLiteral("追加"));
                 QCOMPARE(labelText(add, QStringLiteral("Label1")), QStringLiteral("条を指定して追加ボタンを押してください。"));
                 click(add, QStringLiteral("Command1"));
                 find<QRadioButton>(add, QStringLiteral("Option1_1"))->click();
                 auto *stock = find<QComboBox>(add, QStringLiteral("DataCombo1"));
                 QCOMPARE(stock->count(), 1);
                 QCOMPARE(stock->itemText(0), QStringLiteral("勤務地限定の特約"));
                 chooseStock(add, QStringLiteral("0014"));
                 QCOMPARE(labelText(add, QStringLiteral("Label50")), QStringLiteral("0014"));
                 click(add, QStringLiteral("Command1"));
                 QVERIFY(!find<QPushButton>(add, QStringLiteral("Command1"))->isEnabled());
                 click(add, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmMakesentakuSub"),
             [&](QWidget *panel) {
                 const QStringList after = panelLines(panel);
                 QCOMPARE(after.size(), before.size() + 1);
                 QCOMPARE(after.at(at + 1), QStringLiteral("条|0014|勤務地限定の特約"));
                 // The panel comes back at the row the user acted on, with the focus.
                 auto *view = find<CompositionPanel>(panel, QStringLiteral("Picture1"));
                 QCOMPARE(view->selectedRow(), at);
                 QCOMPARE(AppState::instance().CurRowIndex, at);
                 QCOMPARE(panel->focusWidget(), view);
                 toRelease(panel);
             }},
            {QStringLiteral("frmMakesentaku_kaijo"),
             [&](QWidget *release) {
                 QCOMPARE(release->windowTitle(), QStringLiteral("解除"));
                 QCOMPARE(labelText(release, QStringLiteral("Label1")), QStringLiteral("解除ボタンを押してください"));
                 click(release, QStringLiteral("Command1"));
                 QVERIFY(!find<QPushButton>(release, QStringLiteral("Command1"))->isEnabled());
                 click(release, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmMakesentakuSub"),
             [&](QWidget *panel) {
                 QCOMPARE(panelLines(panel), before);
                 click(panel, QStringLiteral("Command2"));
             }},
        };
        QCOMPARE(play([&] { click(&entry, QStringLiteral("Command1")); }, steps), steps.size());
        QCOMPARE(
            m_session->prompt.lines(),
            (QStringList{
                QStringLiteral(
                    "追加の確認: 出向及び転籍\nの下に条を追加しますか？\n\n項以下のデータがある場合は、それらも一緒に追加します。"),
                QStringLiteral("未指定: 「条」を指定してください"),
                QStringLiteral("確認: 処理を終了しました。"),
                QStringLiteral("選択解除の確認: "
                               "勤務地限定の特約\nの選択を解除しますか？\n\n項以下のデータがある場合は、それらも一緒に選択解除します。"),
                QStringLiteral("確認: 処理を終了しました。"),
            }));
        QVERIFY(!AppState::instance().ArticlePanelActive);
        QCOMPARE(CompositionFlow::pending(), CompositionFlow::Form::None);
        QCOMPARE(scalar(AppState::cn(),
                        QStringLiteral("SELECT 選択フラグ FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '01' AND Code = '0014'"))
                     .toInt(),
                 0);
    }

    // Down to the 項 panel of a 条: a 項 released and added back, then up again.
    void releaseAndAddBackAParagraph()
    {
        AppState::instance().ArticlePanelActive = true;
        QStringList before;
        const QString second = QStringLiteral("この規則及びこれに付属する規程に定めのない事項については、労働基準法、労働契約法その他の関係"
                                              "法令及び個別の労働契約の定めるところによる。");
        const QList<Step> steps = {
            {QStringLiteral("frmMakesentakuSub"),
             [&](QWidget *panel) {
                 chooseAction(panel, rowOf(panel, QStringLiteral("条"), QStringLiteral("0001")), QStringLiteral("5"));
                 click(panel, QStringLiteral("Command1"));
             }},
            {QStringLiteral("frmMakesentakuSub2"),
             [&](QWidget *panel) {
                 QCOMPARE(panel->windowTitle(), QStringLiteral("項以下の設定"));
                 QCOMPARE(
                     (QStringList{labelText(panel, QStringLiteral("Label10_0")), labelText(panel, QStringLiteral("Label10_1")),
                                  labelText(panel, QStringLiteral("Label10_2")), labelText(panel, QStringLiteral("Label10_3"))}),
                     (QStringList{QStringLiteral("である調"), QStringLiteral("就業規則"), QStringLiteral("総則"), QStringLiteral("目的")}));
                 before = panelLines(panel);
                 QCOMPARE(before.size(), 3);
                 QCOMPARE(before.at(1), QStringLiteral("項|02|") + second);
                 chooseAction(panel, 1, QStringLiteral("2"));
                 m_session->prompt.answer({true});
                 click(panel, QStringLiteral("Command1"));
             }},
            {QStringLiteral("frmMakesentaku_kaijo"),
             [&](QWidget *release) {
                 click(release, QStringLiteral("Command1"));
                 click(release, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmMakesentakuSub2"),
             [&](QWidget *panel) {
                 QCOMPARE(panelLines(panel), (QStringList{before.at(0), before.at(2)}));
                 chooseAction(panel, 0, QStringLiteral("4"));
                 m_session->prompt.answer({true});
                 click(panel, QStringLiteral("Command1"));
             }},
            {QStringLiteral("frmMakesentaku_tsuika"),
             [&](QWidget *add) {
                 QCOMPARE(labelText(add, QStringLiteral("Label1")), QStringLiteral("項を指定して追加ボタンを押してください。"));
                 find<QRadioButton>(add, QStringLiteral("Option1_1"))->click();
                 chooseStock(add, QStringLiteral("02"));
                 click(add, QStringLiteral("Command1"));
                 click(add, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmMakesentakuSub2"),
             [&](QWidget *panel) {
                 QCOMPARE(panelLines(panel), before);
                 click(panel, QStringLiteral("Command2"));
             }},
            {QStringLiteral("frmMakesentakuSub"), [&](QWidget *panel) { click(panel, QStringLiteral("Command2")); }},
        };
        CompositionFlow::handOver(CompositionFlow::Form::ArticlePanel);
        QCOMPARE(play([] { CompositionFlow::run(nullptr); }, steps), steps.size());
        QCOMPARE(m_session->prompt.lines(),
                 (QStringList{
                     QStringLiteral("選択解除の確認: ") + second
                         + QStringLiteral("\nの選択を解除しますか？\n\n号以下のデータがある場合は、それらも一緒に選択解除します。"),
                     QStringLiteral("確認: 処理を終了しました。"),
                     QStringLiteral("追加の確認: "
                                    "この規則は、労働基準法第８９条の規定に基づき、会社の従業員の労働条件、服務規律その他就業に関する事項を"
                                    "定め、職場の秩序を維持するとともに、業務の円滑な運営を図ることを目的とする。"
                                    "\nの下に項を追加しますか？\n\n号以下のデータがある場合は、それらも一緒に追加します。"),
                     QStringLiteral("確認: 処理を終了しました。"),
                 }));
        QVERIFY(!AppState::instance().ArticlePanelActive && !AppState::instance().ParagraphPanelActive);
    }

    void wordsOfTheArticleOpenOverTheParagraphPanel()
    {
        // A 条 with words, where the preview would be offered from the export console.
        const QString place =
            scalar(AppState::cn(), QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' "
                                                  "AND 種別 <> '10' AND 選択フラグ = 1 LIMIT 1"))
                .toString();
        AppState &state = AppState::instance();
        state.CurShoCode = place.section(u' ', 0, 0);
        state.CurJoCode = place.section(u' ', 1, 1);
        state.ParagraphPanelActive = true;
        state.WordsPreviewAllowed = true;
        frmMakesentakuSub2 panel;
        panel.show();
        bool previewOffered = true;
        const QList<Step> steps = {{QStringLiteral("frmGokusentaku_01"), [&](QWidget *words) {
                                        previewOffered = !find<QPushButton>(words, QStringLiteral("Command4"))->isHidden();
                                        static_cast<QDialog *>(words)->reject();
                                    }}};
        QCOMPARE(play([&] { click(&panel, QStringLiteral("Command4")); }, steps), 1);
        QVERIFY(!previewOffered);
        QVERIFY(panel.isVisible());
    }

    void articlePanelRefusesAndStays()
    {
        AppState::instance().ArticlePanelActive = true;
        frmMakesentakuSub panel;
        panel.show();
        click(&panel, QStringLiteral("Command1"));
        // Adding a 章 in the middle of a 章, and a question answered no.
        chooseAction(&panel, rowOf(&panel, QStringLiteral("条"), QStringLiteral("0001")), QStringLiteral("3"));
        click(&panel, QStringLiteral("Command1"));
        chooseAction(&panel, rowOf(&panel, QStringLiteral("章"), QStringLiteral("01")), QStringLiteral("2"));
        m_session->prompt.answer({false});
        click(&panel, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(),
                 (QStringList{
                     QStringLiteral("処理方法の指定: 処理方法を指定してください。"),
                     QStringLiteral("処理位置の確認: 前章の「最後の条」の位置で処理してください。"),
                     QStringLiteral(
                         "選択解除の確認: 総則\nの選択を解除しますか？\n\n条以下のデータがある場合は、それらも一緒に選択解除します。")}));
        QVERIFY(panel.isVisible());
        QCOMPARE(CompositionFlow::pending(), CompositionFlow::Form::None);
        QCOMPARE(AppState::instance().CurRowIndex, rowOf(&panel, QStringLiteral("章"), QStringLiteral("01")));
    }

    void aPanelWithoutItsFlagBuildsNothing()
    {
        AppState::instance().ArticlePanelActive = false;
        frmMakesentakuSub panel;
        QVERIFY(!panel.panel());
        QVERIFY(!find<QPushButton>(&panel, QStringLiteral("Command1"))->isEnabled());
    }

    void theLastParagraphStays()
    {
        const QString place =
            scalar(AppState::cn(),
                   QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 作成データ補助項～ WHERE 文章形式Code = '1' AND 規程Code = '01' "
                                  "AND 種別 = '4' AND CAST(結合 AS INTEGER) <= 1 GROUP BY 章Code, 条Code HAVING count(*) = 1 LIMIT 1"))
                .toString();
        AppState &state = AppState::instance();
        state.CurShoCode = place.section(u' ', 0, 0);
        state.CurJoCode = place.section(u' ', 1, 1);
        state.ParagraphPanelActive = true;
        frmMakesentakuSub2 panel;
        panel.show();
        chooseAction(&panel, 0, QStringLiteral("2"));
        click(&panel, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(),
                 QStringList{QStringLiteral("選択解除不可: 項は最低１つ必要です。\n先に他の項を追加してください。")});
        QVERIFY(panel.isVisible());
    }

    void addFormRefusesAClauseInUseAndAnEmptyStock()
    {
        AppState &state = AppState::instance();
        state.CurShubetsu = Level::Article;
        state.AddShubetsu = Level::Chapter;
        state.AddFirstParagraph = false;
        state.CurRowIndex = 6;
        state.CurShoCode = QStringLiteral("01");
        state.CurJoCode = QStringLiteral("0001");
        frmMakesentaku_tsuika add;
        QCOMPARE(labelText(&add, QStringLiteral("Label1")), QStringLiteral("章を指定して追加ボタンを押してください。"));
        chooseStock(&add, QStringLiteral("02"));
        click(&add, QStringLiteral("Command1"));
        find<QRadioButton>(&add, QStringLiteral("Option1_2"))->click();
        QVERIFY(!find<QPushButton>(&add, QStringLiteral("Command1"))->isEnabled());
        QCOMPARE(m_session->prompt.lines(), (QStringList{QStringLiteral("使用中: この章は既に使用しています"),
                                                         QStringLiteral("ストックデータなし: 追加する章がありません。")}));
        // Closing goes back to the 条 panel, which is to be rebuilt.
        AppState::instance().ArticlePanelActive = false;
        click(&add, QStringLiteral("Command2"));
        QCOMPARE(CompositionFlow::pending(), CompositionFlow::Form::ArticlePanel);
        QVERIFY(AppState::instance().ArticlePanelActive);
    }

    // Twenty rows on view at the panel's own size; a taller window shows more and scrolls less.
    void scrollBarOnlyPastTheRowsOnView()
    {
        for (const int rows : {20, 21, 30}) {
            QList<PanelRow> panelRows(rows);
            CompositionPanel panel(
                panelRows, 20, [](Level) { return QList<CodeAndName>(); }, nullptr);
            panel.show();
            QVERIFY(QTest::qWaitForWindowExposed(&panel));
            QTRY_COMPARE(panel.verticalScrollBar()->isVisible(), rows > 20);
            QCOMPARE(panel.verticalScrollBar()->maximum(), rows - 20);
            QCOMPARE(panel.verticalScrollBar()->pageStep(), 6);
            const int line = panel.rowHeight(0);
            panel.resize(panel.width(), panel.height() + 5 * line);
            QTRY_COMPARE(panel.verticalScrollBar()->maximum(), qMax(0, rows - 25));
        }
    }

    // Rebuilt after a step at a row far down, the panel shows that row, chosen.
    void panelComesBackScrolledToTheActedRow()
    {
        AppState &state = AppState::instance();
        state.ArticlePanelActive = true;
        const int rows =
            scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = '1' AND 規程Code = '01'"))
                .toInt();
        QVERIFY(rows > 40);
        state.ArticlePanelRow = rows - 3;
        frmMakesentakuSub panel;
        panel.show();
        auto *view = find<CompositionPanel>(&panel, QStringLiteral("Picture1"));
        QCOMPARE(view->selectedRow(), rows - 3);
        QCOMPARE(state.CurRowIndex, rows - 3);
        QTRY_VERIFY(view->viewport()->rect().contains(view->visualRect(view->model()->index(rows - 3, 2)).center()));
        QVERIFY(view->verticalScrollBar()->value() > 0);
        // Only the chosen row has its list of actions: the one of the first row is gone.
        QList<QComboBox *> lists;
        for (QComboBox *list : view->findChildren<QComboBox *>())
            if (list->isVisible())
                lists << list;
        QCOMPARE(lists.size(), 1);
        QCOMPARE(lists.first()->objectName(), QStringLiteral("DataCombo1"));
        QCOMPARE(view->indexWidget(view->model()->index(rows - 3, PanelModel::Action)), lists.first());
    }

    void longTextsHaveTheirTip()
    {
        PanelRow row;
        row.text = QString(200, QChar(0x6F22));
        CompositionPanel panel(
            {row}, 20, [](Level) { return QList<CodeAndName>(); }, nullptr);
        QCOMPARE(panel.model()->index(0, PanelModel::Text).data(Qt::ToolTipRole).toString(), row.text);
    }

    void levelCaptionsAndColours()
    {
        AppState::instance().ArticlePanelActive = true;
        frmMakesentakuSub panel;
        const QAbstractItemModel *model = find<QTableView>(&panel, QStringLiteral("Picture1"))->model();
        QStringList seen;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QString line = model->index(row, 0).data().toString() + u' '
                                 + model->index(row, 0).data(Qt::BackgroundRole).value<QColor>().name(QColor::HexRgb);
            if (!seen.contains(line))
                seen << line;
        }
        QCOMPARE(seen, (QStringList{QStringLiteral("規則 #ffc0c0"), QStringLiteral("前文 #ffe0c0"), QStringLiteral("章 #ffffc0"),
                                    QStringLiteral("条 #c0ffc0")}));
    }

    void secondMainCommandOpensTheEntry()
    {
        frmMain01 main;
        main.show();
        AppState::instance().markCompanyOpen(QStringLiteral("甲"));
        const QList<Step> steps = {{QStringLiteral("frmMakesentaku"), [](QWidget *entry) { click(entry, QStringLiteral("Command2")); }}};
        QCOMPARE(play([&] { main.command(1)->click(); }, steps), 1);
    }

private:
    std::unique_ptr<FormSession> m_session;
};

QTEST_MAIN(CompositionFormsTest)
#include "tst_compositionforms.moc"
