#pragma once
// A Typist that records what it is told as readable text, for tests, golden files
// and the command line: one line per paragraph.
//
// A paragraph that is not left aligned or has an indent starts with its marks:
// "<C>" centre, "<R>" right, "<i-2>" a hanging indent of two characters. Text in
// a format other than the base (ＭＳ 明朝, 10.5 pt, black) stands in braces with its
// marks: "{14pt bold:就業規則}", "{red:…}", "{dstrike:（変更）}". A page break is
// a line "<改ページ>".

#include "document/FontKeepingTypist.h"

#include <QStringList>

namespace normaris {

class TextTypist : public FontKeepingTypist {
public:
    void typeText(const QString &text) override;
    void typeParagraph() override;
    void insertPageBreak() override;

    void setAlignment(Alignment alignment) override { m_alignment = alignment; }
    void setCharacterUnitFirstLineIndent(int characters) override { m_indent = characters; }

    // Every finished paragraph, and the one in progress when it holds text.
    QStringList lines() const;
    QString text() const { return lines().join(u'\n') + u'\n'; }

private:
    QString currentLine() const;

    Alignment m_alignment = Alignment::Left;
    int m_indent = 0;
    QStringList m_lines;
    // The runs of the paragraph in progress: text with the font it was typed in.
    QList<std::pair<TypedFont, QString>> m_runs;
};

} // namespace normaris
