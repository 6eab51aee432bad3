#pragma once
// A typist that keeps the font in force as a value, for typists that record what was
// typed run by run (the text rendering, the .docx and the PDF).

#include "document/Typist.h"

#include <QString>

namespace normaris {

// The font of a run.
struct TypedFont {
    QString name = Typist::kMinchoFont;
    double size = Typist::kBaseSize;
    bool bold = false;
    Typist::Color color = Typist::Color::Black;
    bool doubleStrike = false;
    bool underline = false; // single; the marking of changed words
    bool operator==(const TypedFont &) const = default;
};

class FontKeepingTypist : public Typist {
public:
    void setFontName(const QString &name) override { m_font.name = name; }
    void setFontSize(double points) override { m_font.size = points; }
    void setBold(bool on) override { m_font.bold = on; }
    void setColor(Color color) override { m_font.color = color; }
    void setDoubleStrikeThrough(bool on) override { m_font.doubleStrike = on; }

protected:
    TypedFont m_font;
};

} // namespace normaris
