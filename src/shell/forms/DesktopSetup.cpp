#include "shell/forms/DesktopSetup.h"

#include "shell/HelpContext.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLibraryInfo>
#include <QTranslator>
#include <QWidget>

namespace normaris {

namespace {

class HelpKey : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_F1)
            return false;
        auto *widget = qobject_cast<QWidget *>(watched);
        if (!widget)
            return false;
        // A message box or a popup over a dialog has no page of its own: the dialog's is meant.
        for (QWidget *w = widget->window(); w; w = w->parentWidget() ? w->parentWidget()->window() : nullptr) {
            if (helpContext(w->objectName()) > 0) {
                showHelp(w);
                return true;
            }
        }
        return false;
    }
};

} // namespace

bool loadJapaneseQtTexts(QApplication &app)
{
    auto *translator = new QTranslator(&app);
    if (!translator->load(QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    QApplication::installTranslator(translator);
    return true;
}

void installHelpKey(QApplication &app) { app.installEventFilter(new HelpKey(&app)); }

void setUpDesktopProgram(QApplication &app)
{
    // No display name: the platform would append it to every title, and a narrow
    // box would show the program's name instead of its own title.
    QApplication::setApplicationName(QStringLiteral("normaris"));
    loadJapaneseQtTexts(app);
    installHelpKey(app);
}

} // namespace normaris
