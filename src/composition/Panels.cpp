#include "composition/Panels.h"

#include "rulebase/CompositionRow.h"
#include "composition/DictionaryWalk.h"
#include "base/Database.h"
#include "base/SqlDialect.h"

#include <QSqlQuery>

namespace normaris {

namespace {

const QString kContinued = QStringLiteral("※上記の続き");

// The clause's text as the dictionary has it now (its first segment), as a subquery
// on the composition row `r`, so that the rows and their texts come in one statement.
QString currentTextSql(const SqlDialect &dialect, Level level)
{
    QStringList where = {QStringLiteral("d.文章形式Code = r.文章形式Code")};
    if (level == Level::Document) {
        where << QStringLiteral("d.Code = r.規程Code");
    } else {
        where << QStringLiteral("d.規程Code = r.規程Code");
        if (level == Level::Preamble)
            where << QStringLiteral("d.Code = '01'");
        // In a dictionary table the clause's own code is "Code", its parents the place columns.
        const int own = placeDepth(level) - 1;
        for (int i = 0; i <= own; ++i)
            where << QStringLiteral("d.%1 = r.%2").arg(i == own ? QStringLiteral("Code") : placeColumns()[i], placeColumns()[i]);
    }
    const bool segmented = level == Level::Preamble || isClauseLevel(level);
    // The name column of 規程, 章 and 条, and the text column of the others, bear the table's name.
    return QStringLiteral("(SELECT d.%1 FROM %1 d WHERE %2%3)")
        .arg(dictionaryTable(level), where.join(QStringLiteral(" AND ")),
             segmented ? QStringLiteral(" ORDER BY %1 LIMIT 1").arg(dialect.integerOf(QStringLiteral("d.結合"))) : QString());
}

// The rows of one rowset with the dictionary's text of each, in one query.
QList<PanelRow> panelRows(QSqlDatabase db, const QString &table, const QList<Level> &levels, const QString &where, const QVariantList &keys)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    QString current = QStringLiteral("CASE r.種別");
    for (Level level : levels)
        current += QStringLiteral(" WHEN '%1' THEN %2").arg(levelCode(level), currentTextSql(dialect, level));
    current += QStringLiteral(" END");
    QStringList columns;
    for (const QString &c : placeColumns())
        columns << QStringLiteral("r.%1").arg(c);
    // A continuation row shows no dictionary text, so its subquery is not run.
    RowReader q = execSql(db,
                          QStringLiteral("SELECT r.種別, %1, r.結合, r.テンプレート, "
                                         "CASE WHEN %5 > 1 THEN NULL ELSE %2 END "
                                         "FROM %3 r WHERE %4 ORDER BY r.順番, %5")
                              .arg(columns.join(u','), current, table, where, dialect.integerOf(QStringLiteral("r.結合"))),
                          keys);
    QList<PanelRow> panel;
    while (q.next()) {
        PanelRow p;
        p.level = levelOf(q.value(0).toString());
        for (int i = 0; i < 6; ++i)
            p.codes[i] = q.value(1 + i).toString();
        p.join = q.value(7).toString();
        const QString templateCode = q.value(8).toString();
        if (p.join.toInt() > 1) {
            // A continuation row of a split clause.
            p.text = templateCode == u"0" || templateCode.isEmpty() || p.level == Level::Preamble
                         ? kContinued
                         : kContinued + QStringLiteral("（●テンプレート●") + templateCode + QStringLiteral("）");
        } else {
            p.text = q.value(9).toString();
        }
        panel << p;
    }
    return panel;
}

} // namespace

QList<PanelRow> articlePanel(QSqlDatabase db, const QString &style, const QString &document)
{
    return panelRows(db, kArticleRowsTable, {Level::Document, Level::Preamble, Level::Chapter, Level::Article},
                     QStringLiteral("r.文章形式Code = ? AND r.規程Code = ?"), {style, document});
}

QList<PanelRow> paragraphPanel(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                               const QString &article)
{
    return panelRows(db, kClauseRowsTable, {Level::Paragraph, Level::Item, Level::Maru, Level::Iroha},
                     QStringLiteral("r.文章形式Code = ? AND r.規程Code = ? AND r.章Code = ? AND r.条Code = ?"),
                     {style, document, chapter, article});
}

PlaceNames placeNames(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter, const QString &article)
{
    PlaceNames names;
    names.style = scalar(db, QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {style}).toString();
    names.document = scalar(db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
    if (!chapter.isEmpty())
        names.chapter =
            scalar(db, QStringLiteral("SELECT 章 FROM 章 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = ?"), {style, document, chapter})
                .toString();
    if (!article.isEmpty())
        names.article = scalar(db, QStringLiteral("SELECT 条 FROM 条 WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND Code = ?"),
                               {style, document, chapter, article})
                            .toString();
    return names;
}

QList<CodeAndName> panelActions(QSqlDatabase db, Level rowLevel)
{
    const QStringList codes = QString::fromUtf16(levelInfo(rowLevel).panelActions).split(u',', Qt::SkipEmptyParts);
    if (codes.isEmpty())
        return {};
    QStringList marks(codes.size(), QStringLiteral("?"));
    QVariantList binds{levelCode(rowLevel)};
    for (const QString &code : codes)
        binds << code;
    QList<CodeAndName> actions;
    RowReader q = execSql(db,
                          QStringLiteral("SELECT Code, 選択肢 FROM 作成データ選択肢 WHERE 種別 = ? AND Code IN (%1) ORDER BY %2")
                              .arg(marks.join(u','), SqlDialect::of(db).integerOf(QStringLiteral("Code"))),
                          binds);
    while (q.next())
        actions << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return actions;
}

bool articleHasParagraphs(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter, const QString &article)
{
    return scalar(db, QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                  {style, document, chapter, article})
               .toInt()
           > 0;
}

QString panelCode(const PanelRow &row)
{
    if (row.level == Level::Document)
        return {};
    if (row.level == Level::Preamble)
        return QStringLiteral("01");
    return row.codes.value(placeDepth(row.level) - 1);
}

StockTexts stockTexts(Level added, bool firstParagraph)
{
    const QString caption = levelCaption(added);
    StockTexts t{caption + QStringLiteral("を指定して追加ボタンを押してください。"),
                 QStringLiteral("追加する%1がありません。").arg(caption)};
    if (added == Level::Paragraph && firstParagraph)
        t.empty = QStringLiteral("第１項として追加する項がありません。");
    return t;
}

QList<CodeAndName> stockList(QSqlDatabase db, const QString &style, const QString &document, Level added, const QStringList &parent,
                             StockFilter filter)
{
    const QString table = dictionaryTable(added);
    const QString nameColumn = added == Level::Preamble ? QStringLiteral("前文") : table;
    QString where = QStringLiteral("文章形式Code = ? AND 規程Code = ?");
    QVariantList keys = {style, document};
    for (qsizetype i = 0; i < parent.size(); ++i) {
        where += QStringLiteral(" AND %1 = ?").arg(placeColumns()[i]);
        keys << parent[i];
    }
    if (added == Level::Preamble || isClauseLevel(added))
        where += QStringLiteral(" AND %1 <= 1").arg(SqlDialect::of(db).integerOf(QStringLiteral("結合")));
    if (filter == StockFilter::Unselected)
        where += QStringLiteral(" AND 選択フラグ = 0");
    else if (filter == StockFilter::UserMade)
        where += added == Level::Article ? QStringLiteral(" AND Code >= '7000'") : QStringLiteral(" AND Code >= '70'");
    QList<CodeAndName> list;
    RowReader q = execSql(db,
                          QStringLiteral("SELECT Code, %1 FROM %2 WHERE %3 ORDER BY %4")
                              .arg(nameColumn, table, where, SqlDialect::of(db).integerOf(QStringLiteral("Code"))),
                          keys);
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

} // namespace normaris
