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
    // One row each, as they are: the steps below check and ask first.
    qint64 add(const QString &style, const QDate &date);
    void change(qint64 id, const QDate &date);
    void remove(qint64 id);

    // The steps of the date form and the CLI. Each checks what was typed (Stopped,
    // with the message, when it is wrong), asks where it must, and writes in one
    // transaction (Failed, with the message, when that fails).
    Outcome addStep(Prompt &prompt, const QString &style, const QString &text, qint64 *added = nullptr);
    Outcome changeStep(Prompt &prompt, qint64 id, const QString &text);
    // Asks "削除の確認" of the date shown as `shown`, then deletes the row.
    Outcome removeStep(Prompt &prompt, qint64 id, const QString &shown);
    // Deletes every row of the typed date, after the same question.
    Outcome removeDateStep(Prompt &prompt, const QString &text);

    // The names over the date form: the document's and the prose style's.
    QString documentName(const QString &style);
    QString styleName(const QString &style);

    // The check of a typed date; the date when good, nothing after a message.
    static std::optional<QDate> checkDate(Prompt &prompt, const QString &text);

private:
    QSqlDatabase m_db;
    QString m_document;
};

} // namespace normaris
