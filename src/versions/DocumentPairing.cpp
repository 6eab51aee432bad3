#include "versions/DocumentPairing.h"

#include "versions/VersionComparison.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <vector>

namespace normaris {

namespace {

// Below this similarity two articles are not taken for one in the order of the
// documents; across it (a moved chapter) they must be closer.
constexpr double kInOrder = 0.35;
constexpr double kAcross = 0.45;
// How far from the diagonal the ordered pairing looks, in articles.
constexpr int kBand = 60;

struct Article {
    QString code;
    QString label;
    QString heading;
    QSet<quint32> captionGrams;
    QSet<quint32> textGrams;
};

QSet<quint32> bigrams(const QString &text)
{
    QSet<quint32> grams;
    for (qsizetype i = 0; i + 1 < text.size(); ++i)
        grams.insert(quint32(text[i].unicode()) << 16 | text[i + 1].unicode());
    if (text.size() == 1)
        grams.insert(text[0].unicode());
    return grams;
}

double dice(const QSet<quint32> &a, const QSet<quint32> &b)
{
    if (a.isEmpty() || b.isEmpty())
        return 0;
    const QSet<quint32> &small = a.size() < b.size() ? a : b;
    const QSet<quint32> &large = a.size() < b.size() ? b : a;
    qsizetype common = 0;
    for (quint32 g : small)
        common += large.contains(g) ? 1 : 0;
    return 2.0 * double(common) / double(a.size() + b.size());
}

double similarity(const Article &a, const Article &b)
{
    return 0.5 * dice(a.captionGrams, b.captionGrams) + 0.5 * dice(a.textGrams, b.textGrams);
}

QList<Article> articlesOf(const Version &v)
{
    QList<Article> articles;
    QHash<QString, QString> texts;
    for (const PrintedRow &row : v.rows) {
        if (row.level == Level::Article) {
            Article a;
            a.code = row.codes[1];
            a.label = row.label;
            a.heading = row.text;
            a.captionGrams = bigrams(QString(row.text).remove(u'（').remove(u'）'));
            articles << a;
        } else if (levelInfo(row.level).placeDepth > 2 && !row.codes[1].isEmpty()) {
            texts[row.codes[1]] += row.text;
        }
    }
    for (Article &a : articles)
        a.textGrams = bigrams(texts.value(a.code));
    return articles;
}

int numberOf(const QString &label)
{
    static const QRegularExpression digits(QStringLiteral("第([0-9０-９]+)条"));
    const QRegularExpressionMatch m = digits.match(label);
    if (!m.hasMatch())
        return 0;
    int n = 0;
    for (QChar c : m.captured(1))
        n = n * 10 + c.digitValue();
    return n;
}

// The articles' own codes replaced by the pair they belong to, the chapters' by the
// title they share, and the clauses' by their place under the article, so that the
// comparison of versions matches what the pairing matched.
Version rekeyed(const Version &v, const QHash<QString, QString> &articleKey, const QHash<QString, QString> &chapterKey)
{
    Version out = v;
    QHash<QString, QString> clauseKey; // 条 + old clause codes → place codes
    QHash<QString, int> children;      // 条 + parent place → children so far
    for (PrintedRow &row : out.rows) {
        if (row.level == Level::Document || row.level == Level::Closing || row.level == Level::Preamble)
            continue;
        const QString article = row.codes[1];
        row.codes[0] = chapterKey.value(row.codes[0], row.codes[0]);
        if (row.level == Level::Chapter)
            continue;
        row.codes[1] = articleKey.value(article, article);
        const int depth = placeDepth(row.level);
        if (depth <= 2)
            continue;
        const QString own = article + u'|' + row.codes.mid(2, depth - 2).join(u'.');
        if (!clauseKey.contains(own)) {
            const QString parentOwn = article + u'|' + row.codes.mid(2, depth - 3).join(u'.');
            const QString parent = depth == 3 ? QString() : clauseKey.value(parentOwn);
            const int n = ++children[article + u'|' + parent];
            clauseKey.insert(own, (parent.isEmpty() ? QString() : parent + u'.') + QString::number(n).rightJustified(2, u'0'));
        }
        const QStringList place = clauseKey.value(own).split(u'.');
        for (int k = 2; k < depth; ++k)
            row.codes[k] = place.value(k - 2);
    }
    return out;
}

// Chapters by their title: the same title is the same chapter.
void pairChapters(const Version &older, const Version &newer, QHash<QString, QString> &oldKey, QHash<QString, QString> &newKey)
{
    QHash<QString, QString> byTitle;
    for (const PrintedRow &row : newer.rows) {
        if (row.level == Level::Chapter) {
            newKey.insert(row.codes[0], QStringLiteral("N") + row.codes[0]);
            byTitle.insert(QString(row.text).remove(u'　').remove(u' '), row.codes[0]);
        }
    }
    for (const PrintedRow &row : older.rows) {
        if (row.level != Level::Chapter)
            continue;
        const auto found = byTitle.constFind(QString(row.text).remove(u'　').remove(u' '));
        oldKey.insert(row.codes[0], found != byTitle.cend() ? QStringLiteral("N") + *found : QStringLiteral("O") + row.codes[0]);
    }
}

} // namespace

QString ArticlePair::line() const
{
    const QString left = olderLabel.isEmpty() ? ComparisonTable::kAdded : olderLabel + olderHeading;
    const QString right = newerLabel.isEmpty() ? ComparisonTable::kRemoved : newerLabel + newerHeading;
    QString out = left + QStringLiteral(" = ") + right;
    if (!olderLabel.isEmpty() && !newerLabel.isEmpty())
        out += overridden ? QStringLiteral(" （指定）") : QStringLiteral(" %1%").arg(percent);
    return out;
}

std::optional<QList<PairOverride>> parseOverrides(const QString &text, QString *error)
{
    static const QRegularExpression form(QStringLiteral("^([0-9０-９]+)=([0-9０-９]+)$"));
    QList<PairOverride> list;
    for (const QString &part : text.split(u',', Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch m = form.match(part.trimmed());
        if (!m.hasMatch()) {
            if (error)
                *error = part;
            return std::nullopt;
        }
        PairOverride o;
        for (QChar c : m.captured(1))
            o.older = o.older * 10 + c.digitValue();
        for (QChar c : m.captured(2))
            o.newer = o.newer * 10 + c.digitValue();
        list << o;
    }
    return list;
}

ComparisonTable compareDocuments(const Version &older, const Version &newer, const QList<PairOverride> &overrides,
                                 QList<ArticlePair> *pairing)
{
    const QList<Article> olds = articlesOf(older), news = articlesOf(newer);
    const qsizetype n = olds.size(), m = news.size();
    std::vector<int> oldPair(size_t(n), -1), newPair(size_t(m), -1);
    std::vector<bool> oldFixed(size_t(n), false);
    for (const PairOverride &o : overrides) {
        for (qsizetype i = 0; i < n; ++i) {
            if (numberOf(olds[i].label) != o.older)
                continue;
            oldFixed[size_t(i)] = true;
            for (qsizetype j = 0; j < m; ++j) {
                if (o.newer != 0 && numberOf(news[j].label) == o.newer && newPair[size_t(j)] < 0) {
                    oldPair[size_t(i)] = int(j);
                    newPair[size_t(j)] = int(i);
                }
            }
        }
    }
    // The ordered pairing: the most similarity in pairs that keep both orders, within a
    // band around the diagonal.
    std::vector<int> oi, ni;
    for (qsizetype i = 0; i < n; ++i)
        if (!oldFixed[size_t(i)])
            oi.push_back(int(i));
    for (qsizetype j = 0; j < m; ++j)
        if (newPair[size_t(j)] < 0)
            ni.push_back(int(j));
    const size_t a = oi.size(), b = ni.size();
    std::vector<float> best((a + 1) * (b + 1), 0.0f);
    std::vector<float> score(a * b, 0.0f);
    const auto at = [&](size_t i, size_t j) -> float & { return best[i * (b + 1) + j]; };
    for (size_t i = 1; i <= a; ++i) {
        const double diagonal = b == 0 ? 0 : double(i) * double(b) / double(a);
        for (size_t j = 1; j <= b; ++j) {
            float take = 0;
            if (std::abs(double(j) - diagonal) <= kBand) {
                const double s = similarity(olds[oi[i - 1]], news[ni[j - 1]]);
                score[(i - 1) * b + (j - 1)] = float(s);
                if (s >= kInOrder)
                    take = at(i - 1, j - 1) + float(s);
            }
            at(i, j) = std::max({at(i - 1, j), at(i, j - 1), take});
        }
    }
    for (size_t i = a, j = b; i > 0 && j > 0;) {
        const float s = score[(i - 1) * b + (j - 1)];
        if (s >= kInOrder && at(i, j) == at(i - 1, j - 1) + s) {
            oldPair[size_t(oi[i - 1])] = ni[j - 1];
            newPair[size_t(ni[j - 1])] = oi[i - 1];
            --i;
            --j;
        } else if (at(i, j) == at(i - 1, j))
            --i;
        else
            --j;
    }
    // Across the order: what is left, the closest first.
    struct Candidate {
        double score;
        int i, j;
    };
    std::vector<Candidate> candidates;
    for (qsizetype i = 0; i < n; ++i) {
        if (oldPair[size_t(i)] >= 0 || oldFixed[size_t(i)])
            continue;
        for (qsizetype j = 0; j < m; ++j) {
            if (newPair[size_t(j)] < 0) {
                const double s = similarity(olds[i], news[j]);
                if (s >= kAcross)
                    candidates.push_back({s, int(i), int(j)});
            }
        }
    }
    std::sort(candidates.begin(), candidates.end(), [](const Candidate &x, const Candidate &y) { return x.score > y.score; });
    for (const Candidate &c : candidates) {
        if (oldPair[size_t(c.i)] < 0 && newPair[size_t(c.j)] < 0) {
            oldPair[size_t(c.i)] = c.j;
            newPair[size_t(c.j)] = c.i;
        }
    }

    QHash<QString, QString> oldKey, newKey, oldChapter, newChapter;
    for (qsizetype j = 0; j < m; ++j)
        newKey.insert(news[j].code, QStringLiteral("P%1").arg(j));
    for (qsizetype i = 0; i < n; ++i)
        oldKey.insert(olds[i].code, oldPair[size_t(i)] >= 0 ? QStringLiteral("P%1").arg(oldPair[size_t(i)]) : QStringLiteral("O%1").arg(i));
    pairChapters(older, newer, oldChapter, newChapter);

    if (pairing) {
        pairing->clear();
        // In the order of the new document, each removed article after the one before it.
        qsizetype nextOld = 0;
        const auto removedUpTo = [&](qsizetype end) {
            for (; nextOld < end; ++nextOld)
                if (oldPair[size_t(nextOld)] < 0)
                    *pairing << ArticlePair{olds[nextOld].label, olds[nextOld].heading, {}, {}, 0, false};
        };
        for (qsizetype j = 0; j < m; ++j) {
            const int i = newPair[size_t(j)];
            if (i < 0) {
                *pairing << ArticlePair{{}, {}, news[j].label, news[j].heading, 0, false};
                continue;
            }
            removedUpTo(i);
            nextOld = std::max(nextOld, qsizetype(i) + 1);
            *pairing << ArticlePair{
                olds[i].label,      olds[i].heading, news[j].label, news[j].heading, int(similarity(olds[i], news[j]) * 100 + 0.5),
                oldFixed[size_t(i)]};
        }
        removedUpTo(n);
    }
    return compareVersions(rekeyed(older, oldKey, oldChapter), rekeyed(newer, newKey, newChapter));
}

} // namespace normaris
