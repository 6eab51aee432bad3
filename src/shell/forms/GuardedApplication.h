#pragma once
// The desktop program's application object. Every handler of every dialog runs inside
// notify(): a failure that a handler did not catch itself is shown as its own
// description in a plain box, and the program goes on, with the form still open.

#include <QApplication>

namespace normaris {

class GuardedApplication : public QApplication {
    Q_OBJECT
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override;
};

} // namespace normaris
