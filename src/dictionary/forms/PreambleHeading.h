#pragma once
// The heading that both 前文 editors show: the prose style and the document.

#include <QString>

class QBoxLayout;
class QWidget;

namespace normaris {

struct PreambleHeading {
    QString style;    // 文章形式 of CurBunshoKeishikiCode
    QString document; // the name of CurKiteiCode
    static PreambleHeading current();
};

// Adds the current heading to form's layout: the captions, and the two values as
// Label1_0 and Label1_1.
void addPreambleHeading(QWidget *form, QBoxLayout *layout);

} // namespace normaris
