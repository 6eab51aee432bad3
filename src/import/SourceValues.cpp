#include "import/SourceValues.h"

#include "base/FieldChecks.h"
#include "rulebase/Schema.h"

#include <QHash>

namespace normaris {

namespace {

// The byte limits of the texts the dictionary editors take, by "table.column";
// other texts have the segment limit.
constexpr int kSegmentLimit = 250;
const QHash<QString, int> &textLimits()
{
    static const QHash<QString, int> limits = {
        {QStringLiteral("規程.規程"), 80},
        {QStringLiteral("規程.正式名称"), 80},
        {QStringLiteral("変数テーブル語句.語句"), 80},
        {QStringLiteral("変数テーブル語句.表示名称"), 80},
    };
    return limits;
}

// Codes, segment places, levels and templates: digits only, and short.
bool isCodeColumn(const QString &column)
{
    return column.endsWith(QStringLiteral("Code")) || column.endsWith(QStringLiteral("結合")) || column.endsWith(QStringLiteral("種別"))
           || column == QStringLiteral("テンプレート");
}
constexpr int kCodeWidthLimit = 5;

bool hasControlCharacter(const QString &text)
{
    for (QChar c : text)
        if (c.category() == QChar::Other_Control)
            return true;
    return false;
}

// The column of the row as the schema spells it: the server keeps its names folded to
// lower case ("規程code"), a company file as they were written.
QString columnName(const QString &table, const QSqlRecord &row, int i)
{
    const QString field = row.fieldName(i);
    if (field.compare(QStringLiteral("ID"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("ID");
    for (const ColumnDef &c : schemaTable(table).columns)
        if (c.name.compare(field, Qt::CaseInsensitive) == 0)
            return c.name;
    return field;
}

QString describeRow(const QString &table, const QSqlRecord &row)
{
    QStringList keys;
    for (int i = 0; i < row.count(); ++i) {
        const QString name = columnName(table, row, i);
        if (name == QStringLiteral("Code")
            || (name.endsWith(QStringLiteral("Code")) && name != QStringLiteral("文章形式Code")
                && !name.startsWith(QStringLiteral("変換参照")))
            || name == QStringLiteral("結合")) {
            const QString value = row.value(i).toString();
            if (!value.isEmpty() && value.size() <= kCodeWidthLimit)
                keys << name + u'：' + value;
        }
    }
    return table + QStringLiteral("（") + keys.join(u' ') + QStringLiteral("）");
}

} // namespace

QString valueRefusal(const QString &table, const QString &column, const QVariant &value)
{
    const TableDef &def = schemaTable(table);
    ColumnType type = ColumnType::Text;
    for (const ColumnDef &c : def.columns)
        if (c.name == column)
            type = c.type;
    if (type == ColumnType::Flag || type == ColumnType::Integer) {
        bool ok = false;
        const qlonglong n = value.toLongLong(&ok);
        if (!ok || (type == ColumnType::Flag && n != 0 && n != 1))
            return QStringLiteral("「%1」の値が正しくありません。").arg(column);
        return {};
    }
    const QString text = value.toString();
    if (isCodeColumn(column)) {
        bool digits = text.size() <= kCodeWidthLimit;
        for (QChar c : text)
            digits = digits && c >= u'0' && c <= u'9';
        return digits ? QString() : QStringLiteral("「%1」が数字のCodeではありません。").arg(column);
    }
    if (hasControlCharacter(text))
        return QStringLiteral("「%1」に制御文字が含まれています。").arg(column);
    const int limit = textLimits().value(table + u'.' + column, kSegmentLimit);
    if (CP932Length(text) > limit)
        return QStringLiteral("「%1」の長さが制限(%2)を越えています。").arg(column).arg(limit);
    return {};
}

bool sourceValuesAcceptable(const SourceEntry &entry, Prompt &prompt)
{
    auto refuse = [&prompt](const QString &table, const QSqlRecord &row) {
        for (int i = 0; i < row.count(); ++i) {
            const QString column = columnName(table, row, i);
            if (column == QStringLiteral("ID"))
                continue;
            const QString why = valueRefusal(table, column, row.value(i));
            if (!why.isEmpty()) {
                prompt.error(QStringLiteral("処理不可"), QStringLiteral("取込元の") + describeRow(table, row) + QStringLiteral("の") + why
                                                             + QStringLiteral("データ取込を中止します。"));
                return true;
            }
        }
        return false;
    };
    for (Level level : entry.clauseLevels())
        for (const QSqlRecord &row : entry.clauseRows(level))
            if (refuse(dictionaryTable(level), row))
                return false;
    for (const VariableTable &table : kVariableTables)
        for (const QSqlRecord &row : entry.usedRows(table))
            if (refuse(QString::fromUtf16(table.table), row))
                return false;
    return true;
}

} // namespace normaris
