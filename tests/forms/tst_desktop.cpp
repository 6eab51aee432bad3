// The desktop program as a user works it, offscreen: titles as the dialogs set them,
// Qt's own texts in Japanese, F1, keys that can be typed, lists that act on Enter and
// a double click, choices made with the mouse that stay, and leaving without checks.

#include "DialogDriver.h"
#include "ScriptedPrompt.h"
#include "FormSession.h"
#include "composition/forms/frmMakesentaku.h"
#include "composition/forms/frmMakesentakuSub.h"
#include "composition/forms/frmMakesentakuSub2.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/forms/frmDic03.h"
#include "dictionary/forms/frmDic_bangou.h"
#include "dictionary/forms/frmDic_goku.h"
#include "export/forms/frmExport.h"
#include "rulebase/forms/frmBackup.h"
#include "rulebase/forms/frmDBSakujyo.h"
#include "rulebase/forms/frmDBSentaku.h"
#include "rulebase/forms/frmKakusyusettei.h"
#include "rulebase/forms/frmKihon.h"
#include "rulebase/forms/frmSaiteki.h"
#include "rulebase/forms/frmSekoubi.h"
#include "base/AppState.h"
#include "base/Database.h"
#include "shell/HelpContext.h"
#include "shell/forms/DesktopSetup.h"
#include "shell/forms/FormHelpers.h"
#include "shell/forms/HelpWindow.h"
#include "update/forms/frmDicUpdate.h"
#include "app/forms/frmMain01.h"
#include "office/forms/frmDBYomikomi.h"
#include "office/forms/frmMochidashi.h"
#include "office/forms/frmMochikaeri.h"
#include "rulebase/CompanyStore.h"
#include "words/forms/frmGokusentakuSub.h"
#include "words/forms/frmGokusentaku_01.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <memory>

using namespace normaris;
using namespace normaris::test;

namespace {

using Factory = std::function<QDialog *()>;

dictionary::SegmentEditor &firstParagraph();

// The dialogs with a help page, made as their callers make them.
const QList<std::pair<QString, Factory>> &dialogTable()
{
    static const QList<std::pair<QString, Factory>> list = {
        {QStringLiteral("会社指定"), [] { return new frmDBSentaku; }},
        {QStringLiteral("会社削除"), [] { return new frmDBSakujyo; }},
        {QStringLiteral("バックアップ"), [] { return new frmBackup; }},
        {QStringLiteral("データベース最適化"), [] { return new frmSaiteki; }},
        {QStringLiteral("ディクショナリ更新"), [] { return new frmDicUpdate; }},
        {QStringLiteral("会社データの読込"), [] { return new frmDBYomikomi; }},
        {QStringLiteral("持ち出し"), [] { return new frmMochidashi; }},
        {QStringLiteral("持ち帰り"), [] { return new frmMochikaeri; }},
        {QStringLiteral("各種設定"),
         [] {
             AppState::instance().DateSettingEnabled = true;
             return new frmKakusyusettei;
         }},
        {QStringLiteral("基本設定"), [] { return new frmKihon; }},
        {QStringLiteral("日付の設定"), [] { return new frmSekoubi; }},
        {QStringLiteral("データ作成（規則・規程・協定の指定）"), [] { return new frmMakesentaku; }},
        {QStringLiteral("条までの設定"),
         [] {
             AppState::instance().ArticlePanelActive = true;
             return new frmMakesentakuSub;
         }},
        {QStringLiteral("データエクスポート"), [] { return new frmExport; }},
        {QStringLiteral("語句設定（条の指定）"), [] { return new frmGokusentakuSub; }},
        {QStringLiteral("埋込語句の設定"),
         [] {
             AppState &state = AppState::instance();
             const QString place =
                 scalar(AppState::cn(), QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' "
                                                       "AND 種別 <> '10' AND 選択フラグ = 1 GROUP BY 章Code, 条Code "
                                                       "ORDER BY count(*) DESC LIMIT 1"))
                     .toString();
             state.CurShoCode = place.section(u' ', 0, 0);
             state.CurJoCode = place.section(u' ', 1, 1);
             state.WordsPreviewAllowed = true;
             return new frmGokusentaku_01;
         }},
        {QStringLiteral("「条」の設定"),
         [] {
             AppState &state = AppState::instance();
             state.CurShubetsu = Level::Article;
             state.DicKiteiCode = QStringLiteral("01");
             state.CurShoCode = QStringLiteral("03");
             return new frmDic03;
         }},
        {QStringLiteral("語句の設定"), [] { return new frmDic_goku(firstParagraph(), 1); }},
        {QStringLiteral("参照先の設定"), [] { return new frmDic_bangou(firstParagraph(), 1); }},
    };
    return list;
}

// A segment editor on the first 項 of the work rules, as the level editor holds one for
// the word dialog and the reference picker; it lives until the next dialog asks for one.
dictionary::SegmentEditor &firstParagraph()
{
    static std::unique_ptr<dictionary::SegmentEditor> editor;
    const dictionary::EntryEditor paragraphs(AppState::cn(), QStringLiteral("1"), QStringLiteral("01"), Level::Paragraph,
                                             {QStringLiteral("01"), QStringLiteral("0001")});
    editor =
        std::make_unique<dictionary::SegmentEditor>(AppState::cn(), paragraphs.placeOf(QStringLiteral("01")), paragraphs.documentKind());
    editor->open(uiPrompt());
    return *editor;
}

// A text a user sees without its mnemonic: "コピー(&C)" reads "コピー".
QString withoutMnemonic(QString text)
{
    static const QRegularExpression mnemonic(QStringLiteral("\\(&.\\)|&"));
    return text.section(u'\t', 0, 0).remove(mnemonic); // without the shortcut after the tab
}

bool hasLatinWord(const QString &text)
{
    static const QRegularExpression word(QStringLiteral("[A-Za-z]{2,}"));
    return word.match(text).hasMatch();
}

// Picks an item of a combo as a mouse user does: a click opens the list, a click on the
// item closes it. Returns false when the list did not open.
bool pickWithMouse(QComboBox *combo, int row)
{
    QTest::mouseClick(combo, Qt::LeftButton);
    QAbstractItemView *view = combo->view();
    if (!QTest::qWaitFor([view] { return view->isVisible(); }, 2000))
        return false;
    const QRect item = view->visualRect(view->model()->index(row, 0));
    QTest::mouseMove(view->viewport(), item.center());
    // A release within a double click's time of the opening click is taken as part of it.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, item.center());
    return QTest::qWaitFor([view] { return !view->isVisible(); }, 2000);
}

// The page on view in the help window of the form's window; empty when it has none.
QString helpOn(QWidget *form)
{
    const auto *help = form->window()->findChild<HelpWindow *>();
    return help && help->isVisible() ? help->currentPage() : QString();
}

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        setUpDesktopProgram(*qApp);
        setDesktopOpener([this](const QString &path) {
            m_opened << path;
            return true;
        });
    }
    void init()
    {
        m_session = std::make_unique<FormSession>();
        m_opened.clear();
    }
    void cleanup() { m_session.reset(); }

    // The platform appends a display name to every title once one is set: none is.
    void titlesCarryNoProgramName()
    {
        const QString name = QCoreApplication::applicationName();
        QCoreApplication::setApplicationName(QStringLiteral("probe"));
        QCOMPARE(QGuiApplication::applicationDisplayName(), QStringLiteral("probe"));
        QCoreApplication::setApplicationName(name);
    }

    void dialogs_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < dialogTable().size(); ++i)
            QTest::newRow(qPrintable(dialogTable()[i].first)) << i;
    }

    // Each dialog: its own title, F1 opens its help page, and every mnemonic of its
    // buttons is a key that a keyboard sends, and no two share one.
    void dialogs()
    {
        QFETCH(int, index);
        const auto &[title, make] = dialogTable()[index];
        std::unique_ptr<QDialog> dialog(make());
        dialog->show();
        // The company chooser names the store its companies are kept in.
        const QString store = QStringLiteral(" － ") + CompanyStore::of(AppState::instance().layout())->title();
        QCOMPARE(dialog->windowTitle(), dialog->objectName() == u"frmDBSentaku" ? title + store : title);

        QWidget *target = dialog->focusWidget() ? dialog->focusWidget() : dialog.get();
        QTest::keyClick(target, Qt::Key_F1);
        const int context = helpContext(dialog->objectName());
        QVERIFY(context > 0);
        QCOMPARE(helpOn(dialog.get()), QFileInfo(helpPagePath(AppState::instance().AppPath, context)).absoluteFilePath());
        QVERIFY(m_opened.isEmpty()); // no browser is asked

        QStringList keys;
        for (const QPushButton *b : dialog->findChildren<QPushButton *>()) {
            if (!b->isVisibleTo(dialog.get()))
                continue;
            const QKeySequence mnemonic = QKeySequence::mnemonic(b->text());
            const qsizetype amp = b->text().indexOf(u'&');
            if (amp < 0)
                continue;
            const QChar letter = b->text().at(amp + 1);
            QVERIFY2(letter.unicode() < 0x80, qPrintable(b->text()));
            QVERIFY2(!keys.contains(mnemonic.toString()), qPrintable(b->text()));
            keys << mnemonic.toString();
        }
        QVERIFY(m_session->prompt.lines().isEmpty());
    }

    // F1 in a box over a dialog opens the dialog's page.
    void helpKeyFromAChildWidget()
    {
        frmKihon form;
        form.show();
        QTest::keyClick(form.findChild<QLineEdit *>(QStringLiteral("Text1_3")), Qt::Key_F1);
        QCOMPARE(helpOn(&form), QFileInfo(helpPagePath(AppState::instance().AppPath, 15)).absoluteFilePath());
    }

    // The help window: the page of the context, its links, back and forward, the
    // list of pages; F1 again uses the same window.
    void helpWindowFollowsLinks()
    {
        frmKihon form;
        form.show();
        showHelp(&form);
        auto *help = form.findChild<HelpWindow *>();
        QVERIFY(help && help->isVisible());
        const QString folder = AppState::instance().AppPath + QStringLiteral("/help/");
        QCOMPARE(help->windowTitle(), QStringLiteral("ヘルプ - 基本設定"));
        QCOMPARE(help->pageTitles().first(), QStringLiteral("目次"));
        QVERIFY(help->pageTitles().contains(QStringLiteral("データエクスポート")));

        auto *browser = help->findChild<QTextBrowser *>(QStringLiteral("txtPage"));
        emit browser->anchorClicked(QUrl(QStringLiteral("index.html")));
        QCOMPARE(help->currentPage(), QFileInfo(folder + QStringLiteral("index.html")).absoluteFilePath());
        click(help, QStringLiteral("cmdBack"));
        QCOMPARE(help->currentPage(), QFileInfo(folder + QStringLiteral("15.html")).absoluteFilePath());
        click(help, QStringLiteral("cmdForward"));
        QCOMPARE(help->currentPage(), QFileInfo(folder + QStringLiteral("index.html")).absoluteFilePath());

        auto *pages = help->findChild<QListWidget *>(QStringLiteral("lstPages"));
        const int exportPage = int(help->pageTitles().indexOf(QStringLiteral("データエクスポート")));
        emit pages->itemActivated(pages->item(exportPage));
        QCOMPARE(help->currentPage(), QFileInfo(folder + QStringLiteral("300.html")).absoluteFilePath());

        showHelp(&form);
        QCOMPARE(form.findChildren<HelpWindow *>().size(), 1);
        QCOMPARE(help->currentPage(), QFileInfo(folder + QStringLiteral("15.html")).absoluteFilePath());
        QVERIFY(m_session->prompt.lines().isEmpty());
    }

    // A page that is not there is named in a message.
    void missingHelpPageIsNamed()
    {
        frmKihon form;
        const QString page = helpPagePath(AppState::instance().AppPath, 15);
        QVERIFY(QFile::remove(page));
        showHelp(&form);
        QCOMPARE(m_session->prompt.lines(),
                 QStringList{kProgramTitle + QStringLiteral(": ヘルプファイル「%1」が見つかりません。").arg(page)});
        QVERIFY(!form.findChild<HelpWindow *>());
    }

    void qtTextsAreJapanese()
    {
        QVERIFY(loadJapaneseQtTexts(*qApp));
        QLineEdit box;
        std::unique_ptr<QMenu> menu(box.createStandardContextMenu());
        QStringList seen;
        for (const QAction *action : menu->actions()) {
            if (action->isSeparator())
                continue;
            seen << action->text();
            QVERIFY2(!hasLatinWord(withoutMnemonic(action->text())), qPrintable(action->text()));
        }
        QVERIFY(seen.size() >= 6);

        // The folder chooser of バックアップ: Qt's own dialog, in Japanese.
        QFileDialog chooser(nullptr, QStringLiteral("バックアップ先のフォルダ"));
        chooser.setOptions(QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
        chooser.setFileMode(QFileDialog::Directory);
        chooser.show();
        for (const QLabel *label : chooser.findChildren<QLabel *>()) {
            if (label->isVisibleTo(&chooser))
                QVERIFY2(!hasLatinWord(withoutMnemonic(label->text())), qPrintable(label->text()));
        }
        for (const QPushButton *b : chooser.findChildren<QPushButton *>()) {
            if (b->isVisibleTo(&chooser))
                QVERIFY2(!hasLatinWord(withoutMnemonic(b->text())), qPrintable(b->text()));
        }
    }

    // 語句設定 with the mouse alone: a chapter and an article picked from their lists
    // stay chosen when the lists close, and 次へ opens the words with Wordで確認.
    void mousePickInTheWordsChooserStays()
    {
        const QString place =
            scalar(AppState::cn(),
                   QStringLiteral("SELECT 章Code || ' ' || 条Code FROM 変数テーブル語句 WHERE 規程Code = '01' AND 種別 <> '10' "
                                  "AND 選択フラグ = 1 AND 条Code IN (SELECT 条Code FROM 作成データ補助～条 WHERE 文章形式Code = '1' "
                                  "AND 規程Code = '01' AND 種別 = '3') ORDER BY CAST(章Code AS INTEGER) DESC LIMIT 1"))
                .toString();
        frmGokusentakuSub form;
        form.show();
        activate(&form);
        auto *chapter = form.findChild<QComboBox *>(QStringLiteral("DataCombo2"));
        auto *article = form.findChild<QComboBox *>(QStringLiteral("DataCombo3"));
        QVERIFY(pickWithMouse(chapter, 0));
        const int chapterRow = chapter->findData(place.section(u' ', 0, 0));
        QVERIFY(chapterRow > 0);
        QVERIFY(pickWithMouse(chapter, chapterRow));
        QCOMPARE(chapter->currentIndex(), chapterRow);
        QCOMPARE(form.findChild<QLabel *>(QStringLiteral("Label7_1"))->text(), place.section(u' ', 0, 0));

        QVERIFY(pickWithMouse(article, 0)); // the list is filled as it opens
        const int articleRow = article->findData(place.section(u' ', 1, 1));
        QVERIFY(articleRow >= 0);
        QVERIFY(pickWithMouse(article, articleRow));
        QCOMPARE(article->currentIndex(), articleRow);
        QCOMPARE(chapter->currentIndex(), chapterRow);

        bool previewOffered = false;
        QTimer::singleShot(0, [&] {
            auto *words = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(words && words->objectName() == u"frmGokusentaku_01");
            previewOffered = !words->findChild<QPushButton *>(QStringLiteral("Command4"))->isHidden();
            words->reject();
        });
        QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("Command1")), Qt::LeftButton);
        QVERIFY(previewOffered);
        QVERIFY(m_session->prompt.lines().isEmpty());
    }

    // リストから外す asks, naming the document, with いいえ the default; いいえ keeps all.
    // Enter on the list and a double click on an item act as 更新 does.
    void takingOffTheListAsksFirst()
    {
        frmMakesentaku entry;
        entry.show();
        find<QRadioButton>(&entry, QStringLiteral("Option2_2"))->click();
        auto *list = find<QListWidget>(&entry, QStringLiteral("DataList1"));
        list->setCurrentRow(0);
        const QString rowsOf01 = QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 文章形式Code = '1' AND 規程Code = '01'");
        const int rows = scalar(AppState::cn(), rowsOf01).toInt();
        QVERIFY(rows > 100);
        m_session->prompt.answer({false});
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(m_session->prompt.lines(),
                 QStringList{QStringLiteral("リストから外す確認: 『就業規則』をリストから外します。\n"
                                            "この規則・規程・協定で選択した章・条・項などの構成はすべて削除され、元に戻せません。\n\n"
                                            "よろしいですか？")});
        QVERIFY(m_session->prompt.shown().first().noByDefault);
        QCOMPARE(scalar(AppState::cn(), rowsOf01).toInt(), rows);
        QCOMPARE(list->item(0)->text(), QStringLiteral("就業規則"));

        m_session->prompt.answer({true});
        const QPoint first = list->visualItemRect(list->item(0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(scalar(AppState::cn(), rowsOf01).toInt(), 0);
        QVERIFY(list->findItems(QStringLiteral("就業規則"), Qt::MatchExactly).isEmpty());
    }

    // キャンセル leaves 基本設定 although a field holds a value its check refuses.
    void cancelLeavesWithoutChecks()
    {
        frmKihon form;
        form.show();
        activate(&form);
        auto *workers = find<QLineEdit>(&form, QStringLiteral("Text1_13"));
        workers->setFocus();
        workers->setText(QStringLiteral("0"));
        QTest::mouseClick(find<QPushButton>(&form, QStringLiteral("Command2")), Qt::LeftButton);
        QCOMPARE(form.result(), int(QDialog::Rejected));
        QVERIFY(!form.isVisible());
        QCoreApplication::processEvents();
        QVERIFY2(m_session->prompt.lines().isEmpty(), qUtf8Printable(m_session->prompt.lines().join(u'\n')));
    }

    // The company pickers start on the list: Down picks the first company, Enter acts.
    void companyPickerStartsOnTheList()
    {
        frmDBSakujyo picker;
        picker.show();
        auto *list = find<QListWidget>(&picker, QStringLiteral("List1"));
        QCOMPARE(picker.focusWidget(), list);
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(list->currentItem()->text(), QStringLiteral("甲"));
        QTest::keyClick(list, Qt::Key_Return);
        // The open company is not deleted: the step says so, and the dialog stays.
        QCOMPARE(m_session->prompt.lines().size(), 1);
        QVERIFY(picker.isVisible());
    }

    // 語句設定's combos, 埋込語句の設定's boxes and 基本設定's fields show their limit whole.
    void fieldsShowTheirLimit()
    {
        frmKihon form;
        auto *name = find<QLineEdit>(&form, QStringLiteral("Text1_0"));
        const QString sixtyBytes(30, QChar(0x6F22));
        QVERIFY(name->minimumWidth() >= name->fontMetrics().horizontalAdvance(sixtyBytes));
        frmGokusentakuSub chooser;
        auto *chapter = find<QComboBox>(&chooser, QStringLiteral("DataCombo2"));
        QVERIFY(chapter->minimumWidth() >= chapter->fontMetrics().horizontalAdvance(QString(40, QChar(0x6F22))));
    }

    // The console keeps its size whatever the kind; 日付の設定 keeps its width with its first date.
    void layoutsKeepStill()
    {
        frmExport console;
        console.show();
        QCoreApplication::processEvents();
        const QSize size = console.sizeHint();
        const QRect kinds = find<QWidget>(&console, QStringLiteral("Frame4"))->geometry();
        for (const int kind : {2, 1, 0}) {
            find<QRadioButton>(&console, QStringLiteral("Option4_%1").arg(kind))->click();
            QCoreApplication::processEvents();
            QCOMPARE(console.sizeHint(), size);
            QCOMPARE(find<QWidget>(&console, QStringLiteral("Frame4"))->geometry(), kinds);
        }

        frmSekoubi dates;
        dates.show();
        QCoreApplication::processEvents();
        const int width = dates.sizeHint().width();
        find<QPushButton>(&dates, QStringLiteral("cmdAdd"))->click();
        find<QLineEdit>(&dates, QStringLiteral("Text1"))->setText(QStringLiteral("2026/4/1"));
        find<QPushButton>(&dates, QStringLiteral("cmdUpdate"))->click();
        QVERIFY(!find<QPushButton>(&dates, QStringLiteral("cmdEdit"))->isHidden());
        QCOMPARE(dates.sizeHint().width(), width);
    }

    // NORMARIS_SCREENSHOT_DIR=DIR: each dialog at its own size and maximised, as PNG files
    // for a person to look at; under a virtual display for a screen of a real size:
    //   xvfb-run -a -s '-screen 0 1600x1000x24' env QT_QPA_PLATFORM=xcb tst_desktop screenshots
    void screenshots()
    {
        const QString folder = qEnvironmentVariable("NORMARIS_SCREENSHOT_DIR");
        if (folder.isEmpty())
            QSKIP("NORMARIS_SCREENSHOT_DIR is not set");
        QList<std::pair<QString, Factory>> all = dialogTable();
        all << std::pair{QStringLiteral("項以下の設定"), Factory([] {
                             AppState &state = AppState::instance();
                             state.ParagraphPanelActive = true;
                             state.CurShoCode = QStringLiteral("01");
                             state.CurJoCode = QStringLiteral("0001");
                             return static_cast<QDialog *>(new frmMakesentakuSub2);
                         })};
        // The main window with the company open, on the store of the run.
        {
            frmMain01 main;
            main.show();
            QTest::qWait(50);
            main.grab().save(QStringLiteral("%1/main.png").arg(folder));
        }
        for (int i = 0; i < all.size(); ++i) {
            std::unique_ptr<QDialog> dialog(all[i].second());
            dialog->show();
            QTest::qWait(50);
            dialog->grab().save(QStringLiteral("%1/%2-%3.png").arg(folder).arg(i, 2, 10, QChar(u'0')).arg(dialog->objectName()));
            // What a maximised window gets (a virtual display has no window manager to do it),
            // for the dialogs that offer it.
            if (!(dialog->windowFlags() & Qt::WindowMaximizeButtonHint))
                continue;
            dialog->setGeometry(dialog->screen()->availableGeometry());
            QTest::qWait(50);
            dialog->grab().save(QStringLiteral("%1/%2-%3-max.png").arg(folder).arg(i, 2, 10, QChar(u'0')).arg(dialog->objectName()));
        }
    }

private:
    template<class T>
    static T *find(QWidget *form, const QString &name)
    {
        auto *w = form->findChild<T *>(name);
        if (!w)
            qFatal("%s has no %s", qPrintable(form->objectName()), qPrintable(name));
        return w;
    }
    static void activate(QWidget *window)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    std::unique_ptr<FormSession> m_session;
    QStringList m_opened;
};

QTEST_MAIN(DesktopTest)
#include "tst_desktop.moc"
