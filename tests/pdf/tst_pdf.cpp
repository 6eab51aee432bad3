// The PDF that the program lays out itself: A4 pages, the Japanese font embedded,
// page numbers on every page but the cover, the text of the document as its text
// rendering has it, paragraph by paragraph, hanging indents where the reader
// expects them, and headings kept with the text after them.

#include "../export/ExportFixture.h"
#include "OfficeRender.h"
#include "export/DocumentRenderer.h"
#include "export/SettingSubstitution.h"
#include "fileformats/TextTypist.h"
#include "document/TypistPair.h"
#include "export/WorkDataBuild.h"
#include "pdf/ComparisonPdf.h"
#include "pdf/PdfTypist.h"
#include "versions/ComparisonDocx.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/EffectiveDates.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace normaris;
using namespace normaris::test;

namespace {

using Style = Typist::ParagraphStyle;

// A text line as a reader sees it: without the marks of the text rendering and
// without blanks, which a PDF's text leaves to the reader's guess.
QString visibleText(QString line)
{
    static const QRegularExpression marks(QStringLiteral("^(<C>|<R>)?(<i-?\\d+>)?"));
    static const QRegularExpression formatted(QStringLiteral("\\{[^:{}]*:([^}]*)\\}"));
    static const QRegularExpression blanks(QStringLiteral("\\s+"), QRegularExpression::UseUnicodePropertiesOption);
    line.remove(marks);
    line.replace(formatted, QStringLiteral("\\1"));
    return line.remove(blanks);
}

// The text lines of each page, blanks removed, empty lines dropped.
QList<QStringList> pageLines(const QString &pdf)
{
    QString error;
    const QString text = pdfText(pdf, &error, true);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
    QList<QStringList> pages;
    for (const QString &page : text.split(u'\f')) {
        QStringList lines;
        for (const QString &line : page.split(u'\n'))
            if (!visibleText(line).isEmpty())
                lines << visibleText(line);
        pages << lines;
    }
    while (!pages.isEmpty() && pages.last().isEmpty())
        pages.removeLast();
    return pages;
}

// A 新旧対照表 of n changed articles, each long enough to take several lines of its cell.
ComparisonTable comparisonOf(int articles)
{
    ComparisonTable table;
    table.documentName = QStringLiteral("就業規則");
    table.company = QStringLiteral("見本株式会社");
    table.newer.effective = QDate(2027, 4, 1);
    table.older.effective = QDate(2026, 4, 1);
    for (int i = 1; i <= articles; ++i) {
        const auto line = [&](const QString &changed) {
            return ComparisonLine{Level::Article, QStringLiteral("第%1条").arg(i), false,
                                  MarkedText{{QString(60, QChar(u'本')), false}, {changed, true}, {QStringLiteral("とする。"), false}}};
        };
        ComparisonEntry entry;
        entry.newer.lines = {line(QStringLiteral("新しい語"))};
        entry.older.lines = {line(QStringLiteral("古い語"))};
        table.entries << entry;
    }
    return table;
}

void typeLines(Typist &t, int count)
{
    for (int i = 1; i <= count; ++i) {
        t.typeText(QStringLiteral("本文%1").arg(i));
        t.typeParagraph();
    }
}

} // namespace

class PdfTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_temp = std::make_unique<QTemporaryDir>();
        QVERIFY(m_temp->isValid());
    }

    // The seed's work rules through the whole chain, into the PDF and the text
    // rendering at once.
    void seedWorkRules()
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        BasicSettings settings(company.db);
        QStringList values = settings.load();
        values[settingIndex(QStringLiteral("事業所名"))] = QStringLiteral("サンプル株式会社");
        settings.save(values, QStringLiteral("2"));
        for (const QString &d : {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")}) {
            EffectiveDates(company.db, d).add(QStringLiteral("1"), QDate(2026, 4, 1));
            QCOMPARE(WorkDataBuild(company.db, prompt).build(QStringLiteral("1"), d), Outcome::Done);
        }
        QCOMPARE(SettingSubstitution(company.db, prompt).run(QStringLiteral("1"), QStringLiteral("01")), Outcome::Done);
        PdfTypist pdf;
        TextTypist text;
        TypistPair both(pdf, text);
        QCOMPARE(DocumentRenderer(company.db, prompt).render(both, QStringLiteral("1"), QStringLiteral("01"), RenderOptions()),
                 Outcome::Done);
        const QString path = m_temp->filePath(QStringLiteral("就業規則.pdf"));
        const int pages = pdf.save(path, QStringLiteral("就業規則"));
        QVERIFY2(pages > 20, qPrintable(QString::number(pages)));

        QString error;
        const QString info = pdfReport(QStringLiteral("pdfinfo"), path, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+%1\\n").arg(pages))), qPrintable(info));
        QVERIFY2(info.contains(QStringLiteral("595 x 842 pts (A4)")), qPrintable(info));
        // Every font is embedded: the columns name, type, encoding, then emb "yes".
        const QStringList fonts = pdfReport(QStringLiteral("pdffonts"), path, &error).split(u'\n', Qt::SkipEmptyParts).mid(2);
        QVERIFY(!fonts.isEmpty());
        for (const QString &font : fonts) {
            QVERIFY2(font.contains(QStringLiteral("IPAMincho")), qPrintable(font));
            QVERIFY2(font.contains(QRegularExpression(QStringLiteral("\\s+yes\\s+(yes|no)\\s+yes\\s+"))), qPrintable(font));
        }

        // Each page but the cover ends with its number.
        QList<QStringList> lines = pageLines(path);
        QCOMPARE(lines.size(), pages);
        QVERIFY(!lines[0].contains(QStringLiteral("1")));
        for (int page = 2; page <= pages; ++page) {
            QStringList &onPage = lines[page - 1];
            QVERIFY2(!onPage.isEmpty() && onPage.last() == QString::number(page), qPrintable(onPage.join(u'|')));
            onPage.removeLast();
        }
        // The entries of the table of contents end with a dot leader and a page number,
        // which the text rendering has not: kept aside and checked against the headings.
        QList<std::pair<QString, int>> contents; // entry, its number
        int lastContentsPage = 0;
        static const QRegularExpression leader(QStringLiteral("^(.*[^.])\\.{3,}(\\d+)$"));
        for (int page = 1; page <= pages; ++page) {
            for (QString &line : lines[page - 1]) {
                const QRegularExpressionMatch m = leader.match(line);
                if (m.hasMatch()) {
                    contents.append({m.captured(1), m.captured(2).toInt()});
                    line = m.captured(1);
                    lastContentsPage = page;
                }
            }
        }
        QVERIFY2(contents.size() >= 60, qPrintable(QString::number(contents.size())));
        // The paragraphs of the text rendering, in order; a paragraph the page
        // wraps is the PDF's lines joined.
        QStringList pdfLinesInOrder;
        for (const QStringList &page : lines)
            pdfLinesInOrder << page;
        qsizetype at = 0;
        for (const QString &line : text.lines()) {
            const QString expected = visibleText(line);
            if (expected.isEmpty() || expected == u"<改ページ>")
                continue;
            QString joined;
            while (at < pdfLinesInOrder.size() && joined.size() < expected.size())
                joined += pdfLinesInOrder[at++];
            QCOMPARE(joined, expected);
        }
        QCOMPARE(at, pdfLinesInOrder.size());

        // The bookmarks: every 章 and 条 heading in order, each 条 under its 章, each
        // pointing at the page whose text holds it; the file passes qpdf's check.
        QStringList headings;
        QList<int> levels;
        for (const model::Paragraph &p : pdf.paragraphs()) {
            if (p.style != Style::Chapter && p.style != Style::Article)
                continue;
            QString title;
            for (const model::Run &run : p.runs)
                title += run.text;
            if (title.trimmed().isEmpty())
                continue;
            headings << title.replace(u'\t', u' ').trimmed();
            levels << (p.style == Style::Chapter ? 1 : 2);
        }
        QVERIFY(levels.count(1) >= 10 && levels.count(2) >= 50);
        QProcess check;
        check.start(QStringLiteral("qpdf"), {QStringLiteral("--check"), path});
        QVERIFY(check.waitForFinished(60000));
        QVERIFY2(check.exitCode() == 0, check.readAllStandardOutput().constData());
        QProcess qpdf;
        qpdf.start(QStringLiteral("qpdf"), {QStringLiteral("--json"), QStringLiteral("--json-key=outlines"), path});
        QVERIFY(qpdf.waitForFinished(60000) && qpdf.exitCode() == 0);
        const QJsonArray outlines = QJsonDocument::fromJson(qpdf.readAllStandardOutput()).object().value(u"outlines").toArray();
        QStringList titles;
        QList<int> titleLevels;
        const auto visit = [&](const QJsonObject &item, int level, auto &&self) -> void {
            const QString title = item.value(u"title").toString();
            titles << title;
            titleLevels << level;
            const int page = item.value(u"destpageposfrom1").toInt();
            QVERIFY2(page >= 1 && page <= pages, qPrintable(title));
            QVERIFY2(lines[page - 1].join(QString()).contains(visibleText(title)),
                     qPrintable(title + QStringLiteral(" on page ") + QString::number(page)));
            for (const QJsonValue kid : item.value(u"kids").toArray())
                self(kid.toObject(), level + 1, self);
        };
        for (const QJsonValue item : outlines)
            visit(item.toObject(), 1, visit);
        QCOMPARE(titles, headings);
        QCOMPARE(titleLevels, levels);

        // Each number of the table of contents is the page of its heading in the body:
        // the first page after the contents whose text holds the heading.
        int searchFrom = lastContentsPage + 1;
        for (const auto &[entry, number] : std::as_const(contents)) {
            int page = searchFrom;
            while (page <= pages && !lines[page - 1].contains(entry))
                ++page;
            QVERIFY2(page <= pages, qPrintable(entry));
            QVERIFY2(number == page, qPrintable(entry + QStringLiteral(": %1, found on %2").arg(number).arg(page)));
            searchFrom = page;
        }
    }

    // The label at the margin and the wrapped lines of a hanging indent in by its
    // characters; the page number centred at the foot; no number on a cover.
    void hangingIndentAndPageNumber()
    {
        PdfTypist t;
        t.setParagraphStyle(Style::Cover);
        t.setAlignment(Typist::Alignment::Center);
        t.typeText(QStringLiteral("表紙"));
        t.typeParagraph();
        t.insertPageBreak();
        t.setParagraphStyle(Style::Article);
        t.setAlignment(Typist::Alignment::Left);
        t.typeText(QStringLiteral("第１条（服務）"));
        t.typeParagraph();
        t.setParagraphStyle(Style::Item);
        t.setCharacterUnitFirstLineIndent(-2);
        t.typeText(QStringLiteral("(1)  ") + QString(120, QChar(u'従')));
        t.typeParagraph();
        t.typeText(QStringLiteral("(2)  次"));
        const QString path = m_temp->filePath(QStringLiteral("indent.pdf"));
        QCOMPARE(t.save(path), 2);

        QString error;
        const QList<PdfLine> lines = pdfLines(path, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        const auto find = [&](const QString &start) {
            return std::find_if(lines.begin(), lines.end(), [&](const PdfLine &l) { return l.text.startsWith(start); });
        };
        const auto heading = find(QStringLiteral("第１条"));
        const auto label = find(QStringLiteral("(1)"));
        const auto next = find(QStringLiteral("(2)"));
        QVERIFY(heading != lines.end() && label != lines.end() && next != lines.end());
        QCOMPARE(heading->page, 2);
        QVERIFY2(qAbs(heading->xMin - 85.05) < 1.0, qPrintable(QString::number(heading->xMin)));
        QVERIFY2(qAbs(label->xMin - heading->xMin) < 1.0, qPrintable(QString::number(label->xMin)));
        QVERIFY(next - label >= 3);
        QVERIFY(next->yMin - label->yMin > 2 * 18 - 1);
        // The lines below the label's (pdftotext takes the text after the label's
        // blanks as a line of its own).
        for (auto line = label + 1; line != next; ++line)
            if (line->yMin > label->yMin + 1)
                QVERIFY2(qAbs(line->xMin - (heading->xMin + 21)) < 1.0, qPrintable(QString::number(line->xMin) + u' ' + line->text));
        // The heading stands on the first line of the grid below the top margin.
        QVERIFY2(heading->yMin >= 99.25 && heading->yMin < 99.25 + 18, qPrintable(QString::number(heading->yMin)));

        const QList<QStringList> pages = pageLines(path);
        QCOMPARE(pages.size(), 2);
        QCOMPARE(pages[0], QStringList{u"表紙"_qs});
        QCOMPARE(pages[1].last(), QStringLiteral("2"));
        const auto number = std::find_if(lines.begin(), lines.end(), [](const PdfLine &l) { return l.page == 2 && l.text == u"2"; });
        QVERIFY(number != lines.end());
        QVERIFY2(qAbs(number->xMin - (595.3 / 2 - 2.6)) < 2.0, qPrintable(QString::number(number->xMin)));
    }

    // A page holds 36 lines of the grid. A heading that would be the last of them
    // goes to the next page with its text; without a heading the line stays.
    void headingStaysWithItsText_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("lastOnFirstPage");
        QTest::newRow("article heading") << int(Style::Article) << QStringLiteral("本文35");
        QTest::newRow("chapter heading") << int(Style::Chapter) << QStringLiteral("本文35");
        QTest::newRow("body text") << int(Style::Body) << QStringLiteral("見出し");
    }
    void headingStaysWithItsText()
    {
        QFETCH(int, style);
        QFETCH(QString, lastOnFirstPage);
        PdfTypist t;
        typeLines(t, 35);
        t.setParagraphStyle(Style(style));
        t.typeText(QStringLiteral("見出し"));
        t.typeParagraph();
        t.setParagraphStyle(Style::Paragraph);
        t.typeText(QStringLiteral("１  条文"));
        const QString path = m_temp->filePath(QStringLiteral("keep.pdf"));
        QCOMPARE(t.save(path), 2);
        const QList<QStringList> pages = pageLines(path);
        QCOMPARE(pages.size(), 2);
        QCOMPARE(pages[0].at(pages[0].size() - 2), lastOnFirstPage); // before the page number
    }

    // A paragraph of several lines leaves neither its first line alone at a page's
    // foot nor its last alone at the next page's head.
    void widowsAndOrphans_data()
    {
        QTest::addColumn<int>("linesBefore");
        QTest::addColumn<int>("onFirstPage"); // lines of the long paragraph on page 1
        QTest::newRow("one line would be left at the foot") << 35 << 0;
        QTest::newRow("one line would go over") << 33 << 2;
        QTest::newRow("two and two") << 34 << 2;
    }
    void widowsAndOrphans()
    {
        QFETCH(int, linesBefore);
        QFETCH(int, onFirstPage);
        PdfTypist t;
        typeLines(t, linesBefore);
        // Four lines of 40 characters each.
        t.typeText(QString(40 * 4, QChar(u'長')));
        const QString path = m_temp->filePath(QStringLiteral("widow.pdf"));
        t.save(path);
        const QList<QStringList> pages = pageLines(path);
        QCOMPARE(pages.size(), 2);
        const qsizetype longLines = std::count_if(pages[0].begin(), pages[0].end(), [](const QString &l) { return l.startsWith(u'長'); });
        QCOMPARE(longLines, qsizetype(onFirstPage));
    }

    // export --pdf on the command line, alone or beside --out, with no display.
    void commandLine()
    {
        // The test's store: on the server's run the command line is given it, as a user gives it.
        const TestRoot testRoot;
        const QString root = testRoot.path();
        const QString store = testRoot.layout().store;
        const auto cli = [&](const QStringList &args) {
            QProcess process;
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.remove(QStringLiteral("QT_QPA_PLATFORM"));
            env.remove(QStringLiteral("DISPLAY"));
            process.setProcessEnvironment(env);
            QStringList globals{QStringLiteral("--root"), root, QStringLiteral("--yes")};
            if (!store.isEmpty())
                globals << QStringLiteral("--store") << store;
            process.start(QStringLiteral(NORMARIS_APP_DIR "/normaris-cli"), globals + args);
            process.waitForFinished(120000);
            return std::pair(process.exitCode(), QString::fromUtf8(process.readAllStandardError()));
        };
        const QString company = QStringLiteral("見本");
        QCOMPARE(cli({QStringLiteral("company"), QStringLiteral("new"), company}).first, 0);
        QCOMPARE(cli({QStringLiteral("settings"), QStringLiteral("set"), QStringLiteral("--company"), company,
                      QStringLiteral("事業所名=見本株式会社")})
                     .first,
                 0);
        const QStringList doc = {QStringLiteral("--company"), company,
                                 QStringLiteral("--style"),   QStringLiteral("1"),
                                 QStringLiteral("--doc"),     QStringLiteral("02")};
        QCOMPARE(cli(QStringList{QStringLiteral("dates"), QStringLiteral("add"), QStringLiteral("--company"), company,
                                 QStringLiteral("--doc"), QStringLiteral("02"), QStringLiteral("2026/4/1")})
                     .first,
                 0);
        QCOMPARE(cli(QStringList{QStringLiteral("build")} + doc).first, 0);
        const QString docx = m_temp->filePath(QStringLiteral("賃金規程.docx")), pdf = m_temp->filePath(QStringLiteral("賃金規程.pdf"));
        const auto both =
            cli(QStringList{QStringLiteral("export")} + doc + QStringList{QStringLiteral("--out"), docx, QStringLiteral("--pdf"), pdf});
        QVERIFY2(both.first == 0, qPrintable(both.second));
        QVERIFY(QFileInfo(docx).size() > 0);
        QVERIFY(pageLines(pdf).size() > 2);
        QFile::remove(pdf);
        const QString alone = m_temp->filePath(QStringLiteral("単独.pdf"));
        QCOMPARE(cli(QStringList{QStringLiteral("export")} + doc + QStringList{QStringLiteral("--pdf"), alone}).first, 0);
        QVERIFY(QFileInfo(alone).size() > 0);
        const auto neither = cli(QStringList{QStringLiteral("export")} + doc);
        QCOMPARE(neither.first, 2);
        QVERIFY2(neither.second.contains(QStringLiteral("--pdf")), qPrintable(neither.second));

        // A second version under a later date, and the 新旧対照表 of the two as a PDF alone.
        QCOMPARE(cli(QStringList{QStringLiteral("dates"), QStringLiteral("add"), QStringLiteral("--company"), company,
                                 QStringLiteral("--doc"), QStringLiteral("02"), QStringLiteral("2027/4/1")})
                     .first,
                 0);
        QCOMPARE(cli(QStringList{QStringLiteral("export")} + doc + QStringList{QStringLiteral("--out"), docx}).first, 0);
        const QString comparison = m_temp->filePath(QStringLiteral("対照表.pdf"));
        const auto compared = cli(QStringList{QStringLiteral("compare")} + doc + QStringList{QStringLiteral("--pdf"), comparison});
        QVERIFY2(compared.first == 0, qPrintable(compared.second));
        QVERIFY(pageLines(comparison).value(0).contains(QStringLiteral("賃金規程新旧対照表")));
    }

    // The 新旧対照表: lying A4 pages, 改正後 on the left and 改正前 on the right, the
    // header row again on every page the table runs over, a row never split when it
    // fits on a page, the closing note after the table, and the page numbers.
    void comparisonTable()
    {
        const ComparisonTable table = comparisonOf(30);
        const QString path = m_temp->filePath(QStringLiteral("新旧対照表.pdf"));
        ComparisonPdf pdf(path);
        StagedFiles files;
        pdf.save(files, table, comparisonBlocks(table), comparisonPageSetup());
        files.commit();
        QVERIFY(pdf.pages() >= 3);

        QString error;
        const QList<PdfLine> lines = pdfLines(path, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        const double middle = 841.9 / 2;
        QList<int> headersOnPage(pdf.pages() + 1, 0);
        QHash<QString, QList<std::pair<int, double>>> articleRows; // label → (page, x) of each side
        for (const PdfLine &line : lines) {
            if (line.text == ComparisonTable::kNewColumn && line.xMin < middle)
                ++headersOnPage[line.page];
            if (line.text == ComparisonTable::kOldColumn && line.xMin > middle)
                ++headersOnPage[line.page];
            if (line.text.startsWith(QStringLiteral("第")) && line.text.contains(u'条'))
                articleRows[line.text.section(u'条', 0, 0)] << std::pair{line.page, line.xMin};
            QVERIFY2(line.xMin < 841.9 && line.yMin < 595.3, qPrintable(line.text));
        }
        for (int page = 1; page <= pdf.pages(); ++page)
            QVERIFY2(headersOnPage[page] == 2, qPrintable(QStringLiteral("page %1").arg(page)));
        QCOMPARE(articleRows.size(), 30);
        for (auto it = articleRows.cbegin(); it != articleRows.cend(); ++it) {
            QCOMPARE(it->size(), 2);
            QCOMPARE(it->at(0).first, it->at(1).first); // both sides of a row on one page
            QVERIFY(std::min(it->at(0).second, it->at(1).second) < middle);
            QVERIFY(std::max(it->at(0).second, it->at(1).second) > middle);
        }
        const QList<QStringList> pages = pageLines(path);
        QCOMPARE(pages.size(), pdf.pages());
        QVERIFY(pages.first().contains(QStringLiteral("就業規則新旧対照表")));
        QVERIFY(pages.last().contains(ComparisonTable::kClosingNote));
        for (int page = 0; page < pages.size(); ++page)
            QCOMPARE(pages[page].last(), QString::number(page + 1));

        // A bookmark per row, in order, each at the page where its article stands.
        QProcess qpdf;
        qpdf.start(QStringLiteral("qpdf"), {QStringLiteral("--json"), QStringLiteral("--json-key=outlines"), path});
        QVERIFY(qpdf.waitForFinished(60000) && qpdf.exitCode() == 0);
        const QJsonArray outlines = QJsonDocument::fromJson(qpdf.readAllStandardOutput()).object().value(u"outlines").toArray();
        QCOMPARE(outlines.size(), 30);
        for (int i = 0; i < outlines.size(); ++i) {
            const QJsonObject item = outlines[i].toObject();
            const QString label = QStringLiteral("第%1条").arg(i + 1);
            QVERIFY2(item.value(u"title").toString().startsWith(label), qPrintable(item.value(u"title").toString()));
            QCOMPARE(item.value(u"destpageposfrom1").toInt(), articleRows.value(label.section(u'条', 0, 0)).value(0).first);
        }
    }

    void saveFailure()
    {
        PdfTypist t;
        t.typeText(QStringLiteral("本文"));
        const QString missing = m_temp->filePath(QStringLiteral("無い/文書.pdf"));
        QVERIFY_THROWS_EXCEPTION(Failure, t.save(missing));
        QVERIFY(!QFile::exists(missing));
    }

private:
    std::unique_ptr<QTemporaryDir> m_temp;
};

QTEST_MAIN(PdfTest)
#include "tst_pdf.moc"
