#include "export/DocumentBody.h"

#include "export/DocumentTexts.h"

namespace normaris {

DocumentBody::DocumentBody(Typist &typist, const QList<CompositionRow> &rows, bool showFirstParagraphNumber, bool agreement)
    : m_typist(typist), m_cursor(rows), m_writer(typist, m_cursor, showFirstParagraphNumber), m_loneItems(rows), m_agreement(agreement)
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

// How each level's row is typed: the headings each their own way, every clause level
// by the clause writer.
void DocumentBody::typeRow(const CompositionRow &row)
{
    using Typer = void (DocumentBody::*)(const CompositionRow &);
    static const std::pair<Level, Typer> typers[] = {{Level::Document, &DocumentBody::typeTitle},
                                                     {Level::Preamble, &DocumentBody::typePreamble},
                                                     {Level::Chapter, &DocumentBody::typeChapter},
                                                     {Level::Article, &DocumentBody::typeArticle}};
    for (const auto &[level, typer] : typers) {
        if (level == row.level) {
            (this->*typer)(row);
            return;
        }
    }
    if (isClauseLevel(row.level))
        typeClause(row);
}

void DocumentBody::typeTitle(const CompositionRow &row)
{
    m_typist.setAlignment(Typist::Alignment::Center);
    m_typist.setBold(true);
    m_typist.setFontSize(14);
    m_typist.typeText(row.text);
    m_typist.setBold(false);
    m_typist.setFontSize(Typist::kBaseSize);
}

void DocumentBody::typePreamble(const CompositionRow &)
{
    m_typist.typeParagraph();
    m_writer.type(Level::Preamble);
}

void DocumentBody::typeChapter(const CompositionRow &row)
{
    if (isChapterless(row))
        return;
    m_typist.typeParagraph();
    m_typist.setAlignment(Typist::Alignment::Center);
    m_typist.setBold(true);
    m_typist.typeText(chapterHeading(row));
    m_typist.setBold(false);
}

void DocumentBody::typeArticle(const CompositionRow &row)
{
    m_typist.typeParagraph();
    m_typist.setAlignment(Typist::Alignment::Left);
    m_typist.typeText(articleHeading(row));
}

void DocumentBody::typeClause(const CompositionRow &row)
{
    m_writer.type(row.level);
    if (levelInfo(row.level).listEntry)
        warnIfAlone(row.level);
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
