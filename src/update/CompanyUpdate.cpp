#include "update/CompanyUpdate.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/CompanyLock.h"
#include "base/Database.h"
#include "base/SqlDialect.h"
#include "rulebase/CompositionRow.h"
#include "export/Numerals.h"
#include "rulebase/CompanyDatabase.h"
#include "rulebase/CompanyCopy.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/Schema.h"
#include "update/DocumentVersions.h"
#include "update/LegalRequirements.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>

namespace normaris {

namespace {

const QString kUpdateConnection = QStringLiteral("normaris_update");
const QString kSeedConnection = QStringLiteral("normaris_update_seed");

// What an entry is made of in a data file: its rows, and the words and references at its place.
struct EntryRows {
    QStringList columns; // of rows
    QList<QVariantList> rows;
    QList<QVariantList> words;
    QList<QVariantList> references;
};

const QStringList &holderColumns()
{
    static const QStringList columns = {QStringLiteral("規程Code"),
                                        QStringLiteral("章Code"),
                                        QStringLiteral("条Code"),
                                        QStringLiteral("項Code"),
                                        QStringLiteral("号Code"),
                                        QStringLiteral("号の細分丸Code"),
                                        QStringLiteral("号の細分イロハCode")};
    return columns;
}

// The columns of a table as the file has them (a file of the older form lacks 結合種別).
QStringList fileColumns(QSqlDatabase db, const QString &table)
{
    const SqlDialect &dialect = SqlDialect::of(db);
    QStringList present;
    RowReader rows = execSql(db, dialect.columnsSql, {dialect.keptName(table)});
    while (rows.next())
        present << rows.value(0).toString();
    QStringList columns;
    for (const QString &c : schemaTable(table).columnNames()) {
        if (present.contains(dialect.keptName(c)))
            columns << c;
    }
    return columns;
}

QString entryWhere(Level level)
{
    QStringList parts = {QStringLiteral("文章形式Code = ?")};
    for (const QString &c : entryKeyColumns(level))
        parts << c + QStringLiteral(" = ?");
    return parts.join(QStringLiteral(" AND "));
}

QVariantList entryBinds(const EntryKey &key)
{
    QVariantList binds = {key.style};
    for (int i = 0; i <= placeDepth(key.level); ++i)
        binds << key.place[i];
    return binds;
}

QString holderWhere()
{
    QStringList parts = {QStringLiteral("種別 = ?")};
    for (const QString &c : holderColumns())
        parts << QStringLiteral("COALESCE(%1, '') = ?").arg(c);
    return parts.join(QStringLiteral(" AND "));
}

QVariantList holderBinds(const EntryKey &key)
{
    QVariantList binds = {levelCode(key.level)};
    for (const QString &code : key.place)
        binds << code;
    return binds;
}

QList<QVariantList> readAll(QSqlDatabase db, const QString &table, const QStringList &columns, const QString &where,
                            const QVariantList &binds, const QString &order)
{
    QList<QVariantList> out;
    RowReader rows =
        execSql(db, QStringLiteral("SELECT %1 FROM \"%2\" WHERE %3 ORDER BY %4").arg(columnList(columns), table, where, order), binds);
    while (rows.next()) {
        QVariantList values;
        for (int i = 0; i < columns.size(); ++i)
            values << rows.value(i);
        out << values;
    }
    return out;
}

EntryRows readEntry(QSqlDatabase db, const EntryKey &key)
{
    EntryRows e;
    const QString table = dictionaryTable(key.level);
    e.columns = fileColumns(db, table);
    const bool segmented = levelInfo(key.level).segmented;
    e.rows = readAll(db, table, e.columns, entryWhere(key.level), entryBinds(key),
                     segmented ? QStringLiteral("CAST(結合 AS INTEGER)") : QStringLiteral("ID"));
    if (key.level != Level::Document) {
        const QString order = QStringLiteral("Code, CAST(結合 AS INTEGER)");
        e.words = readAll(db, QStringLiteral("変数テーブル語句"), schemaTable(QStringLiteral("変数テーブル語句")).columnNames(),
                          holderWhere(), holderBinds(key), order);
        e.references = readAll(db, QStringLiteral("変数テーブル番号"), schemaTable(QStringLiteral("変数テーブル番号")).columnNames(),
                               holderWhere(), holderBinds(key), order);
    }
    return e;
}

bool entryExists(QSqlDatabase db, const EntryKey &key)
{
    if (!key.place.value(0).size() && key.level == Level::Document)
        return false;
    return scalar(db, QStringLiteral("SELECT 1 FROM \"%1\" WHERE %2 LIMIT 1").arg(dictionaryTable(key.level), entryWhere(key.level)),
                  entryBinds(key))
        .isValid();
}

bool entrySelected(QSqlDatabase db, const EntryKey &key)
{
    return scalar(db,
                  QStringLiteral("SELECT 選択フラグ FROM \"%1\" WHERE %2 ORDER BY ID LIMIT 1")
                      .arg(dictionaryTable(key.level), entryWhere(key.level)),
                  entryBinds(key))
        .toBool();
}

// Whether the entry stands in the company's composition (a document it composes).
bool entryComposed(QSqlDatabase db, const EntryKey &key)
{
    QStringList parts = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?"), QStringLiteral("種別 = ?")};
    QVariantList binds = {key.style, key.place[0], levelCode(key.level)};
    for (int i = 1; i <= placeDepth(key.level); ++i) {
        parts << placeColumns()[i - 1] + QStringLiteral(" = ?");
        binds << key.place[i];
    }
    return scalar(db,
                  QStringLiteral("SELECT 1 FROM \"%1\" WHERE %2 LIMIT 1").arg(workingTable(key.level), parts.join(QStringLiteral(" AND "))),
                  binds)
        .isValid();
}

// Whether the company keeps entries below key (its own, which no release touches).
bool holdsEntriesBelow(QSqlDatabase db, const EntryKey &key)
{
    const int depth = placeDepth(key.level);
    if (key.level == Level::Preamble)
        return false;
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth <= depth || info.level == Level::Closing)
            continue;
        QStringList parts = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?")};
        QVariantList binds = {key.style, key.place[0]};
        for (int i = 1; i <= depth; ++i) {
            parts << placeColumns()[i - 1] + QStringLiteral(" = ?");
            binds << key.place[i];
        }
        if (scalar(db,
                   QStringLiteral("SELECT 1 FROM \"%1\" WHERE %2 LIMIT 1")
                       .arg(QString::fromUtf16(info.table), parts.join(QStringLiteral(" AND "))),
                   binds)
                .isValid())
            return true;
    }
    return false;
}

void deleteEntryRows(QSqlDatabase db, const EntryKey &key)
{
    execSql(db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(dictionaryTable(key.level), entryWhere(key.level)), entryBinds(key));
}

void deleteHolderRows(QSqlDatabase db, const EntryKey &key)
{
    for (const char *table : {"変数テーブル語句", "変数テーブル番号"})
        execSql(db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(QString::fromUtf8(table), holderWhere()), holderBinds(key));
}

// The entry's rows from the program's release put in the company, selected as given.
void insertEntryRows(QSqlDatabase db, const EntryKey &key, const EntryRows &fresh, bool selected)
{
    const QStringList target = fileColumns(db, dictionaryTable(key.level));
    for (const QVariantList &row : fresh.rows) {
        QStringList columns;
        QVariantList values;
        for (qsizetype i = 0; i < fresh.columns.size(); ++i) {
            const QString &c = fresh.columns[i];
            if (!target.contains(c))
                continue;
            columns << c;
            values << (c == u"選択フラグ" ? QVariant(selected ? 1 : 0) : c == u"変更フラグ" ? QVariant(0) : row[i]);
        }
        insertInto(db, dictionaryTable(key.level), columns, values);
    }
}

// The composition rows of a replaced entry follow its new rows, at the same place and number.
void followComposition(QSqlDatabase db, const EntryKey &key, const EntryRows &fresh)
{
    if (key.level == Level::Closing)
        return;
    const QString table = workingTable(key.level);
    QStringList parts = {QStringLiteral("文章形式Code = ?"), QStringLiteral("規程Code = ?"), QStringLiteral("種別 = ?")};
    QVariantList binds = {key.style, key.place[0], levelCode(key.level)};
    for (int i = 1; i <= placeDepth(key.level); ++i) {
        parts << placeColumns()[i - 1] + QStringLiteral(" = ?");
        binds << key.place[i];
    }
    const QString where = parts.join(QStringLiteral(" AND "));
    const QList<CompositionRow> old = readRows(db, table, where, binds);
    if (old.isEmpty())
        return;
    execSql(db, QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(table, where), binds);
    // Every segment has a 順番 of its own: the rows after the clause move by the change in
    // its segments, within the 条 (or, above 項, within the document).
    const int delta = int(fresh.rows.size()) - int(old.size());
    if (delta != 0) {
        QString scope = QStringLiteral("文章形式Code = ? AND 規程Code = ?");
        QVariantList scopeBinds = {key.style, key.place[0]};
        if (isClauseLevel(key.level)) {
            scope += QStringLiteral(" AND 章Code = ? AND 条Code = ?");
            scopeBinds << key.place[1] << key.place[2];
        }
        execSql(db, QStringLiteral("UPDATE \"%1\" SET 順番 = 順番 + ? WHERE %2 AND 順番 > ?").arg(table, scope),
                QVariantList{delta} + scopeBinds + QVariantList{old.last().order});
    }
    int order = old.first().order;
    QList<CompositionRow> rows;
    const QString textColumnName = textColumn(key.level);
    for (const QVariantList &values : fresh.rows) {
        CompositionRow r = old.first();
        auto value = [&](const QString &column) { return values.value(int(fresh.columns.indexOf(column))); };
        r.text = value(textColumnName).toString();
        if (fresh.columns.contains(QStringLiteral("結合"))) {
            r.join = value(QStringLiteral("結合")).toString();
            r.lineBreak = value(QStringLiteral("改行")).toBool();
        }
        if (fresh.columns.contains(QStringLiteral("テンプレート")))
            r.templateCode = value(QStringLiteral("テンプレート")).toString();
        if (fresh.columns.contains(QStringLiteral("変数語句")))
            r.words = value(QStringLiteral("変数語句")).toBool();
        if (fresh.columns.contains(QStringLiteral("変数番号")))
            r.references = value(QStringLiteral("変数番号")).toBool();
        if (fresh.columns.contains(QStringLiteral("正式名称")))
            r.formalName = value(QStringLiteral("正式名称")).toString();
        r.changed = false;
        r.order = order++;
        rows << r;
    }
    insertCompositionRows(db, table, rows);
}

// The words and references at a place after its entries were replaced: the release's,
// the company's word values kept where it set them and the word remains. Where an entry
// of the place in another style is kept, the company's rows stay and only new ones join.
void rewriteHolders(QSqlDatabase db, const EntryKey &key, const EntryRows &fresh, const EntryRows &company, bool companySetWords,
                    bool keepCompanyRows, bool selected)
{
    const QStringList wordColumns = schemaTable(QStringLiteral("変数テーブル語句")).columnNames();
    const int codeAt = int(wordColumns.indexOf(QStringLiteral("Code")));
    const int wordAt = int(wordColumns.indexOf(QStringLiteral("語句")));
    const int joinAt = int(wordColumns.indexOf(QStringLiteral("結合")));
    const int selectedAt = int(wordColumns.indexOf(QStringLiteral("選択フラグ")));
    QHash<QString, QVariant> values;
    QSet<QString> present;
    for (const QVariantList &w : company.words) {
        values.insert(w[codeAt].toString(), w[wordAt]);
        present.insert(w[codeAt].toString() + u'|' + w[joinAt].toString());
    }
    QSet<QString> refsPresent;
    const QStringList refColumns = schemaTable(QStringLiteral("変数テーブル番号")).columnNames();
    const int refCodeAt = int(refColumns.indexOf(QStringLiteral("Code")));
    const int refJoinAt = int(refColumns.indexOf(QStringLiteral("結合")));
    for (const QVariantList &r : company.references)
        refsPresent.insert(r[refCodeAt].toString() + u'|' + r[refJoinAt].toString());
    if (!keepCompanyRows)
        deleteHolderRows(db, key);
    for (QVariantList w : fresh.words) {
        const QString code = w[codeAt].toString();
        if (keepCompanyRows && present.contains(code + u'|' + w[joinAt].toString()))
            continue;
        if (companySetWords && values.contains(code))
            w[wordAt] = values.value(code);
        w[selectedAt] = selected ? 1 : 0;
        insertRow(db, QStringLiteral("変数テーブル語句"), w);
    }
    for (const QVariantList &r : fresh.references) {
        if (keepCompanyRows && refsPresent.contains(r[refCodeAt].toString() + u'|' + r[refJoinAt].toString()))
            continue;
        insertRow(db, QStringLiteral("変数テーブル番号"), r);
    }
}

// 1:規程01:章03:条0012:項02, what the report shows and --take names.
QString placeId(const EntryKey &key)
{
    QStringList parts = {key.style, QStringLiteral("規程") + key.place[0]};
    if (key.level == Level::Preamble) {
        parts << QStringLiteral("前文");
    } else {
        for (const LevelInfo &info : kLevels) {
            if (info.placeDepth >= 1 && info.placeDepth <= placeDepth(key.level) && info.level != Level::Closing)
                parts << QString::fromUtf16(info.sourceName) + key.place[info.placeDepth];
        }
    }
    return parts.join(u':');
}

// Entries in the order of their place, parents before what is below them.
bool shallowerFirst(const EntryKey &a, const EntryKey &b)
{
    const int da = a.level == Level::Preamble ? 1 : placeDepth(a.level);
    const int db = b.level == Level::Preamble ? 1 : placeDepth(b.level);
    if (da != db)
        return da < db;
    return a.text() < b.text();
}

class UpdateRun {
public:
    UpdateRun(QSqlDatabase db, QSqlDatabase seed, const Release &from, const Release &to, const UpdateOptions &options,
              UpdateResult &result)
        : m_db(std::move(db)), m_seed(std::move(seed)), m_from(from), m_to(to), m_options(options), m_result(result)
    {
    }

    void run()
    {
        m_company = dictionaryPrints(m_db);
        readNames();
        QList<EntryKey> changed, added, removed;
        QSet<QString> keys;
        for (auto it = m_to.prints.cbegin(); it != m_to.prints.cend(); ++it)
            keys.insert(it.key());
        for (auto it = m_from.prints.cbegin(); it != m_from.prints.cend(); ++it)
            keys.insert(it.key());
        for (const QString &k : std::as_const(keys)) {
            const EntryKey key = EntryKey::parse(k);
            if (key.isUsers())
                continue;
            const bool before = m_from.prints.contains(k), after = m_to.prints.contains(k);
            if (before && after && m_from.prints.value(k) == m_to.prints.value(k))
                continue;
            (before && after ? changed : after ? added : removed) << key;
        }
        std::sort(changed.begin(), changed.end(), shallowerFirst);
        std::sort(added.begin(), added.end(), shallowerFirst);
        std::sort(removed.begin(), removed.end(), [](const EntryKey &a, const EntryKey &b) { return shallowerFirst(b, a); });
        for (const EntryKey &key : std::as_const(changed))
            change(key);
        for (const EntryKey &key : std::as_const(added))
            add(key);
        for (const EntryKey &key : std::as_const(removed))
            remove(key);
        finishHolders();
        recordRelease(m_db, m_to.name);
    }

private:
    void readNames()
    {
        RowReader rows = execSql(m_db, QStringLiteral("SELECT 文章形式Code, Code, 規程 FROM 規程"));
        while (rows.next())
            m_names.insert(rows.value(0).toString() + u'|' + rows.value(1).toString(), rows.value(2).toString());
        RowReader articles =
            execSql(m_db, QStringLiteral("SELECT 文章形式Code, 規程Code, 条Code, 番号 FROM 作成データ補助～条 WHERE 種別 = ?"),
                    {levelCode(Level::Article)});
        while (articles.next()) {
            m_articles.insert(
                QStringList{articles.value(0).toString(), articles.value(1).toString(), articles.value(2).toString()}.join(u'|'),
                QStringLiteral("第%1条").arg(fullWidthDigits(articles.value(3).toInt())));
        }
    }

    UpdateEntry entry(UpdateKind kind, const EntryKey &key)
    {
        UpdateEntry e;
        e.kind = kind;
        e.key = key.text();
        e.place = placeId(key);
        e.documentName = m_names.value(key.style + u'|' + key.place[0]);
        if (!key.place[2].isEmpty())
            e.article = m_articles.value(QStringList{key.style, key.place[0], key.place[2]}.join(u'|'));
        e.shipped = m_from.prints.value(key.text()).text;
        e.company = m_company.value(key.text()).text;
        e.offered = m_to.prints.value(key.text()).text;
        return e;
    }

    void list(UpdateEntry e) { m_result.entries << std::move(e); }

    bool taken(const EntryKey &key) const { return m_options.take.contains(placeId(key)); }

    void change(const EntryKey &key)
    {
        const QString k = key.text();
        if (!m_company.contains(k)) {
            // The company deleted it: nothing of the release's is put back.
            UpdateEntry e = entry(UpdateKind::Kept, key);
            e.note = QStringLiteral("会社で削除済み");
            list(e);
            return;
        }
        const EntryPrint company = m_company.value(k);
        const EntryPrint was = m_from.prints.value(k), now = m_to.prints.value(k);
        if (company.shape == now.shape && (company.words == now.words || company.words != was.words))
            return; // the company has the new entry already
        if (company.shape == was.shape) {
            replace(key, company.words != was.words);
            list(entry(UpdateKind::Replaced, key));
        } else if (taken(key)) {
            replace(key, company.words != was.words);
            UpdateEntry e = entry(UpdateKind::Replaced, key);
            e.note = QStringLiteral("新しい文章にする");
            list(e);
        } else {
            keep(key);
            list(entry(UpdateKind::Conflict, key));
        }
    }

    void add(const EntryKey &key)
    {
        const QString k = key.text();
        if (m_company.contains(k)) {
            if (m_company.value(k).shape == m_to.prints.value(k).shape)
                return;
            if (!taken(key)) {
                keep(key);
                list(entry(UpdateKind::Conflict, key));
                return;
            }
            replace(key, true);
            UpdateEntry e = entry(UpdateKind::Replaced, key);
            e.note = QStringLiteral("新しい文章にする");
            list(e);
            return;
        }
        const EntryKey parent = key.parent();
        if (key.level != Level::Document && !entryExists(m_db, parent))
            return; // the company has no place for it
        const EntryRows fresh = readEntry(m_seed, key);
        insertEntryRows(m_db, key, fresh, false);
        noteHolders(key, fresh, {}, false, false);
        const bool standard =
            !fresh.rows.isEmpty() && fresh.rows.first().value(int(fresh.columns.indexOf(QStringLiteral("選択フラグ")))).toBool();
        // Part of the standard draft of what the company composed: selected in the release
        // under an entry the company has composed.
        if (standard && entryComposed(m_db, key.parent())) {
            UpdateEntry e = entry(UpdateKind::Proposed, key);
            e.requirement = legalRequirementFor(m_db, key);
            list(e);
        } else {
            list(entry(UpdateKind::Added, key));
        }
    }

    void remove(const EntryKey &key)
    {
        const QString k = key.text();
        if (!m_company.contains(k))
            return;
        const bool changedByCompany = m_company.value(k).shape != m_from.prints.value(k).shape;
        const bool composed = entryComposed(m_db, key);
        if (changedByCompany || composed || holdsEntriesBelow(m_db, key)) {
            keep(key);
            UpdateEntry e = entry(UpdateKind::Kept, key);
            e.note = composed           ? QStringLiteral("作成中のため残す")
                     : changedByCompany ? QStringLiteral("会社で変更済みのため残す")
                                        : QStringLiteral("下に会社の条項があるため残す");
            list(e);
            return;
        }
        deleteEntryRows(m_db, key);
        m_removedPlaces.insert(holderKey(key), key);
        list(entry(UpdateKind::Removed, key));
    }

    void replace(const EntryKey &key, bool companySetWords)
    {
        const bool selected = entrySelected(m_db, key);
        const EntryRows company = readEntry(m_db, key);
        const EntryRows fresh = readEntry(m_seed, key);
        deleteEntryRows(m_db, key);
        insertEntryRows(m_db, key, fresh, selected);
        followComposition(m_db, key, fresh);
        noteHolders(key, fresh, company, companySetWords, selected);
    }

    static QString holderKey(const EntryKey &key) { return levelCode(key.level) + u'|' + key.place.join(u'|'); }

    // Words and references are shared by both styles: they are rewritten once per place,
    // after every entry is dealt with.
    void noteHolders(const EntryKey &key, const EntryRows &fresh, const EntryRows &company, bool companySetWords, bool selected)
    {
        if (key.level == Level::Document)
            return;
        Holders &h = m_holders[holderKey(key)];
        if (!h.set) {
            h = Holders{true, key, fresh, company, companySetWords, false, selected};
            return;
        }
        h.companySetWords = h.companySetWords || companySetWords;
        h.selected = h.selected || selected;
    }

    void keep(const EntryKey &key) { m_keptPlaces.insert(holderKey(key)); }

    void finishHolders()
    {
        for (auto it = m_holders.cbegin(); it != m_holders.cend(); ++it) {
            const Holders &h = it.value();
            rewriteHolders(m_db, h.key, h.fresh, readEntry(m_db, h.key), h.companySetWords, m_keptPlaces.contains(it.key()), h.selected);
        }
        for (auto it = m_removedPlaces.cbegin(); it != m_removedPlaces.cend(); ++it) {
            EntryKey other = it.value();
            bool remains = false;
            for (const QString &style : {QStringLiteral("1"), QStringLiteral("2")}) {
                other.style = style;
                remains = remains || entryExists(m_db, other);
            }
            if (!remains)
                deleteHolderRows(m_db, it.value());
        }
    }

    struct Holders {
        bool set = false;
        EntryKey key;
        EntryRows fresh;
        EntryRows company;
        bool companySetWords = false;
        bool unused = false;
        bool selected = false;
    };

    QSqlDatabase m_db;
    QSqlDatabase m_seed;
    const Release &m_from;
    const Release &m_to;
    const UpdateOptions &m_options;
    UpdateResult &m_result;
    ReleasePrints m_company;
    QHash<QString, QString> m_names;
    QHash<QString, QString> m_articles;
    QMap<QString, Holders> m_holders;
    QSet<QString> m_keptPlaces;
    QMap<QString, EntryKey> m_removedPlaces;
};

// The release whose entries agree best with the company's.
const Release *bestAgreeing(const ProgramReleases &releases, const ReleasePrints &company)
{
    const Release *best = nullptr;
    int bestCount = -1;
    QList<const Release *> all;
    for (const Release &r : releases.known)
        all << &r;
    if (!releases.find(releases.current.name))
        all << &releases.current;
    for (const Release *r : std::as_const(all)) {
        int agree = 0;
        for (auto it = company.cbegin(); it != company.cend(); ++it) {
            const auto found = r->prints.constFind(it.key());
            agree += found != r->prints.cend() && found->shape == it->shape ? 1 : 0;
        }
        if (agree >= bestCount) { // the newer of equals
            best = r;
            bestCount = agree;
        }
    }
    return best;
}

class SeedConnection {
public:
    explicit SeedConnection(const QString &path) : m_db(openDatabase(path, kSeedConnection, OpenMode::ReadOnly)) {}
    ~SeedConnection()
    {
        m_db = QSqlDatabase();
        closeDatabase(kSeedConnection);
    }
    SeedConnection(const SeedConnection &) = delete;
    SeedConnection &operator=(const SeedConnection &) = delete;
    QSqlDatabase db() const { return m_db; }

private:
    QSqlDatabase m_db;
};

QString snapshot(QSqlDatabase db, const DataLayout &layout, const QString &name, const QString &release)
{
    const QString stem = layout.backupRoot() + u'/' + name + QStringLiteral("_辞書更新前_") + release + u'_'
                         + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString folder = stem;
    for (int n = 2; QFileInfo::exists(folder); ++n)
        folder = stem + u'-' + QString::number(n);
    if (!QDir().mkpath(folder))
        throw Failure(QStringLiteral("フォルダ「%1」を作成できません。").arg(folder));
    writeCompanyFile(db, folder + u'/' + name + QStringLiteral(".sqlite"));
    return folder;
}

} // namespace

QString updateKindCaption(UpdateKind kind)
{
    static const QString captions[] = {QStringLiteral("置換"),     QStringLiteral("競合"), QStringLiteral("追加"),
                                       QStringLiteral("追加候補"), QStringLiteral("削除"), QStringLiteral("残置")};
    return captions[int(kind)];
}

int UpdateResult::count(UpdateKind kind) const
{
    return int(std::count_if(entries.cbegin(), entries.cend(), [kind](const UpdateEntry &e) { return e.kind == kind; }));
}

QString UpdateResult::summary() const
{
    QStringList counts;
    for (UpdateKind kind :
         {UpdateKind::Replaced, UpdateKind::Conflict, UpdateKind::Added, UpdateKind::Proposed, UpdateKind::Removed, UpdateKind::Kept})
        counts << updateKindCaption(kind) + u' ' + QString::number(count(kind));
    QString line = company + QStringLiteral(": ") + from + (guessed ? QStringLiteral("（推定）") : QString()) + QStringLiteral(" → ") + to
                   + u' ' + counts.join(u'、');
    if (dryRun)
        line += QStringLiteral("（試行のみ）");
    else if (!backup.isEmpty())
        line += QStringLiteral("（バックアップ: %1）").arg(backup);
    return line;
}

ProgramReleases ProgramReleases::read(const DataLayout &layout)
{
    ProgramReleases r;
    r.seedFile = layout.seedFile();
    r.known = readReleases(releasesFolder(layout.appPath));
    SeedConnection seed(r.seedFile);
    r.current.name = recordedRelease(seed.db());
    if (const Release *recorded = r.find(r.current.name))
        r.current = *recorded;
    else
        r.current.prints = dictionaryPrints(seed.db());
    return r;
}

const Release *ProgramReleases::find(const QString &name) const
{
    for (const Release &r : known) {
        if (r.name == name)
            return &r;
    }
    return nullptr;
}

Outcome CompanyUpdate::updateOpen(QSqlDatabase db, const QString &name, const ProgramReleases &releases, const UpdateOptions &options,
                                  UpdateResult &result)
{
    result = UpdateResult{};
    result.company = name;
    result.to = releases.current.name;
    result.dryRun = options.dryRun;
    const Release *from = nullptr;
    std::optional<SeedConnection> seed;
    // What comes before the transaction fails as the step does: the company is as it was.
    try {
        result.from = recordedRelease(db);
        if (result.from.isEmpty()) {
            const Release *best = bestAgreeing(releases, dictionaryPrints(db));
            result.from = best ? best->name : releases.current.name;
            result.guessed = true;
            m_prompt.information(
                kTitle, quotedName(name)
                            + QStringLiteral("には辞書の版が記録されていません。最もよく一致する版 %1 で作成されたものとして扱います。")
                                  .arg(result.from));
        }
        if (releaseNumber(result.from) > releaseNumber(result.to)) {
            m_prompt.warning(kTitle, quotedName(name) + QStringLiteral("は、このプログラムより新しい辞書で作成されています。"));
            return Outcome::Stopped;
        }
        from = result.from == releases.current.name ? &releases.current : releases.find(result.from);
        if (!from) {
            m_prompt.warning(kTitle, quotedName(name) + QStringLiteral("の辞書の版 %1 の記録がありません。").arg(result.from));
            return Outcome::Stopped;
        }
        if (result.from == result.to && !result.guessed)
            return Outcome::Done; // nothing to do, and nothing to back up
        if (!options.dryRun)
            result.backup = snapshot(db, m_layout, name, result.from);
        seed.emplace(releases.seedFile);
    } catch (const std::exception &e) {
        // As runStep reports a failure.
        showCancelled(m_prompt, Prompt::Icon::Error, e);
        return Outcome::Failed;
    }
    BusyCursor busy;
    const Outcome outcome = runStep(
        m_prompt, db,
        [&]() -> Outcome {
            DocumentVersions versions(db);
            if (options.compare)
                versions.keepBefore();
            UpdateRun(db, seed->db(), *from, releases.current, options, result).run();
            if (options.compare)
                result.comparisons = versions.keepAfter();
            return options.dryRun ? Outcome::Stopped : Outcome::Done;
        },
        Prompt::Icon::Error);
    if (outcome == Outcome::Failed) {
        result.entries.clear();
        result.comparisons.clear();
    }
    return options.dryRun && outcome == Outcome::Stopped ? Outcome::Done : outcome;
}

Outcome CompanyUpdate::update(const QString &name, const UpdateOptions &options, UpdateResult &result)
{
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kTitle, name))
        return *refused;
    ProgramReleases releases;
    try {
        releases = ProgramReleases::read(m_layout);
    } catch (const Failure &f) {
        m_prompt.failure(f.text());
        return Outcome::Failed;
    }
    AppState &state = AppState::instance();
    if (state.isOpenCompany(name))
        return updateOpen(AppState::cn(), name, releases, options, result);
    try {
        const auto store = CompanyStore::of(m_layout);
        const auto held = store->hold(name);
        Outcome outcome;
        {
            QSqlDatabase db = store->open(name, kUpdateConnection, OpenMode::ReadWrite);
            outcome = updateOpen(db, name, releases, options, result);
        }
        closeDatabase(kUpdateConnection);
        return outcome;
    } catch (const CompanyInUse &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        closeDatabase(kUpdateConnection);
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
}

Outcome CompanyUpdate::updateAll(const UpdateOptions &options, const Progress &progress)
{
    const QStringList names = companiesOf(m_layout);
    Outcome overall = Outcome::Done;
    int done = 0;
    for (const QString &name : names) {
        UpdateResult result;
        const Outcome outcome = update(name, options, result);
        if (outcome == Outcome::Failed)
            overall = Outcome::Failed;
        else if (outcome == Outcome::Stopped && overall == Outcome::Done)
            overall = Outcome::Stopped;
        if (progress)
            progress(++done, int(names.size()), name, outcome, result);
    }
    return overall;
}

} // namespace normaris
