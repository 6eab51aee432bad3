// The position rules of both panels as a table: rows, selected row, action → the
// refusal or the question the user sees.

#include "composition/PositionRules.h"

#include <QTest>

using namespace normaris;

Q_DECLARE_METATYPE(QList<PanelRow>)

namespace {

// A row from a compact shorthand: "項 01", "号 01 02", "項 01 * 2" (結合 2) …
PanelRow row(const QString &shorthand)
{
    static const QHash<QString, Level> levels = {{QStringLiteral("規則"), Level::Document}, {QStringLiteral("前文"), Level::Preamble},
                                                 {QStringLiteral("章"), Level::Chapter},    {QStringLiteral("条"), Level::Article},
                                                 {QStringLiteral("項"), Level::Paragraph},  {QStringLiteral("号"), Level::Item},
                                                 {QStringLiteral("丸"), Level::Maru},       {QStringLiteral("イ"), Level::Iroha}};
    const QStringList parts = shorthand.split(u' ');
    PanelRow r;
    r.level = levels.value(parts[0]);
    r.text = shorthand;
    int at = isClauseLevel(r.level) ? 2 : 0; // the 項 panel's codes start at 項Code
    for (qsizetype i = 1; i < parts.size(); ++i) {
        if (parts[i] == u"*") {
            r.join = parts[i + 1];
            break;
        }
        r.codes[at++] = parts[i];
    }
    if (isClauseLevel(r.level))
        r.codes[0] = QStringLiteral("01"), r.codes[1] = QStringLiteral("0001");
    return r;
}

QList<PanelRow> rows(const QStringList &specs)
{
    QList<PanelRow> list;
    for (const QString &s : specs)
        list << row(s);
    return list;
}

} // namespace

class PositionRulesTest : public QObject {
    Q_OBJECT
private slots:
    void articlePanel_data()
    {
        QTest::addColumn<QList<PanelRow>>("panel");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("shown"); // "title: text"
        const QList<PanelRow> doc = rows({"規則", "前文 * 1", "前文 * 2", "章 01", "条 01 0001", "条 01 0002", "章 02", "条 02 0003"});
        QTest::newRow("no action") << doc << 4 << QString() << "処理方法の指定: 処理方法を指定してください。";
        QTest::newRow("preamble below the document") << doc << 0 << "3"
                                                     << "追加の確認: 規則\nの下に前文を追加しますか？";
        QTest::newRow("chapter below the document")
            << doc << 0 << "4"
            << "追加の確認: 規則\nの下に章を追加しますか？\n\n条以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("preamble released from its second row") << doc << 2 << "2"
                                                               << "処理位置の確認: 前文の「最初の行」の位置で処理してください。";
        QTest::newRow("preamble released from its first row") << doc << 1 << "2"
                                                              << "選択解除の確認: 前文 * 1\nの選択を解除しますか？";
        QTest::newRow("chapter below the preamble's first row") << doc << 1 << "3"
                                                                << "処理位置の確認: 前文の「最後の行」の位置で処理してください。";
        QTest::newRow("chapter released")
            << doc << 3 << "2"
            << "選択解除の確認: 章 01\nの選択を解除しますか？\n\n条以下のデータがある場合は、それらも一緒に選択解除します。";
        QTest::newRow("article below a chapter")
            << doc << 3 << "3"
            << "追加の確認: 章 01\nの下に条を追加しますか？\n\n項以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("chapter below a middle article") << doc << 4 << "3"
                                                        << "処理位置の確認: 前章の「最後の条」の位置で処理してください。";
        QTest::newRow("chapter below the chapter's last article")
            << doc << 5 << "3"
            << "追加の確認: 条 01 0002\nの下に章を追加しますか？\n\n条以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("chapter below the very last row")
            << doc << 7 << "3"
            << "追加の確認: 条 02 0003\nの下に章を追加しますか？\n\n条以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("article released")
            << doc << 4 << "2"
            << "選択解除の確認: 条 01 0001\nの選択を解除しますか？\n\n項以下のデータがある場合は、それらも一緒に選択解除します。";
        QTest::newRow("article below an article")
            << doc << 4 << "4"
            << "追加の確認: 条 01 0001\nの下に条を追加しますか？\n\n項以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("paragraphs of an article without any")
            << doc << 4 << "5"
            << "項の制約事項: 「項」が１つも登録されていません。\nこの条を選択解除し、先にディクショナリで追加登録をしてください。\n"
               "その後、このフォームで同条を追加することで項以下のデータも追加されます。";
        QTest::newRow("code 1 does nothing") << doc << 4 << "1" << QString();
    }
    void articlePanel()
    {
        QFETCH(QList<PanelRow>, panel);
        QFETCH(int, index);
        QFETCH(QString, action);
        QFETCH(QString, shown);
        const PanelDecision d = articlePanelAction(panel, index, action, false);
        QCOMPARE(d.kind == PanelDecision::Kind::Nothing ? QString() : d.title + QStringLiteral(": ") + d.text, shown);
    }

    void articleDecisionsCarryTheLevels()
    {
        const QList<PanelRow> doc = rows({"規則", "章 01", "条 01 0001"});
        const PanelDecision add = articlePanelAction(doc, 2, QStringLiteral("3"), true);
        QCOMPARE(add.current, Level::Article);
        QCOMPARE(add.added, Level::Chapter);
        QVERIFY(!add.release);
        const PanelDecision open = articlePanelAction(doc, 2, QStringLiteral("5"), true);
        QCOMPARE(open.kind, PanelDecision::Kind::OpenParagraphs);
    }

    void paragraphPanel_data()
    {
        QTest::addColumn<QList<PanelRow>>("panel");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("shown");
        // A 項 in two segments with a 号 that has ① and イ, then a second 項.
        const QList<PanelRow> art =
            rows({"項 01 * 1", "項 01 * 2", "号 01 01", "丸 01 01 01", "イ 01 01 01 01", "イ 01 01 01 02", "号 01 02", "項 02"});
        const QString last = QStringLiteral("\nそれらの最後の行の位置で処理してください。");
        QTest::newRow("release from a 項's second segment") << art << 1 << "2"
                                                            << "処理位置の確認: 解除する項の「最初の行」の位置で処理してください。";
        QTest::newRow("release a 項 from its first row")
            << art << 0 << "2"
            << "選択解除の確認: 項 01 * 1\nの選択を解除しますか？\n\n号以下のデータがある場合は、それらも一緒に選択解除します。";
        QTest::newRow("first 項 from any 項 row")
            << art << 7 << "3"
            << "追加の確認: 項 02\n第１項を追加しますか？\n\n号以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("項 below a 項 with children")
            << art << 1 << "4"
            << "処理位置の確認: この項には結合データと号以下のデータのいずれか又は両方があります。" + last;
        QTest::newRow("号 below the first segment") << art << 0 << "5"
                                                    << "処理位置の確認: この項には結合データがあります。" + last;
        QTest::newRow("号 below the last segment")
            << art << 1 << "5"
            << "追加の確認: 項 01 * 2\nの下に号を追加しますか？\n\n①～⑳以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("項 below a 号 inside the 項") << art << 2 << "3"
                                                     << "処理位置の確認: この下には属する項のデータがあります。" + last;
        QTest::newRow("項 below the 項's last 号")
            << art << 6 << "3"
            << "追加の確認: 号 01 02\nの下に項を追加しますか？\n\n号以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("号 below a 号 with children")
            << art << 2 << "4"
            << "処理位置の確認: この号には結合データと①～⑳以下のデータのいずれか又は両方があります。" + last;
        QTest::newRow("① below a 号 with ①")
            << art << 2 << "5"
            << "追加の確認: 号 01 01\nの下に①～⑳を追加しますか？\n\nイ～ネのデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("イ below a ① that has イ") << art << 3 << "6"
                                                  << "追加の確認: 丸 01 01 01\nの下にイ～ネを追加しますか？";
        QTest::newRow("release the second イ") << art << 5 << "2"
                                               << "選択解除の確認: イ 01 01 01 02\nの選択を解除しますか？";
        QTest::newRow("イ between two イ") << art << 4 << "6"
                                           << "追加の確認: イ 01 01 01 01\nの下にイ～ネを追加しますか？";
        const QList<PanelRow> split =
            rows({"項 01", "号 01 01", "丸 01 01 01 * 1", "丸 01 01 01 * 2", "イ 01 01 01 01 * 1", "イ 01 01 01 01 * 2"});
        QTest::newRow("イ below a split イ's first segment") << split << 4 << "6"
                                                             << "処理位置の確認: このイ～ネには結合データがあります。" + last;
        QTest::newRow("イ below a split ①'s first segment") << split << 2 << "6"
                                                            << "処理位置の確認: この①～⑳には結合データがあります。" + last;
        QTest::newRow("release a ① from its second segment") << split << 3 << "2"
                                                             << "処理位置の確認: 解除する①～⑳の「最初の行」の位置で処理してください。";
        QTest::newRow("号 below the last イ of the 号")
            << art << 5 << "4"
            << "追加の確認: イ 01 01 01 02\nの下に号を追加しますか？\n\n①～⑳以下のデータがある場合は、それらも一緒に追加します。";
        QTest::newRow("① below a イ inside the ①") << art << 4 << "5"
                                                   << "処理位置の確認: この下には属する①～⑳のデータがあります。" + last;
        QTest::newRow("項 below the last row")
            << art << 7 << "4"
            << "追加の確認: 項 02\nの下に項を追加しますか？\n\n号以下のデータがある場合は、それらも一緒に追加します。";
        const QList<PanelRow> single = rows({"項 01 * 1", "項 01 * 2", "号 01 01", "号 01 02"});
        QTest::newRow("the last 項 stays, from any row") << single << 1 << "2"
                                                         << "選択解除不可: 項は最低１つ必要です。\n先に他の項を追加してください。";
        QTest::newRow("release a 号")
            << single << 3 << "2"
            << "選択解除の確認: 号 01 02\nの選択を解除しますか？\n\n①～⑳以下のデータがある場合は、それらも一緒に選択解除します。";
    }
    void paragraphPanel()
    {
        QFETCH(QList<PanelRow>, panel);
        QFETCH(int, index);
        QFETCH(QString, action);
        QFETCH(QString, shown);
        const PanelDecision d = paragraphPanelAction(panel, index, action);
        QCOMPARE(d.title + QStringLiteral(": ") + d.text, shown);
    }

    void firstParagraphAddsAtTheTop()
    {
        const PanelDecision d = paragraphPanelAction(rows({"項 01", "項 02"}), 1, QStringLiteral("3"));
        QVERIFY(d.firstParagraph);
        QCOMPARE(d.added, Level::Paragraph);
    }
};

QTEST_GUILESS_MAIN(PositionRulesTest)
#include "tst_positionrules.moc"
