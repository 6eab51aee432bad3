#include "export/Numerals.h"

namespace normaris {

namespace {

QString characterOf(const QString &table, int number, const QString &beyond)
{
    return number >= 1 && number <= table.size() ? table.mid(number - 1, 1) : beyond;
}

} // namespace

QString fullWidthDigits(const QString &text)
{
    QString wide = text;
    for (QChar &c : wide) {
        if (c >= u'0' && c <= u'9')
            c = QChar(u'０' + (c.unicode() - u'0'));
    }
    return wide;
}

QString maruCharacter(int number) { return characterOf(QStringLiteral("①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳"), number, QStringLiteral("●")); }

QString irohaCharacter(int number)
{
    return characterOf(QStringLiteral("イロハニホヘトチリヌルヲワカヨタレソツネ"), number, QStringLiteral("■"));
}

} // namespace normaris
