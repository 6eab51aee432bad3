#include "shell/forms/MessageBoxPrompt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace normaris {

namespace {

QMessageBox::Icon boxIcon(Prompt::Icon icon)
{
    switch (icon) {
    case Prompt::Icon::Information: return QMessageBox::Information;
    case Prompt::Icon::Warning: return QMessageBox::Warning;
    case Prompt::Icon::Error: return QMessageBox::Critical;
    case Prompt::Icon::None: break;
    }
    return QMessageBox::NoIcon;
}

// A box must show the normal pointer even in the middle of long work.
class NormalPointer {
public:
    NormalPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~NormalPointer() { QApplication::restoreOverrideCursor(); }
};

} // namespace

void MessageBoxPrompt::message(Icon icon, const QString &title, const QString &text)
{
    NormalPointer pointer;
    QMessageBox box(boxIcon(icon), title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.exec();
}

bool MessageBoxPrompt::question(const QString &title, const QString &text)
{
    NormalPointer pointer;
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box.button(QMessageBox::Yes)->setText(QStringLiteral("はい(&Y)"));
    box.button(QMessageBox::No)->setText(QStringLiteral("いいえ(&N)"));
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

} // namespace normaris
