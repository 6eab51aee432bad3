#pragma once
// What a foreign file gives, shown in a message: at most its first characters, every
// unprintable one as "?", so that a file that is no text at all never echoes its bytes.

#include <QString>

namespace normaris {

inline QString printableExcerpt(const QString &text, qsizetype length)
{
    QString shown = text.left(length);
    for (QChar &c : shown) {
        if (!c.isPrint() || c == QChar::ReplacementCharacter)
            c = u'?';
    }
    return text.size() > length ? shown + QStringLiteral("…") : shown;
}

} // namespace normaris
