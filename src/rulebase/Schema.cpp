#include "rulebase/Schema.h"

#include "base/Database.h"
#include "base/SqlDialect.h"

#include <QSqlError>
#include <QSqlQuery>

namespace normaris {

namespace {

using T = ColumnType;

ColumnDef text(const char *name) { return {QString::fromUtf8(name), T::Text}; }
ColumnDef flag(const char *name) { return {QString::fromUtf8(name), T::Flag}; }

QList<ColumnDef> columns(std::initializer_list<ColumnDef> list) { return QList<ColumnDef>(list); }

// The clause levels below 条 differ only in how many parent codes precede their own Code.
TableDef clauseTable(const char *name, QList<ColumnDef> parentKeys)
{
    QList<ColumnDef> cols = {text("文章形式Code"), text("規程Code"), text("章Code"), text("条Code")};
    cols += parentKeys;
    cols += columns({text("Code"), text(name), text("結合"), flag("改行"), text("テンプレート"), flag("変数語句"), flag("変数番号"),
                     flag("変更フラグ"), flag("選択フラグ"), text("結合種別")});
    QStringList keys;
    for (qsizetype i = 0; i < cols.size() && cols[i].name != QStringLiteral("Code"); ++i)
        keys << cols[i].name;
    keys << QStringLiteral("Code");
    return {QString::fromUtf8(name), cols, {keys.join(u',')}};
}

QList<ColumnDef> placeColumns()
{
    return columns({text("規程Code"), text("章Code"), text("条Code"), text("項Code"), text("号Code"), text("号の細分丸Code"),
                    text("号の細分イロハCode"), text("結合"), text("種別")});
}

TableDef wordTable(const char *name)
{
    QList<ColumnDef> cols = columns({text("Code"), text("語句")});
    cols += placeColumns();
    cols += columns({text("表示名称"), flag("選択フラグ")});
    return {QString::fromUtf8(name), cols, {QStringLiteral("規程Code,章Code,条Code")}};
}

TableDef referenceTable(const char *name)
{
    QList<ColumnDef> cols = columns({text("Code")});
    cols += placeColumns();
    cols += columns({text("変換参照■規程Code"), text("変換参照■章Code"), text("変換参照■条Code"), text("変換参照■項Code"),
                     text("変換参照■号Code"), text("変換参照■号の細分丸Code"), text("変換参照■号の細分イロハCode"), text("変換参照■結合"),
                     text("変換参照■種別")});
    return {QString::fromUtf8(name), cols, {QStringLiteral("規程Code,章Code,条Code")}};
}

TableDef compositionTable(const char *name)
{
    return {QString::fromUtf8(name),
            columns({{QStringLiteral("順番"), T::Integer},
                     text("種別"),
                     text("規程Code"),
                     {QStringLiteral("番号"), T::Integer},
                     text("章Code"),
                     text("条Code"),
                     text("項Code"),
                     text("号Code"),
                     text("号の細分丸Code"),
                     text("号の細分イロハCode"),
                     text("結合"),
                     text("改行"),
                     text("テンプレート"),
                     text("文章"),
                     flag("変数語句"),
                     flag("変数番号"),
                     flag("変更フラグ"),
                     text("文章形式Code"),
                     text("正式名称")}),
            {QStringLiteral("文章形式Code,規程Code,順番")}};
}

QList<TableDef> buildTables()
{
    QList<TableDef> tables;
    tables << TableDef{QStringLiteral("文章形式"), columns({text("Code"), text("文章形式")}), {}};
    tables << TableDef{QStringLiteral("規程"),
                       columns({text("文章形式Code"), text("Code"), text("規程"), flag("変更フラグ"), text("正式名称"), flag("選択フラグ"),
                                text("文章種別")}),
                       {QStringLiteral("文章形式Code,Code")}};
    tables << TableDef{QStringLiteral("前文"),
                       columns({text("文章形式Code"), text("規程Code"), text("Code"), text("結合"), flag("改行"), text("前文"),
                                flag("変数語句"), flag("変更フラグ"), flag("選択フラグ"), text("結合種別")}),
                       {QStringLiteral("文章形式Code,規程Code")}};
    tables << TableDef{QStringLiteral("章"),
                       columns({text("文章形式Code"), text("規程Code"), text("Code"), text("章"), flag("変更フラグ"), flag("選択フラグ")}),
                       {QStringLiteral("文章形式Code,規程Code,Code")}};
    const QList<ColumnDef> articleColumns = columns({text("文章形式Code"), text("規程Code"), text("章Code"), text("Code"), text("条"),
                                                     flag("変更フラグ"), text("正式名称"), flag("選択フラグ")});
    tables << TableDef{QStringLiteral("条"), articleColumns, {QStringLiteral("文章形式Code,規程Code,章Code,Code")}};
    tables << clauseTable("項", {});
    tables << clauseTable("号", columns({text("項Code")}));
    tables << clauseTable("号の細分丸", columns({text("項Code"), text("号Code")}));
    tables << clauseTable("号の細分イロハ", columns({text("項Code"), text("号Code"), text("号の細分丸Code")}));
    for (const char *name : {"変数テーブル語句", "変数テーブル語句更新前", "変数テーブル語句更新後"})
        tables << wordTable(name);
    for (const char *name : {"変数テーブル番号", "変数テーブル番号更新前", "変数テーブル番号更新後"})
        tables << referenceTable(name);
    tables << TableDef{QStringLiteral("基本語句更新後"), columns({text("Code"), text("語句")}), {}};
    for (const char *name : {"作成データ補助～条", "作成データ補助項～", "作成データ置換前", "作成データ"})
        tables << compositionTable(name);
    tables << TableDef{QStringLiteral("作成データ選択肢"), columns({text("種別"), text("Code"), text("選択肢")}), {}};
    tables << TableDef{QStringLiteral("施行日"),
                       columns({text("文章形式Code"), text("規程Code"), {QStringLiteral("年月日"), T::Date}}),
                       {QStringLiteral("文章形式Code,規程Code")}};
    tables << TableDef{QStringLiteral("企業情報"),
                       columns({text("事業所名"), text("郵便番号"), text("所在地1"), text("所在地2"), text("tel"), text("使用者職名"),
                                text("使用者氏名"), text("労働組合名"), text("従業員職名"), text("従業員氏名"), text("パート職名"),
                                text("パート氏名"), text("業種"), text("労働者数"), text("労働保険番号"), text("管轄の労基署")}),
                       {}};
    tables << TableDef{QStringLiteral("代表労働者の選択"), columns({text("代表労働者")}), {}};
    tables << TableDef{QStringLiteral("語句設定■条"), articleColumns, {}};
    return tables;
}

QString sqlType(const SqlDialect &dialect, ColumnType type)
{
    return type == T::Integer || type == T::Flag ? dialect.integerColumn : dialect.textColumn;
}

} // namespace

QStringList TableDef::columnNames() const
{
    QStringList names;
    for (const ColumnDef &c : columns)
        names << c.name;
    return names;
}

const QList<TableDef> &schemaTables()
{
    static const QList<TableDef> tables = buildTables();
    return tables;
}

const TableDef &schemaTable(const QString &name)
{
    for (const TableDef &t : schemaTables()) {
        if (t.name == name)
            return t;
    }
    throw DbError(QStringLiteral("表「%1」はありません。").arg(name));
}

namespace {

// CREATE: "CREATE TABLE" or "CREATE TABLE IF NOT EXISTS", and the same for its indexes.
void createTable(QSqlDatabase db, const TableDef &table, const QString &ifMissing)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    const auto quoted = [&](const QString &name) { return dialect.quote(name); };
    QStringList defs = {dialect.identityColumn};
    for (const ColumnDef &c : table.columns)
        defs << quoted(c.name) + u' ' + sqlType(dialect, c.type);
    execSql(db, QStringLiteral("CREATE TABLE %1%2 (%3)").arg(ifMissing, quoted(table.name), defs.join(u',')));
    int n = 0;
    for (const QString &index : table.indexes) {
        QStringList cols;
        for (const QString &c : index.split(u','))
            cols << quoted(c);
        execSql(db, QStringLiteral("CREATE INDEX %1%2 ON %3 (%4)")
                        .arg(ifMissing, quoted(table.name + QStringLiteral("_索引") + QString::number(++n)), quoted(table.name),
                             cols.join(u',')));
    }
}

} // namespace

void createSchema(QSqlDatabase db)
{
    for (const TableDef &table : schemaTables())
        createTable(db, table, QString());
}

void ensureTable(QSqlDatabase db, const TableDef &table)
{
    if (!hasTable(db, table.name))
        createTable(db, table, QStringLiteral("IF NOT EXISTS "));
}

bool hasTable(QSqlDatabase db, const QString &name)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    const QString kept = dialect.keptName(name);
    RowReader q = execSql(db, dialect.tablesSql);
    bool found = false;
    while (q.next())
        found = found || q.value(0).toString() == kept;
    return found;
}

qlonglong insertInto(QSqlDatabase db, const QString &table, const QStringList &columns, const QVariantList &values)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    QStringList names;
    for (const QString &c : columns)
        names << dialect.quote(c);
    const QString marks = QStringList(QList<QString>(columns.size(), QStringLiteral("?"))).join(u',');
    RowReader q = execSql(
        db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING ID").arg(dialect.quote(table), names.join(u','), marks), values);
    return q.next() ? q.value(0).toLongLong() : 0;
}

void insertRow(QSqlDatabase db, const QString &table, const QVariantList &values)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    const TableDef &def = schemaTable(table);
    QStringList names, marks;
    for (qsizetype i = 0; i < values.size(); ++i) {
        names << dialect.quote(def.columns.at(i).name);
        marks << QStringLiteral("?");
    }
    execSql(db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(dialect.quote(table), names.join(u','), marks.join(u',')), values);
}

namespace {

QStringList columnsOf(QSqlDatabase db, const QString &table)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    RowReader q = execSql(db, dialect.columnsSql, {dialect.keptName(table)});
    QStringList found;
    while (q.next())
        found << q.value(0).toString();
    return found;
}

// Names as the database keeps them: the server folds ASCII letters to lower case.
bool sameNames(const QStringList &found, const QStringList &expected)
{
    if (found.size() != expected.size())
        return false;
    for (qsizetype i = 0; i < found.size(); ++i) {
        if (found[i].compare(expected[i], Qt::CaseInsensitive) != 0)
            return false;
    }
    return true;
}

// The older form is the current one without its last column 結合種別; 号の細分イロハ has one form only.
bool isOlderForm(const TableDef &table, const QStringList &found, const QStringList &expected)
{
    return table.name != QStringLiteral("号の細分イロハ") && expected.last() == kSegmentKindColumn
           && sameNames(found, expected.mid(0, expected.size() - 1));
}

} // namespace

QString schemaMismatch(QSqlDatabase db, SchemaForms forms)
{
    for (const TableDef &table : schemaTables()) {
        const QStringList found = columnsOf(db, table.name);
        if (found.isEmpty())
            return QStringLiteral("表「%1」がありません。").arg(table.name);
        const QStringList expected = QStringList{QStringLiteral("ID")} + table.columnNames();
        if (sameNames(found, expected) || (forms == SchemaForms::OlderAccepted && isOlderForm(table, found, expected)))
            continue;
        return QStringLiteral("表「%1」の列が違います。").arg(table.name);
    }
    return {};
}

bool tableHasColumn(QSqlDatabase db, const QString &table, const QString &column)
{
    return columnsOf(db, table).contains(column, Qt::CaseInsensitive);
}

} // namespace normaris
