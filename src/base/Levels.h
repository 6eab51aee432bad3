#pragma once
// The eight levels of a document, by their level code 種別, and everything that
// varies by level: one row of the level table each. A routine that behaves
// differently by level reads the row; it does not switch over the level.

#include <QString>
#include <QStringList>

#include <array>

namespace normaris {

enum class Level { Document = 1, Chapter = 2, Article = 3, Paragraph = 4, Item = 5, Maru = 6, Iroha = 7, Preamble = 10, Closing = 11 };

// How a level's number reads on its own (第５条, ②, ロ).
enum class Numbering {
    None,    // 規程, 前文: not numbered
    Ordinal, // 第 + the number in full-width digits + the caption: 第５条
    Circled, // ① … ⑳
    Iroha,   // イ … ネ
};

struct LevelInfo {
    Level level;
    const char16_t *table;         // the dictionary table ("" for the closing row)
    const char16_t *textColumn;    // its text (or name) column
    const char16_t *bodyColumn;    // the column the document's text is taken from (正式名称 for 規程 and 条)
    const char16_t *documentKey;   // the table's column naming the document
    const char16_t *fixedCode;     // the Code of the level's only row in a document, where it has one
    int placeDepth;                // place columns a row fills: 章 1, 条 2, 項 3 … イロハ 6
    const char16_t *caption;       // in the add, release and dictionary messages
    const char16_t *panelCaption;  // on the row panels
    unsigned panelColour;          // its caption's background on the row panels, 0xRRGGBB
    const char16_t *sourceName;    // in the seed sources and their messages
    int codeWidth;                 // digits of the level's own Code
    int firstUserCode;             // the user's own codes run from here to the width's last
    bool segmented;                // text kept as a chain of segments (結合, 改行, 結合種別)
    const char16_t *panelActions;  // the 作成データ選択肢 codes the row panels offer at a row of the level
    Numbering numbering;           // how its number reads in a reference
    const char16_t *previousWord;  // the word for the one just before (前条), where the level has one
    bool numberedThroughDocument;  // numbered on through the chapters (条), not from 1 under each parent
    bool listEntry;                // an entry of a list (号, ①, イ), which should not stand alone
    bool templateLine;             // a segment after a line break can be a template: the line that asks for it
    const char16_t *keyColumn;     // the column that holds the level's code in the rows below it ("" if none)
    const char16_t *duplicateName; // the import's duplicate-code message names the level so on its second line
    const char16_t *holderKind;    // the 種別 of a word or reference row that the import looks for in this table
    bool unselectedOnImport;       // an imported row starts with 選択フラグ off
    const char16_t *pickerLabel;   // beside the level's picker in the dictionary navigator
    const char16_t *pickerHint;    // the navigator's instruction when the level is chosen
    bool everySetting;             // a 基本語句 segment offers every setting substitution knows, not the 前文's three
    bool faultyFourthWordLookup;   // the segment editor's look-up of the fourth segment's word keeps its old fault
};

// In document order: 規程, 前文, 章, 条, 項, 号, ①～⑳, イ～ネ, then the closing row.
// The row panels colour their captions by place: the 条 panel shows 規程 to 条, the 項
// panel 項 to イ～ネ, each in the same four colours.
// Two import columns keep the program's long-standing wording and behaviour: the
// duplicate message of 章 and 条 names 項 on its second line, and イ～ネ looks for
// holders of 種別 6, so that a word row of 種別 7 is never counted as used.
inline constexpr std::array<LevelInfo, 9> kLevels = {{
    {Level::Document,
     u"規程",
     u"規程",
     u"正式名称",
     u"Code",
     u"",
     0,
     u"規則・規程・労使協定",
     u"規則",
     0xFFC0C0,
     u"規程",
     2,
     70,
     false,
     u"3,4",
     Numbering::None,
     u"",
     false,
     false,
     false,
     u"規程Code",
     u"規則・規程・労使協定",
     u"",
     true,
     u"規則・規程:",
     u"規則・規程・労使協定は、そのまま「次へ」をクリックしてください",
     false,
     false},
    {Level::Preamble, u"前文",         u"前文", u"前文", u"規程Code", u"01", 0,   u"前文", u"前文", 0xFFE0C0, u"前文", 2,   70,    true,
     u"2,3",          Numbering::None, u"",     false,   false,       false, u"", u"前文", u"",     false,    u"",     u"", false, true},
    {Level::Chapter,
     u"章",
     u"章",
     u"章",
     u"規程Code",
     u"",
     1,
     u"章",
     u"章",
     0xFFFFC0,
     u"章",
     2,
     70,
     false,
     u"2,3",
     Numbering::Ordinal,
     u"",
     false,
     false,
     false,
     u"章Code",
     u"項",
     u"",
     false,
     u"章:",
     u"「規則・規程・労使協定」を指定してください",
     true,
     false},
    {Level::Article,
     u"条",
     u"条",
     u"正式名称",
     u"規程Code",
     u"",
     2,
     u"条",
     u"条",
     0xC0FFC0,
     u"条",
     4,
     7000,
     false,
     u"2,3,4,5",
     Numbering::Ordinal,
     u"前条",
     true,
     false,
     false,
     u"条Code",
     u"項",
     u"",
     false,
     u"条:",
     u"「規則・規程・労使協定」と「章」を指定してください",
     true,
     false},
    {Level::Paragraph,
     u"項",
     u"項",
     u"項",
     u"規程Code",
     u"",
     3,
     u"項",
     u"項",
     0xFFC0C0,
     u"項",
     2,
     70,
     true,
     u"2,3,4,5",
     Numbering::Ordinal,
     u"前項",
     false,
     false,
     true,
     u"項Code",
     u"項",
     u"4",
     false,
     u"項:",
     u"「規則・規程・労使協定」～「条」を指定してください",
     true,
     false},
    {Level::Item, u"号",
     u"号",       u"号",
     u"規程Code", u"",
     4,           u"号",
     u"号",       0xFFE0C0,
     u"号",       2,
     70,          true,
     u"2,3,4,5",  Numbering::Ordinal,
     u"前号",     false,
     true,        true,
     u"号Code",   u"号",
     u"5",        false,
     u"号:",      u"「規則・規程・労使協定」～「項」を指定してください",
     true,        false},
    {Level::Maru,
     u"号の細分丸",
     u"号の細分丸",
     u"号の細分丸",
     u"規程Code",
     u"",
     5,
     u"①～⑳",
     u"①～⑳",
     0xFFFFC0,
     u"丸",
     2,
     70,
     true,
     u"2,3,4,5,6",
     Numbering::Circled,
     u"",
     false,
     true,
     false,
     u"号の細分丸Code",
     u"①～⑳",
     u"6",
     false,
     u"①～⑳:",
     u"「規則・規程・労使協定」～「号」を指定してください",
     true,
     false},
    {Level::Iroha,
     u"号の細分イロハ",
     u"号の細分イロハ",
     u"号の細分イロハ",
     u"規程Code",
     u"",
     6,
     u"イ～ネ",
     u"イ～ネ",
     0xC0FFC0,
     u"イロハ",
     2,
     70,
     true,
     u"2,3,4,5,6",
     Numbering::Iroha,
     u"",
     false,
     true,
     false,
     u"号の細分イロハCode",
     u"イ～ネ",
     u"6",
     false,
     u"",
     u"「規則・規程・労使協定」～「①～⑳」を指定してください",
     true,
     false},
    {Level::Closing,
     u"",
     u"",
     u"",
     u"",
     u"",
     0,
     u"規則・規程・労使協定",
     u"",
     0xC0FFC0,
     u"",
     2,
     70,
     false,
     u"",
     Numbering::None,
     u"",
     false,
     false,
     false,
     u"",
     u"",
     u"",
     false,
     u"",
     u"",
     false,
     false},
}};

// The row of a level. Every Level value has one.
inline const LevelInfo &levelInfo(Level level)
{
    for (const LevelInfo &info : kLevels)
        if (info.level == level)
            return info;
    return kLevels.back();
}

inline QString levelCode(Level level) { return QString::number(int(level)); }
inline Level levelOf(const QString &code) { return Level(code.toInt()); }

// The clause levels below 条, in order; depth 0 is 項.
inline bool isClauseLevel(Level level) { return level >= Level::Paragraph && level <= Level::Iroha; }
inline int clauseDepth(Level level) { return int(level) - int(Level::Paragraph); }

// The dictionary table of a level (its text column has the same name for the clause levels).
inline QString dictionaryTable(Level level) { return QString::fromUtf16(levelInfo(level).table); }
inline QString textColumn(Level level) { return QString::fromUtf16(levelInfo(level).textColumn); }

// The place columns of the composition tables, 章Code to 号の細分イロハCode.
inline const QStringList &placeColumns()
{
    static const QStringList columns = {QStringLiteral("章Code"), QStringLiteral("条Code"),         QStringLiteral("項Code"),
                                        QStringLiteral("号Code"), QStringLiteral("号の細分丸Code"), QStringLiteral("号の細分イロハCode")};
    return columns;
}
// How many place columns a row of the level fills: 章 1, 条 2, 項 3 … イロハ 6.
inline int placeDepth(Level level) { return levelInfo(level).placeDepth; }

// The name of a level in the add and release messages.
inline QString levelCaption(Level level) { return QString::fromUtf16(levelInfo(level).caption); }
// The name of a level in the first column of the row panels.
inline QString panelCaption(Level level) { return QString::fromUtf16(levelInfo(level).panelCaption); }

// Whether code is one of the user's own at the level: of the level's width, from its first user code up.
inline bool isUserCode(Level level, const QString &code)
{
    const LevelInfo &info = levelInfo(level);
    bool ok = false;
    const int n = code.toInt(&ok);
    return ok && code.size() == info.codeWidth && n >= info.firstUserCode;
}

} // namespace normaris
