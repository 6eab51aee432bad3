#pragma once
// Dates as Japanese users type and read them.

#include <QDate>
#include <QString>
#include <optional>

namespace normaris {

// Reads a date typed by the user: 2009/1/1, 2009-01-01, 2009.1.1, 2009年1月1日, and the
// era forms 令和8年4月1日, 令和元年5月1日, R8.4.1 (明治, 大正, 昭和, 平成, 令和), with
// full-width digits too. Nothing for a text that is not a real date (2009/2/30).
std::optional<QDate> parseJapaneseDate(const QString &text);

// The era form with a two-digit era year: 平成21年1月1日, 令和08年4月1日.
// An empty text for an invalid date or one before the Meiji era.
QString formatEraDate(const QDate &date);

// ISO text as stored in 施行日.年月日, and back (yyyy/MM/dd on screen).
inline QString isoDate(const QDate &date) { return date.toString(Qt::ISODate); }
inline QString displayDate(const QDate &date) { return date.toString(QStringLiteral("yyyy/MM/dd")); }

} // namespace normaris
