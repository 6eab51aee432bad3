#include "pdf/PageLayout.h"

#include "pdf/PdfFonts.h"
#include "document/ParagraphStyles.h"
#include "base/Failure.h"

#include <QPaintDevice>
#include <QRegularExpression>
#include <QTextLayout>

#include <cmath>
#include <map>
#include <memory>
#include <numeric>
#include <vector>

namespace normaris::pdf {

namespace {

// One character of the base size: the unit of the indents, as in the .docx.
constexpr double kCharacter = 10.5;

QColor colorOf(Typist::Color color)
{
    const int v = static_cast<int>(color);
    return QColor(v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF);
}

bool holdsBreak(const model::Paragraph &paragraph)
{
    for (const model::Run &run : paragraph.runs)
        if (run.pageBreak)
            return true;
    return false;
}

// A heading keeps with what follows, and so does a blank line after one, as in
// the .docx.
bool keepsWithNext(const QList<model::Paragraph> &paragraphs, qsizetype index)
{
    const model::Paragraph &paragraph = paragraphs[index];
    if (paragraphStyleInfo(paragraph.style).keepWithNext)
        return true;
    return paragraph.runs.isEmpty() && index > 0 && !holdsBreak(paragraphs[index - 1]) && keepsWithNext(paragraphs, index - 1);
}

// A paragraph broken into lines, in device units.
struct LaidParagraph {
    std::unique_ptr<QTextLayout> layout;
    QList<double> heights;             // of each line, on the grid
    QList<std::pair<int, int>> struck; // double-struck character ranges: start, length
    double fontHeight = 0;             // of an empty paragraph's mark
    double fontAscent = 0;
    bool breakAfter = false; // a page break ends it
    bool keepWithNext = false;
};

// A table row laid out: each cell's paragraphs, and its lines in order as
// (paragraph, line) with their heights.
struct LaidCell {
    std::vector<LaidParagraph> paragraphs;
    QList<std::pair<int, int>> lines;
    QList<double> heights;
};

struct LaidRow {
    std::vector<LaidCell> cells;
    double height() const
    {
        double tallest = 0;
        for (const LaidCell &cell : cells)
            tallest = std::max(tallest, std::accumulate(cell.heights.cbegin(), cell.heights.cend(), 0.0));
        return tallest;
    }
};

class Layouter {
public:
    Layouter(QPainter &painter, const PageGeometry &geometry)
        : m_painter(painter), m_geometry(geometry), m_scale(painter.device()->logicalDpiY() / 72.0), m_y(px(geometry.top))
    {
    }

    void paintParagraphs(const QList<model::Paragraph> &paragraphs, const std::function<bool()> &newPage);
    void paintTable(const model::Table &table, const std::function<bool()> &newPage);
    // The last page's footer; the number of pages.
    int finish();
    // Whether the first page has its number: a cover has none.
    void setNumberOnFirst(bool shown) { m_numberOnFirst = shown; }
    // Where the headings are put as they are painted.
    void setOutline(QList<OutlineEntry> *outline) { m_outline = outline; }
    void setContentsPages(const QList<int> &pages) { m_contentsPages = pages; }

private:
    double px(double points) const { return points * m_scale; }
    double pageTop() const { return px(m_geometry.top); }
    double pageBottom() const { return px(m_geometry.height - m_geometry.bottom); }
    double textWidth() const { return px(m_geometry.width - m_geometry.left - m_geometry.right); }
    LaidParagraph layParagraph(const model::Paragraph &paragraph, double width, bool keepWithNext) const;
    const LaidParagraph &laid(qsizetype index);
    double heightOfKeptGroup(qsizetype index);
    LaidRow layRow(const model::TableRow &row, const QList<double> &widths) const;
    // Paints the lines [from, to) of each cell of a row at the current height, with
    // the lines around the cells; answers the height painted.
    double paintRowPart(const LaidRow &row, const QList<double> &widths, const QList<int> &from, const QList<int> &to);
    void paintLine(const LaidParagraph &paragraph, int line, double top, double left);
    void paintFooter();
    void nextPage(const std::function<bool()> &newPage);

    QPainter &m_painter;
    PageGeometry m_geometry;
    double m_scale;
    const QList<model::Paragraph> *m_paragraphs = nullptr; // the paragraphs being painted
    std::map<qsizetype, LaidParagraph> m_laid;             // the paragraph being placed and the ones looked ahead at
    double m_y = 0;
    int m_page = 1;
    bool m_numberOnFirst = true;
    QList<OutlineEntry> *m_outline = nullptr;
    QList<int> m_contentsPages;
    qsizetype m_contentsEntry = 0; // the next entry of the table of contents
    void paintLeader(const LaidParagraph &paragraph, int line, double top, double left, int page);
};

// A table row's bookmark shows at most this many characters of its text.
constexpr qsizetype kBookmarkLength = 40;

// The text of a paragraph as a reader's bookmark shows it: its runs, tabs as blanks.
QString paragraphText(const model::Paragraph &paragraph)
{
    QString text;
    for (const model::Run &run : paragraph.runs)
        text += run.text;
    return text.replace(u'\t', u' ').trimmed();
}

// The line grid: a line takes as many lines of the grid as its font needs.
double onGrid(double height, double pitch) { return std::max(1.0, std::ceil(height / pitch - 0.01)) * pitch; }

LaidParagraph Layouter::layParagraph(const model::Paragraph &paragraph, double width, bool keepWithNext) const
{
    LaidParagraph result;
    result.breakAfter = holdsBreak(paragraph);
    result.keepWithNext = keepWithNext;

    const QFont markFont = qtFont(paragraph.mark);
    const QFontMetricsF markMetrics(markFont, m_painter.device());
    result.fontHeight = markMetrics.ascent() + markMetrics.descent();
    result.fontAscent = markMetrics.ascent();

    QString text;
    QList<QTextLayout::FormatRange> formats;
    for (const model::Run &run : paragraph.runs) {
        if (run.text.isEmpty())
            continue;
        QTextCharFormat format;
        format.setFont(qtFont(run.font));
        format.setForeground(colorOf(run.font.color));
        format.setFontUnderline(run.font.underline);
        formats.append({int(text.size()), int(run.text.size()), format});
        if (run.font.doubleStrike)
            result.struck.append({int(text.size()), int(run.text.size())});
        text += run.text;
    }
    if (!text.isEmpty()) {
        const QFont first = formats.first().format.font();
        result.layout = std::make_unique<QTextLayout>(text, first, m_painter.device());
        QTextOption option;
        option.setAlignment(paragraph.alignment == Typist::Alignment::Center  ? Qt::AlignHCenter
                            : paragraph.alignment == Typist::Alignment::Right ? Qt::AlignRight
                                                                              : Qt::AlignLeft);
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setTabStopDistance(px(4 * kCharacter));
        result.layout->setTextOption(option);
        result.layout->setFormats(formats);
        const double hang = px(std::abs(paragraph.indent) * kCharacter);
        // A hanging indent: the first line at the margin, the others in by n
        // characters. A first-line indent: only the first line in.
        const double firstX = paragraph.indent > 0 ? hang : 0;
        const double otherX = paragraph.indent < 0 ? hang : 0;
        result.layout->beginLayout();
        for (QTextLine line = result.layout->createLine(); line.isValid(); line = result.layout->createLine()) {
            const double x = line.lineNumber() == 0 ? firstX : otherX;
            line.setLineWidth(width - x);
            line.setPosition(QPointF(x, 0));
            result.heights.append(onGrid(line.ascent() + line.descent(), px(m_geometry.linePitch)));
        }
        result.layout->endLayout();
    } else if (!result.breakAfter || paragraph.runs.size() > 1) {
        // An empty paragraph is a blank line in its mark's size; one that holds a
        // page break alone takes no line: the next page starts with what follows.
        result.heights.append(onGrid(result.fontHeight, px(m_geometry.linePitch)));
    }
    return result;
}

const LaidParagraph &Layouter::laid(qsizetype index)
{
    if (const auto it = m_laid.find(index); it != m_laid.end())
        return it->second;
    const QList<model::Paragraph> &paragraphs = *m_paragraphs;
    return m_laid.emplace(index, layParagraph(paragraphs[index], textWidth(), keepsWithNext(paragraphs, index))).first->second;
}

// A heading and what it keeps on its page: itself, every kept paragraph after it,
// and the first two lines (those that the orphan control keeps together) of the
// text that follows.
double Layouter::heightOfKeptGroup(qsizetype index)
{
    double height = 0;
    for (qsizetype i = index; i < m_paragraphs->size(); ++i) {
        const LaidParagraph &p = laid(i);
        if (!p.keepWithNext || p.breakAfter) {
            for (qsizetype line = 0; line < std::min<qsizetype>(2, p.heights.size()); ++line)
                height += p.heights[line];
            return i == index ? 0 : height;
        }
        for (double h : p.heights)
            height += h;
    }
    return height;
}

void Layouter::paintLine(const LaidParagraph &paragraph, int line, double top, double left)
{
    if (!paragraph.layout)
        return;
    QTextLine textLine = paragraph.layout->lineAt(line);
    // Centred in its grid lines, as a word processor sets a line on the grid.
    const double natural = textLine.ascent() + textLine.descent();
    const double lineTop = top + (paragraph.heights[line] - natural) / 2;
    textLine.draw(&m_painter, QPointF(left, lineTop - textLine.y()));
    for (const auto &[start, length] : paragraph.struck) {
        const int from = std::max(start, textLine.textStart());
        const int to = std::min(start + length, textLine.textStart() + textLine.textLength());
        if (from >= to)
            continue;
        const double x1 = left + textLine.cursorToX(from), x2 = left + textLine.cursorToX(to);
        const double middle = lineTop + textLine.ascent() * 0.65;
        const double gap = natural * 0.08;
        QPen pen(m_painter.pen());
        pen.setWidthF(natural * 0.04);
        m_painter.setPen(pen);
        m_painter.drawLine(QPointF(x1, middle - gap), QPointF(x2, middle - gap));
        m_painter.drawLine(QPointF(x1, middle + gap), QPointF(x2, middle + gap));
    }
}

// A dot leader from the end of the line's text to the page number at the right margin.
void Layouter::paintLeader(const LaidParagraph &paragraph, int line, double top, double left, int page)
{
    if (!paragraph.layout)
        return;
    const QTextLine textLine = paragraph.layout->lineAt(line);
    const QFont font = qtFont(model::Font{});
    m_painter.setFont(font);
    m_painter.setPen(Qt::black);
    const QFontMetricsF metrics(font, m_painter.device());
    const QString number = QString::number(page);
    const double right = left + textWidth();
    const double numberX = right - metrics.horizontalAdvance(number);
    const double natural = textLine.ascent() + textLine.descent();
    const double baseline = top + (paragraph.heights[line] - natural) / 2 + textLine.ascent();
    m_painter.drawText(QPointF(numberX, baseline), number);
    // The dots on a grid of their own, so that the leaders of all entries line up.
    const QString dot = QStringLiteral(".");
    const double pitch = metrics.horizontalAdvance(dot) * 2;
    const double from = left + textLine.x() + textLine.naturalTextWidth() + pitch;
    for (double x = std::ceil((from - left) / pitch) * pitch + left; x + pitch <= numberX - pitch / 2; x += pitch)
        m_painter.drawText(QPointF(x, baseline), dot);
}

// The page number, centred in the footer; none on a cover.
void Layouter::paintFooter()
{
    if (m_page == 1 && !m_numberOnFirst)
        return;
    model::Font base;
    const QFont font = qtFont(base);
    m_painter.setFont(font);
    m_painter.setPen(Qt::black);
    const QFontMetricsF metrics(font, m_painter.device());
    const QString number = QString::number(m_page);
    const double x = px(m_geometry.width / 2) - metrics.horizontalAdvance(number) / 2;
    const double baseline = px(m_geometry.height - m_geometry.footer) - metrics.descent();
    m_painter.drawText(QPointF(x, baseline), number);
}

void Layouter::nextPage(const std::function<bool()> &newPage)
{
    paintFooter();
    if (!newPage())
        throw Failure(QStringLiteral("PDF の新しいページを作れません。"));
    ++m_page;
    m_y = px(m_geometry.top);
}

void Layouter::paintParagraphs(const QList<model::Paragraph> &paragraphs, const std::function<bool()> &newPage)
{
    m_paragraphs = &paragraphs;
    m_laid.clear();
    const double top = pageTop();
    const double bottom = pageBottom();
    const double left = px(m_geometry.left);
    for (qsizetype i = 0; i < paragraphs.size(); ++i) {
        const LaidParagraph &p = laid(i);
        const int lines = int(p.heights.size());
        // A heading goes to the next page with the text it belongs to.
        if (p.keepWithNext && m_y > top) {
            const double group = heightOfKeptGroup(i);
            if (m_y + group > bottom && group <= bottom - top)
                nextPage(newPage);
        }
        for (int line = 0; line < lines;) {
            // How many of the remaining lines fit on this page.
            int fit = 0;
            double y = m_y;
            while (line + fit < lines && y + p.heights[line + fit] <= bottom + 0.5) {
                y += p.heights[line + fit];
                ++fit;
            }
            const int remaining = lines - line;
            if (fit < remaining && m_y > top) {
                // Neither the first line alone at the foot, nor the last alone at the head.
                if (line == 0 && fit == 1 && lines > 1)
                    fit = 0;
                else if (remaining - fit == 1 && fit - 1 >= (line == 0 ? 2 : 1))
                    --fit;
            }
            if (fit == 0 && m_y > top) {
                nextPage(newPage);
                continue;
            }
            fit = std::max(fit, 1); // a line taller than the page stands alone on one
            const int level = paragraphStyleInfo(paragraphs[i].style).outlineLevel;
            if (m_outline && line == 0 && level > 0 && !paragraphText(paragraphs[i]).isEmpty())
                m_outline->append({level, paragraphText(paragraphs[i]), m_page, m_y / m_scale});
            for (int k = 0; k < fit; ++k) {
                paintLine(p, line + k, m_y, left);
                if (line + k == lines - 1 && paragraphStyleInfo(paragraphs[i].style).part == DocumentPart::Entry) {
                    const int page = m_contentsPages.value(m_contentsEntry++);
                    if (page > 0)
                        paintLeader(p, line + k, m_y, left, page);
                }
                m_y += p.heights[line + k];
            }
            line += fit;
            if (line < lines)
                nextPage(newPage);
        }
        if (p.breakAfter && i + 1 < paragraphs.size())
            nextPage(newPage);
        m_laid.erase(i);
    }
    m_paragraphs = nullptr;
}

LaidRow Layouter::layRow(const model::TableRow &row, const QList<double> &widths) const
{
    LaidRow laidRow;
    for (qsizetype c = 0; c < row.cells.size(); ++c) {
        LaidCell cell;
        QList<model::Paragraph> paragraphs = row.cells[c].paragraphs;
        if (paragraphs.isEmpty())
            paragraphs.append(model::Paragraph{}); // a cell holds one paragraph at least
        const double width = widths.value(c) - 2 * px(m_geometry.cellMargin);
        for (const model::Paragraph &paragraph : paragraphs) {
            cell.paragraphs.push_back(layParagraph(paragraph, width, false));
            const LaidParagraph &laidParagraph = cell.paragraphs.back();
            for (int line = 0; line < laidParagraph.heights.size(); ++line) {
                cell.lines.append({int(cell.paragraphs.size()) - 1, line});
                cell.heights.append(laidParagraph.heights[line]);
            }
        }
        laidRow.cells.push_back(std::move(cell));
    }
    return laidRow;
}

double Layouter::paintRowPart(const LaidRow &row, const QList<double> &widths, const QList<int> &from, const QList<int> &to)
{
    double height = 0;
    for (size_t c = 0; c < row.cells.size(); ++c) {
        double h = 0;
        for (int k = from[c]; k < to[c]; ++k)
            h += row.cells[c].heights[k];
        height = std::max(height, h);
    }
    double x = px(m_geometry.left);
    for (size_t c = 0; c < row.cells.size(); ++c) {
        const LaidCell &cell = row.cells[c];
        double y = m_y;
        for (int k = from[c]; k < to[c]; ++k) {
            const auto [paragraph, line] = cell.lines[k];
            paintLine(cell.paragraphs[paragraph], line, y, x + px(m_geometry.cellMargin));
            y += cell.heights[k];
        }
        QPen pen(Qt::black);
        pen.setWidthF(px(0.5));
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(QRectF(x, m_y, widths.value(qsizetype(c)), height));
        x += widths.value(qsizetype(c));
    }
    m_y += height;
    return height;
}

void Layouter::paintTable(const model::Table &table, const std::function<bool()> &newPage)
{
    // The columns as the .docx has them, narrowed together when they are wider than the text.
    QList<double> widths;
    for (int twips : table.columnWidths)
        widths.append(px(twips / 20.0));
    const double total = std::accumulate(widths.cbegin(), widths.cend(), 0.0);
    if (total > textWidth())
        for (double &w : widths)
            w *= textWidth() / total;

    std::vector<LaidRow> headers;
    double headerHeight = 0;
    for (const model::TableRow &row : table.rows) {
        if (row.header) {
            headers.push_back(layRow(row, widths));
            headerHeight += headers.back().height();
        }
    }
    const auto whole = [](const LaidRow &row, bool end) {
        QList<int> marks;
        for (const LaidCell &cell : row.cells)
            marks.append(end ? int(cell.lines.size()) : 0);
        return marks;
    };
    const auto paintHeaders = [&] {
        for (const LaidRow &header : headers)
            paintRowPart(header, widths, whole(header, false), whole(header, true));
    };
    const auto freshPage = [&] {
        nextPage(newPage);
        paintHeaders();
    };
    const double bottom = pageBottom();
    const double roomOnAPage = bottom - pageTop() - headerHeight;

    bool headersShown = false;
    for (const model::TableRow &source : table.rows) {
        if (source.header)
            continue;
        const LaidRow row = layRow(source, widths);
        if (!headersShown) {
            // The header does not stand alone at a page's foot.
            const double firstLine = row.cells.empty() || row.cells[0].heights.isEmpty() ? 0 : row.cells[0].heights[0];
            if (m_y > pageTop() && m_y + headerHeight + firstLine > bottom)
                nextPage(newPage);
            paintHeaders();
            headersShown = true;
        }
        // A row that fits on a page is never split: it goes to the next page whole.
        if (m_y + row.height() > bottom + 0.5 && row.height() <= roomOnAPage && m_y > pageTop() + headerHeight + 0.5)
            freshPage();
        if (m_outline) {
            // A row's bookmark is its first line of text, the newer side's before the older's.
            QString title;
            for (const model::TableCell &cell : source.cells)
                for (const model::Paragraph &paragraph : cell.paragraphs)
                    if (title.isEmpty())
                        title = paragraphText(paragraph);
            if (!title.isEmpty())
                m_outline->append({1, title.left(kBookmarkLength), m_page, m_y / m_scale});
        }
        QList<int> from = whole(row, false);
        const QList<int> end = whole(row, true);
        while (from != end) {
            QList<int> to = from;
            bool any = false;
            for (size_t c = 0; c < row.cells.size(); ++c) {
                double y = m_y;
                while (to[c] < end[c] && y + row.cells[c].heights[to[c]] <= bottom + 0.5)
                    y += row.cells[c].heights[to[c]++];
                any = any || to[c] > from[c];
            }
            if (!any && m_y > pageTop() + headerHeight + 0.5) {
                freshPage();
                continue;
            }
            if (!any) // a line taller than a page stands alone on one
                for (size_t c = 0; c < row.cells.size(); ++c)
                    to[c] = std::min(from[c] + 1, end[c]);
            paintRowPart(row, widths, from, to);
            from = to;
            if (from != end)
                freshPage();
        }
    }
    if (!headersShown)
        paintHeaders();
}

int Layouter::finish()
{
    paintFooter();
    return m_page;
}

} // namespace

PageGeometry PageGeometry::of(const model::PageSetup &setup)
{
    const model::PageSize &page = model::pageSize(setup);
    const auto points = [](int twips) { return twips / 20.0; };
    PageGeometry geometry;
    geometry.width = points(page.width);
    geometry.height = points(page.height);
    geometry.top = points(page.top);
    geometry.right = points(page.right);
    geometry.bottom = points(page.bottom);
    geometry.left = points(page.left);
    geometry.footer = points(page.footer);
    geometry.cellMargin = points(model::kCellMargin);
    return geometry;
}

int paintDocument(QPainter &painter, const QList<model::Paragraph> &paragraphs, const std::function<bool()> &newPage,
                  const PageGeometry &geometry, QList<OutlineEntry> *outline, const QList<int> &contentsPages)
{
    Layouter layouter(painter, geometry);
    layouter.setOutline(outline);
    layouter.setContentsPages(contentsPages);
    layouter.setNumberOnFirst(paragraphs.isEmpty() || paragraphStyleInfo(paragraphs.first().style).part != DocumentPart::Cover);
    layouter.paintParagraphs(paragraphs, newPage);
    return layouter.finish();
}

QList<int> contentsPagesOf(const QList<model::Paragraph> &paragraphs, const QList<OutlineEntry> &outline)
{
    // Texts compared without their blanks: an entry is indented, a heading spaced.
    const auto bare = [](QString text) {
        text.remove(QRegularExpression(QStringLiteral("\\s"), QRegularExpression::UseUnicodePropertiesOption));
        return text;
    };
    QList<int> pages;
    qsizetype next = 0;
    for (const model::Paragraph &paragraph : paragraphs) {
        if (paragraphStyleInfo(paragraph.style).part != DocumentPart::Entry)
            continue;
        const QString entry = bare(paragraphText(paragraph));
        int page = 0;
        for (qsizetype k = next; k < outline.size() && !entry.isEmpty(); ++k) {
            if (bare(outline[k].title) == entry) {
                page = outline[k].page;
                next = k + 1;
                break;
            }
        }
        pages << page;
    }
    return pages;
}

int paintBlocks(QPainter &painter, const QList<model::Block> &blocks, const std::function<bool()> &newPage, const PageGeometry &geometry,
                QList<OutlineEntry> *outline)
{
    Layouter layouter(painter, geometry);
    layouter.setOutline(outline);
    QList<model::Paragraph> paragraphs; // the paragraphs since the last table, painted together
    for (const model::Block &block : blocks) {
        if (const auto *paragraph = std::get_if<model::Paragraph>(&block)) {
            paragraphs.append(*paragraph);
            continue;
        }
        layouter.paintParagraphs(paragraphs, newPage);
        paragraphs.clear();
        layouter.paintTable(std::get<model::Table>(block), newPage);
    }
    layouter.paintParagraphs(paragraphs, newPage);
    return layouter.finish();
}

} // namespace normaris::pdf
