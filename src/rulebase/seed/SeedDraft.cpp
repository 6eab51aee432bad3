#include "rulebase/seed/SeedDraft.h"

#include "rulebase/Database.h"
#include "rulebase/Schema.h"

namespace normaris::seed {

namespace {

const QString kArticleRows = QStringLiteral("作成データ補助～条");
const QString kClauseRows = QStringLiteral("作成データ補助項～");

// The parent level of each level in the composition walk.
Level parentLevel(Level level)
{
    switch (level) {
    case Level::Article: return Level::Chapter;
    case Level::Paragraph: return Level::Article;
    case Level::Item: return Level::Paragraph;
    case Level::Maru: return Level::Item;
    case Level::Iroha: return Level::Maru;
    default: return Level::Document;
    }
}

QString joinOf(int i, int n) { return n == 1 ? QStringLiteral("0") : QString::number(i + 1); }

class DraftWriter {
public:
    DraftWriter(QSqlDatabase db, const Document &doc) : m_db(std::move(db)), m_doc(doc) {}

    void write()
    {
        writeRow(kArticleRows, ++m_articleOrder, Level::Document, 0, Place{}, QStringLiteral("0"), false,
                 m_doc.name, false, false, m_doc.formalName);
        m_inDraft[Level::Document] = true;
        for (const Clause &c : m_doc.clauses) {
            const bool in = selectedInSeed(m_doc, c) && m_inDraft.value(parentLevel(c.level));
            m_inDraft[c.level] = in;
            if (in)
                writeClause(c);
        }
    }

private:
    void writeClause(const Clause &c)
    {
        switch (c.level) {
        case Level::Preamble:
            writeSegments(kArticleRows, m_articleOrder, c, 0);
            selectWords(QStringLiteral("規程Code = ? AND 種別 = '10'"), {m_doc.code});
            return;
        case Level::Chapter:
            writeRow(kArticleRows, ++m_articleOrder, c.level, ++m_chapterNumber, c.place, QStringLiteral("0"), false,
                     c.title, false, false, QString());
            return;
        case Level::Article:
            writeRow(kArticleRows, ++m_articleOrder, c.level, ++m_articleNumber, c.place, QStringLiteral("0"), false,
                     c.title, false, false, c.formalName);
            m_clauseOrder = 0;
            m_number.clear();
            selectWords(QStringLiteral("規程Code = ? AND 章Code = ? AND 条Code = ? AND 種別 IN ('4','5','6','7')"),
                        {m_doc.code, c.place.sho, c.place.jo});
            return;
        default:
            break;
        }
        // A new clause restarts the numbering of every level below it.
        for (int l = int(c.level) + 1; l <= int(Level::Iroha); ++l)
            m_number.remove(Level(l));
        writeSegments(kClauseRows, m_clauseOrder, c, ++m_number[c.level]);
    }

    // Every segment is a row of its own; the segments share the clause's 番号.
    void writeSegments(const QString &table, int &order, const Clause &c, int number)
    {
        const int n = int(c.segments.size());
        for (int i = 0; i < n; ++i) {
            const QString &text = c.segments[i].text;
            writeRow(table, ++order, c.level, number, c.place, joinOf(i, n), c.segments[i].lineBreak,
                     i == 0 ? c.templateCode : QStringLiteral("0"), text,
                     text.contains(u'★') || text.contains(u'☆'),
                     c.level != Level::Preamble && text.contains(u'◆'), QString());
        }
    }

    void writeRow(const QString &table, int order, Level level, int number, const Place &p, const QString &join,
                  bool lineBreak, const QString &text, bool words, bool references, const QString &formalName)
    {
        writeRow(table, order, level, number, p, join, lineBreak, QStringLiteral("0"), text, words, references, formalName);
    }

    void writeRow(const QString &table, int order, Level level, int number, const Place &p, const QString &join,
                  bool lineBreak, const QString &templateCode, const QString &text, bool words, bool references,
                  const QString &formalName)
    {
        insertRow(m_db, table,
                  {order, QString::number(int(level)), m_doc.code, number, p.sho, p.jo, p.kou, p.gou, p.maru, p.iroha,
                   join, lineBreak ? 1 : 0, templateCode, text, words, references, 0, m_doc.style, formalName});
    }

    void selectWords(const QString &where, const QVariantList &keys)
    {
        execSql(m_db, QStringLiteral("UPDATE 変数テーブル語句 SET 選択フラグ = 1 WHERE ") + where, keys);
    }

    QSqlDatabase m_db;
    const Document &m_doc;
    QHash<Level, bool> m_inDraft;
    QHash<Level, int> m_number;
    int m_articleOrder = 0;
    int m_clauseOrder = 0;
    int m_chapterNumber = 0;
    int m_articleNumber = 0;
};

} // namespace

bool composesStandardDraft(const Document &doc) { return doc.standardDraft && doc.style == u"1"; }

bool selectedInSeed(const Document &doc, const Clause &clause)
{
    if (clause.stock)
        return false;
    if (clause.level == Level::Chapter || clause.level == Level::Preamble)
        return composesStandardDraft(doc);
    return true;
}

void writeStandardDraft(QSqlDatabase db, const Document &doc) { DraftWriter(std::move(db), doc).write(); }

} // namespace normaris::seed
