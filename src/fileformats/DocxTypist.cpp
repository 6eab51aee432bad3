#include "fileformats/DocxTypist.h"

#include "fileformats/DocxBody.h"
#include "fileformats/DocxParts.h"
#include "fileformats/ZipPackage.h"

namespace normaris {

namespace {

// XML 1.0 carries no control character other than tab and line ends, no lone
// surrogate and neither U+FFFE nor U+FFFF; such characters are dropped rather
// than let them make the whole document unreadable.
bool carriable(QChar c) { return c == u'\t' || (c.unicode() >= 0x20 && c.unicode() != 0xFFFE && c.unicode() != 0xFFFF); }

} // namespace

void DocxTypist::typeText(const QString &text)
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
void DocxTypist::append(const QString &text)
{
    if (text.isEmpty())
        return;
    QList<docx::Run> &runs = m_current.runs;
    if (!runs.isEmpty() && !runs.last().pageBreak && runs.last().font == m_font)
        runs.last().text += text;
    else
        runs.append({m_font, text, false});
}

void DocxTypist::typeParagraph()
{
    m_current.mark = m_font;
    m_finished.append(m_current);
    m_current.runs.clear();
}

// As a word processor inserts a page break at the cursor: the break is typed
// into the paragraph the cursor is in and ends it, and the cursor goes on in a
// new paragraph with the same settings. The break is that paragraph's last
// content, so its paragraph mark stays on the page before (in the current layout
// mode that settings.xml declares, and in LibreOffice) and the new page starts
// with what is typed next, without a blank line. The renderer breaks pages in an
// empty paragraph, which thus holds the break alone.
void DocxTypist::insertPageBreak()
{
    m_current.runs.append({m_font, QString(), true});
    typeParagraph();
}

void DocxTypist::save(const QString &path) const
{
    QList<docx::Paragraph> paragraphs = m_finished;
    paragraphs.append(m_current);
    paragraphs.last().mark = m_font;
    // [Content_Types].xml first, where readers that sniff a package look for it.
    writeZipFile(path, {
                           {QStringLiteral("[Content_Types].xml"), docx::contentTypesXml()},
                           {QStringLiteral("_rels/.rels"), docx::packageRelationsXml()},
                           {QStringLiteral("word/document.xml"), docx::documentXml(paragraphs)},
                           {QStringLiteral("word/_rels/document.xml.rels"), docx::documentRelationsXml()},
                           {QStringLiteral("word/styles.xml"), docx::stylesXml()},
                           {QStringLiteral("word/settings.xml"), docx::settingsXml()},
                       });
}

} // namespace normaris
