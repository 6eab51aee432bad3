// The export console offscreen: its lists by style and kind, the choosing step, and
// the chain from データ作成 to the finished document.

#include "ScriptedPrompt.h"
#include "FormSession.h"
#include "TestRoot.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "export/forms/frmExport.h"
#include "base/Database.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/EffectiveDates.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"
#include "versions/VersionTables.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

// The company's row of basic settings, every field as a new company's form shows it:
// opening the form does not make it, its update does.
void saveEmptySettings()
{
    BasicSettings settings(AppState::cn());
    settings.save(settings.load(), QStringLiteral("1"));
}

QStringList itemsOf(const QListWidget *list)
{
    QStringList items;
    for (int i = 0; i < list->count(); ++i)
        items << list->item(i)->data(Qt::UserRole).toString();
    return items;
}

void choose(QListWidget *list, const QString &code)
{
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == code)
            list->setCurrentRow(i);
    }
}

} // namespace

class ExportFormsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<FormSession> m_session;

    template<typename T>
    static T *child(QWidget &form, const QString &name)
    {
        T *w = form.findChild<T *>(name);
        if (!w)
            qFatal("no control %s", qPrintable(name));
        return w;
    }
    static void click(QWidget &form, const QString &name) { child<QAbstractButton>(form, name)->click(); }

private slots:
    void init() { m_session = std::make_unique<FormSession>(); }
    void cleanup() { m_session.reset(); }

    void listsFollowStyleAndKind()
    {
        frmExport form;
        form.show();
        auto *dearu = child<QListWidget>(form, QStringLiteral("DataList1"));
        auto *desumasu = child<QListWidget>(form, QStringLiteral("DataList2"));
        QCOMPARE(form.windowTitle(), QStringLiteral("データエクスポート"));
        QCOMPARE(itemsOf(dearu), (QStringList{QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"),
                                              QStringLiteral("05")}));
        QVERIFY(dearu->isVisible() && !desumasu->isVisible());
        QVERIFY(!child<QGroupBox>(form, QStringLiteral("Frame5"))->isVisible());

        click(form, QStringLiteral("Option4_1")); // 協約・協定
        QCOMPARE(itemsOf(dearu), QStringList{QStringLiteral("31")});
        QVERIFY(!child<QGroupBox>(form, QStringLiteral("Frame3"))->isVisible());
        click(form, QStringLiteral("Option2_1"));
        QVERIFY(!dearu->isVisible() && desumasu->isVisible());

        click(form, QStringLiteral("Option4_2")); // 就業規則届
        QVERIFY(!dearu->isVisible() && !desumasu->isVisible());
        QVERIFY(child<QGroupBox>(form, QStringLiteral("Frame5"))->isVisible());
        QVERIFY(!child<QGroupBox>(form, QStringLiteral("Frame1"))->isVisible());
        for (const char *step : {"Command4", "Command5", "Command6"})
            QVERIFY(!child<QPushButton>(form, QString::fromLatin1(step))->isEnabled());

        click(form, QStringLiteral("Option2_0"));
        click(form, QStringLiteral("Option4_0"));
        QCOMPARE(itemsOf(dearu), (QStringList{QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03"), QStringLiteral("04"),
                                              QStringLiteral("05")}));
        QVERIFY(child<QPushButton>(form, QStringLiteral("Command5"))->isEnabled());
    }

    void everyStepStartsByChoosing()
    {
        frmExport form;
        form.show();
        for (const char *step : {"Command5", "Command6", "Command4", "Command1", "Command7"}) {
            m_session->prompt.clear();
            click(form, QString::fromLatin1(step));
            QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("データ指定の確認: 処理するデータを指定してください。")});
        }
    }

    void theChainToADocument()
    {
        frmExport form;
        form.show();
        choose(child<QListWidget>(form, QStringLiteral("DataList1")), QStringLiteral("02"));
        click(form, QStringLiteral("Command4"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("データの確認: 日付のデータがありません。")});

        m_session->prompt.clear();
        click(form, QStringLiteral("Command5"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("処理完了: データ作成が完了しました。")});
        QCOMPARE(AppState::instance().CurKiteiCode, QStringLiteral("02"));

        m_session->prompt.clear();
        EffectiveDates(AppState::cn(), QStringLiteral("02")).add(QStringLiteral("1"), QDate(2026, 4, 1));
        click(form, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("データの確認: 基本設定のデータがありません。")});
        QVERIFY(form.lastDocument().isEmpty());

        m_session->prompt.clear();
        saveEmptySettings(); // the company's row
        click(form, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(), QStringList());
        // A readable name, in a temporary folder of its own.
        QCOMPARE(QFileInfo(form.lastDocument()).fileName(), AppState::instance().CompanyName + QStringLiteral("_賃金規程.docx"));
        QVERIFY(QFileInfo(form.lastDocument()).size() > 0);
        QCOMPARE(QDir(QFileInfo(form.lastDocument()).path()).entryList(QDir::Files),
                 QStringList{QFileInfo(form.lastDocument()).fileName()});
        QDir(QFileInfo(form.lastDocument()).path()).removeRecursively();
    }

    // A word changed after the substitution: the list marks the document, and
    // 設定項目の置換 asks before it goes on.
    void outOfDateWorkDataAreMarked()
    {
        QSqlDatabase db = AppState::cn();
        saveEmptySettings();
        for (const QString &document : {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")}) {
            EffectiveDates(db, document).add(QStringLiteral("1"), QDate(2026, 4, 1));
            QCOMPARE(WorkDataBuild(db, m_session->prompt).build(QStringLiteral("1"), document), Outcome::Done);
        }
        QCOMPARE(SettingSubstitution(db, m_session->prompt).run(QStringLiteral("1"), QStringLiteral("01")), Outcome::Done);
        frmExport form;
        form.show();
        auto *list = child<QListWidget>(form, QStringLiteral("DataList1"));
        QCOMPARE(list->item(0)->text(), QStringLiteral("就業規則"));

        execSql(db, QStringLiteral("UPDATE 変数テーブル語句 SET 語句 = '変更後の語句' WHERE ID = (SELECT min(ID) FROM 変数テーブル語句 "
                                   "WHERE 規程Code = '01')"));
        click(form, QStringLiteral("Option4_0")); // the lists read again
        QCOMPARE(list->item(0)->text(), QStringLiteral("就業規則（要再作成）"));
        QCOMPARE(list->item(1)->text(), QStringLiteral("賃金規程"));

        m_session->prompt.clear();
        choose(list, QStringLiteral("01"));
        click(form, QStringLiteral("Command4"));
        QCOMPARE(m_session->prompt.lines(),
                 QStringList{QStringLiteral("データ作成の確認: 「就業規則」の語句が変更されています。データ作成からやり直しますか？")});
        QCOMPARE(list->item(0)->text(), QStringLiteral("就業規則（要再作成）"));

        m_session->prompt.clear();
        m_session->prompt.answer({true});
        click(form, QStringLiteral("Command4"));
        QCOMPARE(
            m_session->prompt.lines(),
            (QStringList{QStringLiteral("データ作成の確認: 「就業規則」の語句が変更されています。データ作成からやり直しますか？"),
                         QStringLiteral("処理完了: データ作成が完了しました。"), QStringLiteral("処理完了: 置換処理が完了しました。")}));
        QCOMPARE(list->item(0)->text(), QStringLiteral("就業規則"));
    }

    // Beside データをWordへ送る: the PDF, saved where the user chooses (the dialog
    // proposes company, document and date), and the print preview of the same pages.
    void pdfAndPrint()
    {
        saveEmptySettings();
        frmExport form;
        form.show();
        click(form, QStringLiteral("Option4_2"));
        QString proposed;
        const QString chosen = m_session->root.path() + QStringLiteral("/届.pdf");
        form.choosePdfPath = [&](const QString &name) {
            proposed = name;
            return chosen;
        };
        int previewed = 0;
        form.showPrintPreview = [&](const PdfTypist &) {
            ++previewed;
            return true;
        };
        click(form, QStringLiteral("cmdPdf"));
        QCOMPARE(QFileInfo(proposed).fileName(), AppState::instance().CompanyName + QStringLiteral("_就業規則届_")
                                                     + QDate::currentDate().toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".pdf"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("処理完了: PDF「%1」を保存しました。").arg(chosen)});
        QFile pdf(chosen);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QVERIFY(pdf.read(5) == "%PDF-");

        // Cancelled: nothing written, nothing said.
        m_session->prompt.clear();
        form.choosePdfPath = [](const QString &) { return QString(); };
        click(form, QStringLiteral("cmdPdf"));
        QVERIFY(m_session->prompt.lines().isEmpty());

        click(form, QStringLiteral("cmdPrint"));
        QCOMPARE(previewed, 1);
        // The checks come first: without settings neither is made.
        execSql(AppState::cn(), QStringLiteral("DELETE FROM 企業情報"));
        click(form, QStringLiteral("cmdPrint"));
        QCOMPARE(previewed, 1);
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("データの確認: 基本設定のデータがありません。")});
    }

    // The PDF of a set of rules is written in the step that keeps its version: a save
    // dialog closed, or a preview closed without printing, keeps none.
    void aVersionOnlyWithItsDocument()
    {
        saveEmptySettings();
        EffectiveDates(AppState::cn(), QStringLiteral("02")).add(QStringLiteral("1"), QDate(2026, 4, 1));
        frmExport form;
        form.show();
        choose(child<QListWidget>(form, QStringLiteral("DataList1")), QStringLiteral("02"));
        click(form, QStringLiteral("Command5"));
        ensureVersionTables(AppState::cn());
        const auto versions = [] { return scalar(AppState::cn(), QStringLiteral("SELECT count(*) FROM 改訂履歴")).toInt(); };
        const int before = versions();
        form.choosePdfPath = [](const QString &) { return QString(); };
        form.showPrintPreview = [](const PdfTypist &) { return false; };
        click(form, QStringLiteral("cmdPdf"));
        click(form, QStringLiteral("cmdPrint"));
        QCOMPARE(versions(), before);

        m_session->prompt.clear();
        const QString chosen = m_session->root.path() + QStringLiteral("/賃金規程.pdf");
        form.choosePdfPath = [&](const QString &) { return chosen; };
        click(form, QStringLiteral("cmdPdf"));
        QCOMPARE(m_session->prompt.lines(), QStringList{QStringLiteral("処理完了: PDF「%1」を保存しました。").arg(chosen)});
        QCOMPARE(versions(), before + 1);
        QVERIFY(QFileInfo(chosen).size() > 1000);
    }

    void filingFormsNeedNoDocument()
    {
        saveEmptySettings();
        frmExport form;
        form.show();
        click(form, QStringLiteral("Option4_2"));
        click(form, QStringLiteral("Option5_1"));
        click(form, QStringLiteral("Command1"));
        QCOMPARE(m_session->prompt.lines(), QStringList());
        QVERIFY(QFileInfo(form.lastDocument()).size() > 0);
        QFile::remove(form.lastDocument());
    }
};

QTEST_MAIN(ExportFormsTest)
#include "tst_exportforms.moc"
