#pragma once
// The four lists of what stands variable in a composed document: the basic words
// (☆ markers for the company name, the employee's name and the date), the embedded
// words, the references and the templates. Each is a scan of the working tables into
// its work table in the data file, then a one-sheet workbook.

#include "base/Prompt.h"

#include <QSqlDatabase>

#include <functional>

namespace normaris {

enum class ListKind { BasicWords, EmbeddedWords, References, Templates };

class ExcelLists {
public:
    ExcelLists(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Shows a written workbook to the user; false when nothing could open it.
    using Show = std::function<bool(const QString &path)>;

    // Writes the list of the document to path and shows it with show, when one is
    // given, before "処理完了": the message comes when the work is there. Done when
    // written and shown; Stopped when the document has no rows or nothing was found;
    // Failed when it could not be written or shown (the user has been told).
    Outcome write(ListKind kind, const QString &style, const QString &document, const QString &path, const Show &show = {});

private:
    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
