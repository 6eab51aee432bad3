#include "export/FrontMatter.h"

#include "export/DocumentTexts.h"

#include <limits>

namespace normaris {

namespace {

struct TitleSize {
    qsizetype maxBytes; // the title's length, two bytes a character
    double points;
    int paragraphsAfter; // fewer for the big sizes, to keep the cover on one page
};

const TitleSize kTitleSizes[] = {
    {10, 72, 0}, {20, 36, 2}, {30, 24, 3}, {40, 18, 3}, {60, 12, 4}, {std::numeric_limits<qsizetype>::max(), Typist::kBaseSize, 4},
};

const TitleSize &titleSizeFor(const QString &title)
{
    // Every character counts two bytes here, half-width ones too: the size was
    // chosen for names written in full width.
    const qsizetype bytes = title.size() * 2;
    for (const TitleSize &size : kTitleSizes) {
        if (bytes <= size.maxBytes)
            return size;
    }
    return kTitleSizes[std::size(kTitleSizes) - 1];
}

void typeParagraphs(Typist &typist, int count)
{
    for (int i = 0; i < count; ++i)
        typist.typeParagraph();
}

// The lines of the table of contents: the title, the chapters and the articles; the
// rows of the other levels have none.
using ContentsLine = void (*)(Typist &, const CompositionRow &, const QString &formalName);
const std::pair<Level, ContentsLine> kContentsLines[] = {
    {Level::Document,
     [](Typist &typist, const CompositionRow &, const QString &formalName) {
         typist.setAlignment(Typist::Alignment::Left);
         typist.setFontSize(12);
         typist.typeText(formalName);
         typist.setFontSize(Typist::kBaseSize);
         typist.typeParagraph();
     }},
    {Level::Chapter,
     [](Typist &typist, const CompositionRow &row, const QString &) {
         if (isChapterless(row))
             return;
         typist.setAlignment(Typist::Alignment::Left);
         typist.typeText(chapterHeading(row));
         typist.typeParagraph();
     }},
    {Level::Article,
     [](Typist &typist, const CompositionRow &row, const QString &) {
         typist.setAlignment(Typist::Alignment::Left);
         typist.typeText(QStringLiteral("　") + articleHeading(row));
         typist.typeParagraph();
     }},
};

} // namespace

void typeCover(Typist &typist, const QString &formalName, const QString &companyName)
{
    typist.setAlignment(Typist::Alignment::Center);
    const TitleSize &size = titleSizeFor(formalName);
    typeParagraphs(typist, 10);
    typist.setFontSize(size.points);
    typist.typeText(formalName);
    typist.setFontSize(Typist::kBaseSize);
    typeParagraphs(typist, size.paragraphsAfter);
    typeParagraphs(typist, 12);
    typist.setFontSize(12);
    typist.typeText(companyName);
    typist.typeParagraph();
    typist.setFontSize(Typist::kBaseSize);
    typist.insertPageBreak();
}

void typeTableOfContents(Typist &typist, const QList<CompositionRow> &rows, const QString &formalName)
{
    typist.setAlignment(Typist::Alignment::Center);
    typist.setFontSize(18);
    typist.typeText(QStringLiteral("目　次"));
    typeParagraphs(typist, 2);
    for (const CompositionRow &row : rows) {
        for (const auto &[level, typeLine] : kContentsLines) {
            if (level == row.level)
                typeLine(typist, row, formalName);
        }
    }
    typist.setFontSize(Typist::kBaseSize);
    typist.insertPageBreak();
}

} // namespace normaris
