#include "intake/RulesStructure.h"

#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/SegmentEditor.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>

namespace normaris::intake {

using dictionary::ReferenceTarget;
using dictionary::SourceEntry;
using dictionary::SourceReference;
using dictionary::SourceSegment;

QString ReportLine::toString() const { return line > 0 ? QStringLiteral("%1行目: %2").arg(line).arg(text) : text; }

int parseNumber(QStringView text)
{
    static const QString kanji = QStringLiteral("〇一二三四五六七八九");
    if (text.isEmpty())
        return -1;
    int value = 0;
    bool digits = true;
    for (QChar c : text) {
        const int d = c.isDigit() ? c.digitValue() : -1;
        if (d < 0) {
            digits = false;
            break;
        }
        value = value * 10 + d;
    }
    if (digits)
        return value;
    // Kanji numerals: 十, 百 and 千 multiply the digit before them (一 when none).
    int total = 0, digit = -1;
    for (QChar c : text) {
        const qsizetype d = kanji.indexOf(c);
        const int unit = c == u'十' ? 10 : c == u'百' ? 100 : c == u'千' ? 1000 : 0;
        if (d >= 0)
            digit = digit > 0 ? digit * 10 + int(d) : int(d);
        else if (unit > 0) {
            total += (digit < 0 ? 1 : digit) * unit;
            digit = -1;
        } else
            return -1;
    }
    return total + qMax(digit, 0);
}

namespace {

const QString kNumber = QStringLiteral("([0-9０-９〇一二三四五六七八九十百千]+)");
const QString kSpace = QStringLiteral("[\\s　]");

enum class LineKind { Chapter, Section, Supplement, Article, Maru, Item, Paragraph, Iroha, Caption };

// The shapes of a line that opens something, tried in this order. Captures: the number
// (or the mark), then what the kind takes from the rest.
struct LinePattern {
    LineKind kind;
    const char16_t *pattern; // %N a number, %S a space of either width
};

constexpr LinePattern kLinePatterns[] = {
    {LineKind::Chapter, u"^第%N章%S*(.*)$"},
    {LineKind::Section, u"^第%N([節款])%S*(.*)$"},
    {LineKind::Supplement, u"^[附付]%S*則%S*(.*)$"},
    {LineKind::Article, u"^第%N条(?:の%N)?(?=$|%S|[（(])%S*(?:[（(]([^）)]*)[）)])?%S*(.*)$"},
    {LineKind::Maru, u"^([①-⑳])%S*(.*)$"},
    {LineKind::Item, u"^[（(]([0-9０-９]+)[）)]%S*(.*)$"},
    {LineKind::Item, u"^([0-9０-９]+)[．.]%S*(.*)$"},
    {LineKind::Item, u"^([一二三四五六七八九十]+)%S+(.*)$"},
    {LineKind::Paragraph, u"^([0-9０-９]+)%S+(.*)$"},
    {LineKind::Iroha, u"^[（(]([イロハニホヘトチリヌルヲワカヨタレソツネアウエオキクケコサシスセテナ])[）)]%S*(.*)$"},
    {LineKind::Iroha, u"^([イロハニホヘトチリヌルヲワカヨタレソツネ]|[アウエオキクケコサシスセテナ])%S+(.*)$"},
    {LineKind::Caption, u"^[（(]([^）)]+)[）)]$"},
};

struct CompiledPattern {
    LineKind kind;
    QRegularExpression re;
};

const QList<CompiledPattern> &linePatterns()
{
    static const QList<CompiledPattern> compiled = [] {
        QList<CompiledPattern> list;
        for (const LinePattern &p : kLinePatterns) {
            QString text = QString::fromUtf16(p.pattern);
            text.replace(QStringLiteral("%N"), kNumber).replace(QStringLiteral("%S"), kSpace);
            list << CompiledPattern{p.kind, QRegularExpression(text)};
        }
        return list;
    }();
    return compiled;
}

QString trimmed(const QString &text)
{
    qsizetype b = 0, e = text.size();
    while (b < e && (text[b].isSpace() || text[b] == u'　'))
        ++b;
    while (e > b && (text[e - 1].isSpace() || text[e - 1] == u'　'))
        --e;
    return text.mid(b, e - b);
}

struct Piece {
    QString text;
    bool lineBreak = false;
    int line = 0;
};

struct RefHolder {
    QString code;
    Level level = Level::Article;
    QStringList codes;
    int line = 0;
};

struct Node {
    QList<RefHolder> references;
    Level level = Level::Paragraph;
    QStringList codes;
    QString title;
    QList<Piece> pieces;
    int line = 0;
    int article = -1;   // index in the articles
    int paragraph = -1; // index in its article's paragraphs (clauses)
};

struct ParagraphInfo {
    int node = -1;
    QList<int> items; // nodes
};

struct ArticleInfo {
    QString key; // "5", "4-2"
    int node = -1;
    QList<ParagraphInfo> paragraphs;
};

QString code2(int n) { return QString::number(70 + n).rightJustified(2, u'0'); }
QString code4(int n) { return QString::number(7000 + n); }

class Finder {
public:
    Finder(const RulesLines &lines, const QString &file, const QString &document) : m_lines(lines), m_document(document)
    {
        m_out.source.file = file;
        m_out.source.document = document;
    }

    FoundRules run()
    {
        if (m_lines.laidOut)
            m_fullLine = fullLineWidth();
        for (qsizetype i = 0; i < m_lines.lines.size(); ++i)
            take(int(i) + 1, m_lines.lines[i]);
        if (m_articles.isEmpty())
            return m_out;
        findCompanyName();
        findReferences();
        finish();
        return m_out;
    }

private:
    void report(int line, const QString &text) { m_out.report << ReportLine{line, text}; }

    // The width of a line in half-width characters.
    static int widthOf(const QString &text)
    {
        int width = 0;
        for (QChar c : text)
            width += c.unicode() < 0x80 ? 1 : 2;
        return width;
    }

    // The width of a full line of the page: what most long lines come to.
    int fullLineWidth() const
    {
        QList<int> widths;
        for (const RulesLine &l : m_lines.lines)
            widths << widthOf(trimmed(l.text));
        std::sort(widths.begin(), widths.end());
        return widths.isEmpty() ? 0 : widths[widths.size() * 9 / 10];
    }

    void take(int line, const RulesLine &raw)
    {
        QString text = trimmed(raw.text);
        if (text.isEmpty())
            return;
        const int lastWidth = m_lastWidth;
        m_lastWidth = widthOf(text);
        // A page layout writes a full-width blank as a run of blanks.
        if (m_lines.laidOut) {
            static const QRegularExpression blanks(QStringLiteral(" {2,}"));
            text.replace(blanks, QStringLiteral("　"));
        }
        if (raw.tableRow) {
            if (!m_inTable)
                report(line, QStringLiteral("表を前の条項の本文として取り込みました"));
            m_inTable = true;
            appendLine(line, text, true);
            return;
        }
        m_inTable = false;
        // The page numbers of a page layout.
        static const QRegularExpression pageNumber(QStringLiteral("^[-－—–\\s　]*[0-9０-９]+[-－—–\\s　]*$"));
        if (m_lines.laidOut && pageNumber.match(text).hasMatch())
            return;
        if (skipsContents(line, text))
            return;
        for (const CompiledPattern &p : linePatterns()) {
            const QRegularExpressionMatch m = p.re.match(text);
            if (m.hasMatch() && opens(p.kind, m, line))
                return;
        }
        plainLine(line, text, lastWidth);
    }

    // A table of contents (目次 before the body) is read past: its headings are the body's
    // again, and the title repeated is the body's own. What stood before it is the cover.
    // It ends at the title repeated after its headings, above the body, or else at the first line that is
    // neither a heading nor the title (a body opening with an article has no other mark).
    bool skipsContents(int line, const QString &text)
    {
        static const QRegularExpression contents(QStringLiteral("^目[\\s　]*次$"));
        static const QRegularExpression heading(
            QStringLiteral("^(第[0-9０-９〇一二三四五六七八九十百千]+[章節款条]|[附付][\\s　]*則|[（(][^）)]+[）)]$)"));
        if (!m_started && !m_inContents && contents.match(text).hasMatch()) {
            m_inContents = true;
            m_preamble.clear();
            report(line, QStringLiteral("目次を読み飛ばしました"));
            return true;
        }
        if (!m_inContents)
            return false;
        if (text == m_out.title) {
            m_inContents = !m_contentsListed;
            return true;
        }
        if (heading.match(text).hasMatch()) {
            m_contentsListed = true;
            return true;
        }
        m_inContents = false;
        return false;
    }

    // A line of the kind: false when it cannot open that here (it is then plain text).
    bool opens(LineKind kind, const QRegularExpressionMatch &m, int line)
    {
        using Handler = bool (Finder::*)(const QRegularExpressionMatch &, int);
        static const QHash<int, Handler> handlers = {
            {int(LineKind::Chapter), &Finder::chapter},
            {int(LineKind::Section), &Finder::section},
            {int(LineKind::Supplement), &Finder::supplement},
            {int(LineKind::Article), &Finder::article},
            {int(LineKind::Maru), &Finder::maru},
            {int(LineKind::Item), &Finder::item},
            {int(LineKind::Paragraph), &Finder::paragraph},
            {int(LineKind::Iroha), &Finder::iroha},
            {int(LineKind::Caption), &Finder::caption},
        };
        return (this->*handlers.value(int(kind)))(m, line);
    }

    int addNode(Level level, QStringList codes, const QString &title, int line)
    {
        Node n;
        n.level = level;
        n.codes = std::move(codes);
        n.title = title;
        n.line = line;
        n.article = int(m_articles.size()) - 1;
        m_nodes << n;
        return int(m_nodes.size()) - 1;
    }

    bool newChapter(const QString &title, int line)
    {
        if (m_chapterCount >= 30) {
            report(line, QStringLiteral("章が30を超えるため、この見出しは前の章に含めました"));
            return false;
        }
        m_chapter = code2(m_chapterCount++);
        m_chapterTitle = title;
        m_chapterNode = addNode(Level::Chapter, {m_chapter}, title, line);
        m_chapterHasArticles = false;
        m_clause = -1;
        m_started = true;
        m_out.chapters++;
        return true;
    }

    bool chapter(const QRegularExpressionMatch &m, int line)
    {
        m_inSupplement = false;
        m_baseChapterTitle = trimmed(m.captured(2));
        return newChapter(m_baseChapterTitle, line);
    }

    bool section(const QRegularExpressionMatch &m, int line)
    {
        const QString heading = QStringLiteral("第%1%2　%3").arg(m.captured(1), m.captured(2), trimmed(m.captured(3)));
        const QString title = m_baseChapterTitle.isEmpty() ? heading : m_baseChapterTitle + QStringLiteral("　") + heading;
        report(line, QStringLiteral("%1は章「%2」として取り込みました").arg(heading, title));
        if (m_chapterNode >= 0 && !m_chapterHasArticles) {
            m_nodes[m_chapterNode].title = title;
            return true;
        }
        return newChapter(title, line);
    }

    bool supplement(const QRegularExpressionMatch &m, int line)
    {
        if (!m_inSupplement && !newChapter(QStringLiteral("附則"), line))
            return false;
        m_inSupplement = true;
        m_baseChapterTitle = QStringLiteral("附則");
        const QString rest = trimmed(m.captured(1));
        m_supplementTitle = rest.isEmpty() ? QStringLiteral("附則") : QStringLiteral("附則") + rest;
        m_supplementPending = true;
        m_clause = -1;
        report(line, QStringLiteral("附則を最後の章「附則」として取り込みました"));
        return true;
    }

    void ensureChapter(int line)
    {
        if (m_chapterNode < 0)
            newChapter(QStringLiteral("本則"), line);
    }

    bool newArticle(const QString &key, const QString &title, int line)
    {
        if (m_articles.size() >= 3000) {
            report(line, QStringLiteral("条が3,000を超えるため、これ以降は前の条に含めました"));
            return false;
        }
        ensureChapter(line);
        m_articles << ArticleInfo{key, -1, {}};
        m_articles.last().node = addNode(Level::Article, {m_chapter, code4(int(m_articles.size()) - 1)}, title, line);
        m_chapterHasArticles = true;
        m_clause = -1;
        m_item = -1;
        m_maru = -1;
        m_out.articles++;
        m_started = true;
        return true;
    }

    bool article(const QRegularExpressionMatch &m, int line)
    {
        const int number = parseNumber(m.captured(1));
        const int branch = m.captured(2).isEmpty() ? 0 : parseNumber(m.captured(2));
        QString title = trimmed(m.captured(3));
        if (title.isEmpty())
            title = m_pendingCaption;
        QString rest = trimmed(m.captured(4));
        const bool deleted = rest == u"削除" && title.isEmpty();
        if (deleted) {
            title = QStringLiteral("削除");
            report(line, QStringLiteral("第%1条は削除された条として取り込みました").arg(m.captured(1)));
        }
        if (title.isEmpty()) {
            title = QStringLiteral("見出しなし");
            report(line, QStringLiteral("第%1条に見出しがないため「見出しなし」としました").arg(m.captured(1)));
        }
        if (branch > 0)
            report(line, QStringLiteral("第%1条の%2は一つの条として取り込みました（番号は出力のときに振り直されます）")
                             .arg(m.captured(1), m.captured(2)));
        m_pendingCaption.clear();
        m_supplementPending = false;
        const QString key = QString::number(number) + (branch > 0 ? QStringLiteral("-") + QString::number(branch) : QString());
        if (!newArticle(key, title, line))
            return false;
        if (!rest.isEmpty())
            newParagraph(rest, line);
        return true;
    }

    bool caption(const QRegularExpressionMatch &m, int)
    {
        m_pendingCaption = trimmed(m.captured(1));
        return true;
    }

    // The article that takes a paragraph: the current one, or in 附則 one of its own.
    bool articleForParagraph(int line)
    {
        if (m_supplementPending) {
            m_supplementPending = false;
            return newArticle(QStringLiteral("附則%1").arg(m_articles.size()), m_supplementTitle, line);
        }
        return !m_articles.isEmpty() && m_nodes.last().level != Level::Chapter;
    }

    void newParagraph(const QString &text, int line)
    {
        ArticleInfo &a = m_articles.last();
        if (a.paragraphs.size() >= 30) {
            appendLine(line, text, true);
            report(line, QStringLiteral("項が30を超えるため、前の項に続けました"));
            return;
        }
        const Node &art = m_nodes[a.node];
        const int node = addNode(Level::Paragraph, {art.codes[0], art.codes[1], code2(int(a.paragraphs.size()))}, QString(), line);
        m_nodes[node].paragraph = int(a.paragraphs.size());
        m_nodes[node].pieces << Piece{text, false, line};
        a.paragraphs << ParagraphInfo{node, {}};
        m_clause = node;
        m_item = m_maru = -1;
        m_out.paragraphs++;
    }

    bool paragraph(const QRegularExpressionMatch &m, int line)
    {
        if (!articleForParagraph(line))
            return false;
        const int number = parseNumber(m.captured(1));
        const ArticleInfo &a = m_articles.last();
        // "１" after the first paragraph, or a number that does not follow, reads as an item.
        if (!a.paragraphs.isEmpty() && number != a.paragraphs.size() + 1)
            return item(m, line);
        newParagraph(trimmed(m.captured(2)), line);
        return true;
    }

    // A clause below the paragraph at level under parent (a node), numbered among its siblings.
    int addChild(Level level, int parent, int siblings, const QString &text, int line)
    {
        if (siblings >= 30) {
            report(line, QStringLiteral("同じ階層の号が30を超えるため、前の条項に続けました"));
            appendLine(line, text, true);
            return -1;
        }
        QStringList codes = m_nodes[parent].codes;
        codes << code2(siblings);
        const int node = addNode(level, codes, QString(), line);
        m_nodes[node].paragraph = m_nodes[parent].paragraph;
        m_nodes[node].pieces << Piece{text, false, line};
        m_clause = node;
        return node;
    }

    bool item(const QRegularExpressionMatch &m, int line)
    {
        if (!articleForParagraph(line) || m_articles.last().paragraphs.isEmpty())
            return false;
        ParagraphInfo &p = m_articles.last().paragraphs.last();
        const int node = addChild(Level::Item, p.node, int(p.items.size()), trimmed(m.captured(2)), line);
        if (node >= 0) {
            p.items << node;
            m_item = node;
            m_maru = -1;
            m_maruCount = 0;
            m_out.items++;
        }
        return true;
    }

    bool maru(const QRegularExpressionMatch &m, int line)
    {
        if (m_item < 0)
            return item(m, line);
        const int node = addChild(Level::Maru, m_item, m_maruCount++, trimmed(m.captured(2)), line);
        m_maru = node;
        m_irohaCount = 0;
        if (node >= 0)
            m_out.subItems++;
        return true;
    }

    bool iroha(const QRegularExpressionMatch &m, int line)
    {
        if (m_item < 0)
            return false;
        if (m_maru < 0) {
            // イロハ directly under an item stand as its first sub-items.
            const int node = addChild(Level::Maru, m_item, m_maruCount++, trimmed(m.captured(2)), line);
            if (node >= 0)
                m_out.subItems++;
            return true;
        }
        const int node = addChild(Level::Iroha, m_maru, m_irohaCount++, trimmed(m.captured(2)), line);
        if (node >= 0)
            m_out.subItems++;
        return true;
    }

    void appendLine(int line, const QString &text, bool lineBreak)
    {
        if (m_clause < 0) {
            m_preamble << Piece{text, !m_preamble.isEmpty(), line};
            return;
        }
        m_nodes[m_clause].pieces << Piece{text, lineBreak, line};
    }

    // Whether a line of a page layout after these pieces goes on with the last one: the
    // line before it ran to the end of the page's line, short of its 。.
    bool wrapped(const QList<Piece> &pieces, int lastWidth) const
    {
        return m_lines.laidOut && !pieces.isEmpty() && !pieces.last().text.endsWith(u'。') && lastWidth * 4 >= m_fullLine * 3;
    }

    void plainLine(int line, const QString &text, int lastWidth)
    {
        if (!m_started) {
            if (m_out.title.isEmpty() && m_preamble.isEmpty())
                m_out.title = text;
            else if (wrapped(m_preamble, lastWidth))
                m_preamble.last().text += text;
            else
                m_preamble << Piece{text, !m_preamble.isEmpty(), line};
            return;
        }
        if (m_clause < 0 && articleForParagraph(line) && m_articles.last().paragraphs.isEmpty()) {
            newParagraph(text, line);
            return;
        }
        if (m_clause < 0) {
            report(line, QStringLiteral("「%1」は置き場所がないため取り込みませんでした").arg(text.left(20)));
            return;
        }
        if (wrapped(m_nodes[m_clause].pieces, lastWidth)) {
            m_nodes[m_clause].pieces.last().text += text;
            return;
        }
        report(line, QStringLiteral("「%1」は前の条項に続けました").arg(text.left(20)));
        appendLine(line, text, true);
    }

    void findCompanyName()
    {
        static const QRegularExpression defined(
            QStringLiteral("(?:^|[、。はがの])([^、。「」（）\\s　]+)（以下「(?:会社|当社)」という。?）"));
        QList<const QList<Piece> *> texts = {&m_preamble};
        for (const Node &n : m_nodes)
            texts << &n.pieces;
        for (const QList<Piece> *pieces : texts) {
            for (const Piece &p : *pieces) {
                const QRegularExpressionMatch m = defined.match(p.text);
                if (m.hasMatch()) {
                    m_out.companyName = m.captured(1);
                    return;
                }
            }
        }
    }

    // Citations of the document's own articles become references.
    void findReferences()
    {
        static const QRegularExpression citation(
            QStringLiteral("(?:(?<art>第%1条(?:の%1)?|同条|前条|次条)(?:第(?<p>%1)項)?(?:第(?<i>%1)号)?)|(?:(?<pp>前項)(?:第(?<ii>%1)号)?)|"
                           "(?:第(?<p2>%1)項(?:第(?<i2>%1)号)?)")
                .arg(QStringLiteral("[0-9０-９〇一二三四五六七八九十百千]+")));
        static const QRegularExpression articleNumber(QStringLiteral("^第([^条]+)条(?:の(.+))?$"));
        static const QRegularExpression outside(QStringLiteral("(法|令|規則|規程|規定|協定|条約|要綱|基準)$"));
        static const QRegularExpression own(QStringLiteral("(この|本)(規則|規程)$"));
        QHash<QString, int> byKey;
        for (qsizetype a = 0; a < m_articles.size(); ++a)
            byKey.insert(m_articles[a].key, int(a));
        int code = 0;
        for (Node &n : m_nodes) {
            if (!levelInfo(n.level).segmented)
                continue;
            int lastArticle = -1;
            for (Piece &piece : n.pieces) {
                QString out;
                qsizetype at = 0;
                auto it = citation.globalMatch(piece.text);
                while (it.hasNext()) {
                    const QRegularExpressionMatch m = it.next();
                    const QString before = piece.text.left(m.capturedStart());
                    out += piece.text.mid(at, m.capturedStart() - at);
                    at = m.capturedEnd();
                    const QString art = m.captured(u"art");
                    if (!art.isEmpty() && art.startsWith(u'第') && outside.match(before).hasMatch() && !own.match(before).hasMatch()) {
                        out += m.captured(); // a law's or another document's article
                        continue;
                    }
                    if (before.endsWith(u'法') || before.endsWith(QStringLiteral("同法"))) {
                        out += m.captured();
                        continue;
                    }
                    int article = -1;
                    if (art == u"同条")
                        article = lastArticle;
                    else if (art == u"前条")
                        article = n.article - 1;
                    else if (art == u"次条")
                        article = n.article + 1 < m_articles.size() ? n.article + 1 : -1;
                    else if (!art.isEmpty()) {
                        const QRegularExpressionMatch a = articleNumber.match(art);
                        const QString key =
                            QString::number(parseNumber(a.captured(1)))
                            + (a.captured(2).isEmpty() ? QString() : QStringLiteral("-") + QString::number(parseNumber(a.captured(2))));
                        article = byKey.value(key, -1);
                    } else
                        article = n.article;
                    int paragraph = -1;
                    const QString p = m.captured(u"p").isEmpty() ? m.captured(u"p2") : m.captured(u"p");
                    if (!p.isEmpty())
                        paragraph = parseNumber(p) - 1;
                    else if (!m.captured(u"pp").isEmpty())
                        paragraph = n.paragraph - 1;
                    const QString i = !m.captured(u"i").isEmpty()    ? m.captured(u"i")
                                      : !m.captured(u"ii").isEmpty() ? m.captured(u"ii")
                                                                     : m.captured(u"i2");
                    const int item = i.isEmpty() ? -1 : parseNumber(i) - 1;
                    if (item >= 0 && paragraph < 0)
                        paragraph = 0;
                    const int target = targetNode(article, paragraph, item);
                    if (target < 0 || (target == m_articles.value(n.article).node)) {
                        if (target < 0)
                            report(piece.line, QStringLiteral("「%1」の参照先が見つからないため文字のままにしました").arg(m.captured()));
                        out += m.captured();
                        continue;
                    }
                    lastArticle = article;
                    const Node &t = m_nodes[target];
                    const QString refCode = QString::number(++code).rightJustified(4, u'0');
                    out += QStringLiteral("◆%1◆").arg(refCode);
                    n.references << RefHolder{refCode, t.level, t.codes, piece.line};
                    m_out.references++;
                }
                out += piece.text.mid(at);
                piece.text = out;
            }
        }
    }

    int targetNode(int article, int paragraph, int item) const
    {
        if (article < 0 || article >= m_articles.size())
            return -1;
        const ArticleInfo &a = m_articles[article];
        if (paragraph < 0)
            return a.node;
        if (paragraph >= a.paragraphs.size())
            return -1;
        const ParagraphInfo &p = a.paragraphs[paragraph];
        if (item < 0)
            return p.node;
        return item < p.items.size() ? p.items[item] : -1;
    }

    void finish()
    {
        std::stable_sort(m_out.report.begin(), m_out.report.end(),
                         [](const ReportLine &a, const ReportLine &b) { return a.line < b.line; });
        if (!m_preamble.isEmpty()) {
            dictionary::ClauseSource preamble;
            preamble.file = m_out.source.file;
            preamble.line = m_preamble.first().line;
            preamble.segments = segmentsOf(m_preamble);
            m_out.source.preamble = preamble;
        }
        for (const Node &n : m_nodes) {
            SourceEntry e;
            e.level = n.level;
            e.codes = n.codes;
            e.title = n.title;
            e.line = n.line;
            e.segments = segmentsOf(n.pieces);
            for (const RefHolder &r : n.references)
                e.references << SourceReference{r.code, ReferenceTarget{r.level, m_document, r.codes, QString()}, r.line};
            if (e.segments.size() > dictionary::SegmentEditor::kSegments)
                report(n.line, QStringLiteral("本文が長すぎます（%1に分けても入りません）").arg(dictionary::SegmentEditor::kSegments));
            m_out.source.entries << e;
        }
    }

    // The pieces cut to segments of at most the editor's length: at a 。 where one is
    // near, else at a 、, else where the length ends; a marker stays whole.
    static QList<SourceSegment> segmentsOf(const QList<Piece> &pieces)
    {
        static const QRegularExpression setting(QStringLiteral("(☆[0-9]{4}☆)"));
        QList<SourceSegment> out;
        for (const Piece &piece : pieces) {
            bool lineBreak = piece.lineBreak;
            // A setting marker is a segment of its own.
            QStringList parts;
            qsizetype at = 0;
            auto it = setting.globalMatch(piece.text);
            while (it.hasNext()) {
                const QRegularExpressionMatch m = it.next();
                if (m.capturedStart() > at)
                    parts << piece.text.mid(at, m.capturedStart() - at);
                parts << m.captured();
                at = m.capturedEnd();
            }
            if (at < piece.text.size())
                parts << piece.text.mid(at);
            for (QString rest : parts) {
                while (!rest.isEmpty()) {
                    const qsizetype cut = cutAt(rest);
                    out << SourceSegment{rest.left(cut), lineBreak, piece.line, QString()};
                    lineBreak = false;
                    rest = rest.mid(cut);
                }
            }
        }
        return out;
    }

    static qsizetype cutAt(const QString &text)
    {
        if (CP932Length(text) <= dictionary::kSegmentTextLimit)
            return text.size();
        qsizetype fits = 0;
        int bytes = 0;
        while (fits < text.size()) {
            bytes += text[fits].unicode() < 0x80 ? 1 : 2;
            if (bytes > dictionary::kSegmentTextLimit)
                break;
            ++fits;
        }
        for (const QChar stop : {u'。', u'、'}) {
            const qsizetype k = text.lastIndexOf(stop, fits - 1);
            if (k > fits / 2)
                return k + 1;
        }
        // Not inside a marker.
        const qsizetype open = text.lastIndexOf(u'◆', fits - 1);
        if (open >= 0 && open + 6 > fits && text.left(open).count(u'◆') % 2 == 0)
            return open;
        return fits;
    }

    const RulesLines &m_lines;
    QString m_document;
    FoundRules m_out;
    QList<Node> m_nodes;
    QList<ArticleInfo> m_articles;
    QList<Piece> m_preamble;
    QString m_chapter, m_chapterTitle, m_baseChapterTitle, m_pendingCaption, m_supplementTitle;
    int m_fullLine = 0, m_lastWidth = 0, m_chapterNode = -1, m_chapterCount = 0, m_clause = -1, m_item = -1, m_maru = -1, m_maruCount = 0,
        m_irohaCount = 0;
    bool m_contentsListed = false; // a heading of the contents was read past
    bool m_chapterHasArticles = false, m_started = false, m_inContents = false, m_inSupplement = false, m_supplementPending = false,
         m_inTable = false;
};

} // namespace

FoundRules findStructure(const RulesLines &lines, const QString &file, const QString &document)
{
    return Finder(lines, file, document).run();
}

} // namespace normaris::intake

namespace normaris::intake {

namespace {

// The setting marker of 事業所名.
const QString kCompanyMarker = QStringLiteral("☆0001☆");

// Cuts segments around every occurrence of name, the name becoming a segment of its own.
QList<SourceSegment> markedSegments(const QList<SourceSegment> &segments, const QString &name)
{
    QList<SourceSegment> out;
    for (const SourceSegment &s : segments) {
        QString rest = s.text;
        bool lineBreak = s.lineBreak;
        qsizetype k;
        while ((k = rest.indexOf(name)) >= 0) {
            if (k > 0)
                out << SourceSegment{rest.left(k), lineBreak, s.line, QString()};
            out << SourceSegment{kCompanyMarker, k > 0 ? false : lineBreak, s.line, QString()};
            lineBreak = false;
            rest = rest.mid(k + name.size());
        }
        if (!rest.isEmpty())
            out << SourceSegment{rest, lineBreak, s.line, s.templateCode};
    }
    return out;
}

QString indentOf(Level level) { return QString(2 * qMax(0, placeDepth(level) - 2), u' '); }

QString segmentLines(const QList<SourceSegment> &segments, const QString &indent)
{
    QString out;
    for (const SourceSegment &s : segments)
        out += indent + (s.lineBreak ? QStringLiteral("=↵ ") : QStringLiteral("= ")) + s.text + u'\n';
    return out;
}

} // namespace

void markCompanyName(FoundRules &rules, const QString &name)
{
    if (name.isEmpty())
        return;
    if (rules.source.preamble)
        rules.source.preamble->segments = markedSegments(rules.source.preamble->segments, name);
    for (SourceEntry &e : rules.source.entries)
        e.segments = markedSegments(e.segments, name);
}

QStringList summaryOf(const FoundRules &rules)
{
    QStringList out;
    out << QStringLiteral("表題: %1").arg(rules.title.isEmpty() ? QStringLiteral("（なし）") : rules.title);
    out << QStringLiteral("前文: %1").arg(rules.source.preamble ? QStringLiteral("あり") : QStringLiteral("なし"));
    out << QStringLiteral("章 %1、条 %2、項 %3、号 %4、号の細分 %5、参照 %6")
               .arg(rules.chapters)
               .arg(rules.articles)
               .arg(rules.paragraphs)
               .arg(rules.items)
               .arg(rules.subItems)
               .arg(rules.references);
    if (!rules.companyName.isEmpty())
        out << QStringLiteral("事業所名の候補: %1").arg(rules.companyName);
    for (const ReportLine &r : rules.report)
        out << r.toString();
    return out;
}

QString dictionaryText(const FoundRules &rules, const QString &style, const QString &name, const QString &formalName)
{
    QString out = QStringLiteral("# %1 から読み取った規程\n").arg(rules.source.file);
    for (const ReportLine &r : rules.report)
        out += QStringLiteral("# ") + r.toString() + u'\n';
    out += QStringLiteral("文章形式 %1\n規程 %2 %3\n").arg(style, rules.source.document, name);
    if (!formalName.isEmpty() && formalName != name)
        out += QStringLiteral("正式名称 %1\n").arg(formalName);
    out += QStringLiteral("文章種別 1\n");
    if (rules.source.preamble)
        out += QStringLiteral("\n前文\n") + segmentLines(rules.source.preamble->segments, QString());
    for (const SourceEntry &e : rules.source.entries) {
        const QString source = QString::fromUtf16(levelInfo(e.level).sourceName);
        if (!levelInfo(e.level).segmented) {
            out += QStringLiteral("\n") + source + u' ' + e.codes.last() + u' ' + e.title + u'\n';
            continue;
        }
        const QString indent = indentOf(e.level);
        out += indent + source + u' ' + e.codes.last() + u'\n';
        out += segmentLines(e.segments, indent);
        for (const SourceReference &r : e.references)
            out += indent + QStringLiteral("参照 ") + r.code + u' ' + r.target.describe(rules.source.document) + u'\n';
    }
    return out;
}

} // namespace normaris::intake
