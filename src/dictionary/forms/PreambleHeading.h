#pragma once
// The heading that both 前文 editors show: the prose style and the document.

#include <QString>

namespace normaris {


struct PreambleHeading {
    QString style;    // 文章形式 of CurBunshoKeishikiCode
    QString document; // the name of CurKiteiCode
    static PreambleHeading current();
};

} // namespace normaris
