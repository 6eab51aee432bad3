#include "dictionary/CodeCascade.h"

#include "base/Database.h"
#include "base/Levels.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace normaris::dictionary {

namespace {

// The two variable tables differ in the marker and in where their columns stand.
struct VariableTable {
    const char16_t *table;
    char16_t marker;
    int placeOrdinal; // 規程Code; 章Code … 号の細分イロハCode follow it
    int levelOrdinal; // 種別
};

constexpr VariableTable kWords{u"変数テーブル語句", u'★', 3, 11};
constexpr VariableTable kReferences{u"変数テーブル番号", u'◆', 2, 10};
// Where the target of a reference stands in 変数テーブル番号: 変換参照■規程Code and on,
// and its level (変換参照■種別).
constexpr int kTargetOrdinal = 11;
constexpr int kTargetLevelOrdinal = 19;
// The clause tables compared by plain column number from 規程Code on.
constexpr int kClausePlaceOrdinal = 2;

const QStringList kDocumentTables = {QStringLiteral("前文"),
                                     QStringLiteral("章"),
                                     QStringLiteral("条"),
                                     QStringLiteral("項"),
                                     QStringLiteral("号"),
                                     QStringLiteral("号の細分丸"),
                                     QStringLiteral("号の細分イロハ")};
const QStringList kCompositionTables = {QStringLiteral("作成データ置換前"), QStringLiteral("作成データ"),
                                        QStringLiteral("作成データ補助～条"), QStringLiteral("作成データ補助項～")};

QString tableName(const VariableTable &t) { return QString::fromUtf16(t.table); }
QString markerOf(char16_t marker, const QString &code) { return QChar(marker) + code + QChar(marker); }

struct VariableRow {
    qint64 id = 0;
    QSqlRecord record;
};

QList<VariableRow> variableRows(QSqlDatabase db, const QString &table, const QString &column, const QString &code)
{
    RowReader q = execSql(db, QStringLiteral("SELECT * FROM \"%1\" WHERE %2 = ?").arg(table, column), {code});
    QList<VariableRow> rows;
    while (q.next())
        rows << VariableRow{q.value(0).toLongLong(), q.record()};
    return rows;
}

// Whether the clause of the current style at the row's place holds the marker. Only the
// clause levels have a look-up; any other level holds nothing here.
bool clauseHolds(QSqlDatabase db, const QString &style, const QSqlRecord &row, int placeOrdinal, int levelOrdinal, const QString &marker)
{
    const Level level = levelOf(row.value(levelOrdinal).toString());
    if (!isClauseLevel(level))
        return false;
    const int depth = placeDepth(level);
    QStringList where = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
    QVariantList values = {style, row.value(placeOrdinal).toString()};
    for (int i = 0; i < depth; ++i) {
        where << (i == depth - 1 ? QStringLiteral("Code") : placeColumns()[i]) + QStringLiteral(" = ?");
        values << row.value(placeOrdinal + 1 + i).toString();
    }
    RowReader q = execSql(db,
                          QStringLiteral("SELECT \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(Code AS INTEGER)")
                              .arg(textColumn(level), dictionaryTable(level), where.join(QStringLiteral(" AND "))),
                          values);
    // Every row of the clause's chain is its text.
    while (q.next()) {
        if (q.value(0).toString().contains(marker))
            return true;
    }
    return false;
}

} // namespace

void CodeCascade::changeCode(const QString &oldCode, const QString &newCode)
{
    // The words and references that stand in this style's clauses of the document.
    for (const VariableTable &t : {kWords, kReferences}) {
        const QString table = tableName(t);
        for (const VariableRow &row : variableRows(m_db, table, QStringLiteral("規程Code"), oldCode)) {
            if (clauseHolds(m_db, m_style, row.record, t.placeOrdinal, t.levelOrdinal, markerOf(t.marker, row.record.value(1).toString())))
                execSql(m_db, QStringLiteral("UPDATE \"%1\" SET 規程Code = ? WHERE ID = ?").arg(table), {newCode, row.id});
        }
    }
    // References of any document that point into this one follow it.
    const QString references = tableName(kReferences);
    for (const VariableRow &row : variableRows(m_db, references, QStringLiteral("変換参照■規程Code"), oldCode)) {
        if (clauseHolds(m_db, m_style, row.record, kReferences.placeOrdinal, kReferences.levelOrdinal,
                        markerOf(kReferences.marker, row.record.value(1).toString())))
            execSql(m_db, QStringLiteral("UPDATE 変数テーブル番号 SET 変換参照■規程Code = ? WHERE ID = ?"), {newCode, row.id});
    }
    // The dates have no style of their own here: those of both styles move.
    execSql(m_db, QStringLiteral("UPDATE 施行日 SET 規程Code = ? WHERE 規程Code = ?"), {newCode, oldCode});
    for (const QStringList *tables : {&kDocumentTables, &kCompositionTables}) {
        for (const QString &table : *tables)
            execSql(m_db, QStringLiteral("UPDATE \"%1\" SET 規程Code = ? WHERE 文章形式Code = ? AND 規程Code = ?").arg(table),
                    {newCode, m_style, oldCode});
    }
}

void CodeCascade::deleteRows(const QString &code)
{
    for (const VariableTable &t : {kWords, kReferences}) {
        const QString table = tableName(t);
        for (const VariableRow &row : variableRows(m_db, table, QStringLiteral("規程Code"), code)) {
            if (clauseHolds(m_db, m_style, row.record, t.placeOrdinal, t.levelOrdinal, markerOf(t.marker, row.record.value(1).toString())))
                execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE ID = ?").arg(table), {row.id});
        }
    }
    execSql(m_db, QStringLiteral("DELETE FROM 施行日 WHERE 規程Code = ?"), {code});
    for (const QStringList *tables : {&kDocumentTables, &kCompositionTables}) {
        for (const QString &table : *tables)
            execSql(m_db, QStringLiteral("DELETE FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ?").arg(table), {m_style, code});
    }
}

bool CodeCascade::referenceBlocked(const QString &code)
{
    bool blocked = false;
    for (const VariableRow &r : variableRows(m_db, tableName(kReferences), QStringLiteral("変換参照■規程Code"), code)) {
        const Level level = levelOf(r.record.value(kReferences.levelOrdinal).toString());
        if (!isClauseLevel(level))
            continue;
        const QString marker = markerOf(kReferences.marker, r.record.value(1).toString());
        const int targetDepth = r.record.value(kTargetLevelOrdinal).toString().toInt();
        const QString targetDocument = r.record.value(kTargetOrdinal).toString();
        // Every row of the level's table, of both styles and all documents, in Code order.
        RowReader t = execSql(m_db, QStringLiteral("SELECT * FROM \"%1\" ORDER BY CAST(Code AS INTEGER)").arg(dictionaryTable(level)));
        const int textOrdinal = t.record().indexOf(textColumn(level));
        while (t.next()) {
            if (t.value(textOrdinal).toString().contains(marker)) {
                for (int i = 0; i < targetDepth; ++i) {
                    if (r.record.value(kTargetOrdinal + i).toString() != t.value(kClausePlaceOrdinal + i).toString())
                        blocked = true;
                }
            }
            if (targetDocument == t.value(kClausePlaceOrdinal).toString())
                blocked = false;
        }
    }
    return blocked;
}

} // namespace normaris::dictionary
