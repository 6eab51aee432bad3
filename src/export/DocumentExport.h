#pragma once
// データをWordへ送る and its PDF: a finished document rendered once into every output
// the caller chose (the .docx, its text record, its PDF, the version kept of it), and
// completed in one transaction.

#include "document/DocumentOutput.h"
#include "export/DocumentRenderer.h"

namespace normaris {

class DocumentExport {
public:
    DocumentExport(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Renders the document into every output, then completes them in one transaction:
    // the files come into place and the version is kept together once it has committed,
    // or none of them. Stopped after a check's message, or when an output was declined,
    // with nothing written; Failed after the failure's own text, with nothing written.
    Outcome write(const QString &style, const QString &document, const RenderOptions &options, const DocumentOutputs &outputs);

    // A new file in the temporary folder, named after the document's code.
    static QString temporaryPath(const QString &document);

private:
    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
