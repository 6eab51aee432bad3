#include "shell/forms/GuardedApplication.h"

#include "shell/forms/FormHelpers.h"

#include <exception>

namespace normaris {

bool GuardedApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &e) {
        // A busy pointer left by the failed handler would outlive it.
        while (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
        uiPrompt().failure(QString::fromUtf8(e.what()));
    } catch (...) {
        while (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
        uiPrompt().failure(QStringLiteral("処理中にエラーが発生しました。"));
    }
    return false;
}

} // namespace normaris
