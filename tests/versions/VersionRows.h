#pragma once
// Hand-made printed rows for the comparison tests: articles and their clauses
// with the labels and texts a finished document would have.

#include "export/Numerals.h"
#include "versions/VersionStore.h"

namespace normaris::test {

inline PrintedRow articleRow(const QString &code, int number, const QString &title)
{
    PrintedRow r;
    r.level = Level::Article;
    r.codes = {QStringLiteral("01"), code, QString(), QString(), QString(), QString()};
    r.label = u'第' + fullWidthDigits(number) + u'条';
    r.text = u'（' + title + u'）';
    return r;
}

// A clause of the article: codes below the 条 as "01" or "01.02", its label and text.
inline PrintedRow clauseRow(const QString &article, Level level, const QString &codes, const QString &label, const QString &text,
                            const QString &segment = {})
{
    PrintedRow r;
    r.level = level;
    const QStringList below = codes.split(u'.');
    r.codes = {QStringLiteral("01"), article, below.value(0), below.value(1), below.value(2), below.value(3)};
    r.label = label;
    r.text = text;
    r.segment = segment;
    return r;
}

inline Version version(qint64 id, const PrintedRows &rows)
{
    VersionHeader h;
    h.id = id;
    h.style = QStringLiteral("1");
    h.document = QStringLiteral("01");
    h.name = QStringLiteral("就業規則");
    h.effective = QDate(2026, 4, int(id));
    return Version{h, rows};
}

} // namespace normaris::test
