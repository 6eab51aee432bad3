#pragma once
// The reference segment (番号, 結合種別 "2"): the places a clause can cite, and the
// reference handed to the segment editor. The targets are the documents of the same
// prose style and their 章, 条, 項, 号, ①～⑳ and イ～ネ, down to the level the user
// wants to cite, and optionally one segment of a split clause. The row of
// 変数テーブル番号 (the next free code of the document, the referring place and segment,
// the target's place and 変換参照■種別) is written by the clause's update, which puts
// ◆code◆ in the segment.

#include "base/CodeAndName.h"
#include "base/Levels.h"
#include "base/Prompt.h"
#include "export/ReferenceRows.h"

#include <QList>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QStringList>

namespace normaris::dictionary {

class SegmentEditor;

// A place a reference points to.
struct ReferenceTarget {
    Level level = Level::Article; // 変換参照■種別: 規程 … イ～ネ
    QString document;             // 変換参照■規程Code
    QStringList codes;            // 章Code … down to the target's own Code
    QString join;                 // 変換参照■結合: one segment of a split clause, or empty
    bool operator==(const ReferenceTarget &) const = default;

    // As the text format writes it: "規程02 条0003 項01 結合2" (the document only
    // when it is another one than from).
    QString describe(const QString &from) const;
};

// The target a row of 変数テーブル番号 names, read from its columns 変換参照■規程Code on.
ReferenceTarget referenceTargetOf(const QSqlRecord &row);

class ReferenceTargets {
public:
    ReferenceTargets(QSqlDatabase db, QString style) : m_db(std::move(db)), m_style(std::move(style)) {}

    // The documents of the style: code and name.
    QList<CodeAndName> documents() const;
    // The entries of level (章 … イ～ネ) of the document under parents (章Code …): code
    // and its name (章, 条) or first text (a clause), a split clause once.
    QList<CodeAndName> entries(const QString &document, Level level, const QStringList &parents) const;
    // The segments of a split clause (結合 and text); empty for a clause of one row.
    QList<CodeAndName> segments(const ReferenceTarget &clause) const;
    // Whether the target stands in this style (and its segment, when one is named).
    bool stands(const ReferenceTarget &target) const;

    // The next free four-digit reference code of the document, past every reference of
    // the document and every one the editor holds but has not written yet.
    QString nextCode(const QString &document, const SegmentEditor *editor = nullptr) const;

    // 参照先の決定: refuses a target that does not stand ("参照先がありません。"); else a
    // new reference with the next free code for segment k of the editor (which becomes a
    // 番号 segment). marker takes ◆code◆.
    Outcome make(Prompt &prompt, SegmentEditor &editor, int k, const ReferenceTarget &target, QString *marker = nullptr) const;

private:
    QSqlDatabase m_db;
    QString m_style;
};

// The references made from a document, in stored order.
inline QList<ReferenceRow> documentReferences(QSqlDatabase db, const QString &document) { return readReferenceRows(db, document); }

} // namespace normaris::dictionary
