#include "rulebase/SegmentKind.h"

#include <QRegularExpression>

namespace normaris {

QString segmentKind(const QString &text)
{
    static const QRegularExpression word(QStringLiteral("^★[0-9]{4}★$"));
    static const QRegularExpression basic(QStringLiteral("^☆[0-9]{4}☆$"));
    if (word.match(text).hasMatch())
        return QStringLiteral("1");
    if (basic.match(text).hasMatch())
        return QStringLiteral("3");
    static const QRegularExpression reference(QStringLiteral("^◆[0-9]{4}◆$"));
    if (reference.match(text).hasMatch())
        return QStringLiteral("2");
    return QStringLiteral("0");
}

} // namespace normaris
