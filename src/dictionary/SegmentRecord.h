#pragma once
// One segment of a clause: a row of its chain of rows (結合 1, 2, 3 … or a lone "0").
// A segment is free text, or stands for a word (★nnnn★), a reference to another
// clause (◆nnnn◆) or a company setting (☆nnnn☆) that is filled in at output time;
// only the kind column 結合種別 says how the row is read.

#include <QString>

namespace normaris::dictionary {

namespace SegmentKind {
inline const QString Text = QStringLiteral("0");      // 文章
inline const QString Word = QStringLiteral("1");      // 語句
inline const QString Reference = QStringLiteral("2"); // 番号: a reference ◆nnnn◆
inline const QString BasicWord = QStringLiteral("3"); // 基本語句
} // namespace SegmentKind

struct SegmentRecord {
    QString kind = SegmentKind::Text;
    QString text;           // the free text of a 文章 segment (Text1)
    QString code;           // the code of a 語句, 番号 or 基本語句 segment (Label8)
    QString word;           // the word of a 語句 segment (Label6); the target of a 番号 one
    QString templateCode;   // テンプレート of a clause row below 条 (empty or "0": none)
    bool hasValue = false;  // the mark "既" (true) or "未" (false) of a 語句 or 基本語句
    bool lineBreak = false; // 改行 before the segment (Check1 of the gap above it)

    bool isEmpty() const { return text.isEmpty() && code.isEmpty(); }
    bool operator==(const SegmentRecord &) const = default;
};

// The stored text of a 語句, 番号 or 基本語句 segment, and the code read back from one
// (characters 2 to 5, whatever stands there).
inline QString wordMarker(const QString &code) { return QStringLiteral("★") + code + QStringLiteral("★"); }
inline QString basicWordMarker(const QString &code) { return QStringLiteral("☆") + code + QStringLiteral("☆"); }
inline QString referenceMarker(const QString &code) { return QStringLiteral("◆") + code + QStringLiteral("◆"); }
inline QString markerCode(const QString &stored) { return stored.mid(1, 4); }

} // namespace normaris::dictionary
