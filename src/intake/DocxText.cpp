// The text of a .docx: word/document.xml read paragraph by paragraph, with the numbers
// that Word generates from word/numbering.xml written back in front of their
// paragraphs, and tables as one line per row.

#include "intake/RulesFile.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QXmlStreamReader>
#include <zip.h>

#include <functional>
#include <memory>

namespace normaris::intake {

namespace {

QString fileName(const QString &path) { return QFileInfo(path).fileName(); }

// A refusal of the package, carried out of the reading.
struct Refusal {
    QString message;
};

struct ZipCloser {
    void operator()(zip_t *z) const { zip_discard(z); }
};

class Package {
public:
    explicit Package(const QString &path) : m_path(path)
    {
        QFile probe(path);
        if (probe.open(QIODevice::ReadOnly) && probe.read(4) == QByteArray("\xD0\xCF\x11\xE0", 4))
            throw Refusal{QStringLiteral("ファイル「%1」はパスワードで保護されているか、古い形式の Word ファイルです。保護を解除し、.docx "
                                         "として保存してから取り込んでください。")
                              .arg(fileName(path))};
        int error = 0;
        m_zip.reset(zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
        if (!m_zip)
            throw damaged();
        const zip_int64_t count = zip_get_num_entries(m_zip.get(), 0);
        if (count > kDocxEntryLimit)
            throw Refusal{QStringLiteral("ファイル「%1」は部品が多すぎます（%2個まで）。").arg(fileName(path)).arg(kDocxEntryLimit)};
        qint64 total = 0;
        for (zip_int64_t i = 0; i < count; ++i) {
            zip_stat_t st;
            zip_stat_init(&st);
            if (zip_stat_index(m_zip.get(), zip_uint64_t(i), 0, &st) != 0)
                throw damaged();
            if ((st.valid & ZIP_STAT_ENCRYPTION_METHOD) && st.encryption_method != ZIP_EM_NONE)
                throw Refusal{QStringLiteral("ファイル「%1」はパスワードで保護されています。保護を解除してから取り込んでください。")
                                  .arg(fileName(path))};
            total += qint64(st.size);
            if (total > kDocxUnpackedLimit)
                throw tooLarge();
        }
    }

    // The part, or an empty array when the package has none of that name. No more than
    // what is left of the limit is ever read, whatever the part's header claims.
    QByteArray part(const char *name)
    {
        const zip_int64_t index = zip_name_locate(m_zip.get(), name, 0);
        if (index < 0)
            return {};
        std::unique_ptr<zip_file_t, int (*)(zip_file_t *)> file(zip_fopen_index(m_zip.get(), zip_uint64_t(index), 0), zip_fclose);
        if (!file)
            throw damaged();
        QByteArray data;
        char buffer[65536];
        for (;;) {
            const zip_int64_t n = zip_fread(file.get(), buffer, sizeof buffer);
            if (n < 0)
                throw damaged();
            if (n == 0)
                break;
            m_read += n;
            if (m_read > kDocxUnpackedLimit)
                throw tooLarge();
            data.append(buffer, qsizetype(n));
        }
        return data;
    }

    Refusal damaged() const
    {
        return Refusal{
            QStringLiteral("ファイル「%1」は .docx として読めません。壊れているか、別の形式のファイルです。").arg(fileName(m_path))};
    }
    Refusal tooLarge() const
    {
        return Refusal{QStringLiteral("ファイル「%1」は展開すると大きすぎます（50MBまで）。").arg(fileName(m_path))};
    }

private:
    QString m_path;
    std::unique_ptr<zip_t, ZipCloser> m_zip;
    qint64 m_read = 0;
};

// Steps the reader, refusing a DTD (and so every entity it could declare) and nesting
// past the limit.
class GuardedXml {
public:
    GuardedXml(const QByteArray &data, const QString &path) : m_xml(data), m_path(path) {}

    bool next()
    {
        while (!m_xml.atEnd()) {
            const QXmlStreamReader::TokenType t = m_xml.readNext();
            if (t == QXmlStreamReader::DTD || t == QXmlStreamReader::EntityReference)
                throw Refusal{QStringLiteral("ファイル「%1」のXMLに外部実体・DTDの宣言があるため読めません。").arg(fileName(m_path))};
            if (t == QXmlStreamReader::StartElement && ++m_depth > kXmlDepthLimit)
                throw Refusal{QStringLiteral("ファイル「%1」のXMLは入れ子が深すぎます。").arg(fileName(m_path))};
            if (t == QXmlStreamReader::EndElement)
                --m_depth;
            if (t == QXmlStreamReader::StartElement || t == QXmlStreamReader::EndElement || t == QXmlStreamReader::Characters)
                return true;
        }
        if (m_xml.hasError())
            throw Refusal{
                QStringLiteral("ファイル「%1」は .docx として読めません。壊れているか、別の形式のファイルです。").arg(fileName(m_path))};
        return false;
    }
    QXmlStreamReader &xml() { return m_xml; }
    bool start(QStringView name) const { return m_xml.isStartElement() && m_xml.qualifiedName() == name; }
    bool end(QStringView name) const { return m_xml.isEndElement() && m_xml.qualifiedName() == name; }
    QString attribute(QStringView name) const { return m_xml.attributes().value(name.toString()).toString(); }

private:
    QXmlStreamReader m_xml;
    QString m_path;
    int m_depth = 0;
};

// Numbers in the formats of numbering.xml.
QString kanjiNumber(int n)
{
    static const QString digits = QStringLiteral("〇一二三四五六七八九");
    if (n <= 0 || n >= 10000)
        return QString::number(n);
    QString out;
    const struct {
        int unit;
        const char16_t *name;
    } units[] = {{1000, u"千"}, {100, u"百"}, {10, u"十"}};
    for (const auto &u : units) {
        const int d = n / u.unit;
        n %= u.unit;
        if (d > 1)
            out += digits[d];
        if (d > 0)
            out += QString::fromUtf16(u.name);
    }
    if (n > 0)
        out += digits[n];
    return out;
}

QString fullWidth(const QString &ascii)
{
    QString out;
    for (QChar c : ascii)
        out += c.isDigit() ? QChar(c.unicode() - u'0' + 0xFF10) : c;
    return out;
}

QString fromSeries(const QString &series, int n) { return n >= 1 && n <= series.size() ? QString(series[n - 1]) : QString::number(n); }

QString formatted(const QString &format, int n)
{
    static const QString circled = QStringLiteral("①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳");
    static const QString iroha =
        QStringLiteral("イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰノオクヤマケフコエテアサキユメミシヱヒモセス");
    static const QString aiueo =
        QStringLiteral("アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲン");
    static const QString latin = QStringLiteral("abcdefghijklmnopqrstuvwxyz");
    static const QHash<QString, std::function<QString(int)>> formats = {
        {QStringLiteral("decimal"), [](int k) { return QString::number(k); }},
        {QStringLiteral("decimalFullWidth"), [](int k) { return fullWidth(QString::number(k)); }},
        {QStringLiteral("decimalFullWidth2"), [](int k) { return fullWidth(QString::number(k)); }},
        {QStringLiteral("decimalHalfWidth"), [](int k) { return QString::number(k); }},
        {QStringLiteral("japaneseCounting"), [](int k) { return kanjiNumber(k); }},
        {QStringLiteral("ideographTraditional"), [](int k) { return kanjiNumber(k); }},
        {QStringLiteral("japaneseDigitalTenThousand"), [](int k) { return kanjiNumber(k); }},
        {QStringLiteral("decimalEnclosedCircle"), [](int k) { return fromSeries(circled, k); }},
        {QStringLiteral("decimalEnclosedCircleChinese"), [](int k) { return fromSeries(circled, k); }},
        {QStringLiteral("iroha"), [](int k) { return fromSeries(iroha, k); }},
        {QStringLiteral("irohaFullWidth"), [](int k) { return fromSeries(iroha, k); }},
        {QStringLiteral("aiueo"), [](int k) { return fromSeries(aiueo, k); }},
        {QStringLiteral("aiueoFullWidth"), [](int k) { return fromSeries(aiueo, k); }},
        {QStringLiteral("lowerLetter"), [](int k) { return fromSeries(latin, k); }},
        {QStringLiteral("upperLetter"), [](int k) { return fromSeries(latin.toUpper(), k); }},
        {QStringLiteral("none"), [](int) { return QString(); }},
        {QStringLiteral("bullet"), [](int) { return QString(); }},
    };
    const auto f = formats.constFind(format);
    return f == formats.cend() ? QString::number(n) : (*f)(n);
}

struct LevelFormat {
    int start = 1;
    QString format = QStringLiteral("decimal");
    QString text; // lvlText: "第%1条", "(%1)"
};

// numbering.xml: each w:num's levels, through its abstract numbering.
class Numbering {
public:
    Numbering(const QByteArray &data, const QString &path)
    {
        if (data.isEmpty())
            return;
        GuardedXml x(data, path);
        QHash<QString, QHash<int, LevelFormat>> abstracts;
        QString abstract, num;
        int level = -1;
        while (x.next()) {
            if (x.start(u"w:abstractNum"))
                abstract = x.attribute(u"w:abstractNumId");
            else if (x.start(u"w:lvl") && !abstract.isEmpty())
                level = x.attribute(u"w:ilvl").toInt();
            else if (x.end(u"w:lvl"))
                level = -1;
            else if (x.end(u"w:abstractNum"))
                abstract.clear();
            else if (level >= 0 && x.start(u"w:start"))
                abstracts[abstract][level].start = x.attribute(u"w:val").toInt();
            else if (level >= 0 && x.start(u"w:numFmt"))
                abstracts[abstract][level].format = x.attribute(u"w:val");
            else if (level >= 0 && x.start(u"w:lvlText"))
                abstracts[abstract][level].text = x.attribute(u"w:val");
            else if (x.start(u"w:num"))
                num = x.attribute(u"w:numId");
            else if (x.start(u"w:abstractNumId") && !num.isEmpty())
                m_abstractOf.insert(num, x.attribute(u"w:val"));
        }
        m_levels = abstracts;
    }

    // The number of the next paragraph of list num at level, as its level text writes it.
    QString next(const QString &num, int level)
    {
        const QString abstract = m_abstractOf.value(num);
        if (abstract.isEmpty() || !m_levels.contains(abstract))
            return {};
        QList<int> &counters = m_counters[abstract];
        while (counters.size() <= level)
            counters << 0;
        const QHash<int, LevelFormat> &levels = m_levels[abstract];
        counters[level] = counters[level] == 0 ? levels.value(level).start : counters[level] + 1;
        // A higher level starts the levels below it again.
        for (qsizetype k = level + 1; k < counters.size(); ++k)
            counters[k] = 0;
        QString text = levels.value(level).text;
        for (int k = 0; k <= level; ++k) {
            const LevelFormat f = levels.value(k);
            text.replace(QStringLiteral("%") + QString::number(k + 1), formatted(f.format, counters[k] == 0 ? f.start : counters[k]));
        }
        return text;
    }

private:
    QHash<QString, QString> m_abstractOf;
    QHash<QString, QHash<int, LevelFormat>> m_levels;
    QHash<QString, QList<int>> m_counters;
};

class DocumentReader {
public:
    DocumentReader(const QByteArray &document, Numbering &numbering, const QString &path) : m_x(document, path), m_numbering(numbering) {}

    RulesLines read()
    {
        while (m_x.next()) {
            if (m_x.start(u"w:tbl"))
                ++m_tableDepth;
            else if (m_x.end(u"w:tbl"))
                --m_tableDepth;
            else if (m_x.start(u"w:tr"))
                m_cells.clear();
            else if (m_x.end(u"w:tr") && m_tableDepth == 1)
                m_out.lines << RulesLine{m_cells.join(QStringLiteral("　")), true};
            else if (m_x.start(u"w:tc") && m_tableDepth == 1)
                m_cells << QString();
            else if (m_x.start(u"w:p"))
                startParagraph();
            else if (m_x.end(u"w:p"))
                endParagraph();
            else if (m_x.start(u"w:numId"))
                m_numId = m_x.attribute(u"w:val");
            else if (m_x.start(u"w:ilvl"))
                m_level = m_x.attribute(u"w:val").toInt();
            else if (m_x.start(u"w:t") || m_x.start(u"w:delText"))
                m_inText = m_x.start(u"w:t");
            else if (m_x.end(u"w:t") || m_x.end(u"w:delText"))
                m_inText = false;
            else if (m_x.start(u"w:tab") && m_inRun)
                m_text += QStringLiteral("　");
            else if ((m_x.start(u"w:br") || m_x.start(u"w:cr")) && m_inRun)
                m_text += u'\n';
            else if (m_x.start(u"w:r"))
                m_inRun = true;
            else if (m_x.end(u"w:r"))
                m_inRun = false;
            else if (m_x.xml().isCharacters() && m_inText)
                m_text += m_x.xml().text();
        }
        return m_out;
    }

private:
    void startParagraph()
    {
        m_text.clear();
        m_numId.clear();
        m_level = 0;
    }

    void endParagraph()
    {
        QString text = m_text;
        if (!m_numId.isEmpty() && m_numId != u"0") {
            const QString number = m_numbering.next(m_numId, m_level);
            if (!number.isEmpty())
                text = number + QStringLiteral("　") + text;
        }
        if (m_tableDepth > 0) {
            if (!m_cells.isEmpty())
                m_cells.last() += (m_cells.last().isEmpty() ? QString() : QStringLiteral("　")) + text.replace(u'\n', u'　');
            return;
        }
        for (const QString &line : text.split(u'\n'))
            m_out.lines << RulesLine{line, false};
    }

    GuardedXml m_x;
    Numbering &m_numbering;
    RulesLines m_out;
    QString m_text, m_numId;
    int m_level = 0;
    int m_tableDepth = 0;
    bool m_inText = false, m_inRun = false;
    QStringList m_cells;
};

} // namespace

RulesFileResult readDocx(const QString &path)
{
    try {
        Package package(path);
        const QByteArray document = package.part("word/document.xml");
        if (document.isEmpty())
            throw package.damaged();
        Numbering numbering(package.part("word/numbering.xml"), path);
        return RulesFileResult{DocumentReader(document, numbering, path).read(), QString()};
    } catch (const Refusal &r) {
        return RulesFileResult{std::nullopt, r.message};
    }
}

} // namespace normaris::intake
