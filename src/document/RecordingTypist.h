#pragma once
// A Typist that keeps what is typed as paragraphs of runs, for a writer that lays
// the whole document out at the end (the .docx and the PDF).
//
// Page breaks behave as a word processor's "insert page break" at the cursor:
// the break is typed where the cursor stands and ends that paragraph, and the
// cursor goes on in a new paragraph on the next page with the same settings.
// Typed line ends ("\n", "\r\n", "\r") end the paragraph in the same way.

#include "document/DocumentModel.h"
#include "document/FontKeepingTypist.h"

namespace normaris {

class RecordingTypist : public FontKeepingTypist {
public:
    void typeText(const QString &text) override;
    void typeParagraph() override;
    void insertPageBreak() override;

    void setAlignment(Alignment alignment) override { m_current.alignment = alignment; }
    void setCharacterUnitFirstLineIndent(int characters) override { m_current.indent = characters; }
    void setParagraphStyle(ParagraphStyle style) override { m_current.style = style; }

    // Every paragraph typed so far. The one the cursor is in is the last, as a
    // document always ends with a paragraph; its mark has the font in force.
    QList<model::Paragraph> paragraphs() const;

private:
    void append(const QString &text);

    QList<model::Paragraph> m_finished;
    model::Paragraph m_current; // the paragraph the cursor is in
};

} // namespace normaris
