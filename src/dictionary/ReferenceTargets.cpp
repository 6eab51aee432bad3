#include "dictionary/ReferenceTargets.h"

#include "base/Database.h"
#include "dictionary/ClausePlace.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/DocumentMaster.h"
#include "dictionary/SegmentEditor.h"

namespace normaris::dictionary {

namespace {

// The level whose rows fill depth place columns (章 1 … イロハ 6).
Level levelAtDepth(int depth)
{
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth == depth && info.level != Level::Document && info.level != Level::Preamble && info.level != Level::Closing)
            return info.level;
    }
    return Level::Document;
}

} // namespace

ReferenceTarget referenceTargetOf(const QSqlRecord &row)
{
    const QString prefix = QStringLiteral("変換参照■");
    ReferenceTarget t;
    t.document = row.value(prefix + QStringLiteral("規程Code")).toString();
    t.level = levelOf(row.value(prefix + QStringLiteral("種別")).toString());
    for (int i = 0; i < placeDepth(t.level); ++i)
        t.codes << row.value(prefix + placeColumns()[i]).toString();
    t.join = row.value(prefix + QStringLiteral("結合")).toString();
    return t;
}

QString ReferenceTarget::describe(const QString &from) const
{
    QStringList parts;
    if (document != from || level == Level::Document)
        parts << QString::fromUtf16(levelInfo(Level::Document).sourceName) + document;
    for (qsizetype i = 0; i < codes.size(); ++i) {
        if (!codes[i].isEmpty())
            parts << QString::fromUtf16(levelInfo(levelAtDepth(int(i) + 1)).sourceName) + codes[i];
    }
    if (!join.isEmpty())
        parts << QStringLiteral("結合") + join;
    return parts.join(u' ');
}

QList<CodeAndName> ReferenceTargets::documents() const
{
    QList<CodeAndName> list;
    for (const DocumentRecord &d : DocumentMaster(m_db, m_style).documents())
        list << CodeAndName{d.code, d.name};
    return list;
}

QList<CodeAndName> ReferenceTargets::entries(const QString &document, Level level, const QStringList &parents) const
{
    const ClausePlace any{level, m_style, document, parents + QStringList{QString()}};
    const bool segmented = levelInfo(level).segmented;
    auto q = execSql(
        m_db,
        QStringLiteral("SELECT Code, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(Code AS INTEGER)%4")
            .arg(any.textColumn(), any.table(), any.siblingsWhereSql(), segmented ? QStringLiteral(", CAST(結合 AS INTEGER)") : QString()),
        any.siblingsWhereValues());
    QList<CodeAndName> list;
    while (q.next()) {
        if (!list.isEmpty() && list.last().code == q.value(0).toString())
            continue;
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    }
    return list;
}

QList<CodeAndName> ReferenceTargets::segments(const ReferenceTarget &clause) const
{
    if (!isClauseLevel(clause.level))
        return {};
    const ClausePlace place{clause.level, m_style, clause.document, clause.codes};
    auto q = execSql(m_db,
                     QStringLiteral("SELECT 結合, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(結合 AS INTEGER)")
                         .arg(place.textColumn(), place.table(), place.whereSql()),
                     place.whereValues());
    QList<CodeAndName> list;
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    if (list.size() == 1)
        return {};
    return list;
}

bool ReferenceTargets::stands(const ReferenceTarget &target) const
{
    if (!DocumentMaster(m_db, m_style).document(target.document))
        return false;
    if (target.level == Level::Document)
        return target.codes.isEmpty() && target.join.isEmpty();
    if (int(target.codes.size()) != placeDepth(target.level) || levelAtDepth(int(target.codes.size())) != target.level)
        return false;
    const ClausePlace place{target.level, m_style, target.document, target.codes};
    QString where = place.whereSql();
    QVariantList values = place.whereValues();
    if (!target.join.isEmpty()) {
        if (!isClauseLevel(target.level))
            return false;
        where += QStringLiteral(" AND 結合 = ?");
        values << target.join;
    }
    return scalar(m_db, QStringLiteral("SELECT count(*) FROM \"%1\" WHERE %2").arg(place.table(), where), values).toInt() > 0;
}

QString ReferenceTargets::nextCode(const QString &document, const SegmentEditor *editor) const
{
    int last = 0;
    auto q = execSql(m_db, QStringLiteral("SELECT Code FROM 変数テーブル番号 WHERE 規程Code = ?"), {document});
    while (q.next())
        last = qMax(last, q.value(0).toString().toInt());
    if (editor) {
        for (const QString &code : editor->providedReferenceCodes())
            last = qMax(last, code.toInt());
    }
    return QStringLiteral("%1").arg(last + 1, 4, 10, QLatin1Char('0'));
}

Outcome ReferenceTargets::make(Prompt &prompt, SegmentEditor &editor, int k, const ReferenceTarget &target, QString *marker) const
{
    QString code;
    const Outcome outcome = runRefusableTransaction(prompt, m_db, [&] {
        if (!stands(target)) {
            prompt.error(kInputErrorTitle, QStringLiteral("参照先がありません。") + target.describe(QString()));
            return false;
        }
        code = nextCode(editor.place().document, &editor);
        editor.setKind(k, SegmentKind::Reference);
        editor.provideReference(code, target);
        editor.setChosenValue(k, code, target.describe(editor.place().document));
        return true;
    });
    if (outcome == Outcome::Done && marker)
        *marker = referenceMarker(code);
    return outcome;
}

} // namespace normaris::dictionary
