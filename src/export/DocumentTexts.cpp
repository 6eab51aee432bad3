#include "export/DocumentTexts.h"

#include "export/Numerals.h"

namespace normaris {

Typist::Color markColor(const QString &text)
{
    const bool marked = text.contains(u'★') || text.contains(u'◆') || text.contains(u'☆');
    return marked ? Typist::Color::Blue : Typist::Color::Black;
}

Typist::Color wordMarkColor(const QString &text) { return text.contains(u'★') ? Typist::Color::Blue : Typist::Color::Black; }

void typeTemplateLine(Typist &typist, const QString &templateCode)
{
    typist.setAlignment(Typist::Alignment::Left);
    typist.setColor(Typist::Color::Red);
    typist.typeText(QStringLiteral("          ★テンプレート") + templateCode + QStringLiteral("を挿入してください★"));
    typist.setColor(Typist::Color::Black);
}

QString chapterHeading(const CompositionRow &row) { return u'第' + fullWidthDigits(row.number) + QStringLiteral("章  ") + row.text; }

QString articleHeading(const CompositionRow &row)
{
    return u'第' + fullWidthDigits(row.number) + QStringLiteral("条（") + row.text + u'）';
}

} // namespace normaris
