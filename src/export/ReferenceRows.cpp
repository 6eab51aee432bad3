#include "export/ReferenceRows.h"

#include "base/Database.h"

#include <QSqlQuery>

namespace normaris {

QList<ReferenceRow> readReferenceRows(QSqlDatabase db, const QString &document)
{
    RowReader q =
        execSql(db,
                QStringLiteral("SELECT Code, 規程Code, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, 結合, 種別, "
                               "変換参照■規程Code, 変換参照■章Code, 変換参照■条Code, 変換参照■項Code, 変換参照■号Code, "
                               "変換参照■号の細分丸Code, 変換参照■号の細分イロハCode, 変換参照■結合, 変換参照■種別 "
                               "FROM 変数テーブル番号 WHERE 規程Code = ? ORDER BY ID"),
                {document});
    QList<ReferenceRow> rows;
    while (q.next()) {
        ReferenceRow r;
        r.code = q.value(0).toString();
        r.document = q.value(1).toString();
        for (int i = 2; i < 8; ++i)
            r.place << q.value(i).toString();
        r.join = q.value(8).toString();
        r.level = q.value(9).toString();
        r.targetDocument = q.value(10).toString();
        for (int i = 11; i < 17; ++i)
            r.targetPlace << q.value(i).toString();
        r.targetJoin = q.value(17).toString();
        r.targetLevel = q.value(18).toString();
        rows << r;
    }
    return rows;
}

} // namespace normaris
