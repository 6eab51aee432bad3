// The .docx that a DocxTypist writes: the package and its parts, the formats of
// runs and paragraphs in the XML, the page break, the safe save, and a real word
// processor's reading of it (LibreOffice to PDF) with the text and the hanging
// indent where the reader expects them.

#include "DocxContent.h"
#include "OfficeRender.h"
#include "fileformats/DocxTypist.h"
#include "base/Failure.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace normaris;
using namespace normaris::test;

namespace {

using Align = Typist::Alignment;
using Color = Typist::Color;

const QString kTitle = QStringLiteral("就業規則");
const QString kHangingLabel = QStringLiteral("(1)  ");
const QString kHangingText =
    QStringLiteral("従業員は、会社の定める就業時間中は職務に専念し、上長の指示命令に従い、職場の秩序を保持するとともに、"
                   "互いに協力して業務の正常な運営に努めなければならない。また、業務上知り得た会社及び取引先の機密を、"
                   "在職中はもとより退職後においても他に漏らしてはならず、会社の名誉を損なう行為をしてはならない。");

// A short document in the shape of the finished ones: a cover with a big centred
// title, a page break, a chapter heading, an article with its clauses in hanging
// indents, marks in blue and red, and a double-struck word.
void typeSample(Typist &t)
{
    t.setFontName(Typist::kMinchoFont);
    t.setColor(Color::Black);
    t.setAlignment(Align::Center);
    for (int i = 0; i < 10; ++i)
        t.typeParagraph();
    t.setFontSize(72);
    t.typeText(kTitle);
    t.setFontSize(10.5);
    for (int i = 0; i < 12; ++i)
        t.typeParagraph();
    t.setFontSize(12);
    t.typeText(QStringLiteral("株式会社　見本商事"));
    t.typeParagraph();
    t.setFontSize(10.5);
    t.insertPageBreak();

    t.setAlignment(Align::Center);
    t.setBold(true);
    t.setFontSize(14);
    t.typeText(QStringLiteral("第１章  総則"));
    t.setBold(false);
    t.setFontSize(10.5);
    t.typeParagraph();
    t.setAlignment(Align::Left);
    t.typeText(QStringLiteral("第１条（服務）"));
    t.typeParagraph();
    t.setCharacterUnitFirstLineIndent(-1);
    t.typeText(QStringLiteral("１  従業員は、この規則を守らなければならない。"));
    t.typeParagraph();
    t.setCharacterUnitFirstLineIndent(-2);
    t.typeText(kHangingLabel + kHangingText);
    t.typeParagraph();
    t.setColor(Color::Blue);
    t.typeText(QStringLiteral("(2)  試用期間は★0001★とする。"));
    t.setColor(Color::Black);
    t.typeParagraph();
    t.setCharacterUnitFirstLineIndent(0);
    t.setColor(Color::Red);
    t.typeText(QStringLiteral("          ★テンプレート0001を挿入してください★"));
    t.setColor(Color::Black);
    t.typeParagraph();
    t.typeText(QStringLiteral("就業規則"));
    t.setDoubleStrikeThrough(true);
    t.typeText(QStringLiteral("（変更）"));
    t.setDoubleStrikeThrough(false);
    t.typeText(QStringLiteral("届"));
}

// Saves what the typist holds and reads the body back.
DocxBody saveAndRead(const DocxTypist &typist, const QString &path)
{
    typist.save(path);
    return readBody(zipEntries(path).value(QStringLiteral("word/document.xml")));
}

// An attribute (qualified name) of the first element of that local name.
QString attr(const QByteArray &xml, const QString &element, const QString &attribute)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == element)
            return reader.attributes().value(attribute).toString();
    }
    return {};
}

} // namespace

class DocxTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_temp = std::make_unique<QTemporaryDir>();
        QVERIFY(m_temp->isValid());
        m_dir.setPath(m_temp->path());
    }

    void packageParts()
    {
        DocxTypist typist;
        typeSample(typist);
        const QString path = m_dir.filePath(QStringLiteral("sample.docx"));
        typist.save(path);
        const QMap<QString, QByteArray> parts = zipEntries(path);
        const QStringList expected = {QStringLiteral("[Content_Types].xml"), QStringLiteral("_rels/.rels"),
                                      QStringLiteral("word/document.xml"),   QStringLiteral("word/_rels/document.xml.rels"),
                                      QStringLiteral("word/styles.xml"),     QStringLiteral("word/settings.xml")};
        QStringList names = parts.keys(), expectedNames = expected;
        expectedNames.sort();
        QCOMPARE(names, expectedNames);
        for (auto it = parts.begin(); it != parts.end(); ++it) {
            QVERIFY2(xmlError(it.value()).isEmpty(), qPrintable(it.key() + QStringLiteral(": ") + xmlError(it.value())));
            QVERIFY2(it.value().startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"), qPrintable(it.key()));
        }
        const QByteArray types = parts.value(QStringLiteral("[Content_Types].xml"));
        QVERIFY(types.contains("PartName=\"/word/document.xml\" "
                               "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\""));
        QVERIFY(types.contains("PartName=\"/word/styles.xml\""));
        QVERIFY(types.contains("PartName=\"/word/settings.xml\""));
        QVERIFY(types.contains("Extension=\"rels\""));
        QVERIFY(parts.value(QStringLiteral("_rels/.rels")).contains("/relationships/officeDocument\" Target=\"word/document.xml\""));
        const QByteArray rels = parts.value(QStringLiteral("word/_rels/document.xml.rels"));
        QVERIFY(rels.contains("/relationships/styles\" Target=\"styles.xml\""));
        QVERIFY(rels.contains("/relationships/settings\" Target=\"settings.xml\""));
    }

    // The defaults carry the base font of every Typist, and the page is A4.
    void defaultsAndPage()
    {
        DocxTypist typist;
        typist.typeText(kTitle);
        const QString path = m_dir.filePath(QStringLiteral("page.docx"));
        typist.save(path);
        const QMap<QString, QByteArray> parts = zipEntries(path);
        const QByteArray styles = parts.value(QStringLiteral("word/styles.xml"));
        QCOMPARE(attr(styles, QStringLiteral("rFonts"), QStringLiteral("w:eastAsia")), Typist::kMinchoFont);
        QCOMPARE(attr(styles, QStringLiteral("rFonts"), QStringLiteral("w:ascii")), Typist::kMinchoFont);
        QCOMPARE(attr(styles, QStringLiteral("rFonts"), QStringLiteral("w:hAnsi")), Typist::kMinchoFont);
        QCOMPARE(attr(styles, QStringLiteral("sz"), QStringLiteral("w:val")), QStringLiteral("21"));
        QCOMPARE(attr(styles, QStringLiteral("lang"), QStringLiteral("w:eastAsia")), QStringLiteral("ja-JP"));
        QCOMPARE(attr(styles, QStringLiteral("color"), QStringLiteral("w:val")), QStringLiteral("000000"));
        const QByteArray document = parts.value(QStringLiteral("word/document.xml"));
        QCOMPARE(attr(document, QStringLiteral("pgSz"), QStringLiteral("w:w")), QStringLiteral("11906"));
        QCOMPARE(attr(document, QStringLiteral("pgSz"), QStringLiteral("w:h")), QStringLiteral("16838"));
        QVERIFY(!attr(document, QStringLiteral("pgMar"), QStringLiteral("w:left")).isEmpty());
        QVERIFY(document.contains("<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">"));
    }

    // Every run and paragraph property stands where the schema puts it.
    void schemaOrder()
    {
        DocxTypist typist;
        typeSample(typist);
        typist.setFontName(QStringLiteral("ＭＳ ゴシック"));
        typist.setBold(true);
        typist.setDoubleStrikeThrough(true);
        typist.setColor(Color::Red);
        typist.setFontSize(20);
        typist.setCharacterUnitFirstLineIndent(-3);
        typist.setAlignment(Align::Right);
        typist.typeText(QStringLiteral("全部"));
        typist.typeParagraph();
        const QString path = m_dir.filePath(QStringLiteral("order.docx"));
        typist.save(path);
        const QMap<QString, QByteArray> parts = zipEntries(path);
        for (const QString &part : {QStringLiteral("word/document.xml"), QStringLiteral("word/styles.xml")}) {
            const QStringList errors = propertyOrderErrors(parts.value(part));
            QVERIFY2(errors.isEmpty(), qPrintable(part + QStringLiteral(": ") + errors.join(QStringLiteral("; "))));
        }
    }

    void runFormat_data()
    {
        QTest::addColumn<QString>("font");
        QTest::addColumn<double>("size");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<int>("color");
        QTest::addColumn<bool>("dstrike");
        // The run's properties as read back: "name" for a flag, "name@attribute=value".
        QTest::addColumn<QStringList>("expected");
        const QString mincho = Typist::kMinchoFont;
        const int black = int(Color::Black), blue = int(Color::Blue), red = int(Color::Red);
        QTest::newRow("base") << mincho << 10.5 << false << black << false << QStringList();
        QTest::newRow("title 72") << mincho << 72.0 << false << black << false << QStringList{u"sz@val=144"_qs, u"szCs@val=144"_qs};
        QTest::newRow("heading 14 bold") << mincho << 14.0 << true << black << false
                                         << QStringList{u"b"_qs, u"bCs"_qs, u"sz@val=28"_qs, u"szCs@val=28"_qs};
        QTest::newRow("blue mark") << mincho << 10.5 << false << blue << false << QStringList{u"color@val=0000FF"_qs};
        QTest::newRow("red warning") << mincho << 10.5 << false << red << false << QStringList{u"color@val=FF0000"_qs};
        QTest::newRow("double struck") << mincho << 10.5 << false << black << true << QStringList{u"dstrike"_qs};
        QTest::newRow("form heading 20") << mincho << 20.0 << false << black << true
                                         << QStringList{u"dstrike"_qs, u"sz@val=40"_qs, u"szCs@val=40"_qs};
        QTest::newRow("other font") << u"ＭＳ ゴシック"_qs << 10.5 << false << black << false
                                    << QStringList{u"rFonts@ascii=ＭＳ ゴシック"_qs, u"rFonts@eastAsia=ＭＳ ゴシック"_qs,
                                                   u"rFonts@hAnsi=ＭＳ ゴシック"_qs};
        QTest::newRow("everything") << mincho << 12.0 << true << red << true
                                    << QStringList{u"b"_qs,       u"bCs"_qs,       u"color@val=FF0000"_qs,
                                                   u"dstrike"_qs, u"sz@val=24"_qs, u"szCs@val=24"_qs};
    }
    void runFormat()
    {
        QFETCH(QString, font);
        QFETCH(double, size);
        QFETCH(bool, bold);
        QFETCH(int, color);
        QFETCH(bool, dstrike);
        QFETCH(QStringList, expected);
        DocxTypist typist;
        typist.setFontName(font);
        typist.setFontSize(size);
        typist.setBold(bold);
        typist.setColor(Color(color));
        typist.setDoubleStrikeThrough(dstrike);
        typist.typeText(QStringLiteral("本文"));
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("run.docx")));
        QVERIFY2(body.error.isEmpty(), qPrintable(body.error));
        QCOMPARE(body.paragraphs.size(), 1);
        QCOMPARE(body.paragraphs[0].runs.size(), 1);
        const DocxRun &run = body.paragraphs[0].runs[0];
        QCOMPARE(run.text, QStringLiteral("本文"));
        QStringList props;
        for (auto it = run.props.begin(); it != run.props.end(); ++it)
            props << (it.value().isEmpty() ? it.key() : it.key() + u'=' + it.value());
        expected.sort();
        QCOMPARE(props, expected);
    }

    void paragraphFormat_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("indent");
        QTest::addColumn<QString>("jc");
        QTest::addColumn<QStringList>("ind"); // "attribute=value", sorted
        QTest::newRow("left") << int(Align::Left) << 0 << u"left"_qs << QStringList();
        QTest::newRow("centre") << int(Align::Center) << 0 << u"center"_qs << QStringList();
        QTest::newRow("right") << int(Align::Right) << 0 << u"right"_qs << QStringList();
        QTest::newRow("項 -1") << int(Align::Left) << -1 << u"left"_qs
                               << QStringList{u"hanging=210"_qs, u"hangingChars=100"_qs, u"left=210"_qs, u"leftChars=100"_qs};
        QTest::newRow("号 -2") << int(Align::Left) << -2 << u"left"_qs
                               << QStringList{u"hanging=420"_qs, u"hangingChars=200"_qs, u"left=420"_qs, u"leftChars=200"_qs};
        QTest::newRow("① -3") << int(Align::Left) << -3 << u"left"_qs
                              << QStringList{u"hanging=630"_qs, u"hangingChars=300"_qs, u"left=630"_qs, u"leftChars=300"_qs};
        QTest::newRow("イ -4") << int(Align::Left) << -4 << u"left"_qs
                               << QStringList{u"hanging=840"_qs, u"hangingChars=400"_qs, u"left=840"_qs, u"leftChars=400"_qs};
        QTest::newRow("first line +1") << int(Align::Left) << 1 << u"left"_qs << QStringList{u"firstLine=210"_qs, u"firstLineChars=100"_qs};
        QTest::newRow("centred, hanging") << int(Align::Center) << -2 << u"center"_qs
                                          << QStringList{u"hanging=420"_qs, u"hangingChars=200"_qs, u"left=420"_qs, u"leftChars=200"_qs};
    }
    void paragraphFormat()
    {
        QFETCH(int, alignment);
        QFETCH(int, indent);
        QFETCH(QString, jc);
        QFETCH(QStringList, ind);
        DocxTypist typist;
        typist.typeText(QStringLiteral("(1)  本文"));
        // Paragraph settings apply to the paragraph the cursor is in, text or not.
        typist.setAlignment(Align(alignment));
        typist.setCharacterUnitFirstLineIndent(indent);
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("paragraph.docx")));
        QCOMPARE(body.paragraphs.size(), 1);
        const Properties &props = body.paragraphs[0].props;
        QCOMPARE(props.value(QStringLiteral("jc@val")), jc);
        QStringList indAttributes;
        for (auto it = props.begin(); it != props.end(); ++it)
            if (it.key().startsWith(QStringLiteral("ind@")))
                indAttributes << it.key().mid(4) + u'=' + it.value();
        QCOMPARE(indAttributes, ind);
    }

    // Font settings last across paragraphs; a new paragraph starts with the
    // settings of the one it ends; text typed in one font is one run.
    void cursorModel()
    {
        DocxTypist typist;
        typist.setAlignment(Align::Center);
        typist.setCharacterUnitFirstLineIndent(-2);
        typist.setColor(Color::Blue);
        typist.typeText(QStringLiteral("一"));
        typist.typeText(QStringLiteral("つ"));
        typist.typeParagraph();
        typist.typeText(QStringLiteral("二"));
        typist.setColor(Color::Black);
        typist.typeText(QStringLiteral("黒"));
        typist.setAlignment(Align::Right);
        typist.typeParagraph();
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("cursor.docx")));
        QCOMPARE(body.paragraphs.size(), 3);
        QCOMPARE(body.paragraphs[0].runs.size(), 1);
        QCOMPARE(body.paragraphs[0].runs[0].text, QStringLiteral("一つ"));
        QCOMPARE(body.paragraphs[0].props.value(QStringLiteral("jc@val")), QStringLiteral("center"));
        QCOMPARE(body.paragraphs[1].runs.size(), 2);
        QCOMPARE(body.paragraphs[1].runs[0].props.value(QStringLiteral("color@val")), QStringLiteral("0000FF"));
        QVERIFY(!body.paragraphs[1].runs[1].props.contains(QStringLiteral("color@val")));
        QCOMPARE(body.paragraphs[1].props.value(QStringLiteral("jc@val")), QStringLiteral("right"));
        QCOMPARE(body.paragraphs[1].props.value(QStringLiteral("ind@hangingChars")), QStringLiteral("200"));
        // The last, empty paragraph inherits the right alignment and the indent.
        QCOMPARE(body.paragraphs[2].runs.size(), 0);
        QCOMPARE(body.paragraphs[2].props.value(QStringLiteral("jc@val")), QStringLiteral("right"));
        QCOMPARE(body.paragraphs[2].props.value(QStringLiteral("ind@hangingChars")), QStringLiteral("200"));
    }

    // An empty paragraph keeps the size it was typed in: its mark carries the font.
    void paragraphMark()
    {
        DocxTypist typist;
        typist.setFontSize(18);
        typist.typeText(QStringLiteral("目　次"));
        typist.typeParagraph();
        typist.typeParagraph();
        typist.setFontSize(10.5);
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("mark.docx")));
        QCOMPARE(body.paragraphs.size(), 3);
        QCOMPARE(body.paragraphs[0].markProps.value(QStringLiteral("sz@val")), QStringLiteral("36"));
        QCOMPARE(body.paragraphs[1].markProps.value(QStringLiteral("sz@val")), QStringLiteral("36"));
        QVERIFY(body.paragraphs[2].markProps.isEmpty());
    }

    // The break is typed at the cursor and ends that paragraph; what follows
    // starts a new paragraph with the same settings.
    void pageBreak()
    {
        DocxTypist typist;
        typist.setAlignment(Align::Center);
        typist.typeText(QStringLiteral("表紙"));
        typist.typeParagraph();
        typist.insertPageBreak();
        typist.typeText(QStringLiteral("目　次"));
        typist.typeParagraph();
        typist.typeText(QStringLiteral("前"));
        typist.insertPageBreak();
        typist.typeText(QStringLiteral("後"));
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("break.docx")));
        QStringList shape;
        for (const DocxParagraph &p : body.paragraphs) {
            QString line = p.props.value(QStringLiteral("jc@val")) + u':';
            for (const DocxRun &r : p.runs)
                line += r.pageBreak ? QStringLiteral("<br>") : r.text;
            shape << line;
        }
        QCOMPARE(shape, (QStringList{u"center:表紙"_qs, u"center:<br>"_qs, u"center:目　次"_qs, u"center:前<br>"_qs, u"center:後"_qs}));
    }

    // Blanks at the ends of a text are kept; markup characters are escaped;
    // tabs and line ends become what a word processor makes of them.
    void textContent()
    {
        DocxTypist typist;
        typist.typeText(QStringLiteral("      (10)  <a & b> \"c\" 'd'  "));
        typist.typeParagraph();
        typist.typeText(QStringLiteral("見出し\t本文\x01\r\n次の段落\n"));
        typist.typeText(QStringLiteral("𠮷野家"));
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("text.docx")));
        QVERIFY2(body.error.isEmpty(), qPrintable(body.error));
        QCOMPARE(body.paragraphs.size(), 4);
        QCOMPARE(body.paragraphs[0].text(), QStringLiteral("      (10)  <a & b> \"c\" 'd'  "));
        QVERIFY(body.paragraphs[0].runs[0].preserved);
        QCOMPARE(body.paragraphs[1].text(), QStringLiteral("見出し\t本文"));
        QCOMPARE(body.paragraphs[2].text(), QStringLiteral("次の段落"));
        QCOMPARE(body.paragraphs[3].text(), QStringLiteral("𠮷野家"));
    }

    // The sample's XML: the marks of every kind, and the Japanese text.
    void sampleContent()
    {
        DocxTypist typist;
        typeSample(typist);
        const DocxBody body = saveAndRead(typist, m_dir.filePath(QStringLiteral("sample.docx")));
        QVERIFY2(body.error.isEmpty(), qPrintable(body.error));
        const auto find = [&](const QString &text) -> const DocxParagraph * {
            for (const DocxParagraph &p : body.paragraphs)
                if (p.text().contains(text))
                    return &p;
            return nullptr;
        };
        const DocxParagraph *title = find(kTitle);
        QVERIFY(title);
        QCOMPARE(title->props.value(QStringLiteral("jc@val")), QStringLiteral("center"));
        QCOMPARE(title->runs[0].props.value(QStringLiteral("sz@val")), QStringLiteral("144"));
        const DocxParagraph *clause = find(kHangingText);
        QVERIFY(clause);
        QCOMPARE(clause->props.value(QStringLiteral("ind@hangingChars")), QStringLiteral("200"));
        QCOMPARE(clause->props.value(QStringLiteral("jc@val")), QStringLiteral("left"));
        const DocxParagraph *blue = find(QStringLiteral("★0001★"));
        QVERIFY(blue);
        QCOMPARE(blue->runs[0].props.value(QStringLiteral("color@val")), QStringLiteral("0000FF"));
        QVERIFY(blue->runs[0].preserved);
        const DocxParagraph *red = find(QStringLiteral("★テンプレート0001"));
        QVERIFY(red);
        QCOMPARE(red->runs[0].props.value(QStringLiteral("color@val")), QStringLiteral("FF0000"));
        QVERIFY(red->props.value(QStringLiteral("ind@hangingChars")).isEmpty());
        const DocxParagraph *form = find(QStringLiteral("（変更）"));
        QVERIFY(form);
        QCOMPARE(form->runs.size(), 3);
        QVERIFY(form->runs[1].props.contains(QStringLiteral("dstrike")));
        QVERIFY(!form->runs[2].props.contains(QStringLiteral("dstrike")));
        int breaks = 0;
        for (const DocxParagraph &p : body.paragraphs)
            for (const DocxRun &r : p.runs)
                breaks += r.pageBreak;
        QCOMPARE(breaks, 1);
        for (const DocxParagraph &p : body.paragraphs)
            for (const DocxRun &r : p.runs)
                QVERIFY2(r.preserved, qPrintable(r.text));
        const QByteArray xml = zipEntries(m_dir.filePath(QStringLiteral("sample.docx"))).value(QStringLiteral("word/document.xml"));
        QVERIFY(xml.contains(QStringLiteral("<w:t>第１条（服務）</w:t>").toUtf8()));
        QVERIFY(xml.contains(QStringLiteral("<w:t xml:space=\"preserve\">第１章  総則</w:t>").toUtf8()));
    }

    // A failed save throws with a text for the user and leaves no file behind.
    void saveFailure()
    {
        DocxTypist typist;
        typist.typeText(kTitle);
        const QString missing = m_dir.filePath(QStringLiteral("無い/文書.docx"));
        try {
            typist.save(missing);
            QFAIL("saved into a folder that does not exist");
        } catch (const Failure &f) {
            QVERIFY2(f.text().contains(QStringLiteral("書き込めませんでした")), qPrintable(f.text()));
            QVERIFY2(f.text().contains(QDir::toNativeSeparators(missing)), qPrintable(f.text()));
        }
        QVERIFY(!QFile::exists(missing));
        // A folder where the file should be: refused, and the folder untouched.
        const QString folder = m_dir.filePath(QStringLiteral("folder.docx"));
        QVERIFY(QDir().mkpath(folder));
        QVERIFY_THROWS_EXCEPTION(Failure, typist.save(folder));
        QVERIFY(QFileInfo(folder).isDir());
    }

    // Saving over a file replaces it whole and leaves nothing else in the folder.
    void saveReplaces()
    {
        const QString path = m_dir.filePath(QStringLiteral("again.docx"));
        QFile old(path);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("not a zip");
        old.close();
        DocxTypist typist;
        typist.typeText(kTitle);
        typist.save(path);
        QCOMPARE(readBody(zipEntries(path).value(QStringLiteral("word/document.xml"))).paragraphs.value(0).text(), kTitle);
        QCOMPARE(m_dir.entryList(QDir::Files), QStringList{u"again.docx"_qs});
    }

    // LibreOffice opens the file and lays it out: the Japanese text is in the
    // PDF, the page break makes a second page that starts with the heading, and
    // the hanging indent shows the label at the margin with the wrapped lines
    // two characters in.
    void roundTripThroughLibreOffice()
    {
        DocxTypist typist;
        typeSample(typist);
        const QString docx = m_dir.filePath(QStringLiteral("見本.docx"));
        typist.save(docx);
        QString error;
        const QString pdf = convertToPdf(docx, m_dir.absolutePath(), &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        keepForLooking(docx, pdf);

        const QString text = pdfText(pdf, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        for (const QString &expected : {kTitle, QStringLiteral("見本商事"), QStringLiteral("第１条（服務）"),
                                        QStringLiteral("試用期間は★0001★とする。"), QStringLiteral("就業規則（変更）届")})
            QVERIFY2(text.contains(expected), qPrintable(expected + QStringLiteral(" is missing from:\n") + text));

        const QList<PdfLine> lines = pdfLines(pdf, &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
        QCOMPARE(lines.last().page, 2);
        const auto firstOnPage2 = std::find_if(lines.begin(), lines.end(), [](const PdfLine &l) { return l.page == 2; });
        QVERIFY(firstOnPage2 != lines.end());
        QVERIFY(firstOnPage2->text.startsWith(QStringLiteral("第１章")));
        // No blank line above it: it stands within the first line of 18 pt below
        // the top margin of 35 mm.
        QVERIFY2(firstOnPage2->yMin < 1985 / 20.0 + 18, qPrintable(QString::number(firstOnPage2->yMin)));

        // The lines of the clause: from its label to the line before "(2)".
        const qsizetype head =
            std::find_if(lines.begin(), lines.end(), [](const PdfLine &l) { return l.text.startsWith(u"(1)"); }) - lines.begin();
        const qsizetype next =
            std::find_if(lines.begin(), lines.end(), [](const PdfLine &l) { return l.text.startsWith(u"(2)"); }) - lines.begin();
        QVERIFY2(head < lines.size() && next < lines.size() && next - head >= 3, "the clause should wrap onto several lines");
        // The article's heading is left aligned without indent: it marks the margin.
        const auto article = std::find_if(lines.begin(), lines.end(), [](const PdfLine &l) { return l.text.startsWith(u"第１条"); });
        QVERIFY(article != lines.end());
        const double margin = article->xMin;
        const double twoCharacters = 2 * 10.5;
        QVERIFY2(qAbs(lines[head].xMin - margin) < 1.0,
                 qPrintable(QStringLiteral("label at %1, margin at %2").arg(lines[head].xMin).arg(margin)));
        for (qsizetype i = head + 1; i < next; ++i)
            QVERIFY2(
                qAbs(lines[i].xMin - (margin + twoCharacters)) < 1.0,
                qPrintable(
                    QStringLiteral("wrapped line %1 at %2, expected %3").arg(i - head).arg(lines[i].xMin).arg(margin + twoCharacters)));
    }

private:
    // With NORMARIS_DOCX_SAMPLE_DIR set, the sample and its PDF are copied
    // there, for a person to look at.
    static void keepForLooking(const QString &docx, const QString &pdf)
    {
        const QString dir = qEnvironmentVariable("NORMARIS_DOCX_SAMPLE_DIR");
        if (dir.isEmpty())
            return;
        QDir().mkpath(dir);
        for (const QString &file : {docx, pdf}) {
            const QString target = dir + u'/' + QFileInfo(file).fileName();
            QFile::remove(target);
            QFile::copy(file, target);
        }
    }

    std::unique_ptr<QTemporaryDir> m_temp; // a folder of its own for each test
    QDir m_dir;
};

QTEST_GUILESS_MAIN(DocxTest)
#include "tst_docx.moc"
