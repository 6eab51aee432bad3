#include "document/RecordingTypist.h"

#include "document/ParagraphStyles.h"

namespace normaris {

namespace {

// XML 1.0 carries no control character other than tab and line ends, no lone
// surrogate and neither U+FFFE nor U+FFFF; such characters are dropped rather
// than let them make the whole document unreadable. No page layout wants them
// either.
bool carriable(QChar c) { return c == u'\t' || (c.unicode() >= 0x20 && c.unicode() != 0xFFFE && c.unicode() != 0xFFFF); }

} // namespace

void RecordingTypist::typeText(const QString &text)
{
    QString pending;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\r' || c == u'\n') {
            append(pending);
            pending.clear();
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            typeParagraph();
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            pending += c;
            pending += text[++i];
        } else if (!c.isSurrogate() && carriable(c)) {
            pending += c;
        }
    }
    append(pending);
}

// Text typed in the same font as the run before it joins that run.
void RecordingTypist::append(const QString &text)
{
    if (text.isEmpty())
        return;
    QList<model::Run> &runs = m_current.runs;
    if (!runs.isEmpty() && !runs.last().pageBreak && runs.last().font == m_font)
        runs.last().text += text;
    else
        runs.append({m_font, text, false});
}

// The new paragraph keeps the alignment and indent of the one it ends, and takes
// the style that follows that one's: after a heading, the body text.
void RecordingTypist::typeParagraph()
{
    m_current.mark = m_font;
    m_finished.append(m_current);
    m_current.runs.clear();
    m_current.style = paragraphStyleInfo(m_current.style).next;
}

// As a word processor inserts a page break at the cursor: the break is typed
// into the paragraph the cursor is in and ends it, and the cursor goes on in a
// new paragraph with the same settings. The break is that paragraph's last
// content, so its paragraph mark stays on the page before (in the current layout
// mode that settings.xml declares, and in LibreOffice) and the new page starts
// with what is typed next, without a blank line. The renderer breaks pages in an
// empty paragraph, which thus holds the break alone.
void RecordingTypist::insertPageBreak()
{
    m_current.runs.append({m_font, QString(), true});
    typeParagraph();
}

QList<model::Paragraph> RecordingTypist::paragraphs() const
{
    QList<model::Paragraph> all = m_finished;
    all.append(m_current);
    all.last().mark = m_font;
    return all;
}

} // namespace normaris
