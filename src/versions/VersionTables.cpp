#include "versions/VersionTables.h"

#include "base/Database.h"

namespace normaris {

void ensureVersionTables(QSqlDatabase db)
{
    // AUTOINCREMENT: a deleted version's number is never given to another one.
    execSql(db, QStringLiteral("CREATE TABLE IF NOT EXISTS 改訂履歴 (ID INTEGER PRIMARY KEY AUTOINCREMENT, "
                               "文章形式Code TEXT NOT NULL, 規程Code TEXT NOT NULL, 正式名称 TEXT NOT NULL, "
                               "作成日時 TEXT NOT NULL, 施行日 TEXT NOT NULL, 指紋 TEXT NOT NULL)"));
    execSql(db, QStringLiteral("CREATE TABLE IF NOT EXISTS 改訂履歴行 (ID INTEGER PRIMARY KEY, 改訂履歴ID INTEGER NOT NULL, "
                               "順番 INTEGER NOT NULL, 種別 TEXT NOT NULL, 章Code TEXT, 条Code TEXT, 項Code TEXT, 号Code TEXT, "
                               "号の細分丸Code TEXT, 号の細分イロハCode TEXT, 結合 TEXT, 改行 TEXT, 番号表示 TEXT, 文章 TEXT)"));
    execSql(db, QStringLiteral("CREATE INDEX IF NOT EXISTS 改訂履歴行_版 ON 改訂履歴行 (改訂履歴ID, 順番)"));
}

} // namespace normaris
