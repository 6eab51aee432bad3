#pragma once
// Types one clause of the body: a 前文, 項, 号, ① or イ. A clause is one row, or a
// chain of segments whose 結合 runs '1', '2', '3' …; a segment with 改行 starts a
// new line with the level's blank prefix, one without runs on in the same sentence.
//
// The methods are one routine; what differs between the levels (indent, label,
// prefix of a continued line, templates, colour of the segments) is a table in
// ClauseWriter.cpp. There are two tables: the finished document's, and the
// preview's of a single article, which numbers nothing (● stands for every number)
// and colours by the words' markers alone.

#include "export/RowCursor.h"
#include "document/Typist.h"

namespace normaris {

// What sets one level's clauses apart; the tables of them are in ClauseWriter.cpp.
struct ClauseForm;

class ClauseWriter {
public:
    // The finished document. showFirstParagraphNumber is the option 第１項の数字表示.
    ClauseWriter(Typist &typist, RowCursor &cursor, bool showFirstParagraphNumber);
    // The preview of one article (Wordで確認).
    static ClauseWriter preview(Typist &typist, RowCursor &cursor);

    // Types the clause at the cursor, a 前文 or a clause level's (項 to イ), and leaves
    // the cursor on its last segment. A preview shows an article, so never a 前文.
    void type(Level level);

private:
    ClauseWriter(Typist &typist, RowCursor &cursor, bool showFirstParagraphNumber, const ClauseForm *levels);
    void typeClause(const ClauseForm &form);
    void typeSegment(const ClauseForm &form, const CompositionRow &segment);

    Typist &m_typist;
    RowCursor &m_cursor;
    bool m_showFirstParagraphNumber;
    const ClauseForm *m_levels; // the forms of 項, 号, ① and イ, in that order
};

} // namespace normaris
