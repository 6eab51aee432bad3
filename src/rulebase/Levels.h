#pragma once
// The eight levels of a document, by their level code 種別, and what each level
// is called in tables, columns and messages.

#include <QString>
#include <QStringList>

namespace normaris {

enum class Level { Document = 1, Chapter = 2, Article = 3, Paragraph = 4, Item = 5, Maru = 6, Iroha = 7, Preamble = 10, Closing = 11 };

inline QString levelCode(Level level) { return QString::number(int(level)); }
inline Level levelOf(const QString &code) { return Level(code.toInt()); }

// The clause levels below 条, in order; depth 0 is 項.
inline bool isClauseLevel(Level level) { return level >= Level::Paragraph && level <= Level::Iroha; }
inline int clauseDepth(Level level) { return int(level) - int(Level::Paragraph); }

// The dictionary table of a level (its text column has the same name for the clause levels).
inline QString dictionaryTable(Level level)
{
    switch (level) {
    case Level::Document: return QStringLiteral("規程");
    case Level::Chapter: return QStringLiteral("章");
    case Level::Article: return QStringLiteral("条");
    case Level::Paragraph: return QStringLiteral("項");
    case Level::Item: return QStringLiteral("号");
    case Level::Maru: return QStringLiteral("号の細分丸");
    case Level::Iroha: return QStringLiteral("号の細分イロハ");
    case Level::Preamble: return QStringLiteral("前文");
    case Level::Closing: break;
    }
    return {};
}

// The place columns of the composition tables, 章Code to 号の細分イロハCode.
inline const QStringList &placeColumns()
{
    static const QStringList columns = {QStringLiteral("章Code"), QStringLiteral("条Code"), QStringLiteral("項Code"),
                                        QStringLiteral("号Code"), QStringLiteral("号の細分丸Code"), QStringLiteral("号の細分イロハCode")};
    return columns;
}
// How many place columns a row of the level fills: 章 1, 条 2, 項 3 … イロハ 6.
inline int placeDepth(Level level)
{
    return level >= Level::Chapter && level <= Level::Iroha ? int(level) - 1 : 0;
}

// The name of a level in the add and release messages.
inline QString levelCaption(Level level)
{
    switch (level) {
    case Level::Preamble: return QStringLiteral("前文");
    case Level::Chapter: return QStringLiteral("章");
    case Level::Article: return QStringLiteral("条");
    case Level::Paragraph: return QStringLiteral("項");
    case Level::Item: return QStringLiteral("号");
    case Level::Maru: return QStringLiteral("①～⑳");
    case Level::Iroha: return QStringLiteral("イ～ネ");
    default: return QStringLiteral("規則・規程・労使協定");
    }
}

} // namespace normaris
