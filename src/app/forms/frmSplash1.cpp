#include "app/forms/frmSplash1.h"

#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QVBoxLayout>

namespace normaris {

frmSplash1::frmSplash1(QWidget *parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("frmSplash1"));
    setFixedSize(480, 260);
    setStyleSheet(QStringLiteral("frmSplash1, QWidget#frmSplash1 { background: #1f3b5a; }"
                                 "QLabel { color: white; }"));
    setAttribute(Qt::WA_StyledBackground);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 28);
    const auto label = [this, layout](const QString &name, const QString &text, int points, Qt::Alignment align) {
        auto *l = new QLabel(text, this);
        l->setObjectName(name);
        QFont f = l->font();
        f.setPointSize(points);
        l->setFont(f);
        l->setAlignment(align);
        layout->addWidget(l);
    };
    label(QStringLiteral("lblCompanyProduct"), QStringLiteral("ハルモニアワークス帯"), 12, Qt::AlignLeft);
    layout->addStretch();
    label(QStringLiteral("lblProductName"), QStringLiteral("ノルマリス"), 30, Qt::AlignCenter);
    layout->addStretch();
    label(QStringLiteral("lblPlatformFor"), QStringLiteral("for"), 11, Qt::AlignRight);
    label(QStringLiteral("lblPlatform"), QStringLiteral("Windows"), 16, Qt::AlignRight);
}

void frmSplash1::showFor(int milliseconds)
{
    PlaceForm(this);
    show();
    repaint();
    BusyCursor busy;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() <= milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    close();
}

} // namespace normaris
