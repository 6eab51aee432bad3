// 現行規程の取込 and 条文検索 offscreen: the corpus read into the preview tree with its
// report, taken in as document 70, and found again by the search.

#include "FormSession.h"
#include "base/Database.h"
#include "dictionary/forms/frmJoubunKensaku.h"
#include "intake/forms/frmGenkouTorikomi.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

using namespace normaris;
using namespace normaris::test;

class IntakeFormsTest : public QObject {
    Q_OBJECT

private slots:
    void readsPreviewsAndTakesIn()
    {
        FormSession session;
        frmGenkouTorikomi form;
        form.findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral(NORMARIS_SOURCE_DIR "/tests/intake/corpus/rules.txt"));
        form.readFile();
        QCOMPARE(session.prompt.lines(), QStringList());
        auto *tree = form.findChild<QTreeWidget *>(QStringLiteral("TreeView1"));
        QCOMPARE(tree->topLevelItemCount(), 5);
        QCOMPARE(tree->topLevelItem(0)->text(0), QStringLiteral("総則"));
        QTreeWidgetItem *scope = tree->topLevelItem(0)->child(1);
        QCOMPARE((QStringList{scope->text(0), scope->text(1), scope->text(2)}),
                 (QStringList{QStringLiteral("（適用範囲）"), QStringLiteral("2"), QStringLiteral("3")}));
        auto *report = form.findChild<QListWidget *>(QStringLiteral("List1"));
        QCOMPARE(report->item(2)->text(), QStringLiteral("章 5、条 11、項 16、号 8、号の細分 4、参照 10"));
        QCOMPARE(form.findChild<QLineEdit *>(QStringLiteral("Text2"))->text(), QStringLiteral("70"));
        QCOMPARE(form.findChild<QLineEdit *>(QStringLiteral("Text3"))->text(), QStringLiteral("就業規則"));
        auto *name = form.findChild<QCheckBox *>(QStringLiteral("Check1"));
        QCOMPARE(name->text(), QStringLiteral("「株式会社みなと商会」を事業所名の設定（☆0001☆）にする"));
        name->setChecked(true);

        form.takeIn();
        QCOMPARE(session.prompt.lines(), QStringList{QStringLiteral("確認: 規程70「就業規則」として取り込みました。")});
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 条 WHERE 文章形式Code = '1' AND 規程Code = '70'")).toInt(),
                 11);
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT 選択フラグ FROM 規程 WHERE 文章形式Code = '1' AND Code = '70'")).toInt(), 1);

        session.prompt.clear();
        frmJoubunKensaku search;
        search.findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral("前職のない者"));
        search.search();
        auto *hits = search.findChild<QTreeWidget *>(QStringLiteral("List1"));
        QCOMPARE(hits->topLevelItemCount(), 1);
        QCOMPARE(hits->topLevelItem(0)->text(2), QStringLiteral("規程70 章71 条7004 項70 号71"));
        QCOMPARE(hits->topLevelItem(0)->text(3), QStringLiteral("第５条"));
    }

    void unreadableFileIsRefused()
    {
        FormSession session;
        frmGenkouTorikomi form;
        form.findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral("/nonexistent/rules.docx"));
        form.readFile();
        QCOMPARE(session.prompt.lines(), QStringList{QStringLiteral("取込エラー: ファイル「/nonexistent/rules.docx」がありません。")});
        QVERIFY(!form.findChild<QPushButton *>(QStringLiteral("Command1"))->isEnabled());
    }
};

QTEST_MAIN(IntakeFormsTest)
#include "tst_intakeforms.moc"
