#pragma once
// Types every call into several typists at once: a document in all its outputs.

#include "document/Typist.h"

#include <QList>

namespace normaris {

class TypistFan : public Typist {
public:
    explicit TypistFan(QList<Typist *> typists) : m_typists(std::move(typists)) {}

    void typeText(const QString &text) override
    {
        all([&](Typist &t) { t.typeText(text); });
    }
    void typeParagraph() override
    {
        all([](Typist &t) { t.typeParagraph(); });
    }
    void insertPageBreak() override
    {
        all([](Typist &t) { t.insertPageBreak(); });
    }
    void setFontName(const QString &name) override
    {
        all([&](Typist &t) { t.setFontName(name); });
    }
    void setFontSize(double points) override
    {
        all([&](Typist &t) { t.setFontSize(points); });
    }
    void setBold(bool on) override
    {
        all([&](Typist &t) { t.setBold(on); });
    }
    void setColor(Color color) override
    {
        all([&](Typist &t) { t.setColor(color); });
    }
    void setDoubleStrikeThrough(bool on) override
    {
        all([&](Typist &t) { t.setDoubleStrikeThrough(on); });
    }
    void setAlignment(Alignment alignment) override
    {
        all([&](Typist &t) { t.setAlignment(alignment); });
    }
    void setCharacterUnitFirstLineIndent(int characters) override
    {
        all([&](Typist &t) { t.setCharacterUnitFirstLineIndent(characters); });
    }
    void setParagraphStyle(ParagraphStyle style) override
    {
        all([&](Typist &t) { t.setParagraphStyle(style); });
    }
    void startRow(const CompositionRow &row) override
    {
        all([&](Typist &t) { t.startRow(row); });
    }
    void endRows() override
    {
        all([](Typist &t) { t.endRows(); });
    }

private:
    template<typename Call>
    void all(Call call)
    {
        for (Typist *t : std::as_const(m_typists))
            call(*t);
    }
    QList<Typist *> m_typists;
};

// Two typists at once: a document and its text record.
class TypistPair : public TypistFan {
public:
    TypistPair(Typist &first, Typist &second) : TypistFan({&first, &second}) {}
};

} // namespace normaris
