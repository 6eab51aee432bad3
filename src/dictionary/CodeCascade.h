#pragma once
// A document's Code reaches through the whole data file. Renumbering a document of
// the user's own moves every row that hangs on it to the new code; deleting one
// removes them. Both run inside the caller's transaction.
//
// The word and reference tables have no prose style: a row of either belongs to the
// current style only when the marker stands in the current style's clause at its
// place, so only rows of the clause levels 項 to イ～ネ are visited. Rows of the levels
// 規程, 前文, 章 and 条 keep the old code on a renumbering and stay on a delete.

#include <QSqlDatabase>
#include <QString>

namespace normaris::dictionary {

class CodeCascade {
public:
    CodeCascade(QSqlDatabase db, QString style) : m_db(std::move(db)), m_style(std::move(style)) {}

    // Moves the rows of document oldCode to newCode (the 規程 row itself is the caller's).
    void changeCode(const QString &oldCode, const QString &newCode);
    // Deletes the rows that hang on the document (the 規程 row itself is the caller's).
    void deleteRows(const QString &code);
    // Whether a clause of another place refers into the document. The flag is one for
    // all reference rows and all four clause tables, and the last row that touched it
    // decides; a row of the document's own clears it.
    bool referenceBlocked(const QString &code);

private:
    QSqlDatabase m_db;
    QString m_style;
};

} // namespace normaris::dictionary
