#pragma once
// Help pages: one HTML page per context number under <AppPath>/help/.

#include <QString>

namespace normaris {

// The context number of a dialog's help page; 0 for a dialog that has none.
int helpContext(const QString &formName);
// The page for a context: <AppPath>/help/<context>.html.
QString helpPagePath(const QString &appPath, int context);

} // namespace normaris
