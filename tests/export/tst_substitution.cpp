// 設定項目の置換: words per clause, settings, the latest date, the workers' side of
// an agreement, the rows that keep their markers, and the making-order check.

#include "ExportFixture.h"
#include "rulebase/CompositionRow.h"
#include "export/SettingSubstitution.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/Schema.h"

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kDoc = QStringLiteral("70");
const QString kStyle = QStringLiteral("1");

CompositionRow row(Level level, const QStringList &codes, const QString &text, bool words = true)
{
    CompositionRow r;
    r.level = level;
    r.document = kDoc;
    r.codes = codes;
    while (r.codes.size() < 6)
        r.codes << QString();
    r.join.clear();
    r.templateCode.clear();
    r.text = text;
    r.words = words;
    r.references = true;
    r.style = kStyle;
    r.number = 1;
    return r;
}

void writeRows(QSqlDatabase db, QList<CompositionRow> rows)
{
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i].order = int(i) + 1;
    insertWorkRows(db, kOutputRowsTable, rows);
}

void addWord(QSqlDatabase db, const QString &code, const QString &word, const QStringList &place, const QString &level)
{
    QVariantList values = {code, word, kDoc};
    for (int i = 0; i < 6; ++i)
        values << place.value(i);
    values << QString() << level << QStringLiteral("語句") << 1;
    insertRow(db, QStringLiteral("変数テーブル語句"), values);
}

QString textAt(QSqlDatabase db, int order)
{
    return scalar(db, QStringLiteral("SELECT 文章 FROM 作成データ WHERE 規程Code = ? AND 順番 = ?"), {kDoc, order}).toString();
}

void addDocument(QSqlDatabase db, const QString &kind)
{
    insertRow(db, QStringLiteral("規程"), {kStyle, kDoc, QStringLiteral("テスト"), 0, QStringLiteral("テスト協定"), 1, kind});
}

void saveSettings(QSqlDatabase db, const QList<std::pair<QString, QString>> &given, const QString &representative = QStringLiteral("2"))
{
    BasicSettings settings(db);
    QStringList values = settings.load();
    for (const auto &[column, value] : given)
        values[settingIndex(column)] = value;
    settings.save(values, representative);
}

} // namespace

class SubstitutionTest : public QObject {
    Q_OBJECT
private slots:
    void wordsSettingsAndDates()
    {
        OpenCompany company;
        QSqlDatabase db = company.db;
        addDocument(db, QStringLiteral("1"));
        const QStringList first = {QStringLiteral("01"), QStringLiteral("0001"), QStringLiteral("01")};
        const QStringList second = {QStringLiteral("01"), QStringLiteral("0002"), QStringLiteral("01")};
        const QStringList item = {QStringLiteral("01"), QStringLiteral("0002"), QStringLiteral("01"), QStringLiteral("01")};
        addWord(db, QStringLiteral("0001"), QStringLiteral("３０日"), first, QStringLiteral("4"));
        addWord(db, QStringLiteral("0001"), QStringLiteral("１４日"), second, QStringLiteral("4"));
        addWord(db, QStringLiteral("0002"), QStringLiteral("店長"), item, QStringLiteral("5"));
        saveSettings(db, {{QStringLiteral("事業所名"), QStringLiteral("株式会社見本")}});
        EffectiveDates dates(db, kDoc);
        dates.add(kStyle, QDate(2025, 4, 1));
        dates.add(kStyle, QDate(2026, 4, 1));
        writeRows(db, {
                          row(Level::Document, {}, QStringLiteral("☆0001☆の規程")),
                          row(Level::Preamble, {}, QStringLiteral("☆0001☆は★0001★を定める。")),
                          row(Level::Chapter, {QStringLiteral("01")}, QStringLiteral("☆0001☆")),
                          row(Level::Article, first.mid(0, 2), QStringLiteral("★0001★")),
                          row(Level::Paragraph, first, QStringLiteral("★0001★前までに★0001★")),
                          row(Level::Paragraph, second, QStringLiteral("★0001★前、★0002★")),
                          row(Level::Item, item, QStringLiteral("★0002★の承認")),
                          row(Level::Paragraph, first, QStringLiteral("★0001★と☆0001☆"), false),
                          row(Level::Paragraph, first, QStringLiteral("☆0002☆、☆0030☆施行")),
                          row(Level::Paragraph, first, QStringLiteral("番号0012のみ")),
                      });

        ScriptedPrompt prompt;
        QCOMPARE(SettingSubstitution(db, prompt).run(kStyle, kDoc), Outcome::Done);
        QCOMPARE(prompt.lines(), QStringList{QStringLiteral("処理完了: 置換処理が完了しました。")});
        QCOMPARE(textAt(db, 1), QStringLiteral("☆0001☆の規程"));                   // the document, chapter and article rows stay
        QCOMPARE(textAt(db, 2), QStringLiteral("株式会社見本は★0001★を定める。")); // a preamble takes settings, not words
        QCOMPARE(textAt(db, 3), QStringLiteral("☆0001☆"));
        QCOMPARE(textAt(db, 4), QStringLiteral("★0001★"));
        QCOMPARE(textAt(db, 5), QStringLiteral("３０日前までに３０日")); // every occurrence, the clause's own word
        QCOMPARE(textAt(db, 6), QStringLiteral("１４日前、店長"));       // a paragraph sees the words of its items too
        QCOMPARE(textAt(db, 7), QStringLiteral("店長の承認"));
        QCOMPARE(textAt(db, 8), QStringLiteral("★0001★と☆0001☆"));             // a row without words keeps all
        QCOMPARE(textAt(db, 9), QStringLiteral("☆0002☆、令和08年4月1日施行")); // an empty setting stays; the later date
        QCOMPARE(textAt(db, 10), QStringLiteral("番号0012のみ"));

        // A second run changes nothing more, until a setting is filled in.
        prompt.clear();
        saveSettings(
            db, {{QStringLiteral("事業所名"), QStringLiteral("株式会社見本")}, {QStringLiteral("郵便番号"), QStringLiteral("100-0001")}});
        SettingSubstitution(db, prompt).run(kStyle, kDoc);
        QCOMPARE(textAt(db, 9), QStringLiteral("100-0001、令和08年4月1日施行"));
        QCOMPARE(textAt(db, 5), QStringLiteral("３０日前までに３０日"));
    }

    void roushi_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("representative");
        QTest::addColumn<QString>("segment");
        QTest::addColumn<QString>("expected");
        const QString segment = QStringLiteral("労働者の過半数を代表する者☆0010☆と");
        // A union signs in its own name; a representative keeps the words on whom they represent.
        QTest::newRow("union") << "2"
                               << "1" << segment << "第一労働組合（以下「組合」と称する。）";
        QTest::newRow("employees' representative") << "2"
                                                   << "2" << segment << "労働者の過半数を代表する者山田太郎（以下「組合」と称する。）";
        QTest::newRow("part-timers' representative, setting empty")
            << "2"
            << "3" << segment << "労働者の過半数を代表する者☆0012☆（以下「組合」と称する。）";
        QTest::newRow("no marker of a side: untouched") << "2"
                                                        << "1"
                                                        << "労働者代表と"
                                                        << "労働者代表と";
        QTest::newRow("not an agreement: untouched") << "1"
                                                     << "1" << segment << "労働者の過半数を代表する者山田太郎と";
    }
    void roushi()
    {
        QFETCH(QString, kind);
        QFETCH(QString, representative);
        QFETCH(QString, segment);
        QFETCH(QString, expected);
        OpenCompany company;
        QSqlDatabase db = company.db;
        addDocument(db, kind);
        saveSettings(
            db,
            {{QStringLiteral("労働組合名"), QStringLiteral("第一労働組合")}, {QStringLiteral("従業員氏名"), QStringLiteral("山田太郎")}},
            representative);
        EffectiveDates(db, kDoc).add(kStyle, QDate(2026, 4, 1));
        // The paragraph that calls the side by its short name, and the short name.
        const QStringList paragraph = {QStringLiteral("00"), QStringLiteral("0001"), QStringLiteral("01")};
        insertRow(db, QStringLiteral("項"),
                  {kStyle, kDoc, paragraph[0], paragraph[1], paragraph[2], QStringLiteral("会社と★0009★は、"), QStringLiteral("0"), 0,
                   QStringLiteral("0"), 1, 0, 0, 1, QStringLiteral("0")});
        addWord(db, QStringLiteral("0009"), QStringLiteral("組合"), paragraph, QStringLiteral("4"));
        CompositionRow side = row(Level::Preamble, {}, segment);
        side.join = QStringLiteral("3");
        writeRows(db, {row(Level::Document, {}, QStringLiteral("協定")), row(Level::Preamble, {}, QStringLiteral("株式会社と")), side,
                       row(Level::Paragraph, paragraph, QStringLiteral("会社と★0009★は、"))});
        ScriptedPrompt prompt;
        QCOMPARE(SettingSubstitution(db, prompt).run(kStyle, kDoc), Outcome::Done);
        QCOMPARE(textAt(db, 3), expected);
        QCOMPARE(textAt(db, 4), QStringLiteral("会社と組合は、"));
    }

    void checksBeforeAnything_data()
    {
        QTest::addColumn<bool>("dated");
        QTest::addColumn<bool>("targetBuilt");
        QTest::addColumn<QStringList>("messages");
        QTest::newRow("no effective date") << false << true << QStringList{QStringLiteral("データの確認: 日付のデータがありません。")};
        QTest::newRow("the cited document not built")
            << true << false
            << QStringList{QStringLiteral("作成順序: 他の規則・規程等を参照している条文があります。\n「参照先規程」\n"
                                          "先に参照先の規則・規程等を作成してください。")};
    }
    void checksBeforeAnything()
    {
        QFETCH(bool, dated);
        QFETCH(bool, targetBuilt);
        QFETCH(QStringList, messages);
        OpenCompany company;
        QSqlDatabase db = company.db;
        addDocument(db, QStringLiteral("1"));
        // The cited document, named once however often and by how many references it is cited.
        insertRow(db, QStringLiteral("規程"),
                  {kStyle, QStringLiteral("71"), QStringLiteral("参照先規程"), 0, QStringLiteral("参照先規程"), 1, QStringLiteral("1")});
        saveSettings(db, {{QStringLiteral("事業所名"), QStringLiteral("株式会社見本")}});
        if (dated)
            EffectiveDates(db, kDoc).add(kStyle, QDate(2026, 4, 1));
        const QStringList place = {QStringLiteral("01"), QStringLiteral("0001"), QStringLiteral("01")};
        for (const QString &code : {QStringLiteral("0001"), QStringLiteral("0002")}) {
            insertRow(db, QStringLiteral("変数テーブル番号"),
                      {code, kDoc, place[0], place[1], place[2], QString(), QString(), QString(), QString(), QStringLiteral("4"),
                       QStringLiteral("71"), QStringLiteral("01"), QStringLiteral("0005"), QString(), QString(), QString(), QString(),
                       QString(), QStringLiteral("3")});
        }
        if (targetBuilt) {
            CompositionRow target = row(Level::Article, {QStringLiteral("01"), QStringLiteral("0005")}, QStringLiteral("条"));
            target.document = QStringLiteral("71");
            insertWorkRows(db, kOutputRowsTable, {target});
        }
        writeRows(db, {row(Level::Paragraph, place, QStringLiteral("☆0001☆は◆0001◆")),
                       row(Level::Paragraph, place, QStringLiteral("◆0001◆及び◆0002◆"))});
        ScriptedPrompt prompt;
        QCOMPARE(SettingSubstitution(db, prompt).run(kStyle, kDoc), Outcome::Stopped);
        QCOMPARE(prompt.lines(), messages);
        QCOMPARE(textAt(db, 1), QStringLiteral("☆0001☆は◆0001◆")); // nothing changed
    }
};

QTEST_GUILESS_MAIN(SubstitutionTest)
#include "tst_substitution.moc"
