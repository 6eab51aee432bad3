#pragma once
// How numbers are written in a finished document: 第５条 with full-width digits,
// ① to ⑳ and イ to ネ for the two levels of sub-item.

#include <QString>

namespace normaris {

// The digits of text widened to full width (０-９); other characters stay.
QString fullWidthDigits(const QString &text);
inline QString fullWidthDigits(int number) { return fullWidthDigits(QString::number(number)); }

// ① … ⑳ for the numbers 1 to 20, "●" for any other.
QString maruCharacter(int number);
// イ … ネ for the numbers 1 to 20, "■" for any other.
QString irohaCharacter(int number);

} // namespace normaris
