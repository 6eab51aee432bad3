// The 新旧対照表 dialog of the export console, offscreen: the versions of the chosen
// document, the table of the latest two or of two chosen rows, and deletion.

#include "../forms/FormSession.h"
#include "VersionRows.h"
#include "versions/forms/frmVersions.h"

#include <QFileInfo>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

class VersionsFormTest : public QObject {
    Q_OBJECT

    static void click(QWidget &form, const QString &name) { form.findChild<QPushButton *>(name)->click(); }
    static QTableWidget *list(QWidget &form) { return form.findChild<QTableWidget *>(QStringLiteral("VersionList")); }

    // Two versions of the work rules, one article apart.
    static void keepTwo(QSqlDatabase db)
    {
        PrintedRows rows{articleRow(QStringLiteral("0001"), 1, QStringLiteral("目的"))};
        VersionStore store(db);
        store.keep(version(1, rows).header, rows);
        rows << articleRow(QStringLiteral("0002"), 2, QStringLiteral("適用範囲"));
        store.keep(version(2, rows).header, rows);
    }

private slots:
    void tooFewVersions()
    {
        FormSession session;
        frmVersions form(QStringLiteral("1"), QStringLiteral("01"));
        QCOMPARE(list(form)->rowCount(), 0);
        click(form, QStringLiteral("Command1"));
        QCOMPARE(session.prompt.lines(),
                 QStringList{QStringLiteral("新旧対照表: 規程「01」（文章形式 1）の版が二つ以上ないので、新旧対照表を作成できません。")});
        QVERIFY(form.lastDocument().isEmpty());
    }

    void latestTwoChosenRowsAndDeletion()
    {
        FormSession session;
        keepTwo(AppState::cn());
        frmVersions form(QStringLiteral("1"), QStringLiteral("01"));
        QCOMPARE(list(form)->rowCount(), 2);
        QCOMPARE(list(form)->item(0, 0)->text(), QStringLiteral("1"));

        click(form, QStringLiteral("Command1"));
        QVERIFY(session.prompt.lines().isEmpty());
        QVERIFY(QFileInfo(form.lastDocument()).size() > 0);
        QFile::remove(form.lastDocument());

        list(form)->selectRow(0);
        click(form, QStringLiteral("Command1"));
        QCOMPARE(session.prompt.lines(), QStringList{QStringLiteral("新旧対照表: 比較する版を二つ選択してください。")});
        list(form)->selectRow(1);
        session.prompt.clear();
        click(form, QStringLiteral("Command1"));
        QVERIFY(session.prompt.lines().isEmpty());
        QFile::remove(form.lastDocument());

        list(form)->clearSelection();
        list(form)->selectRow(0);
        session.prompt.answer({true});
        click(form, QStringLiteral("Command3"));
        QCOMPARE(session.prompt.lines(), QStringList{QStringLiteral("版の削除: 版 1 を削除します。")});
        QCOMPARE(list(form)->rowCount(), 1);
        QCOMPARE(list(form)->item(0, 0)->text(), QStringLiteral("2"));
    }
};

QTEST_MAIN(VersionsFormTest)
#include "tst_versionsform.moc"
