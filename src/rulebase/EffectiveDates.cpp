#include "rulebase/EffectiveDates.h"

#include "base/Database.h"
#include "rulebase/JapaneseDate.h"
#include "rulebase/Schema.h"

#include <QSqlQuery>

namespace normaris {

QList<EffectiveDate> EffectiveDates::list()
{
    QList<EffectiveDate> dates;
    RowReader q =
        execSql(m_db, QStringLiteral("SELECT ID, 文章形式Code, 年月日 FROM 施行日 WHERE 規程Code = ? ORDER BY 年月日, ID"), {m_document});
    while (q.next())
        dates << EffectiveDate{q.value(0).toLongLong(), q.value(1).toString(), QDate::fromString(q.value(2).toString(), Qt::ISODate)};
    return dates;
}

qint64 EffectiveDates::add(const QString &style, const QDate &date)
{
    // The insert answers its own ID, and both are one step: a failure to read the ID takes
    // the row back, so that no row is left whose ID the caller never learns.
    Transaction transaction(m_db);
    const qint64 id =
        insertInto(m_db, QStringLiteral("施行日"), {QStringLiteral("文章形式Code"), QStringLiteral("規程Code"), QStringLiteral("年月日")},
                   {style, m_document, isoDate(date)});
    transaction.commit();
    return id;
}

void EffectiveDates::change(qint64 id, const QDate &date)
{
    execSql(m_db, QStringLiteral("UPDATE 施行日 SET 年月日 = ? WHERE ID = ? AND 規程Code = ?"), {isoDate(date), id, m_document});
}

void EffectiveDates::remove(qint64 id)
{
    execSql(m_db, QStringLiteral("DELETE FROM 施行日 WHERE ID = ? AND 規程Code = ?"), {id, m_document});
}

Outcome EffectiveDates::addStep(Prompt &prompt, const QString &style, const QString &text, qint64 *added)
{
    if (style != u"1" && style != u"2") {
        prompt.error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return Outcome::Stopped;
    }
    const auto date = checkDate(prompt, text);
    if (!date)
        return Outcome::Stopped;
    qint64 id = 0;
    if (!runInTransaction(prompt, m_db, [&] { id = add(style, *date); }))
        return Outcome::Failed;
    if (added)
        *added = id;
    return Outcome::Done;
}

Outcome EffectiveDates::changeStep(Prompt &prompt, qint64 id, const QString &text)
{
    const auto date = checkDate(prompt, text);
    if (!date)
        return Outcome::Stopped;
    return runInTransaction(prompt, m_db, [&] { change(id, *date); }) ? Outcome::Done : Outcome::Failed;
}

Outcome EffectiveDates::removeStep(Prompt &prompt, qint64 id, const QString &shown)
{
    if (!prompt.question(QStringLiteral("削除の確認"), shown + QStringLiteral(" を削除しますか？")))
        return Outcome::Stopped;
    return runInTransaction(prompt, m_db, [&] { remove(id); }) ? Outcome::Done : Outcome::Failed;
}

Outcome EffectiveDates::removeDateStep(Prompt &prompt, const QString &text)
{
    const auto date = checkDate(prompt, text);
    if (!date)
        return Outcome::Stopped;
    // The rows are read inside the transaction that deletes them: all go, or none.
    bool asked = false, found = false, confirmed = false;
    const bool done = runInTransaction(prompt, m_db, [&] {
        QList<qint64> matches;
        for (const EffectiveDate &d : list()) {
            if (d.date == *date)
                matches << d.id;
        }
        found = !matches.isEmpty();
        if (!found)
            return;
        asked = true;
        confirmed = prompt.question(QStringLiteral("削除の確認"), displayDate(*date) + QStringLiteral(" を削除しますか？"));
        if (!confirmed)
            return;
        for (qint64 id : matches)
            remove(id);
    });
    if (!done)
        return Outcome::Failed;
    if (!found) {
        prompt.plain(QStringLiteral("削除の確認"), displayDate(*date) + QStringLiteral(" はありません。"));
        return Outcome::Stopped;
    }
    return asked && confirmed ? Outcome::Done : Outcome::Stopped;
}

QString EffectiveDates::documentName(const QString &style)
{
    return scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, m_document}).toString();
}

QString EffectiveDates::styleName(const QString &style)
{
    return scalar(m_db, QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {style}).toString();
}

std::optional<QDate> EffectiveDates::checkDate(Prompt &prompt, const QString &text)
{
    if (text.trimmed().isEmpty()) {
        prompt.error(QStringLiteral("入力エラー"), QStringLiteral("未入力は許されません。･･･年月日"));
        return std::nullopt;
    }
    const auto date = parseJapaneseDate(text);
    if (!date)
        prompt.error(QStringLiteral("入力エラー"), QStringLiteral("日付の入力が正しくありません。･･･年月日"));
    return date;
}

} // namespace normaris
