#pragma once
// The editor of a clause of a standard document (code below 70): up to seven plain
// segments with the markers ★nnnn★ and ☆nnnn☆ inline in the text. While the clause is
// in use, the number of segments and the place of the markers are protected.

#include "base/Prompt.h"
#include "dictionary/ClausePlace.h"

#include <QSqlDatabase>
#include <array>

namespace normaris::dictionary {

class InlineSegmentEditor {
public:
    static constexpr int kSegments = 7;
    using Texts = std::array<QString, kSegments>;
    // breaks[k-1] is the line break before segment k (the gap above it).
    using Breaks = std::array<bool, kSegments - 1>;

    InlineSegmentEditor(QSqlDatabase db, ClausePlace place, QString documentKind);

    // Reads the first seven rows of the clause; rows past them are not read.
    void open();
    Texts texts;
    Breaks breaks {};
    const Texts &loadedTexts() const { return m_loadedValue; }
    bool selectFlag() const { return m_loadedSelectFlag; }
    int rowCount() const { return m_rowCount; }

    // 更新: the use protections and the rows written anew in one transaction, then the
    // word positions. A refusal puts the loaded texts back (modoshi).
    Outcome update(Prompt &prompt);
    // modoshi: the texts as loaded or last saved.
    void restoreTexts() { texts = m_loadedValue; }

private:
    void remember();

    QSqlDatabase m_db;
    ClausePlace m_place;
    QString m_documentKind;
    Texts m_loadedValue;
    std::array<bool, kSegments> m_loadedStar {};
    std::array<bool, kSegments> m_loadedWhiteStar {};
    std::array<bool, kSegments> m_loadedChanged {}; // 変更フラグ of each row as read
    bool m_loadedSelectFlag = false;
    int m_rowCount = 0;
};

} // namespace normaris::dictionary
