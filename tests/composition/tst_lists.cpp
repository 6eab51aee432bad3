// The four lists: what each finds in the standard draft, the messages when there is
// nothing, and a workbook whose codes are text.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "composition/DocumentList.h"
#include "composition/ExcelLists.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

QString partOf(const QString &xlsx, const QString &part)
{
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), xlsx, part});
    unzip.waitForFinished();
    return QString::fromUtf8(unzip.readAllStandardOutput());
}

} // namespace

class ListsTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_root = std::make_unique<TestRoot>();
        m_root->openCompany(QStringLiteral("甲"));
    }
    void cleanup() { m_root.reset(); }

    // "処理完了" comes once the workbook is in front of the user; when nothing can
    // show it, the message names its full path instead.
    void doneAfterTheWorkbookIsShown_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<int>("outcome");
        QTest::newRow("shown") << true << int(Outcome::Done);
        QTest::newRow("no application") << false << int(Outcome::Failed);
    }
    void doneAfterTheWorkbookIsShown()
    {
        QFETCH(bool, shown);
        QFETCH(int, outcome);
        QTemporaryDir dir;
        const QString out = dir.path() + QStringLiteral("/list.xlsx");
        ScriptedPrompt prompt;
        QStringList saidBeforeShowing;
        const auto show = [&](const QString &path) {
            saidBeforeShowing = prompt.lines();
            return QFileInfo(path).size() > 0 && shown;
        };
        // The wage rules' draft holds templates.
        QCOMPARE(int(ExcelLists(AppState::cn(), prompt).write(ListKind::Templates, QStringLiteral("1"), QStringLiteral("02"), out, show)),
                 outcome);
        QCOMPARE(saidBeforeShowing, QStringList());
        QCOMPARE(prompt.lines(),
                 QStringList{shown ? QStringLiteral("処理完了: 処理が完了しました。")
                                   : kProgramTitle + QStringLiteral(": 一覧表「%1」を開くアプリケーションが見つかりません。").arg(out)});
    }

    void eachListOfTheDraft_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("headings");
        QTest::addColumn<QString>("document");
        QTest::newRow("basic words") << int(ListKind::BasicWords) << "【基本語句】就業規則"
                                     << "区分|条Code|条の名称"
                                     << "01";
        QTest::newRow("embedded words") << int(ListKind::EmbeddedWords) << "【埋込語句】就業規則"
                                        << "Code|表示名称|設定内容|条Code|条の名称"
                                        << "01";
        QTest::newRow("references") << int(ListKind::References) << "【参照条文番号】就業規則"
                                    << "Code|参照先|条Code|条の名称"
                                    << "01";
        // The work rules' draft holds no template; the wage rules' does.
        QTest::newRow("templates") << int(ListKind::Templates) << "【テンプレート】賃金規程"
                                   << "Code|条Code|条の名称"
                                   << "02";
    }
    void eachListOfTheDraft()
    {
        QFETCH(int, kind);
        QFETCH(QString, title);
        QFETCH(QString, headings);
        QFETCH(QString, document);
        if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
            QSKIP("unzip is not installed");
        QTemporaryDir dir;
        const QString out = dir.path() + QStringLiteral("/list.xlsx");
        ScriptedPrompt prompt;
        QCOMPARE(ExcelLists(AppState::cn(), prompt).write(ListKind(kind), QStringLiteral("1"), document, out), Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("処理完了: 処理が完了しました。")});
        const QString strings = partOf(out, QStringLiteral("xl/sharedStrings.xml"));
        QVERIFY(strings.contains(QStringLiteral("<t>") + title + QStringLiteral("</t>")));
        for (const QString &h : headings.split(u'|'))
            QVERIFY2(strings.contains(QStringLiteral("<t>") + h + QStringLiteral("</t>")), qUtf8Printable(h));
        // Article codes such as 0001 stay text, with their zeros.
        QVERIFY(QRegularExpression(QStringLiteral("<t>0[0-9]{3}</t>")).match(strings).hasMatch() || ListKind(kind) == ListKind::BasicWords);
        const QString sheet = partOf(out, QStringLiteral("xl/worksheets/sheet1.xml"));
        QVERIFY(sheet.contains(QStringLiteral("<row r=\"3\"")));
        QVERIFY(!sheet.contains(QStringLiteral("t=\"n\"")));
        // The work tables are left empty.
        QCOMPARE(scalar(AppState::cn(), QStringLiteral("SELECT (SELECT count(*) FROM goku_excel) + (SELECT count(*) FROM bangou_excel) + "
                                                       "(SELECT count(*) FROM kihongoku_excel)"))
                     .toInt(),
                 0);
    }

    void nothingToList()
    {
        QTemporaryDir dir;
        const QString out = dir.path() + QStringLiteral("/list.xlsx");
        ScriptedPrompt prompt;
        ExcelLists lists(AppState::cn(), prompt);
        // A document not on the list has no rows at all.
        QCOMPARE(lists.write(ListKind::EmbeddedWords, QStringLiteral("2"), QStringLiteral("01"), out), Outcome::Stopped);
        // A document with its 規程 row only has nothing to list.
        DocumentList(AppState::cn()).addToList(QStringLiteral("2"), QStringLiteral("05"));
        QCOMPARE(lists.write(ListKind::Templates, QStringLiteral("2"), QStringLiteral("05"), out), Outcome::Stopped);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("データの確認: データがありません。"),
                                              QStringLiteral("テンプレートの確認: テンプレートはありません。")}));
        QVERIFY(!QFile::exists(out));
    }

    // Taking a standard document off the list drops its rows; a user document keeps them.
    void listAsymmetry()
    {
        QSqlDatabase db = AppState::cn();
        DocumentList list(db);
        execSql(db, QStringLiteral("INSERT INTO 規程 (文章形式Code, Code, 規程, 正式名称, 選択フラグ, 文章種別) VALUES ('1', '69', "
                                   "'標準の最後', '標準の最後', 0, '1'), ('1', '70', '自社規程', '自社規程', 0, '1')"));
        for (const char *code : {"69", "70"}) {
            list.addToList(QStringLiteral("1"), QString::fromLatin1(code));
            list.removeFromList(QStringLiteral("1"), QString::fromLatin1(code));
        }
        QStringList onList;
        RowReader q = execSql(db, QStringLiteral("SELECT 規程Code FROM 作成データ補助～条 WHERE 規程Code IN ('69','70')"));
        while (q.next())
            onList << q.value(0).toString();
        QCOMPARE(onList, QStringList{QStringLiteral("70")});
        list.addToList(QStringLiteral("1"), QStringLiteral("70"));
        QCOMPARE(scalar(db, QStringLiteral("SELECT count(*) FROM 作成データ補助～条 WHERE 規程Code = '70'")).toInt(),
                 1); // no second 規程 row
        QVERIFY(list.isOnList(QStringLiteral("1"), QStringLiteral("70")));
        list.removeFromList(QStringLiteral("1"), QStringLiteral("01"));
        QCOMPARE(scalar(db, QStringLiteral("SELECT count(*) FROM 作成データ補助項～ WHERE 規程Code = '01' AND 文章形式Code = '1'")).toInt(),
                 0);
    }

private:
    std::unique_ptr<TestRoot> m_root;
};

QTEST_GUILESS_MAIN(ListsTest)
#include "tst_lists.moc"
