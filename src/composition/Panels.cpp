#include "composition/Panels.h"

#include "composition/CompositionRow.h"
#include "composition/DictionaryWalk.h"
#include "rulebase/Database.h"

#include <QSqlQuery>

namespace normaris {

namespace {

const QString kContinued = QStringLiteral("※上記の続き");

// The text of a clause as the dictionary has it now: its first segment.
QString dictionaryText(QSqlDatabase db, const QString &style, const QString &document, const CompositionRow &row)
{
    const Level level = row.level;
    if (level == Level::Document)
        return scalar(db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
    if (level == Level::Preamble)
        return scalar(db, QStringLiteral("SELECT 前文 FROM 前文 WHERE 文章形式Code = ? AND 規程Code = ? AND Code = '01' ORDER BY CAST(結合 AS INTEGER) LIMIT 1"),
                      {style, document}).toString();
    const int n = placeDepth(level);
    // The name column of 章 and 条, and the text column of a clause table, bear the table's name.
    const QString table = dictionaryTable(level);
    const QString order = isClauseLevel(level) ? QStringLiteral(" ORDER BY CAST(結合 AS INTEGER) LIMIT 1") : QString();
    return scalar(db, QStringLiteral("SELECT \"%1\" FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ? AND %2%3")
                          .arg(table, dictionaryPlaceWhere(level, n), order),
                  QVariantList{style, document} + QVariantList(row.codes.begin(), row.codes.begin() + n)).toString();
}

QList<PanelRow> panelRows(QSqlDatabase db, const QString &style, const QString &document, const QList<CompositionRow> &rows)
{
    QList<PanelRow> panel;
    for (const CompositionRow &r : rows) {
        PanelRow p;
        p.level = r.level;
        p.codes = r.codes;
        p.join = r.join;
        if (r.join.toInt() > 1) {
            // A continuation row of a split clause.
            p.text = r.templateCode == u"0" || r.templateCode.isEmpty() || r.level == Level::Preamble
                         ? kContinued
                         : kContinued + QStringLiteral("（●テンプレート●") + r.templateCode + QStringLiteral("）");
        } else {
            p.text = dictionaryText(db, style, document, r);
        }
        panel << p;
    }
    return panel;
}

} // namespace

QList<PanelRow> articlePanel(QSqlDatabase db, const QString &style, const QString &document)
{
    return panelRows(db, style, document, readArticleRows(db, style, document));
}

QList<PanelRow> paragraphPanel(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                               const QString &article)
{
    return panelRows(db, style, document, readClauseRows(db, style, document, chapter, article));
}

QList<CodeAndName> panelActions(QSqlDatabase db, Level rowLevel)
{
    QString codes;
    switch (rowLevel) {
    case Level::Document: codes = QStringLiteral("'3','4'"); break;
    case Level::Preamble:
    case Level::Chapter: codes = QStringLiteral("'2','3'"); break;
    case Level::Article:
    case Level::Paragraph:
    case Level::Item: codes = QStringLiteral("'2','3','4','5'"); break;
    case Level::Maru:
    case Level::Iroha: codes = QStringLiteral("'2','3','4','5','6'"); break;
    default: return {};
    }
    QList<CodeAndName> actions;
    QSqlQuery q = execSql(db, QStringLiteral("SELECT Code, 選択肢 FROM 作成データ選択肢 WHERE 種別 = ? AND Code IN (%1) ORDER BY CAST(Code AS INTEGER)").arg(codes),
                          {levelCode(rowLevel)});
    while (q.next())
        actions << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return actions;
}

bool articleHasParagraphs(QSqlDatabase db, const QString &style, const QString &document, const QString &chapter,
                          const QString &article)
{
    return scalar(db, QStringLiteral("SELECT count(*) FROM 項 WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                  {style, document, chapter, article}).toInt() > 0;
}

QString panelCaption(Level level)
{
    switch (level) {
    case Level::Document: return QStringLiteral("規則");
    case Level::Preamble: return QStringLiteral("前文");
    default: return levelCaption(level);
    }
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
    StockTexts t{caption + QStringLiteral("を指定して追加ボタンを押してください。"), QStringLiteral("追加する%1がありません。").arg(caption)};
    if (added == Level::Paragraph && firstParagraph)
        t.empty = QStringLiteral("第１項として追加する項がありません。");
    return t;
}

QList<CodeAndName> stockList(QSqlDatabase db, const QString &style, const QString &document, Level added,
                             const QStringList &parent, StockFilter filter)
{
    const QString table = dictionaryTable(added);
    const QString nameColumn = added == Level::Preamble ? QStringLiteral("前文") : table;
    QString where = QStringLiteral("文章形式Code = ? AND 規程Code = ?");
    QVariantList keys = {style, document};
    for (qsizetype i = 0; i < parent.size(); ++i) {
        where += QStringLiteral(" AND \"%1\" = ?").arg(placeColumns()[i]);
        keys << parent[i];
    }
    if (added == Level::Preamble || isClauseLevel(added))
        where += QStringLiteral(" AND CAST(結合 AS INTEGER) <= 1");
    if (filter == StockFilter::Unselected)
        where += QStringLiteral(" AND 選択フラグ = 0");
    else if (filter == StockFilter::UserMade)
        where += added == Level::Article ? QStringLiteral(" AND Code >= '7000'") : QStringLiteral(" AND Code >= '70'");
    QList<CodeAndName> list;
    QSqlQuery q = execSql(db, QStringLiteral("SELECT Code, \"%1\" FROM \"%2\" WHERE %3 ORDER BY CAST(Code AS INTEGER)").arg(nameColumn, table, where), keys);
    while (q.next())
        list << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return list;
}

} // namespace normaris
