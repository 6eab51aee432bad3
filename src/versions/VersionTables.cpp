#include "versions/VersionTables.h"

#include "rulebase/Schema.h"

namespace normaris {

namespace {

ColumnDef text(const char *name) { return {QString::fromUtf8(name), ColumnType::Text}; }
ColumnDef number(const char *name) { return {QString::fromUtf8(name), ColumnType::Integer}; }

} // namespace

void ensureVersionTables(QSqlDatabase db)
{
    // The row counter of 改訂履歴 never gives a deleted version's number to another one.
    static const TableDef versions{
        kVersionsTable, {text("文章形式Code"), text("規程Code"), text("正式名称"), text("作成日時"), text("施行日"), text("指紋")}, {}};
    static const TableDef rows{kVersionRowsTable,
                               {number("改訂履歴ID"), number("順番"), text("種別"), text("章Code"), text("条Code"), text("項Code"),
                                text("号Code"), text("号の細分丸Code"), text("号の細分イロハCode"), text("結合"), text("改行"),
                                text("番号表示"), text("文章")},
                               {QStringLiteral("改訂履歴ID,順番")}};
    ensureTable(db, versions);
    ensureTable(db, rows);
}

} // namespace normaris
