#pragma once
// The dated history of a document (施行日): for 規則・規程 the oldest date is the day
// of making and the later ones the days of revision; for 協約・協定 the newest is
// the start of the term. Both prose styles of a document read one list.

#include "base/Prompt.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <optional>

namespace normaris {

struct EffectiveDate {
    qint64 id = 0;
    QString style; // the style it was entered under
    QDate date;
};

class EffectiveDates {
public:
    EffectiveDates(QSqlDatabase db, QString document) : m_db(std::move(db)), m_document(std::move(document)) {}

    // All dates of the document, oldest first, whatever style they were entered under.
    QList<EffectiveDate> list();
    qint64 add(const QString &style, const QDate &date);
    void change(qint64 id, const QDate &date);
    void remove(qint64 id);

    // The check of a typed date; the date when good, nothing after a message.
    static std::optional<QDate> checkDate(Prompt &prompt, const QString &text);

private:
    QSqlDatabase m_db;
    QString m_document;
};

} // namespace normaris
