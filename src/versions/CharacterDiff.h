#pragma once
// Which characters of two texts differ: the shortest edit script between them
// (Myers' O((N+M)D) algorithm, in linear space for the common case of small
// changes), read as two masks. A character that belongs to no common
// subsequence is changed: removed from the old text or added to the new one.

#include <QList>
#include <QString>

namespace normaris {

struct CharacterDiff {
    QList<bool> oldChanged; // one per UTF-16 unit of the old text
    QList<bool> newChanged; // one per UTF-16 unit of the new text

    static CharacterDiff of(const QString &oldText, const QString &newText);
};

// A text cut into runs that are all changed or all unchanged.
struct MarkedSpan {
    QString text;
    bool changed = false;
    bool operator==(const MarkedSpan &) const = default;
};
using MarkedText = QList<MarkedSpan>;

// The runs of text by the mask. A surrogate pair is never cut in two, and an
// unchanged gap of a single character between two changes is taken into the change,
// which reads better than a word underlined in pieces.
MarkedText markedSpans(const QString &text, const QList<bool> &changed);

} // namespace normaris
