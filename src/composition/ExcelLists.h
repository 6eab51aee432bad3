#pragma once
// The four lists of what stands variable in a composed document: the basic words
// (☆ markers for the company name, the employee's name and the date), the embedded
// words, the references and the templates. Each is a scan of the working tables into
// its work table in the data file, then a one-sheet workbook.

#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

enum class ListKind { BasicWords, EmbeddedWords, References, Templates };

class ExcelLists {
public:
    ExcelLists(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Writes the list of the document to path. Done when written; Stopped when the
    // document has no rows or nothing was found (the user has been told).
    Outcome write(ListKind kind, const QString &style, const QString &document, const QString &path);

private:
    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
