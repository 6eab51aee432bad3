#pragma once
// How the steps on a whole company name it and refuse a name that is not a company.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <QString>
#include <optional>

namespace normaris {

// 『甲』
inline QString quotedName(const QString &name) { return u'『' + name + u'』'; }

// The companies of the layout's store, sorted by name. Throws DbError when the server
// can't be asked.
QStringList companiesOf(const DataLayout &layout);

// A name from the CLI may be anything; a name from a dialog's list passes as well.
// Nothing when name is a company of the layout; else Stopped after saying why under
// title, or Failed after the store's own text when it could not be asked.
std::optional<Outcome> checkKnownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name);

} // namespace normaris
