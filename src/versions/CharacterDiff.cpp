#include "versions/CharacterDiff.h"

#include <algorithm>
#include <vector>

namespace normaris {

namespace {

// The common prefix and suffix are taken off first: a clause with one changed
// word leaves the search a few characters to look at.
struct Window {
    qsizetype prefix = 0;
    qsizetype suffix = 0;
};

Window commonEnds(const QString &a, const QString &b)
{
    Window w;
    const qsizetype shorter = qMin(a.size(), b.size());
    while (w.prefix < shorter && a[w.prefix] == b[w.prefix])
        ++w.prefix;
    while (w.suffix < shorter - w.prefix && a[a.size() - 1 - w.suffix] == b[b.size() - 1 - w.suffix])
        ++w.suffix;
    return w;
}

// Myers' greedy forward search, keeping the furthest-reaching x of every diagonal
// after each round, then walking the rounds back from the end to mark the edits.
void markEdits(QStringView a, QStringView b, bool *aChanged, bool *bChanged)
{
    const qsizetype n = a.size(), m = b.size();
    if (n == 0 || m == 0) {
        std::fill(aChanged, aChanged + n, true);
        std::fill(bChanged, bChanged + m, true);
        return;
    }
    const qsizetype offset = n + m + 1;
    std::vector<qsizetype> v(2 * offset + 1, 0);
    std::vector<std::vector<qsizetype>> trace;
    qsizetype found = -1;
    for (qsizetype d = 0; d <= n + m && found < 0; ++d) {
        // Round d reads only the diagonals -d .. d of the round before: keep those.
        trace.emplace_back(v.begin() + (offset - d), v.begin() + (offset + d + 1));
        for (qsizetype k = -d; k <= d; k += 2) {
            qsizetype x = (k == -d || (k != d && v[offset + k - 1] < v[offset + k + 1])) ? v[offset + k + 1] : v[offset + k - 1] + 1;
            qsizetype y = x - k;
            while (x < n && y < m && a[x] == b[y]) {
                ++x;
                ++y;
            }
            v[offset + k] = x;
            if (x >= n && y >= m) {
                found = d;
                break;
            }
        }
    }
    // Back from (n, m): each round's step was an insertion (down) or a deletion (right).
    qsizetype x = n, y = m;
    for (qsizetype d = found; d > 0; --d) {
        const std::vector<qsizetype> &before = trace[d];
        const qsizetype k = x - y;
        const auto at = [&](qsizetype diagonal) { return before[diagonal + d]; };
        const bool down = k == -d || (k != d && at(k - 1) < at(k + 1));
        const qsizetype prevK = down ? k + 1 : k - 1;
        const qsizetype prevX = at(prevK);
        const qsizetype prevY = prevX - prevK;
        while (x > prevX && y > prevY) { // the diagonal: common characters
            --x;
            --y;
        }
        if (down)
            bChanged[--y] = true;
        else
            aChanged[--x] = true;
    }
}

// A run of changes with the same character just before it as at its end can be
// read one place earlier: "休[日及び休]暇" is "[休日及び]休暇". Runs are moved as far
// to the front as they go, where a reader expects an inserted phrase to begin.
void slideToFront(QStringView text, QList<bool> &mask)
{
    for (qsizetype end = 0; end < mask.size();) {
        if (!mask[end]) {
            ++end;
            continue;
        }
        qsizetype start = end;
        while (end < mask.size() && mask[end])
            ++end;
        while (start > 0 && !mask[start - 1] && text[start - 1] == text[end - 1]) {
            mask[--start] = true;
            mask[--end] = false;
        }
        ++end;
    }
}

} // namespace

CharacterDiff CharacterDiff::of(const QString &oldText, const QString &newText)
{
    CharacterDiff diff;
    diff.oldChanged = QList<bool>(oldText.size(), false);
    diff.newChanged = QList<bool>(newText.size(), false);
    const Window w = commonEnds(oldText, newText);
    const QStringView a = QStringView(oldText).mid(w.prefix, oldText.size() - w.prefix - w.suffix);
    const QStringView b = QStringView(newText).mid(w.prefix, newText.size() - w.prefix - w.suffix);
    markEdits(a, b, diff.oldChanged.data() + w.prefix, diff.newChanged.data() + w.prefix);
    slideToFront(oldText, diff.oldChanged);
    slideToFront(newText, diff.newChanged);
    return diff;
}

MarkedText markedSpans(const QString &text, const QList<bool> &changed)
{
    QList<bool> mask = changed;
    // A pair of surrogates is one character: changed when either half is.
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i].isHighSurrogate() && text[i + 1].isLowSurrogate() && (mask[i] || mask[i + 1]))
            mask[i] = mask[i + 1] = true;
    }
    for (qsizetype i = 1; i + 1 < mask.size(); ++i) {
        if (!mask[i] && mask[i - 1] && mask[i + 1])
            mask[i] = true;
    }
    MarkedText spans;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (spans.isEmpty() || spans.last().changed != mask[i])
            spans.append({QString(), mask[i]});
        spans.last().text += text[i];
    }
    return spans;
}

} // namespace normaris
