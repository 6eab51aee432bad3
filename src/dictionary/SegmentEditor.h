#pragma once
// The segment editor of a clause: its chain of rows loaded into fifteen segment
// records, the change of a segment's kind, and the update that writes the chain anew.
//
// The editor keeps what it loaded: the kinds as they were when it opened (never
// refreshed, so that a second update compares against the opening kinds and a refusal
// goes back to them), and the values, words and line breaks of the last save. The
// work tables 変数テーブル語句更新前 (the words the clause used at opening) and
// …更新後 (the words it uses now) tell the update which word rows leave the clause.

#include "base/Prompt.h"
#include "dictionary/ClausePlace.h"
#include "dictionary/ReferenceTargets.h"
#include "dictionary/SegmentRecord.h"

#include <QSqlDatabase>
#include <array>

namespace normaris::dictionary {

class SegmentEditor {
public:
    static constexpr int kSegments = 15;
    using Segments = std::array<SegmentRecord, kSegments>;

    // documentKind is the document's 文章種別 (CurBunshoShubetsu).
    SegmentEditor(QSqlDatabase db, ClausePlace place, QString documentKind);

    // Empties the work tables and loads the clause; false (after the failure's own
    // message) when the loading failed, and the editor then holds what it read so far.
    bool open(Prompt &prompt);

    const ClausePlace &place() const { return m_place; }
    const QString &documentKind() const { return m_documentKind; }
    const Segments &segments() const { return m_segments; }
    Segments &segments() { return m_segments; }
    const std::array<QString, kSegments> &loadedKinds() const { return m_loadedKind; }
    int rowCount() const { return m_rowCount; }

    // The change of segment k's kind, after the question "処理する種別を変更しますか？".
    // False when nothing changed (the same kind, or the answer no).
    bool changeKind(Prompt &prompt, int k, const QString &kind);
    // The same change without the question, for a caller that sets the segments as a whole.
    void setKind(int k, const QString &kind);
    // A word for 語句 segments, as a chooser of words would leave it in …更新後.
    void provideWord(const QString &code, const QString &word, const QString &caption);
    // A reference for 番号 segments, as the target picker leaves it in 変数テーブル番号更新後;
    // the clause's update writes its row with the clause's place and the segment's 結合.
    void provideReference(const QString &code, const ReferenceTarget &target);
    // The codes of the words and references handed to the editor (…更新後), for the
    // next free codes.
    QStringList providedWordCodes() const;
    QStringList providedReferenceCodes() const;
    // The value chosen for segment k in the standard phrase chooser.
    void setChosenValue(int k, const QString &code, const QString &word);

    // 更新: the use protections, then the chain written anew in one transaction, the
    // words and references that left the clause deleted, those it holds written at its
    // place, the editor reloaded and the word positions set. A refusal puts the segments
    // back to the last good state.
    //
    // Below the 前文 the protections are those of every clause level: while the clause is
    // composed, no change of a segment's kind or of the count, and in a standard clause
    // (below the level's first user code) no marker appearing, vanishing or moving
    // ("使用中のデータがあるため、埋込記号の移動・削除はできません。"). A user's clause may hold
    // no marker without its word or reference row (the text check names the marker). A 語句
    // or 番号 segment whose word or reference was not given is refused ("更新エラー"), and
    // the whole update with it.
    Outcome update(Prompt &prompt);
    // Back to the kinds of the opening with the values of the last save.
    void restoreLastGood();

    bool isInUse() const;

private:
    void load(bool fillWorkTables);
    // False after "更新エラー" when the segment's word or reference is not there to write.
    bool writeRow(Prompt &prompt, int k, int &joinCounter, bool changed);
    void writeWordRow(const QString &code, const QString &word, const QString &join, const QString &caption);
    bool writeReferenceRow(const QString &code, const QString &join);
    void writeInlineMarkerRows();
    void sweepMarkerRows();
    bool checkMarkers(Prompt &prompt, bool inUse) const;
    void setWordPositions();

    QSqlDatabase m_db;
    ClausePlace m_place;
    QString m_documentKind;
    Segments m_segments;
    std::array<QString, kSegments> m_loadedKind;
    std::array<QString, kSegments> m_loadedValue;
    std::array<QString, kSegments> m_loadedWord;
    std::array<bool, kSegments> m_loadedBreak{};
    std::array<bool, kSegments> m_loadedChanged{}; // 変更フラグ of each row as last read
    bool m_loadedSelectFlag = false;
    int m_rowCount = 0;
};

} // namespace normaris::dictionary
