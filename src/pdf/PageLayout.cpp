#include "pdf/PageLayout.h"

#include "pdf/PdfFonts.h"
#include "export/ParagraphStyles.h"
#include "base/Failure.h"

#include <QPaintDevice>
#include <QTextLayout>

#include <cmath>
#include <map>
#include <memory>

namespace normaris::pdf {

namespace {

// One character of the base size: the unit of the indents, as in the .docx.
constexpr double kCharacter = 10.5;

QColor colorOf(Typist::Color color)
{
    const int v = static_cast<int>(color);
    return QColor(v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF);
}

bool holdsBreak(const docx::Paragraph &paragraph)
{
    for (const docx::Run &run : paragraph.runs)
        if (run.pageBreak)
            return true;
    return false;
}

// A heading keeps with what follows, and so does a blank line after one, as in
// the .docx.
bool keepsWithNext(const QList<docx::Paragraph> &paragraphs, qsizetype index)
{
    const docx::Paragraph &paragraph = paragraphs[index];
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

class Layouter {
public:
    Layouter(QPainter &painter, const QList<docx::Paragraph> &paragraphs, const PageGeometry &geometry)
        : m_painter(painter), m_paragraphs(paragraphs), m_geometry(geometry), m_scale(painter.device()->logicalDpiY() / 72.0)
    {
    }

    int paint(const std::function<bool()> &newPage);

private:
    double px(double points) const { return points * m_scale; }
    const LaidParagraph &laid(qsizetype index);
    double heightOfKeptGroup(qsizetype index);
    void paintLine(const LaidParagraph &paragraph, int line, double top);
    void paintFooter();
    void nextPage(const std::function<bool()> &newPage);

    QPainter &m_painter;
    const QList<docx::Paragraph> &m_paragraphs;
    PageGeometry m_geometry;
    double m_scale;
    std::map<qsizetype, LaidParagraph> m_laid; // the paragraph being placed and the ones looked ahead at
    double m_y = 0;
    int m_page = 1;
    bool m_numberOnFirst = true;
};

// The line grid: a line takes as many lines of the grid as its font needs.
double onGrid(double height, double pitch) { return std::max(1.0, std::ceil(height / pitch - 0.01)) * pitch; }

const LaidParagraph &Layouter::laid(qsizetype index)
{
    if (const auto it = m_laid.find(index); it != m_laid.end())
        return it->second;
    const docx::Paragraph &paragraph = m_paragraphs[index];
    LaidParagraph result;
    result.breakAfter = holdsBreak(paragraph);
    result.keepWithNext = keepsWithNext(m_paragraphs, index);

    const QFont markFont = qtFont(paragraph.mark);
    const QFontMetricsF markMetrics(markFont, m_painter.device());
    result.fontHeight = markMetrics.ascent() + markMetrics.descent();
    result.fontAscent = markMetrics.ascent();

    QString text;
    QList<QTextLayout::FormatRange> formats;
    for (const docx::Run &run : paragraph.runs) {
        if (run.text.isEmpty())
            continue;
        QTextCharFormat format;
        format.setFont(qtFont(run.font));
        format.setForeground(colorOf(run.font.color));
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
        const double width = px(m_geometry.width - m_geometry.left - m_geometry.right);
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
    return m_laid.emplace(index, std::move(result)).first->second;
}

// A heading and what it keeps on its page: itself, every kept paragraph after it,
// and the first two lines (those that the orphan control keeps together) of the
// text that follows.
double Layouter::heightOfKeptGroup(qsizetype index)
{
    double height = 0;
    for (qsizetype i = index; i < m_paragraphs.size(); ++i) {
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

void Layouter::paintLine(const LaidParagraph &paragraph, int line, double top)
{
    const double left = px(m_geometry.left);
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

// The page number, centred in the footer; none on a cover.
void Layouter::paintFooter()
{
    if (m_page == 1 && !m_numberOnFirst)
        return;
    docx::Font base;
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

int Layouter::paint(const std::function<bool()> &newPage)
{
    m_numberOnFirst = m_paragraphs.isEmpty() || paragraphStyleInfo(m_paragraphs.first().style).part != DocumentPart::Cover;
    const double top = px(m_geometry.top);
    const double bottom = px(m_geometry.height - m_geometry.bottom);
    m_y = top;
    for (qsizetype i = 0; i < m_paragraphs.size(); ++i) {
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
            for (int k = 0; k < fit; ++k) {
                paintLine(p, line + k, m_y);
                m_y += p.heights[line + k];
            }
            line += fit;
            if (line < lines)
                nextPage(newPage);
        }
        if (p.breakAfter && i + 1 < m_paragraphs.size())
            nextPage(newPage);
        m_laid.erase(i);
    }
    paintFooter();
    return m_page;
}

} // namespace

int paintDocument(QPainter &painter, const QList<docx::Paragraph> &paragraphs, const std::function<bool()> &newPage,
                  const PageGeometry &geometry)
{
    return Layouter(painter, paragraphs, geometry).paint(newPage);
}

} // namespace normaris::pdf
