#pragma once
// The test of the values an import would write: a source row may hold what the
// current company's own field checks would never let in (a text over its byte
// limit, control characters, a code that is not digits). Such a row stops the
// import before anything is written, with a message that names the row.

#include "import/SourceEntry.h"
#include "base/Prompt.h"

namespace normaris {

// True when every value to be copied for the entry passes; otherwise the refusal
// has been shown. Reads the rows through entry.
bool sourceValuesAcceptable(const SourceEntry &entry, Prompt &prompt);

// Why one value of the column can't be written; empty when it can. Exposed for tests.
QString valueRefusal(const QString &table, const QString &column, const QVariant &value);

} // namespace normaris
