// The export chain, step by step: データ作成, 設定項目の置換 (with the reference
// numbering timed on its own as well) and the rendering into a .docx, on the seed's
// work rules and on synthetic documents of 3,000, 30,000 and 100,000 rows. Prints one line
// per step with milliseconds, and the peak memory of the process. With --server the company
// lives on the office's server that NORMARIS_STORE names.

#include "base/RuntimeFolder.h"
#include "BenchCompany.h"
#include "rulebase/CompositionRow.h"
#include "export/CrossReferences.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "versions/VersionOutput.h"
#include "pdf/PdfOutput.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/Schema.h"
#include "base/AppState.h"
#include "shell/ProgramFolder.h"

#include <QGuiApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

using namespace normaris;
using namespace normaris::bench;

namespace {

// Answers yes and says nothing.
long peakKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

QString code2(int n) { return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')); }
QString code4(int n) { return QStringLiteral("%1").arg(n, 4, 10, QLatin1Char('0')); }

// A document of about `rows` composition rows: chapters of 50 articles, each article
// with 4 paragraphs of 6 items. Every paragraph holds a word, a setting and a
// reference to the first paragraph of the article before it.
void writeSyntheticDocument(QSqlDatabase db, const QString &document, int rows)
{
    Transaction transaction(db);
    const int perArticle = 1 + 4 * 7;
    const int articles = std::max(1, rows / perArticle);
    insertRow(db, QStringLiteral("規程"),
              {kStyle, document, QStringLiteral("合成規程"), 0, QStringLiteral("合成規程"), 1, QStringLiteral("1")});
    QList<CompositionRow> upper, lower;
    auto composition = [&](Level level, const QStringList &place, int number) {
        CompositionRow r;
        r.level = level;
        r.document = document;
        r.number = number;
        r.codes = place;
        while (r.codes.size() < 6)
            r.codes << QString();
        r.style = kStyle;
        r.words = r.references = isClauseLevel(level);
        return r;
    };
    upper << composition(Level::Document, {}, 0);
    QString chapter;
    for (int a = 1; a <= articles; ++a) {
        if ((a - 1) % 50 == 0) {
            chapter = code2((a - 1) / 50 + 1);
            insertRow(db, QStringLiteral("章"), {kStyle, document, chapter, QStringLiteral("第%1の章").arg(chapter), 0, 1});
            upper << composition(Level::Chapter, {chapter}, (a - 1) / 50 + 1);
        }
        const QString article = code4(a);
        insertRow(db, QStringLiteral("条"),
                  {kStyle, document, chapter, article, QStringLiteral("見出し"), 0, QStringLiteral("見出し%1").arg(a), 1});
        upper << composition(Level::Article, {chapter, article}, a);
        int order = 0;
        for (int p = 1; p <= 4; ++p) {
            const QString paragraph = code2(p);
            insertRow(db, QStringLiteral("項"),
                      {kStyle, document, chapter, article, paragraph,
                       QStringLiteral("従業員は、★0001★までに☆0001☆に届け出る。◆0001◆の定めによる。"), QStringLiteral("0"), 0,
                       QStringLiteral("0"), 1, 1, 0, 1, QStringLiteral("0")});
            insertRow(db, QStringLiteral("変数テーブル語句"),
                      {QStringLiteral("0001"), QStringLiteral("前日"), document, chapter, article, paragraph, QString(), QString(),
                       QString(), QStringLiteral("0"), QStringLiteral("4"), QStringLiteral("期限"), 1});
            const int previous = std::max(1, a - 1);
            insertRow(db, QStringLiteral("変数テーブル番号"),
                      {QStringLiteral("0001"), document, chapter, article, paragraph, QString(), QString(), QString(), QStringLiteral("0"),
                       QStringLiteral("4"), document, code2((previous - 1) / 50 + 1), code4(previous), QStringLiteral("01"), QString(),
                       QString(), QString(), QString(), QStringLiteral("4")});
            CompositionRow r = composition(Level::Paragraph, {chapter, article, paragraph}, p);
            r.order = ++order;
            lower << r;
            for (int i = 1; i <= 6; ++i) {
                insertRow(db, QStringLiteral("号"),
                          {kStyle, document, chapter, article, paragraph, code2(i), QStringLiteral("第%1の事項").arg(i),
                           QStringLiteral("0"), 0, QStringLiteral("0"), 0, 0, 0, 1, QStringLiteral("0")});
                CompositionRow item = composition(Level::Item, {chapter, article, paragraph, code2(i)}, i);
                item.words = item.references = false;
                item.order = ++order;
                lower << item;
            }
        }
    }
    for (qsizetype i = 0; i < upper.size(); ++i)
        upper[i].order = int(i) + 1;
    insertCompositionRows(db, kArticleRowsTable, upper);
    insertCompositionRows(db, kClauseRowsTable, lower);
    EffectiveDates(db, document).add(kStyle, QDate(2026, 4, 1));
    transaction.commit();
}

void runChain(QSqlDatabase db, const QString &label, const QString &document, const QString &dir)
{
    QuietPrompt prompt;
    const int rows = scalar(db,
                            QStringLiteral("SELECT (SELECT count(*) FROM 作成データ補助～条 WHERE 規程Code = ?) + "
                                           "(SELECT count(*) FROM 作成データ補助項～ WHERE 規程Code = ?)"),
                            {document, document})
                         .toInt();
    const double build = timed([&] { WorkDataBuild(db, prompt).build(kStyle, document); });
    const double numbering = timed([&] {
        CrossReferences references(db, prompt, document);
        for (const CompositionRow &row : readWorkRows(db, kOutputRowsTable, kStyle, document))
            references.replaceIn(row);
    });
    const double substitution = timed([&] { SettingSubstitution(db, prompt).run(kStyle, document); });
    const QString out = dir + QStringLiteral("/") + document + QStringLiteral(".docx");
    const double rendering = timed([&] {
        DocxOutput docx(out);
        VersionOutput version(db, kStyle, document);
        DocumentExport(db, prompt).write(kStyle, document, RenderOptions{}, {&docx, &version});
    });
    // The PDF laid out by the program: the rendering with its own layout and writing.
    const QString pdfPath = dir + QStringLiteral("/") + document + QStringLiteral(".pdf");
    int pages = 0;
    const double pdf = timed([&] {
        PdfOutput output(pdfPath);
        VersionOutput version(db, kStyle, document);
        DocumentExport(db, prompt).write(kStyle, document, RenderOptions{}, {&output, &version});
        pages = output.pages();
    });
    std::printf("%-22s %6d rows  build %8.1f ms  substitution %8.1f ms (numbering alone %7.1f ms)  rendering %8.1f ms  "
                "chain %8.1f ms  .docx %6lld KB  PDF %8.1f ms %5d pages %6lld KB  peak %6ld MB%s\n",
                qUtf8Printable(label), rows, build, substitution, numbering, rendering, build + substitution + rendering,
                QFile(out).size() / 1024, pdf, pages, QFile(pdfPath).size() / 1024, peakKilobytes() / 1024,
                prompt.m_messages ? qUtf8Printable(QStringLiteral("  (") + prompt.m_last + u')') : "");
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    // The PDF's fonts come through the GUI's application object; no screen is needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    settleRuntimeFolder();
    QGuiApplication app(argc, argv);
    BenchCompany company(benchStore(argc, argv));
    if (!company.open())
        return 1;
    QSqlDatabase db = company.db();
    QuietPrompt &prompt = company.prompt;

    // The work rules cite the wage rules and the leave rules: those are built first.
    for (const QString &cited : {QStringLiteral("02"), QStringLiteral("03")})
        WorkDataBuild(db, prompt).build(kStyle, cited);
    EffectiveDates(db, QStringLiteral("01")).add(kStyle, QDate(2026, 4, 1));
    std::printf("export chain on the %s store (times of one run; the chain is build + substitution + rendering)\n",
                qUtf8Printable(company.storeName()));
    runChain(db, QStringLiteral("seed work rules (01)"), QStringLiteral("01"), company.folder());
    writeSyntheticDocument(db, QStringLiteral("80"), 3000);
    runChain(db, QStringLiteral("synthetic 3,000"), QStringLiteral("80"), company.folder());
    writeSyntheticDocument(db, QStringLiteral("81"), 30000);
    runChain(db, QStringLiteral("synthetic 30,000"), QStringLiteral("81"), company.folder());
    writeSyntheticDocument(db, QStringLiteral("82"), 100000);
    runChain(db, QStringLiteral("synthetic 100,000"), QStringLiteral("82"), company.folder());
    return 0;
}
