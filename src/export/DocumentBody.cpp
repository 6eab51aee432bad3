#include "export/DocumentBody.h"

#include "export/DocumentTexts.h"

namespace normaris {

DocumentBody::DocumentBody(Typist &typist, const QList<CompositionRow> &rows, bool showFirstParagraphNumber, bool agreement)
    : m_typist(typist), m_cursor(rows), m_writer(typist, m_cursor, showFirstParagraphNumber), m_loneItems(rows),
      m_agreement(agreement)
{
}

void DocumentBody::type()
{
    for (; !m_cursor.atEnd(); m_cursor.advance()) {
        const CompositionRow &row = m_cursor.row();
        m_typist.setColor(markColor(row.text));
        // A row without text stands for a template the user inserts by hand.
        if (row.text.isEmpty())
            typeTemplateLine(m_typist, row.templateCode);
        else
            typeRow(row);
        if (!isChapterless(row))
            m_typist.typeParagraph();
    }
}

void DocumentBody::typeRow(const CompositionRow &row)
{
    switch (row.level) {
    case Level::Document:
        m_typist.setParagraphStyle(Typist::ParagraphStyle::DocumentName);
        m_typist.setAlignment(Typist::Alignment::Center);
        m_typist.setBold(true);
        m_typist.setFontSize(14);
        m_typist.typeText(row.text);
        m_typist.setBold(false);
        m_typist.setFontSize(Typist::kBaseSize);
        break;
    case Level::Chapter:
        if (isChapterless(row))
            break;
        m_typist.typeParagraph();
        m_typist.setParagraphStyle(Typist::ParagraphStyle::Chapter);
        m_typist.setAlignment(Typist::Alignment::Center);
        m_typist.setBold(true);
        m_typist.typeText(chapterHeading(row));
        m_typist.setBold(false);
        break;
    case Level::Article:
        m_typist.typeParagraph();
        m_typist.setParagraphStyle(Typist::ParagraphStyle::Article);
        m_typist.setAlignment(Typist::Alignment::Left);
        m_typist.typeText(articleHeading(row));
        break;
    case Level::Paragraph:
        m_writer.kou();
        break;
    case Level::Item:
        m_writer.gou();
        warnIfAlone(Level::Item);
        break;
    case Level::Maru:
        m_writer.maru();
        warnIfAlone(Level::Maru);
        break;
    case Level::Iroha:
        m_writer.iroha();
        warnIfAlone(Level::Iroha);
        break;
    case Level::Preamble:
        m_typist.typeParagraph();
        m_writer.zenbun();
        break;
    case Level::Closing:
        break;
    }
}

void DocumentBody::warnIfAlone(Level level)
{
    if (!m_loneItems.isAlone(level, m_cursor.row()))
        return;
    m_typist.typeParagraph();
    m_typist.setColor(Typist::Color::Red);
    m_typist.typeText(LoneItems::warning(level, m_agreement));
    m_typist.setColor(Typist::Color::Black);
}

} // namespace normaris
