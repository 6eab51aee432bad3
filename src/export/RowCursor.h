#pragma once
// The place of the typing among a document's rows. The typing methods of a clause
// move it over the segments they consume and leave it on the last of them, so that
// the body loop's own step lands on the first row of the next clause.

#include "rulebase/CompositionRow.h"

namespace normaris {

class RowCursor {
public:
    explicit RowCursor(const QList<CompositionRow> &rows) : m_rows(rows) {}

    bool atEnd() const { return m_at >= m_rows.size(); }
    const CompositionRow &row() const { return m_rows.at(m_at); }
    // The row after the current one; null on the last row.
    const CompositionRow *next() const { return m_at + 1 < m_rows.size() ? &m_rows.at(m_at + 1) : nullptr; }
    void advance() { ++m_at; }

private:
    const QList<CompositionRow> &m_rows;
    qsizetype m_at = 0;
};

} // namespace normaris
