#include "shell/forms/FormHelpers.h"

#include "base/AppState.h"
#include "shell/HelpContext.h"
#include "shell/forms/MessageBoxPrompt.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QUrl>

namespace normaris {

namespace {

Prompt *&installedPrompt()
{
    static Prompt *prompt = nullptr;
    return prompt;
}

// Enter moves to the next control, like Tab; the key itself goes nowhere.
class EnterAsTab : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *box = qobject_cast<QLineEdit *>(watched);
        if (!box)
            return false;
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                // Let the box's own handlers see the key first (editingFinished, returnPressed).
                emit box->returnPressed();
                // Then move on as Tab would.
                QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
                QCoreApplication::sendEvent(box, &tab);
                return true;
            }
        } else if (event->type() == QEvent::FocusIn) {
            // After the focus event the box would reset its selection; select afterwards.
            QTimer::singleShot(0, box, [box] { SelectAllText(box); });
        }
        return false;
    }
};

} // namespace

Prompt &uiPrompt()
{
    static MessageBoxPrompt boxes;
    return installedPrompt() ? *installedPrompt() : boxes;
}

void setUiPrompt(Prompt *prompt) { installedPrompt() = prompt; }

void PlaceForm(QWidget *form)
{
    const QScreen *screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->geometry();
    const QSize size = form->frameGeometry().size().expandedTo(form->size());
    form->move(area.left() + (area.width() - size.width()) / 3, area.top() + (area.height() - size.height()) / 3);
}

void placeOverMainWindow(QWidget *form)
{
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (w->objectName() == QStringLiteral("frmMain01")) {
            form->move(w->pos());
            return;
        }
    }
    PlaceForm(form);
}

QPushButton *makeButton(QWidget *parent, const QString &objectName, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(objectName);
    return b;
}

void SelectAllText(QLineEdit *box) { box->setSelection(0, int(box->text().size())); }

void installTextBoxBehaviour(QWidget *form)
{
    auto *filter = new EnterAsTab(form);
    for (QLineEdit *box : form->findChildren<QLineEdit *>())
        box->installEventFilter(filter);
}

bool openWithDesktop(const QString &path)
{
    if (qEnvironmentVariableIsSet("NORMARIS_NO_OPEN"))
        return true;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void showHelp(QWidget *form)
{
    const QString appPath = AppState::instance().AppPath;
    QDir::setCurrent(appPath);
    const QString page = helpPagePath(appPath, helpContext(form->objectName()));
    if (!QFileInfo(page).isFile()) {
        uiPrompt().failure(QStringLiteral("ヘルプファイル「%1」が見つかりません。").arg(page));
        return;
    }
    if (!openWithDesktop(page))
        uiPrompt().failure(QStringLiteral("ヘルプを表示できません。ブラウザを確認してください。"));
}

} // namespace normaris
