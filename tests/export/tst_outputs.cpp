// The outputs of a finished document behind one interface: DocumentExport types every
// output at once and completes them in one transaction. The version is kept exactly
// when every output completed; an output that fails or is declined leaves no version
// and no file, neither its own nor another's.

#include "ExportFixture.h"
#include "base/Database.h"
#include "composition/DocumentList.h"
#include "document/DocumentOutput.h"
#include "export/DocumentExport.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "fileformats/DocxOutput.h"
#include "fileformats/TextOutput.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/EffectiveDates.h"
#include "versions/VersionOutput.h"
#include "versions/VersionTables.h"

#include <QDir>
#include <QTemporaryDir>

using namespace normaris;
using namespace normaris::test;

namespace {

const QString kStyle = QStringLiteral("1");
const QString kWorkRules = QStringLiteral("01");

// An output that writes a file of what it was typed, the way a PDF would, and then
// completes, fails or is declined as told.
class FakeOutput : public DocumentOutput {
public:
    enum class Ending { Completes, Fails, Declined };
    FakeOutput(QString path, Ending ending) : m_path(std::move(path)), m_ending(ending) {}
    Typist &typist() override { return m_text; }
    bool complete(StagedFiles &files) override
    {
        ++completed;
        writeTextFile(files.stage(m_path), m_text.text());
        if (m_ending == Ending::Fails)
            throw Failure(QStringLiteral("PDF「%1」を書き込めません。").arg(m_path));
        return m_ending == Ending::Completes;
    }
    int completed = 0;

private:
    TextTypist m_text;
    QString m_path;
    Ending m_ending;
};

int versions(QSqlDatabase db)
{
    return scalar(db, QStringLiteral("SELECT count(*) FROM 改訂履歴 WHERE 規程Code = ?"), {kWorkRules}).toInt();
}

QStringList filesIn(const QString &folder) { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

} // namespace

class OutputsTest : public QObject {
    Q_OBJECT

    // A new date makes the work data out of date: データ作成 and 置換 again, as a user would.
    static void rebuild(QSqlDatabase db)
    {
        ScriptedPrompt prompt;
        QCOMPARE(WorkDataBuild(db, prompt).build(kStyle, kWorkRules), Outcome::Done);
        QCOMPARE(SettingSubstitution(db, prompt).run(kStyle, kWorkRules), Outcome::Done);
    }

private slots:
    void initTestCase()
    {
        m_company = std::make_unique<OpenCompany>();
        ScriptedPrompt prompt;
        for (const CodeAndName &document : DocumentList(m_company->db).documents(kStyle, true)) {
            QCOMPARE(WorkDataBuild(m_company->db, prompt).build(kStyle, document.code), Outcome::Done);
            EffectiveDates(m_company->db, document.code).add(kStyle, QDate(2026, 4, 1));
        }
        BasicSettings settings(m_company->db);
        QStringList values = settings.load();
        values[0] = QStringLiteral("株式会社甲");
        settings.save(values, QStringLiteral("2"));
        QCOMPARE(SettingSubstitution(m_company->db, prompt).run(kStyle, kWorkRules), Outcome::Done);
        ensureVersionTables(m_company->db);
    }
    void cleanupTestCase() { m_company.reset(); }

    void everyOutputCompleted()
    {
        QTemporaryDir out;
        QSqlDatabase db = m_company->db;
        // A new effective date makes a new version of the same text.
        EffectiveDates(db, kWorkRules).add(kStyle, QDate(2026, 10, 1));
        rebuild(db);
        const int before = versions(db);
        DocxOutput docx(out.filePath(QStringLiteral("就業規則.docx")));
        TextOutput text(out.filePath(QStringLiteral("就業規則.txt")));
        FakeOutput pdf(out.filePath(QStringLiteral("就業規則.pdf")), FakeOutput::Ending::Completes);
        VersionOutput version(db, kStyle, kWorkRules);
        ScriptedPrompt prompt;
        QCOMPARE(DocumentExport(db, prompt).write(kStyle, kWorkRules, RenderOptions{}, {&docx, &text, &pdf, &version}), Outcome::Done);
        QVERIFY(prompt.lines().isEmpty());
        QCOMPARE(pdf.completed, 1);
        QCOMPARE(versions(db), before + 1);
        // Only the files themselves, each whole: the fake PDF holds the same text as the record.
        QCOMPARE(filesIn(out.path()),
                 (QStringList{QStringLiteral("就業規則.docx"), QStringLiteral("就業規則.pdf"), QStringLiteral("就業規則.txt")}));
        QFile record(out.filePath(QStringLiteral("就業規則.txt"))), fake(out.filePath(QStringLiteral("就業規則.pdf")));
        QVERIFY(record.open(QIODevice::ReadOnly) && fake.open(QIODevice::ReadOnly));
        const QByteArray typed = record.readAll();
        QVERIFY(typed.contains("就業規則"));
        QCOMPARE(fake.readAll(), typed);
        QVERIFY(QFileInfo(out.filePath(QStringLiteral("就業規則.docx"))).size() > 1000);
    }

    void nothingKept_data()
    {
        QTest::addColumn<int>("ending");
        QTest::addColumn<bool>("fakeFirst");
        QTest::addColumn<QStringList>("said");
        const QStringList failed{kProgramTitle + QStringLiteral(": PDF「%1」を書き込めません。")};
        QTest::newRow("failing PDF, first") << int(FakeOutput::Ending::Fails) << true << failed;
        QTest::newRow("failing PDF, after the others") << int(FakeOutput::Ending::Fails) << false << failed;
        QTest::newRow("declined, first") << int(FakeOutput::Ending::Declined) << true << QStringList();
        QTest::newRow("declined, after the others") << int(FakeOutput::Ending::Declined) << false << QStringList();
    }
    void nothingKept()
    {
        QFETCH(int, ending);
        QFETCH(bool, fakeFirst);
        QFETCH(QStringList, said);
        QTemporaryDir out;
        QSqlDatabase db = m_company->db;
        EffectiveDates(db, kWorkRules).add(kStyle, QDate(2027, 4, 1));
        rebuild(db);
        const int before = versions(db);
        const QString pdfPath = out.filePath(QStringLiteral("就業規則.pdf"));
        DocxOutput docx(out.filePath(QStringLiteral("就業規則.docx")));
        FakeOutput pdf(pdfPath, FakeOutput::Ending(ending));
        VersionOutput version(db, kStyle, kWorkRules);
        const DocumentOutputs outputs = fakeFirst ? DocumentOutputs{&pdf, &docx, &version} : DocumentOutputs{&docx, &version, &pdf};
        ScriptedPrompt prompt;
        const Outcome outcome = DocumentExport(db, prompt).write(kStyle, kWorkRules, RenderOptions{}, outputs);
        QCOMPARE(outcome, ending == int(FakeOutput::Ending::Fails) ? Outcome::Failed : Outcome::Stopped);
        for (QString &line : said)
            line = line.arg(pdfPath);
        QCOMPARE(prompt.lines(), said);
        QCOMPARE(versions(db), before);
        QCOMPARE(filesIn(out.path()), QStringList());
    }

private:
    std::unique_ptr<OpenCompany> m_company;
};

QTEST_GUILESS_MAIN(OutputsTest)
#include "tst_outputs.moc"
