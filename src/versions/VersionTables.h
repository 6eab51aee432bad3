#pragma once
// The tables of the kept versions of finished documents. They stand beside the
// company's own tables and nothing else reads them; a company file made before
// them gains them the first time they are needed.
//
//   改訂履歴    one row per version: ID (the version number), 文章形式Code, 規程Code,
//               正式名称, 作成日時 (ISO date and time), 施行日 (the latest effective
//               date, ISO), 指紋 (a hash of the printed rows and the date)
//   改訂履歴行  one row per printed row: 改訂履歴ID, 順番, 種別, the six place codes,
//               結合, 改行, 番号表示 (the printed label), 文章 (the final text)

#include <QSqlDatabase>
#include <QString>

namespace normaris {

inline const QString kVersionsTable = QStringLiteral("改訂履歴");
inline const QString kVersionRowsTable = QStringLiteral("改訂履歴行");

// Creates the two tables and their index when missing.
void ensureVersionTables(QSqlDatabase db);

} // namespace normaris
