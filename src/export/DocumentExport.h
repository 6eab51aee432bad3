#pragma once
// データをWordへ送る: a finished document written as a .docx file, for the user to
// open, finish and save where they like. The program never keeps the file.

#include "export/DocumentRenderer.h"

namespace normaris {

// A further output typed with the document, such as its PDF, and written after it.
class ExtraOutput {
public:
    virtual ~ExtraOutput() = default;
    virtual Typist &typist() = 0;
    virtual void save() = 0; // throws Failure
};

class DocumentExport {
public:
    DocumentExport(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Renders the document into docxPath (none when empty), its text record into
    // textPath when one is given, and into extra. A whole set of rules or agreement is
    // then kept as a version of the document (VersionStore), unless it is the same as
    // the last one. Stopped after a check's message, with nothing written. Failed after
    // the failure's own text; what was typed up to then is written all the same.
    Outcome write(const QString &style, const QString &document, const RenderOptions &options, const QString &docxPath,
                  const QString &textPath = {}, ExtraOutput *extra = nullptr);

    // A new file in the temporary folder, named after the document's code.
    static QString temporaryPath(const QString &document);

private:
    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
