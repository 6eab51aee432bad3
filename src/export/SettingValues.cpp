#include "export/SettingValues.h"

#include "rulebase/BasicSettings.h"
#include "base/Database.h"

#include <QSqlQuery>

namespace normaris {

std::optional<SettingValues> SettingValues::read(QSqlDatabase db)
{
    RowReader q = execSql(db, QStringLiteral("SELECT * FROM 企業情報 ORDER BY ID LIMIT 1"));
    if (!q.next())
        return std::nullopt;
    SettingValues settings;
    for (qsizetype i = 0; i < settingFields().size(); ++i)
        settings.m_values << q.value(int(i) + 1).toString();
    return settings;
}

QString SettingValues::value(const QString &column) const { return m_values.value(settingIndex(column)); }

bool SettingValues::isUnset(const QString &column) const
{
    const int index = settingIndex(column);
    return index >= 0 && m_values.value(index) == QStringLiteral("☆%1☆").arg(index + 1, 4, 10, QChar(u'0'));
}

} // namespace normaris
