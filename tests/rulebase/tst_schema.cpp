// The tables of a company file and their column order, in the seed and in a new company.

#include "base/SqliteMessages.h"
#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "base/Database.h"
#include "base/Levels.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/Schema.h"

#include <QSqlQuery>
#include <QTest>

using namespace normaris;
using namespace normaris::test;

namespace {

QStringList columnsOf(QSqlDatabase db, const QString &table)
{
    QStringList names;
    RowReader q = execSql(db, QStringLiteral("PRAGMA table_info(\"%1\")").arg(table));
    while (q.next())
        names << q.value(1).toString();
    return names;
}

QStringList words(const char *list) { return QString::fromUtf8(list).split(u' '); }

// Whether every name of wanted stands in columns, in the same order (others may come between).
bool inOrder(const QStringList &columns, const QStringList &wanted)
{
    qsizetype at = 0;
    for (const QString &name : wanted) {
        at = columns.indexOf(name, at);
        if (at < 0)
            return false;
        ++at;
    }
    return true;
}

} // namespace

class SchemaTest : public QObject {
    Q_OBJECT
private slots:
    // Columns are read by ordinal elsewhere: a reordering must fail here.
    void columnOrder_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("規程") << QStringLiteral("規程") << words("ID 文章形式Code Code 規程 変更フラグ 正式名称 選択フラグ 文章種別");
        QTest::newRow("前文") << QStringLiteral("前文")
                              << words("ID 文章形式Code 規程Code Code 結合 改行 前文 変数語句 変更フラグ 選択フラグ 結合種別");
        QTest::newRow("条") << QStringLiteral("条") << words("ID 文章形式Code 規程Code 章Code Code 条 変更フラグ 正式名称 選択フラグ");
        QTest::newRow("項") << QStringLiteral("項")
                            << words("ID 文章形式Code 規程Code 章Code 条Code Code 項 結合 改行 テンプレート 変数語句 変数番号 変更フラグ "
                                     "選択フラグ 結合種別");
        QTest::newRow("号の細分イロハ") << QStringLiteral("号の細分イロハ")
                                        << words("ID 文章形式Code 規程Code 章Code 条Code 項Code 号Code 号の細分丸Code Code 号の細分イロハ "
                                                 "結合 改行 テンプレート 変数語句 変数番号 変更フラグ 選択フラグ 結合種別");
        QTest::newRow("変数テーブル語句")
            << QStringLiteral("変数テーブル語句")
            << words("ID Code 語句 規程Code 章Code 条Code 項Code 号Code 号の細分丸Code 号の細分イロハCode 結合 種別 表示名称 選択フラグ");
        QTest::newRow("変数テーブル番号更新後")
            << QStringLiteral("変数テーブル番号更新後")
            << words("ID Code 規程Code 章Code 条Code 項Code 号Code 号の細分丸Code 号の細分イロハCode 結合 種別 "
                     "変換参照■規程Code 変換参照■章Code 変換参照■条Code 変換参照■項Code 変換参照■号Code "
                     "変換参照■号の細分丸Code 変換参照■号の細分イロハCode 変換参照■結合 変換参照■種別");
        QTest::newRow("作成データ")
            << QStringLiteral("作成データ")
            << words("ID 順番 種別 規程Code 番号 章Code 条Code 項Code 号Code 号の細分丸Code 号の細分イロハCode 結合 改行 "
                     "テンプレート 文章 変数語句 変数番号 変更フラグ 文章形式Code 正式名称");
        QTest::newRow("施行日") << QStringLiteral("施行日") << words("ID 文章形式Code 規程Code 年月日");
        QTest::newRow("企業情報") << QStringLiteral("企業情報")
                                  << words(
                                         "ID 事業所名 郵便番号 所在地1 所在地2 tel 使用者職名 使用者氏名 労働組合名 従業員職名 従業員氏名 "
                                         "パート職名 パート氏名 業種 労働者数 労働保険番号 管轄の労基署");
        QTest::newRow("語句設定■条") << QStringLiteral("語句設定■条")
                                     << words("ID 文章形式Code 規程Code 章Code Code 条 変更フラグ 正式名称 選択フラグ");
    }
    void columnOrder()
    {
        QFETCH(QString, table);
        QFETCH(QStringList, columns);
        TestRoot root;
        root.makeCompany(QStringLiteral("順序"));
        {
            QSqlDatabase db = openCompanyDatabase(root.layout().companyFile(QStringLiteral("順序")), QStringLiteral("t"));
            QCOMPARE(columnsOf(db, table), columns);
        }
        closeDatabase(QStringLiteral("t"));
    }

    // The level table names tables and columns that the code reads by name: each must
    // stand in a company file, in the order the table gives.
    void levelTableAgreesWithSchema_data()
    {
        QTest::addColumn<int>("row");
        for (qsizetype i = 0; i < qsizetype(kLevels.size()); ++i) {
            if (*kLevels[i].table)
                QTest::newRow(qUtf8Printable(QString::fromUtf16(kLevels[i].table))) << int(i);
        }
    }
    void levelTableAgreesWithSchema()
    {
        QFETCH(int, row);
        const LevelInfo &info = kLevels[row];
        const QString table = QString::fromUtf16(info.table);
        // The key: style, document, the parents' codes, the level's own Code; then its text.
        QStringList key = {QStringLiteral("文章形式Code"), QString::fromUtf16(info.documentKey)};
        if (info.placeDepth > 0)
            key += placeColumns().mid(0, info.placeDepth - 1);
        if (info.placeDepth > 0 || *info.fixedCode)
            key << QStringLiteral("Code");
        key << QString::fromUtf16(info.textColumn);
        TestRoot root;
        root.makeCompany(QStringLiteral("段階"));
        {
            QSqlDatabase db = openCompanyDatabase(root.layout().companyFile(QStringLiteral("段階")), QStringLiteral("t"));
            const QStringList columns = columnsOf(db, table);
            QVERIFY2(inOrder(columns, key), qUtf8Printable(table + u':' + key.join(u' ')));
            QVERIFY(columns.contains(QString::fromUtf16(info.bodyColumn)));
            const QStringList segments = {QStringLiteral("結合"), QStringLiteral("改行"), QStringLiteral("結合種別")};
            QCOMPARE(inOrder(columns, segments), info.segmented);
            // A row of the level in the composition tables fills the place columns down to it.
            QVERIFY(inOrder(columnsOf(db, QStringLiteral("作成データ")),
                            QStringList{QStringLiteral("規程Code")} + placeColumns().mid(0, info.placeDepth)));
        }
        closeDatabase(QStringLiteral("t"));
    }

    void seedHoldsTheFixedRows()
    {
        TestRoot root;
        const QString seed = root.layout().seedFile();
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT group_concat(文章形式, '/') FROM 文章形式")).toString(),
                 QStringLiteral("である調/ですます調"));
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT count(*) FROM 代表労働者の選択")).toInt(), 1);
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt(), 0);
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT 選択肢 FROM 作成データ選択肢 WHERE 種別 = '1' AND Code = '4'")).toString(),
                 QStringLiteral("この下に章を追加"));
        // Every action code the composition panels ask for has a caption.
        QCOMPARE(valueIn(seed, QStringLiteral("SELECT count(*) FROM 作成データ選択肢")).toInt(), 2 + 2 + 2 + 4 + 4 + 4 + 5 + 5);
    }

    void aFileOfAnotherShapeIsRefused()
    {
        TestRoot root;
        const QString path = root.path() + QStringLiteral("/other.sqlite");
        {
            QSqlDatabase db = openDatabase((QFile(path).open(QIODevice::WriteOnly), path), QStringLiteral("w"));
            execSql(db, QStringLiteral("CREATE TABLE 規程 (ID INTEGER PRIMARY KEY, Code TEXT)"));
        }
        closeDatabase(QStringLiteral("w"));
        try {
            openCompanyDatabase(path, QStringLiteral("w"));
            QFAIL("a foreign file was opened as a company file");
        } catch (const DbError &e) {
            QVERIFY2(e.text().contains(QStringLiteral("は本システムの会社データではありません。")), qUtf8Printable(e.text()));
        }
        QVERIFY(!QSqlDatabase::contains(QStringLiteral("w")));
    }

    // Our schema has no triggers or views: a file that carries one runs code of its own
    // and is refused, however well its tables match.
    void aFileWithATriggerOrViewIsRefused_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("reason");
        QTest::newRow("trigger") << QStringLiteral("CREATE TRIGGER 消去 AFTER UPDATE ON 企業情報 BEGIN DELETE FROM 作成データ補助～条; END")
                                 << QStringLiteral("（トリガー「消去」があります。）");
        QTest::newRow("view") << QStringLiteral("CREATE VIEW 一覧 AS SELECT * FROM 規程")
                              << QStringLiteral("（ビュー「一覧」があります。）");
    }
    void aFileWithATriggerOrViewIsRefused()
    {
        QFETCH(QString, statement);
        QFETCH(QString, reason);
        TestRoot root;
        root.makeCompany(QStringLiteral("甲"));
        const QString path = root.layout().companyFile(QStringLiteral("甲"));
        {
            QSqlDatabase db = openDatabase(path, QStringLiteral("w"));
            execSql(db, statement);
        }
        closeDatabase(QStringLiteral("w"));
        try {
            openCompanyDatabase(path, QStringLiteral("w"));
            QFAIL("a file with code of its own was opened");
        } catch (const DbError &e) {
            QVERIFY2(e.text().endsWith(QStringLiteral("は本システムの会社データではありません。") + reason), qUtf8Printable(e.text()));
        }
    }

    // A file SQLite does not know is foreign; a file it cannot read is unreadable.
    void unreadableIsNotForeign()
    {
        TestRoot root;
        const QString garbage = root.path() + QStringLiteral("/garbage.sqlite");
        {
            QFile f(garbage);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(QByteArray(8192, 'x'));
        }
        try {
            openCompanyDatabase(garbage, QStringLiteral("w"));
            QFAIL("garbage was opened");
        } catch (const DbError &e) {
            QVERIFY2(e.text().contains(QStringLiteral("は本システムの会社データではありません。")), qUtf8Printable(e.text()));
        }
        root.makeCompany(QStringLiteral("甲"));
        const QString path = root.layout().companyFile(QStringLiteral("甲"));
        FaultInjection::arm(0, 1);
        try {
            openCompanyDatabase(path, QStringLiteral("w"));
            QFAIL("a failed read was taken for a good file");
        } catch (const DbError &e) {
            QCOMPARE(e.text(), sqliteMessage(SqliteIoErr, path));
        }
        FaultInjection::disarm();
        QVERIFY(!QSqlDatabase::contains(QStringLiteral("w")));
    }
};

QTEST_GUILESS_MAIN(SchemaTest)
#include "tst_schema.moc"
