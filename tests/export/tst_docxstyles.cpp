// What makes a .docx a finished document in a word processor: the paragraphs in
// styles with the headings' outline levels, the table of contents as a field
// whose stored result is the typed list, the page number in the footer (none on a
// cover), headings kept with their text; and LibreOffice's reading of the seed's
// work rules: page numbers on the pages, no heading as the last line of a page,
// every character in the Mincho face.

#include "DocxContent.h"
#include "ExportFixture.h"
#include "OfficeRender.h"
#include "export/DocumentRenderer.h"
#include "document/ParagraphStyles.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "fileformats/DocxTypist.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/EffectiveDates.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

using namespace normaris;
using namespace normaris::test;

namespace {

using Style = Typist::ParagraphStyle;
using Align = Typist::Alignment;

// The properties of the style of that id in styles.xml, flattened as DocxContent
// does ("outlineLvl@val" = "0"), pPr and rPr together.
Properties styleProperties(const QByteArray &styles, const QString &id)
{
    Properties props;
    QXmlStreamReader reader(styles);
    bool inStyle = false;
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            ++depth;
            if (reader.name() == u"style" && reader.attributes().value(QStringLiteral("w:styleId")) == id)
                inStyle = true;
            else if (inStyle && reader.name() != u"pPr" && reader.name() != u"rPr") {
                const QString name = reader.name().toString();
                if (reader.attributes().isEmpty())
                    props.insert(name, QString());
                for (const QXmlStreamAttribute &a : reader.attributes())
                    props.insert(name + u'@' + a.name().toString(), a.value().toString());
            }
        } else if (reader.isEndElement()) {
            --depth;
            if (reader.name() == u"style")
                inStyle = false;
        }
    }
    return props;
}

struct Saved {
    QMap<QString, QByteArray> parts;
    DocxBody body;
};

Saved save(const DocxTypist &typist, const QString &path)
{
    typist.save(path);
    Saved saved{zipEntries(path), {}};
    saved.body = readBody(saved.parts.value(QStringLiteral("word/document.xml")));
    return saved;
}

// A cover, a table of contents of two entries and the body they list.
void typeWithContents(Typist &t)
{
    t.setParagraphStyle(Style::Cover);
    t.setAlignment(Align::Center);
    t.typeParagraph();
    t.setParagraphStyle(Style::Title);
    t.typeText(QStringLiteral("就業規則"));
    t.typeParagraph();
    t.insertPageBreak();
    t.setParagraphStyle(Style::ContentsTitle);
    t.setFontSize(18);
    t.typeText(QStringLiteral("目　次"));
    t.typeParagraph();
    t.typeParagraph();
    t.setParagraphStyle(Style::ContentsName);
    t.setAlignment(Align::Left);
    t.setFontSize(12);
    t.typeText(QStringLiteral("就業規則"));
    t.setFontSize(10.5);
    t.typeParagraph();
    t.setParagraphStyle(Style::Contents1);
    t.typeText(QStringLiteral("第１章  総則"));
    t.typeParagraph();
    t.setParagraphStyle(Style::Contents2);
    t.typeText(QStringLiteral("　第１条（目的）"));
    t.typeParagraph();
    t.setParagraphStyle(Style::Body);
    t.insertPageBreak();
    t.setParagraphStyle(Style::Chapter);
    t.setAlignment(Align::Center);
    t.setBold(true);
    t.typeText(QStringLiteral("第１章  総則"));
    t.setBold(false);
    t.typeParagraph();
    t.typeParagraph();
    t.setParagraphStyle(Style::Article);
    t.setAlignment(Align::Left);
    t.typeText(QStringLiteral("第１条（目的）"));
    t.typeParagraph();
    t.setParagraphStyle(Style::Paragraph);
    t.setCharacterUnitFirstLineIndent(-1);
    t.typeText(QStringLiteral("１  本文"));
}

const DocxParagraph *paragraphWith(const DocxBody &body, const QString &text, int occurrence = 0)
{
    for (const DocxParagraph &p : body.paragraphs)
        if (p.text() == text && occurrence-- == 0)
            return &p;
    return nullptr;
}

} // namespace

class DocxStylesTest : public QObject {
    Q_OBJECT
private:
    // The seed's work rules, built and substituted, as a .docx at path.
    void saveSeedWorkRules(const QString &path)
    {
        OpenCompany company;
        ScriptedPrompt prompt;
        BasicSettings settings(company.db);
        QStringList values = settings.load();
        values[settingIndex(QStringLiteral("事業所名"))] = QStringLiteral("サンプル株式会社");
        values[settingIndex(QStringLiteral("郵便番号"))] = QStringLiteral("100-0005");
        settings.save(values, QStringLiteral("2"));
        for (const QString &d : {QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("03")}) {
            EffectiveDates(company.db, d).add(QStringLiteral("1"), QDate(2026, 4, 1));
            QCOMPARE(WorkDataBuild(company.db, prompt).build(QStringLiteral("1"), d), Outcome::Done);
        }
        QCOMPARE(SettingSubstitution(company.db, prompt).run(QStringLiteral("1"), QStringLiteral("01")), Outcome::Done);
        DocxTypist typist;
        QCOMPARE(DocumentRenderer(company.db, prompt).render(typist, QStringLiteral("1"), QStringLiteral("01"), RenderOptions()),
                 Outcome::Done);
        typist.save(path);
    }

private slots:
    void init()
    {
        m_temp = std::make_unique<QTemporaryDir>();
        QVERIFY(m_temp->isValid());
    }

    // Every style of the table is defined; the headings carry outline levels 1
    // and 2 and keep with the next paragraph; Normal has widow control and names
    // the Mincho face for every slot.
    void stylesXml_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QStringList>("expected"); // properties the style must have
        QTest::newRow("Normal") << u"Normal"_qs << QStringList{u"widowControl"_qs,           u"rFonts@ascii=ＭＳ 明朝"_qs,
                                                               u"rFonts@hAnsi=ＭＳ 明朝"_qs, u"rFonts@eastAsia=ＭＳ 明朝"_qs,
                                                               u"rFonts@cs=ＭＳ 明朝"_qs,    u"rFonts@hint=eastAsia"_qs};
        QTest::newRow("章") << u"Heading1"_qs << QStringList{u"basedOn@val=Normal"_qs, u"next@val=Normal"_qs,  u"keepNext"_qs,
                                                             u"jc@val=center"_qs,      u"outlineLvl@val=0"_qs, u"b"_qs};
        QTest::newRow("条") << u"Heading2"_qs << QStringList{u"keepNext"_qs, u"outlineLvl@val=1"_qs};
        QTest::newRow("項") << u"Paragraph"_qs << QStringList{u"ind@hangingChars=100"_qs, u"ind@leftChars=100"_qs};
        QTest::newRow("イ") << u"Iroha"_qs << QStringList{u"ind@hangingChars=400"_qs, u"ind@left=840"_qs};
        QTest::newRow("規程名") << u"DocumentName"_qs << QStringList{u"jc@val=center"_qs, u"b"_qs, u"sz@val=28"_qs};
        QTest::newRow("目次") << u"ContentsTitle"_qs << QStringList{u"sz@val=36"_qs, u"jc@val=center"_qs};
        QTest::newRow("目次の章") << u"TOC1"_qs << QStringList{u"name@val=toc 1"_qs};
        QTest::newRow("目次の条") << u"TOC2"_qs << QStringList{u"name@val=toc 2"_qs};
        QTest::newRow("blue marks") << u"Unsettled"_qs << QStringList{u"color@val=0000FF"_qs};
        QTest::newRow("red warnings") << u"Warning"_qs << QStringList{u"color@val=FF0000"_qs};
    }
    void stylesXml()
    {
        QFETCH(QString, id);
        QFETCH(QStringList, expected);
        DocxTypist typist;
        const Saved saved = save(typist, m_temp->filePath(QStringLiteral("styles.docx")));
        const Properties props = styleProperties(saved.parts.value(QStringLiteral("word/styles.xml")), id);
        QVERIFY2(!props.isEmpty(), qPrintable(id));
        for (const QString &e : expected) {
            const QString key = e.section(u'=', 0, 0), value = e.section(u'=', 1);
            QVERIFY2(props.contains(key) && props.value(key) == value, qPrintable(id + u' ' + e));
        }
        // Only the headings have an outline level.
        if (!expected.join(u' ').contains(QStringLiteral("outlineLvl")))
            QVERIFY(!props.contains(QStringLiteral("outlineLvl@val")));
        QVERIFY(propertyOrderErrors(saved.parts.value(QStringLiteral("word/styles.xml"))).isEmpty());
    }

    // A paragraph typed as its style has it carries the style alone; what differs
    // is written on the paragraph.
    void paragraphsUseStyles_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("indent");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<QString>("styleId");
        QTest::addColumn<QStringList>("direct"); // the paragraph's and the run's own properties
        QTest::newRow("章 as typed") << int(Style::Chapter) << int(Align::Center) << 0 << true << u"Heading1"_qs << QStringList();
        QTest::newRow("条 as typed") << int(Style::Article) << int(Align::Left) << 0 << false << u"Heading2"_qs << QStringList();
        QTest::newRow("号 as typed") << int(Style::Item) << int(Align::Left) << -2 << false << u"Item"_qs << QStringList();
        QTest::newRow("章 not bold") << int(Style::Chapter) << int(Align::Center) << 0 << false << u"Heading1"_qs
                                     << QStringList{u"b@val=0"_qs, u"bCs@val=0"_qs};
        QTest::newRow("項 without indent") << int(Style::Paragraph) << int(Align::Left) << 0 << false << u"Paragraph"_qs
                                           << QStringList{u"ind@left=0"_qs, u"ind@leftChars=0"_qs};
        QTest::newRow("body centred") << int(Style::Body) << int(Align::Center) << 0 << false << QString()
                                      << QStringList{u"jc@val=center"_qs};
    }
    void paragraphsUseStyles()
    {
        QFETCH(int, style);
        QFETCH(int, alignment);
        QFETCH(int, indent);
        QFETCH(bool, bold);
        QFETCH(QString, styleId);
        QFETCH(QStringList, direct);
        DocxTypist typist;
        typist.setParagraphStyle(Style(style));
        typist.setAlignment(Align(alignment));
        typist.setCharacterUnitFirstLineIndent(indent);
        typist.setBold(bold);
        typist.typeText(QStringLiteral("見出し"));
        typist.setBold(false);
        const Saved saved = save(typist, m_temp->filePath(QStringLiteral("use.docx")));
        QCOMPARE(saved.body.paragraphs.size(), 1);
        const DocxParagraph &p = saved.body.paragraphs[0];
        QCOMPARE(p.props.value(QStringLiteral("pStyle@val")), styleId);
        QStringList own;
        for (const Properties &props : {p.props, p.runs.value(0).props})
            for (auto it = props.begin(); it != props.end(); ++it)
                if (it.key() != u"pStyle@val")
                    own << (it.value().isEmpty() ? it.key() : it.key() + u'=' + it.value());
        for (const QString &d : direct)
            QVERIFY2(own.contains(d), qPrintable(own.join(u' ')));
        QVERIFY2(own.size() <= direct.size() + 2, qPrintable(own.join(u' '))); // ind has four attributes
        if (direct.isEmpty())
            QVERIFY2(own.isEmpty(), qPrintable(own.join(u' ')));
    }

    // The footer holds a centred PAGE field; the page set-up names it, and a
    // document that starts with its cover shows none there.
    void footer_data()
    {
        QTest::addColumn<bool>("cover");
        QTest::newRow("with a cover") << true;
        QTest::newRow("without") << false;
    }
    void footer()
    {
        QFETCH(bool, cover);
        DocxTypist typist;
        if (cover)
            typeWithContents(typist);
        else
            typist.typeText(QStringLiteral("本文"));
        const Saved saved = save(typist, m_temp->filePath(QStringLiteral("footer.docx")));
        const QByteArray footer = saved.parts.value(QStringLiteral("word/footer1.xml"));
        QVERIFY(xmlError(footer).isEmpty());
        QVERIFY(footer.contains("<w:jc w:val=\"center\"/>"));
        QVERIFY(footer.contains("<w:fldChar w:fldCharType=\"begin\"/>"));
        QVERIFY(footer.contains("<w:instrText xml:space=\"preserve\"> PAGE </w:instrText>"));
        QVERIFY(footer.contains("<w:fldChar w:fldCharType=\"end\"/>"));
        const QByteArray document = saved.parts.value(QStringLiteral("word/document.xml"));
        QVERIFY(document.contains("<w:footerReference w:type=\"default\" r:id=\"rId3\"/>"));
        QCOMPARE(document.contains("<w:titlePg/>"), cover);
    }

    // The entries of the table of contents are the stored result of a TOC field
    // over the two outline levels: the field starts in the first entry and ends
    // in the last; the document's name stands above it; the file asks for its
    // fields to be updated on opening.
    void contentsField()
    {
        DocxTypist typist;
        typeWithContents(typist);
        const Saved saved = save(typist, m_temp->filePath(QStringLiteral("toc.docx")));
        const QString document = QString::fromUtf8(saved.parts.value(QStringLiteral("word/document.xml")));
        static const QRegularExpression field(QStringLiteral(
            "<w:p><w:pPr><w:pStyle w:val=\"TOC1\"/></w:pPr><w:r><w:fldChar w:fldCharType=\"begin\"/></w:r>"
            "<w:r><w:instrText xml:space=\"preserve\"> TOC \\\\o (&quot;|\")1-2(&quot;|\") \\\\h \\\\z \\\\u </w:instrText></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r><w:r><w:t xml:space=\"preserve\">第１章  総則</w:t></w:r></w:p>"
            "<w:p><w:pPr><w:pStyle w:val=\"TOC2\"/></w:pPr><w:r><w:t xml:space=\"preserve\">　第１条（目的）</w:t></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r></w:p>"));
        QVERIFY2(field.match(document).hasMatch(), qPrintable(document));
        QCOMPARE(document.count(QStringLiteral("fldCharType=\"begin\"")), 1);
        const DocxParagraph *name = paragraphWith(saved.body, QStringLiteral("就業規則"), 1);
        QVERIFY(name);
        QCOMPARE(name->props.value(QStringLiteral("pStyle@val")), QStringLiteral("ContentsName"));
        QVERIFY(saved.parts.value(QStringLiteral("word/settings.xml")).contains("<w:updateFields w:val=\"true\"/>"));
        const QStringList errors = propertyOrderErrors(saved.parts.value(QStringLiteral("word/document.xml")));
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join(u'\n')));
    }

    // A blank line between a 章 heading and a 条 heading keeps with the next
    // paragraph too, so that the 章 heading cannot end a page.
    void blankAfterHeadingKeeps()
    {
        DocxTypist typist;
        typeWithContents(typist);
        const Saved saved = save(typist, m_temp->filePath(QStringLiteral("keep.docx")));
        const QList<DocxParagraph> &ps = saved.body.paragraphs;
        const auto chapter = std::find_if(
            ps.begin(), ps.end(), [](const DocxParagraph &p) { return p.props.value(QStringLiteral("pStyle@val")) == u"Heading1"; });
        QVERIFY(chapter != ps.end() && chapter + 2 < ps.end());
        QVERIFY((chapter + 1)->runs.isEmpty());
        QVERIFY((chapter + 1)->props.contains(QStringLiteral("keepNext")));
        QCOMPARE((chapter + 2)->props.value(QStringLiteral("pStyle@val")), QStringLiteral("Heading2"));
        QVERIFY(!(chapter + 3)->props.contains(QStringLiteral("keepNext")));
    }

    // A converter that knows nothing of the program reads every 章 as a heading of
    // level 1 and every 条 as one of level 2, in the document's order.
    void pandocReadsHeadings()
    {
        const QString docx = m_temp->filePath(QStringLiteral("見出し.docx"));
        saveSeedWorkRules(docx);
        QProcess pandoc;
        pandoc.start(QStringLiteral("pandoc"), {QStringLiteral("-f"), QStringLiteral("docx"), QStringLiteral("-t"),
                                                QStringLiteral("markdown"), QStringLiteral("--wrap=none"), docx});
        QVERIFY2(pandoc.waitForFinished(120000) && pandoc.exitCode() == 0, pandoc.readAllStandardError().constData());
        QStringList chapters, articles;
        for (const QString &line : QString::fromUtf8(pandoc.readAllStandardOutput()).split(u'\n')) {
            if (line.startsWith(QStringLiteral("# ")))
                chapters << line.mid(2);
            else if (line.startsWith(QStringLiteral("## ")))
                articles << line.mid(3);
        }
        // The same headings as the document holds in its heading styles.
        const DocxBody body = readBody(zipEntries(docx).value(QStringLiteral("word/document.xml")));
        QStringList typedChapters, typedArticles;
        for (const DocxParagraph &p : body.paragraphs) {
            if (p.props.value(QStringLiteral("pStyle@val")) == u"Heading1")
                typedChapters << p.text();
            else if (p.props.value(QStringLiteral("pStyle@val")) == u"Heading2")
                typedArticles << p.text();
        }
        QVERIFY(typedChapters.size() >= 10);
        QVERIFY(typedArticles.size() >= 50);
        QCOMPARE(chapters.size(), typedChapters.size());
        QCOMPARE(articles.size(), typedArticles.size());
        static const QRegularExpression chapter(QStringLiteral("^第[０-９]+章")), article(QStringLiteral("^第[０-９]+条"));
        for (const QString &c : std::as_const(chapters))
            QVERIFY2(chapter.match(c).hasMatch(), qPrintable(c));
        for (const QString &a : std::as_const(articles))
            QVERIFY2(article.match(a).hasMatch(), qPrintable(a));
    }

    // The seed's work rules as LibreOffice lays them out: a page number on each
    // page but the cover, no 章 or 条 heading as the last line of a page, and
    // only the Mincho face (with the project's font aliases installed).
    void seedWorkRulesInLibreOffice()
    {
        const QString docx = m_temp->filePath(QStringLiteral("就業規則.docx"));
        saveSeedWorkRules(docx);
        QString error;
        const QString pdf = convertToPdf(docx, m_temp->path(), &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));

        const QStringList pages = pdfText(pdf, &error).split(u'\f');
        QVERIFY2(error.isEmpty(), qPrintable(error));
        static const QRegularExpression heading(QStringLiteral("^第[０-９]+(章|条)"));
        int numbered = 0;
        for (qsizetype i = 0; i < pages.size(); ++i) {
            QStringList lines;
            for (const QString &line : pages[i].split(u'\n'))
                if (!line.trimmed().isEmpty())
                    lines << line.trimmed();
            if (lines.isEmpty())
                continue;
            if (i == 0) {
                QVERIFY2(lines.last() != u"1", "the cover shows no page number");
                continue;
            }
            QCOMPARE(lines.last(), QString::number(i + 1));
            ++numbered;
            // The table of contents is all headings: only the body's pages count.
            if (i >= 5 && lines.size() >= 2)
                QVERIFY2(!heading.match(lines[lines.size() - 2]).hasMatch(),
                         qPrintable(QStringLiteral("page %1 ends with %2").arg(i + 1).arg(lines[lines.size() - 2])));
        }
        QVERIFY(numbered > 20);
        const QStringList fonts = pdfReport(QStringLiteral("pdffonts"), pdf, &error).split(u'\n', Qt::SkipEmptyParts).mid(2);
        QVERIFY(!fonts.isEmpty());
        for (const QString &font : fonts)
            QVERIFY2(font.contains(QStringLiteral("IPAMincho")), qPrintable(font));
    }

private:
    std::unique_ptr<QTemporaryDir> m_temp;
};

QTEST_GUILESS_MAIN(DocxStylesTest)
#include "tst_docxstyles.moc"
