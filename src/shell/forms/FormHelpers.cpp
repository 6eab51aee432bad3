#include "shell/forms/FormHelpers.h"

#include "base/AppState.h"
#include "shell/HelpContext.h"
#include "shell/forms/HelpWindow.h"
#include "shell/forms/MessageBoxPrompt.h"

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
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

// Enter on a list acts as the dialog's default button would, and goes no further.
class EnterActs : public QObject {
public:
    EnterActs(QPushButton *button, QObject *parent) : QObject(parent), m_button(button) {}
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        if (m_button->isEnabled() && m_button->isVisible())
            m_button->click();
        return true;
    }

private:
    QPushButton *m_button;
};

// The width of a text of so many bytes, in full-width characters where they fit.
int widthOfBytes(const QWidget *widget, int bytes)
{
    const QFontMetrics metrics = widget->fontMetrics();
    return qMax(metrics.horizontalAdvance(QString(bytes / 2, QChar(0x3042))), metrics.horizontalAdvance(QString(bytes, u'0')));
}

} // namespace

Prompt &uiPrompt()
{
    static MessageBoxPrompt boxes;
    return installedPrompt() ? *installedPrompt() : boxes;
}

void setUiPrompt(Prompt *prompt) { installedPrompt() = prompt; }

namespace {

// The window a form opens over: its parent's, else the main window's.
QWidget *openerOf(QWidget *form)
{
    if (form->parentWidget())
        return form->parentWidget()->window();
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (w != form && w->objectName() == QStringLiteral("frmMain01"))
            return w;
    }
    return nullptr;
}

const char *const kWizardStep = "normarisWizardStep";

bool isWizardStep(const QWidget *w) { return w->property(kWizardStep).toBool(); }

// Places the form when it first shows (its size is known only then), and when it
// closes gives the keyboard back to the control that had it when the form opened,
// in the window beneath.
class PlaceOnShow : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *form = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::Show) {
            QWidget *opener = openerOf(form);
            if (!m_placed && isWizardStep(form) && opener && isWizardStep(opener))
                form->setGeometry(opener->geometry());
            else if (!m_placed)
                centreOver(form, opener);
            m_placed = true;
            QWidget *focus = QApplication::focusWidget();
            m_returnTo = focus && focus->window() != form ? focus : nullptr;
        } else if (event->type() == QEvent::Hide && m_returnTo) {
            // After the closing is done, when nothing else takes the focus.
            QTimer::singleShot(0, m_returnTo, [back = m_returnTo] {
                const QWidget *modal = QApplication::activeModalWidget();
                if (!back || !back->isVisible() || (modal && modal != back->window()))
                    return;
                back->window()->activateWindow();
                back->setFocus(Qt::OtherFocusReason);
            });
        }
        return false;
    }

private:
    bool m_placed = false;
    QPointer<QWidget> m_returnTo;
};

} // namespace

void centreOver(QWidget *form, QWidget *over)
{
    const QScreen *screen = over && over->screen() ? over->screen() : form->screen();
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    // The frame around the form, as the window manager draws it (none before the first show).
    const QSize frame = form->frameGeometry().size() - form->geometry().size();
    const QSize fits = form->size().boundedTo(area.size() - frame);
    if (fits != form->size())
        form->resize(fits);
    QRect place(QPoint(), fits + frame);
    place.moveCenter(over ? over->frameGeometry().center() : area.center());
    place.moveLeft(qBound(area.left(), place.left(), qMax(area.left(), area.right() + 1 - place.width())));
    place.moveTop(qBound(area.top(), place.top(), qMax(area.top(), area.bottom() + 1 - place.height())));
    form->move(place.topLeft());
}

void PlaceForm(QWidget *form)
{
    static const char *const placed = "normarisPlaced";
    if (form->isVisible() || form->property(placed).toBool())
        return;
    form->setProperty(placed, true);
    form->installEventFilter(new PlaceOnShow(form));
}

void placeOverMainWindow(QWidget *form) { PlaceForm(form); }

void markWizardStep(QWidget *step) { step->setProperty(kWizardStep, true); }

void keepRoomWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
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

static std::function<bool(const QString &)> &installedOpener()
{
    static std::function<bool(const QString &)> opener;
    return opener;
}

void setDesktopOpener(std::function<bool(const QString &path)> opener) { installedOpener() = std::move(opener); }

void showBytes(QLineEdit *box, int bytes)
{
    // The frame and the text margins on both sides.
    box->setMinimumWidth(widthOfBytes(box, bytes) + 16);
}

void showBytes(QComboBox *combo, int bytes)
{
    // The frame and the arrow of the list.
    combo->setMinimumWidth(widthOfBytes(combo, bytes) + 40);
}

void actOnListItem(QListWidget *list, QPushButton *button)
{
    list->installEventFilter(new EnterActs(button, list));
    QObject::connect(list, &QListWidget::itemDoubleClicked, button, [button] {
        if (button->isEnabled())
            button->click();
    });
}

bool openWithDesktop(const QString &path)
{
    if (installedOpener())
        return installedOpener()(path);
    if (qEnvironmentVariableIsSet("NORMARIS_NO_OPEN"))
        return true;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void openDocument(const QString &path)
{
    if (!openWithDesktop(path))
        uiPrompt().failure(QStringLiteral("文書「%1」を開くアプリケーションが見つかりません。").arg(path));
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
    HelpWindow::showPage(form, page);
}

} // namespace normaris
