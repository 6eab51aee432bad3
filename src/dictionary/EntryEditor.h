#pragma once
// The entries of one level (章, 条, 項, 号, ①～⑳, イ～ネ) under one parent place, and
// the steps of its record form: add, edit, code change and delete. One routine serves
// every level: what differs (table, key columns, code width, user range, name columns)
// is read from the level table.
//
// Codes below the level's first user code came with the dictionary: their text may be
// edited (under the protections of the segment editor) but their code never changes
// and they are never deleted. The user's codes run from the first user code to the
// last of the code's width (章 and the clauses 70～99, 条 7000～9999).
//
// Every step that writes runs in one transaction and takes its checks inside it.

#include "base/Levels.h"
#include "base/Prompt.h"
#include "dictionary/ClausePlace.h"
#include "dictionary/LevelEntry.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>
#include <optional>

namespace normaris::dictionary {

class SegmentEditor;

class EntryEditor {
public:
    enum class Mode { Add, Edit };

    // parents: the codes from 章 down to the parent of the level (none for 章, the
    // 章Code for 条, 章Code and 条Code for 項 …).
    EntryEditor(QSqlDatabase db, QString style, QString document, Level level, QStringList parents);

    Level level() const { return m_level; }
    const QString &style() const { return m_style; }
    const QString &document() const { return m_document; }
    const QStringList &parents() const { return m_parents; }
    // The document's 文章種別, which the segment editor needs.
    QString documentKind() const;
    // Whether the document and every parent entry stand in this prose style.
    bool parentStands() const;

    // The entries under the parent in code order, a split clause once.
    QList<LevelEntry> entries() const;
    std::optional<LevelEntry> entry(const QString &code) const;
    // The place of the entry of that code under the parent (for a SegmentEditor).
    ClausePlace placeOf(const QString &code) const;
    // Whether the entry, or anything below it, stands in a composed document.
    bool isComposed(const QString &code) const;

    // The check of the code field, as the document master's: a short code is padded with
    // zeros to the level's width ("7" becomes "07", for a 条 "0007"), digits only, a new
    // code in the user range, a standard code unchanged (code goes back to savedCode),
    // no duplicate under the parent.
    bool checkCode(Prompt &prompt, QString &code, Mode mode, const QString &savedCode) const;
    // The checks of a 章 or 条 name and of a 条's formal name (80 bytes, no quotes, no
    // control characters, not empty).
    static bool checkName(Prompt &prompt, const QString &name);
    static bool checkFormalName(Prompt &prompt, const QString &formalName);

    // 更新 of a 章 or 条: the field checks and, in one transaction, the new row (Add) or
    // the code change with everything that hangs on the entry and the names (Edit).
    // saved is the entry as the edit found it (ignored when adding). An empty formal
    // name of a 条 takes its name.
    Outcome updateHeading(Prompt &prompt, Mode mode, const LevelEntry &saved, const LevelEntry &entered);

    // 更新 of a new clause: the code checks and the segments of editor (opened on
    // placeOf(code)) written, in one transaction. A clause needs one segment at least.
    Outcome addClause(Prompt &prompt, SegmentEditor &editor);

    // A new code for a user's entry at any level: the rows below it, its words, the
    // references that stand in it or point at it, and the composition rows follow.
    Outcome changeCode(Prompt &prompt, const QString &oldCode, QString newCode);

    // 更新 of an edited clause: its segments written by editor (opened on the clause's
    // place) and, when newCode differs from that place's code, the code change, in one
    // transaction: a refusal or failure of either keeps neither.
    Outcome updateClause(Prompt &prompt, SegmentEditor &editor, QString newCode);

    // 削除: refused for a standard entry ("ユーザー追加データ以外は削除できません。"),
    // while it or anything below it is composed, or while a clause outside it cites
    // something inside it; then the question, then the entry with everything below it,
    // its words and references, in one transaction.
    Outcome remove(Prompt &prompt, const QString &code);

private:
    QSqlDatabase m_db;
    QString m_style;
    QString m_document;
    Level m_level;
    QStringList m_parents;
};

} // namespace normaris::dictionary
