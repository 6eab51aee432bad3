#pragma once
// The splash screen shown for two seconds at start.

#include <QWidget>

namespace normaris {

class frmSplash1 : public QWidget {
    Q_OBJECT
public:
    explicit frmSplash1(QWidget *parent = nullptr);
    // Shows the screen, keeps it up for the given time, then closes it.
    void showFor(int milliseconds);
};

} // namespace normaris
