#include "SeedChecks.h"

#include "base/Database.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>

namespace normaris::test {

namespace {

struct Row {
    int order, level, number;
    QStringList codes; // 章 … イロハ
    QString join;
};

QList<Row> rowsOf(QSqlDatabase db, const QString &table, const QString &where, const QVariantList &binds)
{
    QList<Row> rows;
    RowReader q = execSql(db,
                          QStringLiteral("SELECT 順番, 種別, 番号, 章Code, 条Code, 項Code, 号Code, 号の細分丸Code, 号の細分イロハCode, "
                                         "結合 FROM \"%1\" WHERE %2 ORDER BY 順番")
                              .arg(table, where),
                          binds);
    while (q.next()) {
        Row r{q.value(0).toInt(), q.value(1).toInt(), q.value(2).toInt(), {}, q.value(9).toString()};
        for (int i = 3; i < 9; ++i)
            r.codes << q.value(i).toString();
        rows << r;
    }
    return rows;
}

const char *kDictionary[] = {"", "", "章", "条", "項", "号", "号の細分丸", "号の細分イロハ"};

// 番号 runs 1, 2, … under each parent, segments of one clause share it and count 1, 2, … in 結合.
void checkNumbers(const QList<Row> &rows, int firstLevel, int lastLevel, const QString &where, QStringList &problems)
{
    QHash<QString, int> last; // parent key + level → last 番号
    QHash<QString, QString> lastJoin;
    for (const Row &r : rows) {
        if (r.level < firstLevel || r.level > lastLevel)
            continue;
        const int depth = r.level - 2; // 章 0, 条 1, 項 2 …
        QString parent = r.level <= 3 ? QString() : r.codes.mid(0, depth).join(u'|');
        const QString key = parent + u'#' + QString::number(r.level);
        const QString clause = r.codes.mid(0, depth + 1).join(u'|');
        const bool continuing = r.join.toInt() > 1;
        if (continuing) {
            if (last.value(key) != r.number || lastJoin.value(key) != clause + u'@' + QString::number(r.join.toInt() - 1))
                problems << QStringLiteral("%1: 順番%2 の結合%3 が続いていません").arg(where).arg(r.order).arg(r.join);
        } else if (r.number != last.value(key) + 1) {
            problems
                << QStringLiteral("%1: 順番%2 の番号%3 は %4 のはずです").arg(where).arg(r.order).arg(r.number).arg(last.value(key) + 1);
        }
        last[key] = r.number;
        lastJoin[key] = clause + u'@' + r.join;
        // A new clause restarts the numbers of the levels below it.
        for (int l = r.level + 1; l <= 7; ++l) {
            for (auto it = last.begin(); it != last.end();)
                it = it.key().endsWith(u'#' + QString::number(l)) && it.key().startsWith(clause) ? last.erase(it) : std::next(it);
        }
    }
}

void checkDense(const QList<Row> &rows, const QString &where, QStringList &problems)
{
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].order != i + 1) {
            problems << QStringLiteral("%1: 順番が %2 で途切れています").arg(where).arg(i + 1);
            return;
        }
    }
}

void checkSelected(QSqlDatabase db, const QString &style, const QString &document, const Row &r, QStringList &problems)
{
    if (r.level < 2 || r.level > 7)
        return;
    QStringList keys = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
    QVariantList binds = {style, document};
    const QStringList columns = {QStringLiteral("章Code"), QStringLiteral("条Code"), QStringLiteral("項Code"), QStringLiteral("号Code"),
                                 QStringLiteral("号の細分丸Code")};
    for (int d = 0; d < r.level - 2; ++d) {
        keys << columns[d] + QStringLiteral(" = ?");
        binds << r.codes[d];
    }
    keys << QStringLiteral("Code = ?");
    binds << r.codes[r.level - 2];
    const QString sql = QStringLiteral("SELECT min(選択フラグ) FROM \"%1\" WHERE %2")
                            .arg(QString::fromUtf8(kDictionary[r.level]), keys.join(QStringLiteral(" AND ")));
    const QVariant flag = scalar(db, sql, binds);
    if (flag.isNull() || flag.toInt() != 1)
        problems
            << QStringLiteral("順番%1 (種別%2 %3) の辞書の選択フラグが立っていません").arg(r.order).arg(r.level).arg(r.codes.join(u'|'));
}

} // namespace

QStringList compositionProblems(QSqlDatabase db, const QString &style, const QString &document)
{
    QStringList problems;
    const QVariantList key = {style, document};
    const QString where = QStringLiteral("文章形式Code = ? AND 規程Code = ?");
    const QList<Row> upper = rowsOf(db, QStringLiteral("作成データ補助～条"), where, key);
    if (upper.isEmpty() || upper.first().level != 1)
        return {QStringLiteral("規程の行が順番1にありません")};
    checkDense(upper, QStringLiteral("～条"), problems);
    checkNumbers(upper, 2, 3, QStringLiteral("～条"), problems);
    for (const Row &r : upper) {
        checkSelected(db, style, document, r, problems);
        if (r.level != 3)
            continue;
        const QList<Row> lower = rowsOf(db, QStringLiteral("作成データ補助項～"), where + QStringLiteral(" AND 章Code = ? AND 条Code = ?"),
                                        key + QVariantList{r.codes[0], r.codes[1]});
        const QString at = QStringLiteral("条%1").arg(r.codes[1]);
        checkDense(lower, at, problems);
        checkNumbers(lower, 4, 7, at, problems);
        for (const Row &l : lower)
            checkSelected(db, style, document, l, problems);
        // A word held by a composed clause is selected.
        const int unselected =
            scalar(
                db,
                QStringLiteral(
                    "SELECT count(*) FROM 変数テーブル語句 w WHERE w.規程Code = ? AND w.章Code = ? AND w.条Code = ? AND w.選択フラグ = 0 "
                    "AND EXISTS (SELECT 1 FROM 作成データ補助項～ c WHERE c.文章形式Code = ? AND c.規程Code = w.規程Code AND c.章Code = "
                    "w.章Code "
                    "AND c.条Code = w.条Code AND c.項Code = w.項Code AND c.号Code = w.号Code AND c.号の細分丸Code = w.号の細分丸Code "
                    "AND c.号の細分イロハCode = w.号の細分イロハCode AND c.種別 = w.種別)"),
                {document, r.codes[0], r.codes[1], style})
                .toInt();
        if (unselected)
            problems << at + QStringLiteral(": 選択されていない語句が%1件").arg(unselected);
    }
    const int orphans =
        scalar(db,
               QStringLiteral("SELECT count(*) FROM 作成データ補助項～ l WHERE l.文章形式Code = ? AND l.規程Code = ? AND NOT EXISTS "
                              "(SELECT 1 FROM 作成データ補助～条 u WHERE u.文章形式Code = l.文章形式Code AND u.規程Code = l.規程Code "
                              "AND u.種別 = '3' AND u.章Code = l.章Code AND u.条Code = l.条Code)"),
               key)
            .toInt();
    if (orphans)
        problems << QStringLiteral("条の行のない項以下の行が%1件").arg(orphans);
    return problems;
}

QStringList markerProblems(QSqlDatabase db)
{
    QStringList problems;
    static const QRegularExpression marker(QStringLiteral("([★◆])([0-9]{4})\\1"));
    // parents: how many place columns the table has above its own Code (-1: no place at all).
    struct Source {
        const char *table;
        const char *level;
        int parents;
    };
    const Source sources[] = {{"前文", "10", -1}, {"項", "4", 2}, {"号", "5", 3}, {"号の細分丸", "6", 4}, {"号の細分イロハ", "7", 5}};
    const QStringList placeColumns = {QStringLiteral("章Code"), QStringLiteral("条Code"),         QStringLiteral("項Code"),
                                      QStringLiteral("号Code"), QStringLiteral("号の細分丸Code"), QStringLiteral("号の細分イロハCode")};
    for (const Source &s : sources) {
        const QString table = QString::fromUtf8(s.table);
        RowReader q = execSql(db, QStringLiteral("SELECT * FROM \"%1\"").arg(table));
        while (q.next()) {
            const QSqlRecord rec = q.record();
            const QString text = rec.value(table).toString();
            auto it = marker.globalMatch(text);
            while (it.hasNext()) {
                const auto m = it.next();
                const bool word = m.captured(1) == u"★";
                QStringList where = {QStringLiteral("Code = ?"), QStringLiteral("規程Code = ?"), QStringLiteral("結合 = ?"),
                                     QStringLiteral("種別 = ?")};
                QVariantList binds = {m.captured(2), rec.value(QStringLiteral("規程Code")), rec.value(QStringLiteral("結合")),
                                      QString::fromUtf8(s.level)};
                for (int d = 0; d < 6; ++d) {
                    where << placeColumns[d] + QStringLiteral(" = ?");
                    binds << (d < s.parents    ? rec.value(placeColumns[d]).toString()
                              : d == s.parents ? rec.value(QStringLiteral("Code")).toString()
                                               : QString());
                }
                const QString rows = word ? QStringLiteral("変数テーブル語句") : QStringLiteral("変数テーブル番号");
                if (scalar(db, QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(rows, where.join(QStringLiteral(" AND "))), binds)
                        .toInt()
                    != 1)
                    problems << QStringLiteral("%1 %2: %3 に行がありません")
                                    .arg(table, QVariant(binds.mid(4)).toStringList().join(u'|'), m.captured(0));
            }
        }
    }
    // Every reference target stands in the dictionary (at the 条 level or below, in some style).
    RowReader refs = execSql(db, QStringLiteral("SELECT Code, 変換参照■規程Code, 変換参照■章Code, 変換参照■条Code, 変換参照■項Code, "
                                                "変換参照■号Code, 変換参照■種別 FROM 変数テーブル番号"));
    while (refs.next()) {
        const int level = refs.value(6).toInt();
        const QStringList tables = {
            QString(), QStringLiteral("規程"), QStringLiteral("章"), QStringLiteral("条"), QStringLiteral("項"), QStringLiteral("号")};
        if (level < 3 || level > 5)
            continue;
        QStringList where = {QStringLiteral("規程Code = ?"), QStringLiteral("章Code = ?")};
        QVariantList binds = {refs.value(1), refs.value(2)};
        if (level == 3) {
            where << QStringLiteral("Code = ?");
            binds << refs.value(3);
        } else {
            where << QStringLiteral("条Code = ?");
            binds << refs.value(3);
            where << (level == 4 ? QStringLiteral("Code = ?") : QStringLiteral("項Code = ?"));
            binds << refs.value(4);
            if (level == 5) {
                where << QStringLiteral("Code = ?");
                binds << refs.value(5);
            }
        }
        if (scalar(db, QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(tables[level], where.join(QStringLiteral(" AND "))), binds)
                .toInt()
            == 0)
            problems << QStringLiteral("参照 %1 の参照先がありません").arg(refs.value(0).toString());
    }
    return problems;
}

} // namespace normaris::test
