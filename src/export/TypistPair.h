#pragma once
// Types every call into two typists at once: a document and its text record.

#include "export/Typist.h"

namespace normaris {

class TypistPair : public Typist {
public:
    TypistPair(Typist &first, Typist &second) : m_first(first), m_second(second) {}

    void typeText(const QString &text) override
    {
        both([&](Typist &t) { t.typeText(text); });
    }
    void typeParagraph() override
    {
        both([](Typist &t) { t.typeParagraph(); });
    }
    void insertPageBreak() override
    {
        both([](Typist &t) { t.insertPageBreak(); });
    }
    void setFontName(const QString &name) override
    {
        both([&](Typist &t) { t.setFontName(name); });
    }
    void setFontSize(double points) override
    {
        both([&](Typist &t) { t.setFontSize(points); });
    }
    void setBold(bool on) override
    {
        both([&](Typist &t) { t.setBold(on); });
    }
    void setColor(Color color) override
    {
        both([&](Typist &t) { t.setColor(color); });
    }
    void setDoubleStrikeThrough(bool on) override
    {
        both([&](Typist &t) { t.setDoubleStrikeThrough(on); });
    }
    void setAlignment(Alignment alignment) override
    {
        both([&](Typist &t) { t.setAlignment(alignment); });
    }
    void setCharacterUnitFirstLineIndent(int characters) override
    {
        both([&](Typist &t) { t.setCharacterUnitFirstLineIndent(characters); });
    }

private:
    template<typename Call>
    void both(Call call)
    {
        call(m_first);
        call(m_second);
    }
    Typist &m_first;
    Typist &m_second;
};

} // namespace normaris
