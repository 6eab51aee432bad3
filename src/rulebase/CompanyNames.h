#pragma once
// How the steps on a whole company name it and refuse a name that is not a company.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <QString>

namespace normaris {

// 『甲』
inline QString quotedName(const QString &name) { return u'『' + name + u'』'; }

// The companies of the layout's store, sorted by name. Throws DbError when the server
// can't be asked.
QStringList companiesOf(const DataLayout &layout);

// A name from the CLI may be anything; a name from a dialog's list passes as well.
// True, after saying why under title, when name is no company of the layout.
bool refuseUnknownCompany(Prompt &prompt, const DataLayout &layout, const QString &title, const QString &name);

} // namespace normaris
