// The 新旧対照表 dialog of the export console, offscreen: the versions of the chosen
// document, the table of the latest two or of two chosen rows, and deletion; the
// old side from another document of the company, with 備考.

#include "../forms/FormSession.h"
#include "DocxContent.h"
#include "VersionRows.h"
#include "versions/forms/frmVersions.h"

#include <QCheckBox>
#include <QComboBox>
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

    // The current rules kept as document 70: chosen as the old side, the table pairs
    // their article with the draft's and says in 備考 that the second one is new.
    void anotherDocumentAsTheOldSide()
    {
        FormSession session;
        keepTwo(AppState::cn());
        Version current = version(3, {articleRow(QStringLiteral("0001"), 1, QStringLiteral("目的"))});
        current.header.document = QStringLiteral("70");
        current.header.name = QStringLiteral("現行就業規則");
        VersionStore(AppState::cn()).keep(current.header, current.rows);

        frmVersions form(QStringLiteral("1"), QStringLiteral("01"));
        auto *older = form.findChild<QComboBox *>(QStringLiteral("OlderSide"));
        QCOMPARE(older->count(), 2);
        QCOMPARE(older->itemText(0), QStringLiteral("この規程の版"));
        QCOMPARE(older->itemText(1), QStringLiteral("70 現行就業規則（版 3）"));
        older->setCurrentIndex(1);
        form.findChild<QCheckBox *>(QStringLiteral("RemarksCheck"))->setChecked(true);

        list(form)->selectRow(0);
        list(form)->selectRow(1);
        click(form, QStringLiteral("Command1"));
        QCOMPARE(session.prompt.lines(),
                 QStringList{QStringLiteral("新旧対照表: 改正後の版を一つ選択してください（選択しないときは最新の版）。")});
        QVERIFY(form.lastDocument().isEmpty());

        list(form)->clearSelection();
        session.prompt.clear();
        click(form, QStringLiteral("Command1"));
        QVERIFY2(session.prompt.lines().isEmpty(), qPrintable(session.prompt.lines().join(u'\n')));
        const QString document = QString::fromUtf8(zipEntries(form.lastDocument()).value(QStringLiteral("word/document.xml")));
        QFile::remove(form.lastDocument());
        QVERIFY(document.contains(QStringLiteral("<w:t>備考</w:t>")));
        QVERIFY(document.contains(QStringLiteral("<w:t>（新設）</w:t>")));
        QVERIFY(document.contains(QStringLiteral("（適用範囲）")));
    }
};

QTEST_MAIN(VersionsFormTest)
#include "tst_versionsform.moc"
