#pragma once
// An output of a finished document: a typist the renderer types into, and what is done
// with what it typed once the document is complete. A .docx, a text record, a PDF and
// the kept version are each one output; DocumentExport types into all the outputs it is
// given at once and completes them in one transaction.
//
// complete() runs inside that transaction, after the whole document was typed. A file
// is written under the temporary name its StagedFiles gives it; DocumentExport renames
// every staged file into place only once the transaction, the version included, has
// committed, and on any failure none remains. An output that writes to the database
// (the version) writes inside the transaction.

#include "base/FileOps.h"
#include "document/Typist.h"

namespace normaris {

class DocumentOutput {
public:
    virtual ~DocumentOutput() = default;
    virtual Typist &typist() = 0;
    // False when the user declined the output (a save dialog closed without a name):
    // the whole step then stops and keeps nothing. Throws Failure.
    virtual bool complete(StagedFiles &files) = 0;
};

// The outputs of one export, in the order they complete.
using DocumentOutputs = QList<DocumentOutput *>;

} // namespace normaris
