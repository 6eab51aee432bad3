#pragma once
// Driving dialogs offscreen as a user would, by the objectName of their controls:
// find a control, click a button, type into a box, and play a flow of modal dialogs
// one step each.

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>

namespace normaris::test {

// The control of the form by its name; a missing one ends the test run.
template<class T>
T *find(QWidget *form, const QString &name)
{
    auto *w = form->findChild<T *>(name);
    if (!w)
        qFatal("%s has no %s", qPrintable(form->objectName()), qPrintable(name));
    return w;
}

inline void click(QWidget *form, const QString &button) { find<QAbstractButton>(form, button)->click(); }
inline void type(QWidget *form, const QString &box, const QString &text) { find<QLineEdit>(form, box)->setText(text); }

// One step of a flow: the modal form expected next, and what the user does on it.
struct Step {
    QString form;
    std::function<void(QWidget *)> act;
};

// Runs start, which opens the first modal form, and plays each step on the modal form
// that comes up next, in order; returns how many steps were played. A step runs from a
// timer of its own, so that a step that opens a further modal form leaves the watch
// free to play the next one. A form played before that comes back as the one above it
// closes is waited on, unless the next step names it (a wizard's 戻る). A form out of
// turn, or one left open for twenty seconds, ends the flow.
inline int play(const std::function<void()> &start, const QList<Step> &steps)
{
    int played = 0;
    QPointer<QWidget> last;
    QList<QPointer<QWidget>> seen; // the forms played so far, which come back as their children close
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto *form = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!form)
            return;
        const bool named = played < steps.size() && form->objectName() == steps[played].form;
        const bool waitedOn = seen.contains(form) && (form == last || !named);
        if (waitedOn && clock.elapsed() < 20000)
            return;
        if (waitedOn || !named || QTest::currentTestFailed()) {
            qWarning("unexpected form %s at step %d", qPrintable(form->objectName()), played);
            form->done(QDialog::Rejected); // without a hand-over: the flow ends
            return;
        }
        last = form;
        seen << form;
        clock.restart();
        const auto act = steps[played++].act;
        QTimer::singleShot(0, form, [act, form] { act(form); });
    });
    timer.start();
    start();
    return played;
}

// Acts on the modal dialog named name as soon as it is up.
inline void whenModal(const QString &name, std::function<void(QWidget *)> act)
{
    auto *timer = new QTimer;
    timer->setInterval(5);
    QObject::connect(timer, &QTimer::timeout, [timer, name, act] {
        QWidget *w = QApplication::activeModalWidget();
        if (!w || w->objectName() != name)
            return;
        timer->stop();
        timer->deleteLater();
        act(w);
    });
    timer->start();
}

} // namespace normaris::test
