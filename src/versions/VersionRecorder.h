#pragma once
// A Typist that keeps what the body of a document printed, row by row of the
// work data, for the version kept of every finished document. It reads the rows
// the body announces and the text typed after each; the cover, the contents and
// the closing lines fall outside the body and are not kept.
//
// Red text is left out: it is a request to the user (a template to insert, an
// item that stands alone), not a word of the rules.

#include "document/Typist.h"
#include "versions/PrintedRow.h"

#include <optional>

namespace normaris {

class VersionRecorder : public Typist {
public:
    void typeText(const QString &text) override;
    void typeParagraph() override;
    void insertPageBreak() override {}

    void setFontName(const QString &) override {}
    void setFontSize(double) override {}
    void setBold(bool) override {}
    void setColor(Color color) override { m_color = color; }
    void setDoubleStrikeThrough(bool) override {}
    void setAlignment(Alignment) override {}
    void setCharacterUnitFirstLineIndent(int) override {}

    void startRow(const CompositionRow &row) override;
    void endRows() override;

    // The rows printed, in order; a row that printed nothing is not among them.
    const PrintedRows &rows() const { return m_rows; }

    // Splits a printed line into its label and its text, given the row's own text:
    // "第５条（目的）" → 第５条, （目的）; "２  従業員は…" → ２, 従業員は…
    static std::pair<QString, QString> splitLabel(const QString &printed, const QString &ownText);

private:
    void finishRow();

    struct Pending {
        PrintedRow row;
        QString ownText; // the row's text in the work data
        QString printed; // what was typed for it, line ends as '\n'
    };
    std::optional<Pending> m_pending;
    Color m_color = Color::Black;
    PrintedRows m_rows;
};

} // namespace normaris
