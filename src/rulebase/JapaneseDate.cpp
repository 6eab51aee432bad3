#include "rulebase/JapaneseDate.h"

#include <QRegularExpression>
#include <array>

namespace normaris {

namespace {

struct Era {
    const char16_t *name;
    QChar letter;
    QDate start;
};

const std::array<Era, 5> &eras()
{
    static const std::array<Era, 5> list = {{
        {u"令和", u'R', QDate(2019, 5, 1)},
        {u"平成", u'H', QDate(1989, 1, 8)},
        {u"昭和", u'S', QDate(1926, 12, 25)},
        {u"大正", u'T', QDate(1912, 7, 30)},
        {u"明治", u'M', QDate(1868, 1, 25)},
    }};
    return list;
}

std::optional<QDate> validDate(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

} // namespace

std::optional<QDate> parseJapaneseDate(const QString &typed)
{
    // Full-width digits and separators become their plain forms.
    const QString text = typed.normalized(QString::NormalizationForm_KC).trimmed();

    static const QRegularExpression western(QStringLiteral("^(\\d{4})(?:([/.\\-])(\\d{1,2})\\2(\\d{1,2})|年(\\d{1,2})月(\\d{1,2})日)$"));
    if (const auto m = western.match(text); m.hasMatch()) {
        const bool kanji = m.capturedLength(5) > 0;
        return validDate(m.captured(1).toInt(), m.captured(kanji ? 5 : 3).toInt(), m.captured(kanji ? 6 : 4).toInt());
    }

    static const QRegularExpression era(QStringLiteral(
        "^(令和|平成|昭和|大正|明治|[RHSTMrhstm])(元|\\d{1,2})(?:年(\\d{1,2})月(\\d{1,2})日|([/.\\-])(\\d{1,2})\\5(\\d{1,2}))$"));
    if (const auto m = era.match(text); m.hasMatch()) {
        const QString name = m.captured(1);
        const Era *found = nullptr;
        QDate end; // the day before the next era starts; open for the newest
        for (std::size_t i = 0; i < eras().size(); ++i) {
            const Era &e = eras()[i];
            if (name == QString::fromUtf16(e.name) || (name.size() == 1 && name.at(0).toUpper() == e.letter)) {
                found = &e;
                end = i == 0 ? QDate() : eras()[i - 1].start.addDays(-1);
            }
        }
        const int eraYear = m.captured(2) == u"元" ? 1 : m.captured(2).toInt();
        if (!found || eraYear < 1)
            return std::nullopt;
        const bool kanji = m.capturedLength(3) > 0;
        const auto date =
            validDate(found->start.year() + eraYear - 1, m.captured(kanji ? 3 : 6).toInt(), m.captured(kanji ? 4 : 7).toInt());
        if (!date || *date < found->start || (end.isValid() && *date > end))
            return std::nullopt;
        return date;
    }
    return std::nullopt;
}

QString formatEraDate(const QDate &date)
{
    if (!date.isValid())
        return {};
    for (const Era &e : eras()) {
        if (date >= e.start) {
            const int eraYear = date.year() - e.start.year() + 1;
            return QString::fromUtf16(e.name)
                   + QStringLiteral("%1年%2月%3日").arg(eraYear, 2, 10, QChar(u'0')).arg(date.month()).arg(date.day());
        }
    }
    return {};
}

} // namespace normaris
