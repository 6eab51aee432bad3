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
    // The insert and the reading of its ID are one step: a failure between them must
    // not leave a row whose ID the caller never learns.
    Transaction transaction(m_db);
    insertRow(m_db, QStringLiteral("施行日"), {style, m_document, isoDate(date)});
    const qint64 id = scalar(m_db, QStringLiteral("SELECT last_insert_rowid()")).toLongLong();
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
