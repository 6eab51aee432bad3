#include "dictionary/ClauseSearch.h"

#include "base/Database.h"
#include "base/SqlDialect.h"
#include "dictionary/ClausePlace.h"
#include "dictionary/EntryText.h"

#include <QRegularExpression>

namespace normaris::dictionary {

namespace {

const QString kIndexConnection = QStringLiteral("clause_search");

// The memory database of the index: made for one search and dropped after it.
class MemoryIndex {
public:
    MemoryIndex()
    {
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), kIndexConnection);
        m_db.setDatabaseName(QStringLiteral(":memory:"));
        if (!m_db.open())
            throw DbError(QStringLiteral("検索の索引を作れません。"));
        execSql(m_db, QStringLiteral("CREATE VIRTUAL TABLE 索引 USING fts5(本文, 番号 UNINDEXED, tokenize = 'trigram')"));
    }
    ~MemoryIndex()
    {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(kIndexConnection);
    }
    MemoryIndex(const MemoryIndex &) = delete;
    MemoryIndex &operator=(const MemoryIndex &) = delete;
    QSqlDatabase db() const { return m_db; }

private:
    QSqlDatabase m_db;
};

QString likePattern(const QString &word)
{
    QString escaped = word;
    escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'%', QStringLiteral("\\%")).replace(u'_', QStringLiteral("\\_"));
    return QStringLiteral("%") + escaped + QStringLiteral("%");
}

} // namespace

QString SearchHit::place() const
{
    QStringList parts = {QString::fromUtf16(levelInfo(Level::Document).sourceName) + document};
    for (qsizetype i = 0; i < codes.size(); ++i)
        parts << QString::fromUtf16(levelInfo(levelOfDepth(int(i) + 1)).sourceName) + codes[i];
    return parts.join(u' ');
}

QList<SearchHit> ClauseSearch::find(const QString &words, const QString &document) const
{
    static const QRegularExpression blanks(QStringLiteral("[\\s　]+"));
    const QStringList wanted = words.split(blanks, Qt::SkipEmptyParts);
    if (wanted.isEmpty())
        return {};
    // Every clause as one text, its segments joined; every article's caption.
    QList<SearchHit> clauses;
    QStringList texts;
    const QString documentFilter = document.isEmpty() ? QString() : QStringLiteral(" WHERE t.規程Code = ?");
    const QVariantList documentValue = document.isEmpty() ? QVariantList() : QVariantList{document};
    const SqlDialect &dialect = SqlDialect::of(m_db);
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth < 2 && info.level != Level::Preamble)
            continue;
        const ClausePlace any = info.level == Level::Preamble ? ClausePlace::preamble(QString(), QString())
                                                              : ClausePlace{info.level, QString(), QString(), QStringList(info.placeDepth)};
        QStringList keys = any.keyColumns();
        QStringList selected;
        for (const QString &k : keys)
            selected << QStringLiteral("t.") + dialect.quote(k);
        const bool segmented = info.segmented;
        const QString sql =
            QStringLiteral("SELECT %1, t.\"%2\", d.規程 %3 FROM \"%4\" t JOIN 規程 d ON d.文章形式Code = t.文章形式Code "
                           "AND d.Code = t.規程Code%5 ORDER BY t.文章形式Code, CAST(t.規程Code AS INTEGER), %6")
                .arg(selected.join(u','), any.textColumn(), segmented ? QStringLiteral(", t.結合") : QString(), any.table(), documentFilter,
                     QStringList(selected.mid(2))
                             .replaceInStrings(QRegularExpression(QStringLiteral("^(.*)$")), QStringLiteral("CAST(\\1 AS INTEGER)"))
                             .join(u',')
                         + (segmented ? QStringLiteral(", CAST(t.結合 AS INTEGER)") : QString()));
        auto rows = execSql(m_db, sql, documentValue);
        QString lastKey;
        while (rows.next()) {
            QStringList key;
            for (int k = 0; k < keys.size(); ++k)
                key << rows.value(k).toString();
            const QString text = rows.value(int(keys.size())).toString();
            const QString joined = key.join(u'|');
            if (joined == lastKey && segmented) {
                texts.last() += text;
                continue;
            }
            lastKey = joined;
            SearchHit hit;
            hit.style = key[0];
            hit.document = key[1];
            hit.documentName = rows.value(int(keys.size()) + 1).toString();
            hit.level = info.level;
            hit.codes = info.level == Level::Preamble ? QStringList() : key.mid(2);
            clauses << hit;
            texts << text;
        }
    }
    MemoryIndex index;
    {
        Transaction t(index.db());
        RowWriter insert(index.db(), QStringLiteral("INSERT INTO 索引 (本文, 番号) VALUES (?, ?)"));
        for (qsizetype i = 0; i < texts.size(); ++i)
            insert.write({texts[i], qlonglong(i)});
        t.commit();
    }
    QStringList conditions;
    QVariantList values;
    for (const QString &w : wanted) {
        conditions << QStringLiteral("本文 LIKE ? ESCAPE '\\'");
        values << likePattern(w);
    }
    auto found = execSql(
        index.db(),
        QStringLiteral("SELECT 番号 FROM 索引 WHERE %1 ORDER BY CAST(番号 AS INTEGER)").arg(conditions.join(QStringLiteral(" AND "))),
        values);
    QList<SearchHit> hits;
    while (found.next()) {
        const qsizetype i = found.value(0).toLongLong();
        SearchHit hit = clauses[i];
        // The words around the hit, a reference shown as its mark alone.
        static const QRegularExpression reference(QStringLiteral("◆[0-9]{4}◆"));
        const QString text = QString(texts[i]).replace(reference, QStringLiteral("◆"));
        const qsizetype at = text.indexOf(wanted.first());
        const qsizetype from = qMax<qsizetype>(0, at - kContext);
        hit.context = (from > 0 ? QStringLiteral("…") : QString()) + text.mid(from, at - from + wanted.first().size() + kContext)
                      + (at + wanted.first().size() + kContext < text.size() ? QStringLiteral("…") : QString());
        if (hit.codes.size() >= 2) {
            const QVariant number =
                scalar(m_db,
                       QStringLiteral("SELECT 番号 FROM 作成データ補助～条 WHERE 文章形式Code = ? AND 規程Code = ? AND 種別 = '3' "
                                      "AND 章Code = ? AND 条Code = ?"),
                       {hit.style, hit.document, hit.codes[0], hit.codes[1]});
            if (number.isValid()) {
                QString digits = number.toString();
                for (QChar &c : digits)
                    c = QChar(c.unicode() - u'0' + 0xFF10);
                hit.articleNumber = QStringLiteral("第%1条").arg(digits);
            }
        }
        hits << hit;
    }
    return hits;
}

} // namespace normaris::dictionary
