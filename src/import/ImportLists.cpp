#include "import/ImportLists.h"

#include "base/Database.h"

#include <QSqlError>
#include <QSqlQuery>

namespace normaris {

QList<CodeAndName> importChoices(QSqlDatabase source, const QString &style, Level level, const QStringList &parents, bool ownLevel)
{
    const LevelInfo &info = levelInfo(level);
    const KeyFilter filter = keyFilter(level, style, parents);
    QString sql = QStringLiteral("SELECT Code, \"%1\" FROM \"%2\" WHERE %3").arg(textColumn(level), dictionaryTable(level), filter.where());
    QVariantList binds = filter.values;
    if (ownLevel) {
        // Compared as text, as every code is.
        sql += QStringLiteral(" AND Code >= ?");
        binds << QString::number(info.firstUserCode);
    }
    // A clause in segments is listed once, by its first segment.
    if (info.segmented)
        sql += QStringLiteral(" AND 結合 <= '1'");
    sql += QStringLiteral(" ORDER BY CAST(Code AS INTEGER), ID");
    RowReader q = execSql(source, sql, binds);
    QList<CodeAndName> choices;
    while (q.next())
        choices << CodeAndName{q.value(0).toString(), q.value(1).toString()};
    return choices;
}

QString styleName(QSqlDatabase source, const QString &style)
{
    return scalar(source, QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {style}).toString();
}

QString importLevelCaption(Level level) { return levelCaption(level); }

QString importLevelPrompt(Level level)
{
    // The document alone, the document and 章, or the span from the document to the level.
    const QString document = levelCaption(Level::Document);
    const int depth = ImportPlace::depthOf(level);
    if (depth == 0)
        return document + QStringLiteral("を指定してください");
    const QString joint = depth == 1 ? QStringLiteral("と") : QStringLiteral("～");
    return QStringLiteral("「") + document + QStringLiteral("」") + joint + QStringLiteral("「") + levelCaption(level)
           + QStringLiteral("」を指定してください");
}

QString importGuardText(Level level) { return QStringLiteral("「") + levelCaption(level) + QStringLiteral("」を指定してください"); }

} // namespace normaris
