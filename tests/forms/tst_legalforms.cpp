// The 法令チェック dialog offscreen: the same lines as the check, in the colours of
// their states, the .xlsx, and a double-click that goes to the article's row panel.

#include "FormSession.h"
#include "base/Database.h"
#include "composition/ClauseReleaser.h"
#include "rulebase/CompositionRow.h"
#include "composition/forms/CompositionFlow.h"
#include "legal/forms/frmLegalCheck.h"

#include <QFileInfo>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

class TestLegalForms : public QObject {
    Q_OBJECT

private slots:
    void listShowsTheCheck()
    {
        FormSession session;
        QSqlDatabase db = AppState::cn();
        // 条0030 out of the work rules: 89条1号 休憩時間 is missing.
        const QList<CompositionRow> rows = readArticleRows(db, QStringLiteral("1"), QStringLiteral("01"));
        int i = 0;
        while (rows[i].level != Level::Article || rows[i].codes[1] != u"0030")
            ++i;
        ClauseReleaser releaser(db, session.prompt);
        QCOMPARE(Kaijo03(releaser, {QStringLiteral("1"), QStringLiteral("01"), Level::Article, i, rows[i].codes}), Outcome::Done);

        frmLegalCheck dialog(QStringLiteral("1"), QStringLiteral("01"));
        auto *list = dialog.findChild<QTableWidget *>(QStringLiteral("ResultList"));
        QVERIFY(list);
        QCOMPARE(list->rowCount(), int(dialog.results().size()));
        int missing = -1;
        for (int row = 0; row < list->rowCount(); ++row) {
            const legal::CheckResult &r = dialog.results()[row];
            for (int column = 0; column < list->columnCount(); ++column)
                QCOMPARE(list->item(row, column)->text(), r.cells()[column]);
            QCOMPARE(list->item(row, 1)->background().color(), QColor::fromRgb(legal::stateColour(r.state)));
            if (r.state == legal::CheckState::Missing)
                missing = row;
        }
        QVERIFY(missing >= 0);
        QCOMPARE(list->item(missing, 3)->text(), QStringLiteral("休憩時間"));
        if (qEnvironmentVariableIsSet("NORMARIS_SCREENSHOT"))
            dialog.grab().save(qEnvironmentVariable("NORMARIS_SCREENSHOT"));

        QTemporaryDir dir;
        const QString xlsx = dir.path() + QStringLiteral("/表.xlsx");
        dialog.chooseXlsxPath = [&](const QString &proposed) {
            [&] { QCOMPARE(proposed, QStringLiteral("法令チェック表.xlsx")); }();
            return xlsx;
        };
        dialog.findChild<QPushButton *>(QStringLiteral("Command1"))->click();
        QVERIFY(QFileInfo(xlsx).size() > 0);
        QCOMPARE(session.prompt.lines(), QStringList{QStringLiteral("確認: 処理を終了しました。")});

        // A double-click goes to the article panel of the document, at the row's article when it is composed.
        emit list->cellDoubleClicked(missing, 0);
        QVERIFY(dialog.goesToPanel());
        QCOMPARE(CompositionFlow::pending(), CompositionFlow::Form::ArticlePanel);
        QVERIFY(AppState::instance().ArticlePanelActive);
        QCOMPARE(AppState::instance().CurKiteiCode, QStringLiteral("01"));
        CompositionFlow::handOver(CompositionFlow::Form::None);
    }
};

QTEST_MAIN(TestLegalForms)
#include "tst_legalforms.moc"
