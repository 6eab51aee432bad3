// The seed's documents after the whole chain, as text, against reviewed golden files
// in tests/export/golden/. After a deliberate change of the dictionary or of the
// rendering, NORMARIS_WRITE_GOLDEN=1 writes the files anew, for review in the diff.

#include "ExportFixture.h"
#include "export/DocumentRenderer.h"
#include "export/SettingSubstitution.h"
#include "fileformats/TextTypist.h"
#include "export/WorkDataBuild.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/EffectiveDates.h"

#include <QFile>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");

void fillSampleCompany(QSqlDatabase db)
{
    BasicSettings settings(db);
    QStringList values = settings.load();
    const std::pair<const char *, const char *> sample[] = {
        {"事業所名", "サンプル株式会社"},
        {"所在地1", "東京都千代田区丸の内一丁目1番1号"},
        {"tel", "03-5555-0123"},
        {"使用者職名", "代表取締役"},
        {"使用者氏名", "見本太郎"},
        {"従業員職名", "営業部主任"},
        {"従業員氏名", "山田花子"},
        {"業種", "小売業"},
        {"労働者数", "120"},
        {"管轄の労基署", "中央"},
    };
    for (const auto &[column, value] : sample)
        values[settingIndex(QString::fromUtf8(column))] = QString::fromUtf8(value);
    settings.save(values, QStringLiteral("2"));
}

} // namespace

class GoldenTest : public QObject {
    Q_OBJECT
private slots:
    void seedDocuments_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<int>("kind");
        QTest::newRow("work rules") << QStringLiteral("01") << int(ExportKind::Rules);
        QTest::newRow("wage rules") << QStringLiteral("02") << int(ExportKind::Rules);
        QTest::newRow("overtime agreement") << QStringLiteral("31") << int(ExportKind::Agreement);
    }
    void seedDocuments()
    {
        QFETCH(QString, document);
        QFETCH(int, kind);
        OpenCompany company;
        fillSampleCompany(company.db);
        ScriptedPrompt prompt;
        // The work rules and the wage rules cite each other and the leave rules: all are built first.
        QStringList built = {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")};
        if (!built.contains(document))
            built << document;
        for (const QString &d : built) {
            EffectiveDates(company.db, d).add(kStyle, QDate(2026, 4, 1));
            QCOMPARE(WorkDataBuild(company.db, prompt).build(kStyle, d), Outcome::Done);
        }
        EffectiveDates(company.db, document).add(kStyle, QDate(2027, 10, 1));
        QCOMPARE(SettingSubstitution(company.db, prompt).run(kStyle, document), Outcome::Done);
        TextTypist typist;
        RenderOptions options;
        options.kind = ExportKind(kind);
        QCOMPARE(DocumentRenderer(company.db, prompt).render(typist, kStyle, document, options), Outcome::Done);
        // Every step went through without a word of complaint.
        for (const QString &line : prompt.lines())
            QVERIFY2(line.startsWith(QStringLiteral("処理完了: ")), qUtf8Printable(line));

        const QString path = QStringLiteral(NORMARIS_SOURCE_DIR "/tests/export/golden/%1-%2.txt").arg(document, kStyle);
        if (qEnvironmentVariableIsSet("NORMARIS_WRITE_GOLDEN")) {
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(typist.text().toUtf8());
            return;
        }
        QFile golden(path);
        QVERIFY2(golden.open(QIODevice::ReadOnly), qUtf8Printable(path));
        const QStringList expected = QString::fromUtf8(golden.readAll()).split(u'\n');
        const QStringList actual = typist.text().split(u'\n');
        for (qsizetype i = 0; i < std::min(expected.size(), actual.size()); ++i)
            QCOMPARE(actual[i], expected[i]);
        QCOMPARE(actual.size(), expected.size());
    }
};

QTEST_GUILESS_MAIN(GoldenTest)
#include "tst_golden.moc"
