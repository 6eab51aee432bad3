#include "rulebase/BasicSettings.h"

#include "base/Database.h"
#include "rulebase/Schema.h"
#include "base/FieldChecks.h"

#include <QSqlQuery>

namespace normaris {

const QList<SettingField> &settingFields()
{
    using K = SettingField::Keys;
    static const QList<SettingField> fields = {
        {QStringLiteral("事業所名"), 60, QStringLiteral("☆0001☆"), K::Any, {}},
        {QStringLiteral("郵便番号"), 12, {}, K::DigitsAndHyphen, QStringLiteral("記載例： 100-0001（半角）")},
        {QStringLiteral("所在地1"), 60, QStringLiteral("☆0003☆"), K::Any, {}},
        {QStringLiteral("所在地2"), 60, {}, K::Any, {}},
        {QStringLiteral("tel"), 20, QStringLiteral("☆0005☆"), K::Any, QStringLiteral("記載例： 03-5555-0123（半角）")},
        {QStringLiteral("使用者職名"), 30, QStringLiteral("☆0006☆"), K::Any, {}},
        {QStringLiteral("使用者氏名"), 30, QStringLiteral("☆0007☆"), K::Any, {}},
        {QStringLiteral("労働組合名"), 40, QStringLiteral("☆0008☆"), K::Any, {}},
        {QStringLiteral("従業員職名"), 30, QStringLiteral("☆0009☆"), K::Any, {}},
        {QStringLiteral("従業員氏名"), 30, QStringLiteral("☆0010☆"), K::Any, {}},
        {QStringLiteral("パート職名"), 30, QStringLiteral("☆0011☆"), K::Any, {}},
        {QStringLiteral("パート氏名"), 30, QStringLiteral("☆0012☆"), K::Any, {}},
        {QStringLiteral("業種"), 30, QStringLiteral("☆0013☆"), K::Any, {}},
        {QStringLiteral("労働者数"), 7, QStringLiteral("☆0014☆"), K::Digits, QStringLiteral("１以上の自然数を入力（半角）")},
        {QStringLiteral("労働保険番号"), 30, {}, K::Digits, QStringLiteral("数字を入力（半角）")},
        {QStringLiteral("管轄の労基署"), 30, QStringLiteral("☆0016☆"), K::Any, {}},
    };
    return fields;
}

int settingIndex(const QString &column)
{
    const QList<SettingField> &fields = settingFields();
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (fields[i].column == column)
            return int(i);
    }
    return -1;
}

QStringList BasicSettings::load()
{
    // Reading writes nothing: with no row yet every field shows its marker, and the
    // row is added by the first save.
    RowReader q = execSql(m_db, QStringLiteral("SELECT * FROM 企業情報 ORDER BY ID LIMIT 1"));
    const bool hasRow = q.next();
    QStringList values;
    for (qsizetype i = 0; i < settingFields().size(); ++i) {
        const QString value = hasRow ? q.value(int(i) + 1).toString() : QString();
        values << (value.isEmpty() ? settingFields()[i].marker : value);
    }
    return values;
}

QString BasicSettings::representative()
{
    return scalar(m_db, QStringLiteral("SELECT 代表労働者 FROM 代表労働者の選択 ORDER BY ID LIMIT 1")).toString();
}

bool BasicSettings::checkField(Prompt &prompt, int index, const QString &value)
{
    const SettingField &field = settingFields().at(index);
    if (field.column == u"労働者数") {
        if (value.isEmpty() || value == field.marker)
            return true;
        bool number = false;
        const qlonglong n = value.toLongLong(&number);
        if (!number || n < 1 || n > 9999999) {
            prompt.error(QStringLiteral("入力エラー"), QStringLiteral("1～9999999を入力してください。･･･労働者数"));
            return false;
        }
        return true;
    }
    return CheckRequiredField(prompt, value, qint16(field.limit), true, QStringLiteral("･･･") + field.column)
           && CheckNoControlCharacters(prompt, value, QStringLiteral("･･･") + field.column)
           // The field's own marker stands for a value not yet given; any other marker is refused.
           && (value == field.marker || CheckNoMarkers(prompt, value, QStringLiteral("･･･") + field.column));
}

bool BasicSettings::acceptsKey(int index, QChar key)
{
    switch (settingFields().at(index).keys) {
    case SettingField::Keys::Any: return true;
    case SettingField::Keys::Digits: return key >= u'0' && key <= u'9';
    case SettingField::Keys::DigitsAndHyphen: return (key >= u'0' && key <= u'9') || key == u'-';
    }
    return false;
}

void BasicSettings::save(const QStringList &values, const QString &representative)
{
    const QList<SettingField> &fields = settingFields();
    QStringList assignments;
    QVariantList binds;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        assignments << u'"' + fields[i].column + QStringLiteral("\" = ?");
        binds << (values.value(i).isEmpty() ? fields[i].marker : values.value(i));
    }
    Transaction transaction(m_db);
    if (scalar(m_db, QStringLiteral("SELECT count(*) FROM 企業情報")).toInt() == 0)
        execSql(m_db, QStringLiteral("INSERT INTO 企業情報 DEFAULT VALUES"));
    execSql(m_db, QStringLiteral("UPDATE 企業情報 SET %1 WHERE ID = (SELECT min(ID) FROM 企業情報)").arg(assignments.join(u',')), binds);
    if (scalar(m_db, QStringLiteral("SELECT count(*) FROM 代表労働者の選択")).toInt() == 0)
        insertRow(m_db, QStringLiteral("代表労働者の選択"), {representative});
    else
        execSql(m_db, QStringLiteral("UPDATE 代表労働者の選択 SET 代表労働者 = ?"), {representative});
    transaction.commit();
}

} // namespace normaris
