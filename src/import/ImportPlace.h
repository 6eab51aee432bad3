#pragma once
// The entry chosen for an import: a prose style, a level from 規程 down to イ～ネ,
// and the codes of the entry and of its parents, 規程Code first.

#include "base/Levels.h"

#include <QString>
#include <QStringList>
#include <QVariantList>

namespace normaris {

// The levels an entry can be imported at, 規程 to イ～ネ: the preamble goes with its document.
inline constexpr std::array<Level, 7> kImportLevels = {Level::Document, Level::Chapter, Level::Article, Level::Paragraph,
                                                       Level::Item,     Level::Maru,    Level::Iroha};

inline QString keyColumn(Level level) { return QString::fromUtf16(levelInfo(level).keyColumn); }

struct ImportPlace {
    QString style; // 文章形式Code
    Level level = Level::Document;
    QStringList codes; // 規程Code, 章Code, … down to the level: one per level

    // The depth of a level in the chain 規程 (0) … イ～ネ (6).
    static int depthOf(Level level) { return int(level) - int(Level::Document); }
    int depth() const { return depthOf(level); }
    QString code(Level at) const { return codes.value(depthOf(at)); }
    QString ownCode() const { return codes.value(depth()); }
    Level parent() const { return Level(int(level) - 1); }
};

// The columns and values that select, in a table of level `table`, the rows at or
// below the levels given by codes (規程 first): the style, then each level's code under
// the name that table gives it (its own Code at its own level).
struct KeyFilter {
    QStringList columns;
    QVariantList values;

    QString where() const
    {
        QStringList terms;
        for (const QString &c : columns)
            terms << c + QStringLiteral(" = ?");
        return terms.join(QStringLiteral(" AND "));
    }
};

inline KeyFilter keyFilter(Level table, const QString &style, const QStringList &codes)
{
    KeyFilter filter{{QStringLiteral("文章形式Code")}, {style}};
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const Level at = kImportLevels.at(i);
        filter.columns << (at == table ? QStringLiteral("Code") : keyColumn(at));
        filter.values << codes.at(i);
    }
    return filter;
}

} // namespace normaris
