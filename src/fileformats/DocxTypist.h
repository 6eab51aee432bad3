#pragma once
// A Typist that builds a WordprocessingML document in memory and saves it as a
// .docx that a word processor opens as it would its own file.
//
// Page breaks behave as a word processor's "insert page break" at the cursor:
// the break is typed where the cursor stands and ends that paragraph, and the
// cursor goes on in a new paragraph on the next page with the same settings.
// Typed line ends ("\n", "\r\n", "\r") end the paragraph in the same way.

#include "fileformats/DocxModel.h"
#include "export/Typist.h"

namespace normaris {

class DocxTypist : public Typist {
public:
    void typeText(const QString &text) override;
    void typeParagraph() override;
    void insertPageBreak() override;

    void setFontName(const QString &name) override { m_font.name = name; }
    void setFontSize(double points) override { m_font.size = points; }
    void setBold(bool on) override { m_font.bold = on; }
    void setColor(Color color) override { m_font.color = color; }
    void setDoubleStrikeThrough(bool on) override { m_font.doubleStrike = on; }

    void setAlignment(Alignment alignment) override { m_current.alignment = alignment; }
    void setCharacterUnitFirstLineIndent(int characters) override { m_current.indent = characters; }

    // Writes what was typed so far as a .docx at path, replacing a file there
    // only once the new one is complete. The paragraph the cursor is in is the
    // document's last, as a document always ends with a paragraph. The typist
    // stays usable: typing may go on and be saved again. Throws Failure.
    void save(const QString &path) const;

private:
    void append(const QString &text);

    docx::Font m_font;
    QList<docx::Paragraph> m_finished;
    docx::Paragraph m_current; // the paragraph the cursor is in
};

} // namespace normaris
