#pragma once
// Types one clause of the body: a 前文, 項, 号, ① or イ. A clause is one row, or a
// chain of segments whose 結合 runs '1', '2', '3' …; a segment with 改行 starts a
// new line with the level's blank prefix, one without runs on in the same sentence.
//
// The five methods are one routine; what differs between the levels (indent,
// label, prefix of a continued line, templates, colour of the segments) is the
// table in ClauseWriter.cpp.

#include "export/RowCursor.h"
#include "export/Typist.h"

namespace normaris {

// What sets one level's clauses apart; the table of them is in ClauseWriter.cpp.
struct ClauseForm;

class ClauseWriter {
public:
    ClauseWriter(Typist &typist, RowCursor &cursor, bool showFirstParagraphNumber)
        : m_typist(typist), m_cursor(cursor), m_showFirstParagraphNumber(showFirstParagraphNumber) {}

    // Each types the clause at the cursor and leaves the cursor on its last segment.
    void zenbun();
    void kou();
    void gou();
    void maru();
    void iroha();

private:
    void typeClause(const ClauseForm &form);
    void typeSegment(const ClauseForm &form, const CompositionRow &segment);

    Typist &m_typist;
    RowCursor &m_cursor;
    bool m_showFirstParagraphNumber;
};

} // namespace normaris
