// Basic settings, the representative and the effective dates, through the core.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/JapaneseDate.h"
#include "base/AppState.h"

#include <QTest>

using namespace normaris;
using namespace normaris::test;

class SettingsTest : public QObject {
    Q_OBJECT
private slots:
    void parseDates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        const QDate none;
        QTest::newRow("slashes") << QStringLiteral("2009/1/1") << QDate(2009, 1, 1);
        QTest::newRow("ISO") << QStringLiteral("2009-01-01") << QDate(2009, 1, 1);
        QTest::newRow("dots") << QStringLiteral("2009.12.31") << QDate(2009, 12, 31);
        QTest::newRow("kanji") << QStringLiteral("2009年1月1日") << QDate(2009, 1, 1);
        QTest::newRow("full-width digits") << QStringLiteral("２０２６／４／１") << QDate(2026, 4, 1);
        QTest::newRow("Reiwa") << QStringLiteral("令和8年4月1日") << QDate(2026, 4, 1);
        QTest::newRow("Reiwa first year") << QStringLiteral("令和元年5月1日") << QDate(2019, 5, 1);
        QTest::newRow("Heisei letter") << QStringLiteral("H21.1.1") << QDate(2009, 1, 1);
        QTest::newRow("Showa") << QStringLiteral("昭和64年1月7日") << QDate(1989, 1, 7);
        QTest::newRow("surrounding blanks") << QStringLiteral(" 2009/1/1 ") << QDate(2009, 1, 1);
        QTest::newRow("leap day") << QStringLiteral("2024/2/29") << QDate(2024, 2, 29);
        QTest::newRow("no 30 February") << QStringLiteral("2009/2/30") << none;
        QTest::newRow("no leap day in 2025") << QStringLiteral("2025/2/29") << none;
        QTest::newRow("month 13") << QStringLiteral("2009/13/1") << none;
        QTest::newRow("mixed separators") << QStringLiteral("2009/1-1") << none;
        QTest::newRow("before the era began") << QStringLiteral("令和元年4月30日") << none;
        QTest::newRow("era year 0") << QStringLiteral("平成0年1月1日") << none;
        QTest::newRow("after Heisei ended") << QStringLiteral("平成31年5月1日") << none;
        QTest::newRow("after Showa ended") << QStringLiteral("昭和64年1月8日") << none;
        QTest::newRow("last day of Taisho") << QStringLiteral("大正15年12月24日") << QDate(1926, 12, 24);
        QTest::newRow("after Taisho ended") << QStringLiteral("T15.12.25") << none;
        QTest::newRow("words") << QStringLiteral("来月") << none;
        QTest::newRow("empty") << QString() << none;
    }
    void parseDates()
    {
        QFETCH(QString, text);
        QFETCH(QDate, date);
        const auto parsed = parseJapaneseDate(text);
        QCOMPARE(parsed.value_or(QDate()), date);
    }

    void eraForm_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("text");
        QTest::newRow("Heisei") << QDate(2009, 1, 1) << QStringLiteral("平成21年1月1日");
        QTest::newRow("Reiwa, two-digit year") << QDate(2026, 4, 1) << QStringLiteral("令和08年4月1日");
        QTest::newRow("last day of Heisei") << QDate(2019, 4, 30) << QStringLiteral("平成31年4月30日");
        QTest::newRow("first day of Reiwa") << QDate(2019, 5, 1) << QStringLiteral("令和01年5月1日");
    }
    void eraForm()
    {
        QFETCH(QDate, date);
        QFETCH(QString, text);
        QCOMPARE(formatEraDate(date), text);
    }

    void dateCheckMessages()
    {
        ScriptedPrompt prompt;
        QVERIFY(!EffectiveDates::checkDate(prompt, QString()));
        QVERIFY(!EffectiveDates::checkDate(prompt, QStringLiteral("2009/2/30")));
        QCOMPARE(EffectiveDates::checkDate(prompt, QStringLiteral("2009/2/28")).value(), QDate(2009, 2, 28));
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("入力エラー: 未入力は許されません。･･･年月日"),
                                              QStringLiteral("入力エラー: 日付の入力が正しくありません。･･･年月日")}));
    }

    // The first opening shows the thirteen markers and writes nothing: the row comes
    // with the first update, so that an export still sees that nothing was set.
    void firstOpeningShowsTheMarkers()
    {
        TestRoot root;
        QSqlDatabase db = root.openCompany(QStringLiteral("甲"));
        QCOMPARE(scalar(db, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt(), 0);
        const QStringList values = BasicSettings(db).load();
        QCOMPARE(scalar(db, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt(), 0);
        QCOMPARE(values.count(QString()), 3);
        QCOMPARE(values.filter(QStringLiteral("☆")).size(), 13);
        QCOMPARE(values.at(13), QStringLiteral("☆0014☆"));
        QCOMPARE(BasicSettings(db).representative(), QStringLiteral("2"));
    }

    // Emptied fields store their marker, except the three that have none.
    void savingEmptyFields()
    {
        TestRoot root;
        QSqlDatabase db = root.openCompany(QStringLiteral("甲"));
        BasicSettings settings(db);
        QStringList values = settings.load();
        values[0] = QStringLiteral("株式会社テスト");
        values[1] = QStringLiteral("100-0001");
        values[13] = QStringLiteral("120");
        settings.save(values, QStringLiteral("1"));
        values[0].clear();
        values[1].clear();
        values[13].clear();
        settings.save(values, QStringLiteral("3"));
        QCOMPARE(scalar(db, QStringLiteral("SELECT 事業所名 || '|' || 郵便番号 || '|' || 労働者数 FROM 企業情報")).toString(),
                 QStringLiteral("☆0001☆||☆0014☆"));
        QCOMPARE(settings.representative(), QStringLiteral("3"));
        QCOMPARE(scalar(db, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt(), 1);
    }

    void fieldChecks_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("message");
        QTest::newRow("workers 1") << QStringLiteral("労働者数") << QStringLiteral("1") << QString();
        QTest::newRow("workers 9999999") << QStringLiteral("労働者数") << QStringLiteral("9999999") << QString();
        QTest::newRow("workers marker") << QStringLiteral("労働者数") << QStringLiteral("☆0014☆") << QString();
        QTest::newRow("workers 0") << QStringLiteral("労働者数") << QStringLiteral("0")
                                   << QStringLiteral("入力エラー: 1～9999999を入力してください。･･･労働者数");
        QTest::newRow("workers 10000000") << QStringLiteral("労働者数") << QStringLiteral("10000000")
                                          << QStringLiteral("入力エラー: 1～9999999を入力してください。･･･労働者数");
        QTest::newRow("name of 30 full-width") << QStringLiteral("事業所名") << QString(30, QChar(u'社')) << QString();
        QTest::newRow("name of 31 full-width") << QStringLiteral("事業所名") << QString(31, QChar(u'社'))
                                               << QStringLiteral("入力のエラー: 項目の長さ(62)が制限(60)を越えています。 ･･･事業所名");
        QTest::newRow("quote in a name") << QStringLiteral("使用者氏名") << QStringLiteral("O'Neil")
                                         << QStringLiteral("入力のエラー: 項目中に ' を含むことはできません。 ･･･使用者氏名");
        QTest::newRow("tab in a name") << QStringLiteral("事業所名") << QStringLiteral("株式会社\t甲")
                                       << QStringLiteral("入力のエラー: 項目中に制御文字を含むことはできません。 ･･･事業所名");
        QTest::newRow("line break in an address") << QStringLiteral("所在地1") << QStringLiteral("東京都\n千代田区")
                                                  << QStringLiteral("入力のエラー: 項目中に制御文字を含むことはできません。 ･･･所在地1");
        QTest::newRow("tel over 20") << QStringLiteral("tel") << QStringLiteral("03-5555-0123-4567-890")
                                     << QStringLiteral("入力のエラー: 項目の長さ(21)が制限(20)を越えています。 ･･･tel");
    }
    void fieldChecks()
    {
        QFETCH(QString, column);
        QFETCH(QString, value);
        QFETCH(QString, message);
        ScriptedPrompt prompt;
        QCOMPARE(BasicSettings::checkField(prompt, settingIndex(column), value), message.isEmpty());
        QCOMPARE(prompt.lines(), message.isEmpty() ? QStringList() : QStringList{message});
    }

    void keysPerField_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("accepted");
        QTest::addColumn<QString>("refused");
        QTest::newRow("郵便番号") << QStringLiteral("郵便番号") << QStringLiteral("0123456789-") << QStringLiteral("a ー／");
        QTest::newRow("労働者数") << QStringLiteral("労働者数") << QStringLiteral("0123456789") << QStringLiteral("-a１");
        QTest::newRow("労働保険番号") << QStringLiteral("労働保険番号") << QStringLiteral("0123456789") << QStringLiteral("-a");
        QTest::newRow("事業所名") << QStringLiteral("事業所名") << QStringLiteral("株a-1") << QString();
    }
    void keysPerField()
    {
        QFETCH(QString, column);
        QFETCH(QString, accepted);
        QFETCH(QString, refused);
        const int index = settingIndex(column);
        for (QChar c : accepted)
            QVERIFY2(BasicSettings::acceptsKey(index, c), qUtf8Printable(QString(c)));
        for (QChar c : refused)
            QVERIFY2(!BasicSettings::acceptsKey(index, c), qUtf8Printable(QString(c)));
    }

    // Both styles of a document read one list of dates, oldest first.
    void datesAreSharedByBothStyles()
    {
        TestRoot root;
        QSqlDatabase db = root.openCompany(QStringLiteral("甲"));
        EffectiveDates dates(db, QStringLiteral("01"));
        dates.add(QStringLiteral("2"), QDate(2026, 4, 1));
        const qint64 first = dates.add(QStringLiteral("1"), QDate(2009, 1, 1));
        EffectiveDates(db, QStringLiteral("02")).add(QStringLiteral("1"), QDate(2010, 1, 1));
        QList<QDate> seen;
        for (const EffectiveDate &d : dates.list())
            seen << d.date;
        QCOMPARE(seen, (QList<QDate>{QDate(2009, 1, 1), QDate(2026, 4, 1)}));
        QCOMPARE(scalar(db, QStringLiteral("SELECT 年月日 FROM 施行日 WHERE ID = ?"), {first}).toString(), QStringLiteral("2009-01-01"));
        dates.change(first, QDate(2008, 4, 1));
        dates.remove(dates.list().last().id);
        QCOMPARE(dates.list().size(), 1);
        QCOMPARE(dates.list().first().date, QDate(2008, 4, 1));
    }

    // The steps of the form and the CLI: a wrong date or style stops with its message,
    // a question answered no keeps the rows, and a delete takes every row of the date.
    void dateSteps()
    {
        TestRoot root;
        QSqlDatabase db = root.openCompany(QStringLiteral("甲"));
        ScriptedPrompt prompt;
        EffectiveDates dates(db, QStringLiteral("01"));
        QCOMPARE(dates.addStep(prompt, QStringLiteral("9"), QStringLiteral("2026/4/1")), Outcome::Stopped);
        QCOMPARE(dates.addStep(prompt, QStringLiteral("1"), QStringLiteral("2026/2/30")), Outcome::Stopped);
        qint64 id = 0;
        QCOMPARE(dates.addStep(prompt, QStringLiteral("1"), QStringLiteral("2026/4/1"), &id), Outcome::Done);
        QCOMPARE(dates.addStep(prompt, QStringLiteral("2"), QStringLiteral("令和8年4月1日")), Outcome::Done);
        QCOMPARE(dates.changeStep(prompt, id, QString()), Outcome::Stopped);
        QCOMPARE(prompt.lines(), (QStringList{QStringLiteral("文章形式の指定: 文章形式を指定してください。"),
                                              QStringLiteral("入力エラー: 日付の入力が正しくありません。･･･年月日"),
                                              QStringLiteral("入力エラー: 未入力は許されません。･･･年月日")}));
        prompt.clear();
        prompt.answer({false, true});
        QCOMPARE(dates.removeDateStep(prompt, QStringLiteral("2026-04-01")), Outcome::Stopped);
        QCOMPARE(dates.list().size(), 2);
        QCOMPARE(dates.removeDateStep(prompt, QStringLiteral("2026-04-01")), Outcome::Done);
        QVERIFY(dates.list().isEmpty());
        QCOMPARE(dates.removeDateStep(prompt, QStringLiteral("2026-04-01")), Outcome::Stopped);
        QCOMPARE(prompt.lines().last(), QStringLiteral("削除の確認: 2026/04/01 はありません。"));
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
