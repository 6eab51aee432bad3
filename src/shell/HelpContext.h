#pragma once
// Help pages: one HTML page per context number under <AppPath>/help/.

#include <QHash>
#include <QString>

namespace normaris {

// Every dialog with a help page, and its context number.
const QHash<QString, int> &helpContexts();
// The context number of a dialog's help page; 0 for a dialog that has none.
int helpContext(const QString &formName);
// The page for a context: <AppPath>/help/<context>.html.
QString helpPagePath(const QString &appPath, int context);

} // namespace normaris
