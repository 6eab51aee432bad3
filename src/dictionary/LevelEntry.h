#pragma once
// One entry of a level under its parent place, as the level editors list it: a 章 or
// 条 with its name, or a clause (項 to イ～ネ) with its text.

#include <QString>

namespace normaris::dictionary {

struct LevelEntry {
    QString code;
    QString name;         // 章: its title; 条: its title (条); a clause: its first segment as stored
    QString formalName;   // 条: 正式名称; empty at the other levels
    QString text;         // a clause: its segments joined as stored, markers included
    bool standard = true; // below the level's first user code: came with the dictionary
    bool changed = false; // 変更フラグ (of the first row for a clause)
    bool selected = false;
    bool operator==(const LevelEntry &) const = default;
};

} // namespace normaris::dictionary
