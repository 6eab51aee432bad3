#pragma once
// The body of a document: every row of 作成データ in order, typed by its level.
// The same for a set of rules and for an agreement, but for the wording of the
// lone-item line.

#include "export/ClauseWriter.h"
#include "export/LoneItems.h"

namespace normaris {

class DocumentBody {
public:
    DocumentBody(Typist &typist, const QList<CompositionRow> &rows, bool showFirstParagraphNumber, bool agreement);
    void type();

private:
    void typeRow(const CompositionRow &row);
    void typeTitle(const CompositionRow &row);
    void typePreamble(const CompositionRow &row);
    void typeChapter(const CompositionRow &row);
    void typeArticle(const CompositionRow &row);
    void typeClause(const CompositionRow &row);
    // After a 号, ① or イ: the red line when its list has this entry alone. The
    // parent is read from the last segment typed, where the cursor stands.
    void warnIfAlone(Level level);

    Typist &m_typist;
    RowCursor m_cursor;
    ClauseWriter m_writer;
    LoneItems m_loneItems;
    bool m_agreement;
};

} // namespace normaris
