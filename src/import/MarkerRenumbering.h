#pragma once
// コードを振り直して取込: when the only conflict of an import is that the current
// company's document already uses some of the word or reference codes that the entry's
// text uses (both companies gave the next free code to a word of their own), each
// such code of the source gets the next free code of the document, and the copied
// clauses' markers are rewritten to it. The words and references keep what they say.

#include "import/SourceEntry.h"

#include <QHash>
#include <optional>

namespace normaris {

// Whether an import keeps the source's word and reference codes (and refuses when
// the document has them already) or gives the conflicting ones new codes.
enum class MarkerCodes { Keep, Renumber };

class MarkerRenumbering {
public:
    // The new codes for the entry's conflicting codes, table by table; nullopt when the
    // document has no free four-digit code left for one of them. Empty when nothing conflicts.
    static std::optional<MarkerRenumbering> plan(QSqlDatabase target, const SourceEntry &entry);

    bool isEmpty() const;
    // The code a source row of the table takes in the current company.
    QString code(const VariableTable &table, const QString &sourceCode) const;
    // The text with every renumbered marker rewritten.
    QString rewrite(const QString &text) const;
    // "埋込語句のCode：0120→0121", one line per renumbered code.
    QStringList changes() const;

private:
    // Per table of kVariableTables: the source's code and the current company's.
    std::array<QList<std::pair<QString, QString>>, kVariableTables.size()> m_codes;
};

} // namespace normaris
