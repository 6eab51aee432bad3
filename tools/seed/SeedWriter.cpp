#include "seed/SeedWriter.h"

#include "base/Database.h"
#include "base/FileOps.h"
#include "rulebase/Schema.h"
#include "rulebase/SegmentKind.h"
#include "seed/SeedDraft.h"
#include "seed/SeedParser.h"
#include "seed/SeedRequirements.h"
#include "seed/SeedValidator.h"
#include "update/DictionaryRelease.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

namespace normaris::seed {

namespace {

const QString kConnection = QStringLiteral("normaris_seed");

QString segmentJoin(int i, int n) { return n == 1 ? QStringLiteral("0") : QString::number(i + 1); }

bool holdsWords(const QString &text) { return text.contains(u'★') || text.contains(u'☆'); }
bool holdsReferences(const QString &text) { return text.contains(u'◆'); }

// The place columns 規程Code … 号の細分イロハCode.
QVariantList placeValues(const Place &p) { return {p.kitei, p.sho, p.jo, p.kou, p.gou, p.maru, p.iroha}; }

class Writer {
public:
    explicit Writer(QSqlDatabase db) : m_db(std::move(db)) {}

    void write(const Dictionary &dictionary)
    {
        for (const FixedTable &t : dictionary.fixedTables)
            writeFixedTable(t);
        for (const Document &doc : dictionary.documents) {
            const bool composed = composesStandardDraft(doc);
            insertRow(m_db, QStringLiteral("規程"), {doc.style, doc.code, doc.name, 0, doc.formalName, composed, doc.kind});
            for (const Clause &c : doc.clauses)
                writeClause(doc, c);
        }
        // After all words are written: the draft selects the words of its clauses.
        for (const Document &doc : dictionary.documents) {
            if (composesStandardDraft(doc))
                writeStandardDraft(m_db, doc);
        }
    }

private:
    void writeFixedTable(const FixedTable &t)
    {
        const QStringList expected = schemaTable(t.table).columnNames();
        if (t.columns != expected)
            throw Failure(t.file + QStringLiteral(": 列は「%1」の順にしてください").arg(expected.join(u' ')));
        for (const QStringList &row : t.rows) {
            QVariantList values;
            for (const QString &v : row)
                values << v;
            insertRow(m_db, t.table, values);
        }
    }

    void writeClause(const Document &doc, const Clause &c)
    {
        // 章 and 条 are one row of a table of their own; the other levels a chain of segments.
        using RowWriter = void (Writer::*)(const Document &, const Clause &);
        static const std::pair<Level, RowWriter> oneRowLevels[] = {{Level::Chapter, &Writer::writeChapter},
                                                                   {Level::Article, &Writer::writeArticle}};
        for (const auto &[level, write] : oneRowLevels) {
            if (level == c.level) {
                (this->*write)(doc, c);
                return;
            }
        }
        const Place &p = c.place;
        const int n = int(c.segments.size());
        for (int i = 0; i < n; ++i) {
            const Segment &s = c.segments[i];
            const QString join = segmentJoin(i, n);
            if (c.level == Level::Preamble) {
                insertRow(m_db, QStringLiteral("前文"),
                          {doc.style, p.kitei, QStringLiteral("01"), join, s.lineBreak, s.text, holdsWords(s.text), 0,
                           selectedInSeed(doc, c), segmentKind(s.text)});
            } else {
                writeClauseRow(doc, c, s, join);
            }
            writeMarkerRows(c, s.text, join);
        }
    }

    void writeChapter(const Document &doc, const Clause &c)
    {
        const Place &p = c.place;
        insertRow(m_db, dictionaryTable(Level::Chapter), {doc.style, p.kitei, p.sho, c.title, 0, selectedInSeed(doc, c)});
    }

    void writeArticle(const Document &doc, const Clause &c)
    {
        const Place &p = c.place;
        insertRow(m_db, dictionaryTable(Level::Article),
                  {doc.style, p.kitei, p.sho, p.jo, c.title, 0, c.formalName, selectedInSeed(doc, c)});
    }

    void writeClauseRow(const Document &doc, const Clause &c, const Segment &s, const QString &join)
    {
        const Place &p = c.place;
        QVariantList values = {doc.style, p.kitei, p.sho, p.jo};
        const QString codes[] = {p.kou, p.gou, p.maru, p.iroha};
        const int depth = int(c.level) - int(Level::Paragraph);
        for (int d = 0; d <= depth; ++d)
            values << codes[d];
        values << s.text << join << s.lineBreak << s.templateCode << holdsWords(s.text) << holdsReferences(s.text) << 0
               << selectedInSeed(doc, c) << segmentKind(s.text);
        insertRow(m_db, dictionaryTable(c.level), values);
    }

    // Word and reference rows are keyed by place, not by style: both styles share them.
    void writeMarkerRows(const Clause &c, const QString &text, const QString &join)
    {
        static const QRegularExpression marker(QStringLiteral("([★◆])([0-9]{4})\\1"));
        auto it = marker.globalMatch(text);
        while (it.hasNext()) {
            const auto m = it.next();
            const QString code = m.captured(2);
            const QString key = QStringList{m.captured(1), code, c.place.describe(), join}.join(u'|');
            if (m_written.contains(key))
                continue;
            m_written.insert(key);
            QVariantList place = placeValues(c.place);
            place << join << levelCode(c.level);
            if (m.captured(1) == u"★")
                writeWord(c, code, place);
            else
                writeReference(c, code, place);
        }
    }

    void writeWord(const Clause &c, const QString &code, const QVariantList &place)
    {
        for (const Word &w : c.words) {
            if (w.code == code)
                insertRow(m_db, QStringLiteral("変数テーブル語句"), QVariantList{code, w.word} + place + QVariantList{w.caption, 0});
        }
    }

    void writeReference(const Clause &c, const QString &code, const QVariantList &place)
    {
        for (const Reference &r : c.references) {
            if (r.code == code)
                insertRow(m_db, QStringLiteral("変数テーブル番号"),
                          QVariantList{code} + place + placeValues(r.target) + QVariantList{r.targetSegment, levelCode(r.targetLevel)});
        }
    }

    QSqlDatabase m_db;
    QSet<QString> m_written;
};

} // namespace

void writeSeed(const Dictionary &dictionary, const QString &path)
{
    const QString partial = path + QStringLiteral(".part");
    QFile::remove(partial);
    QFile(partial).open(QIODevice::WriteOnly); // an empty file for SQLite to fill
    try {
        {
            QSqlDatabase db = openDatabase(partial, kConnection);
            Transaction transaction(db);
            createSchema(db);
            Writer(db).write(dictionary);
            transaction.commit();
            recordRelease(db, dictionary.release);
        }
        closeDatabase(kConnection);
        replaceFile(partial, path);
    } catch (...) {
        closeDatabase(kConnection);
        QFile::remove(partial);
        throw;
    }
}

QList<SourceError> generateSeed(const QString &sourceFolder, const QString &path)
{
    QList<SourceError> errors;
    Dictionary dictionary = readDictionary(sourceFolder, errors);
    resolveReferences(dictionary, errors);
    errors += validate(dictionary);
    // The legal requirements travel beside the seed file, once checked against its dictionary.
    const QString tablePath = sourceFolder + u'/' + kRequirementsFile;
    QFile table(tablePath);
    if (!table.open(QIODevice::ReadOnly)) {
        errors << SourceError{kRequirementsFile, 0, QStringLiteral("ファイルを読めません")};
        return errors;
    }
    errors += checkRequirements(dictionary, kRequirementsFile, QString::fromUtf8(table.readAll()));
    if (errors.isEmpty()) {
        writeSeed(dictionary, path);
        copyFileAtomically(tablePath, QFileInfo(path).absolutePath() + u'/' + kRequirementsFile);
    }
    return errors;
}

} // namespace normaris::seed
