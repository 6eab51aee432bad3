#include "composition/ExcelLists.h"

#include "rulebase/CompositionRow.h"
#include "rulebase/Schema.h"
#include "fileformats/XlsxSheet.h"
#include "base/FileOps.h"
#include "base/Database.h"
#include "base/SqlDialect.h"
#include "base/BusyCursor.h"

#include <QSqlQuery>

namespace normaris {

namespace {

// The work tables, made when first needed and emptied before and after each list.
struct WorkTable {
    const char *name;
    const char *columns[6]; // up to the first null
};
constexpr WorkTable kWorkTables[] = {
    {"kihongoku01_excel", {"区分", "規程Code"}},
    {"kihongoku02_excel", {"区分", "規程Code", "章Code", "条Code"}},
    {"goku_excel", {"Code", "設定内容", "規程Code", "章Code", "条Code", "表示名称"}},
    {"bangou_excel", {"Code", "規程Code", "章Code", "条Code", "変換参照■規程Code"}},
    {"kihongoku_excel", {"Code", "規程Code", "章Code", "条Code"}},
};

// The basic words this list looks for, with their labels.
const std::pair<const char *, const char *> kBasicWords[] = {{"0001", "事業場名"}, {"0010", "従業員氏名"}, {"0030", "日付"}};

// How the four lists differ.
struct ListLayout {
    ListKind kind;
    const char *emptyTitle;
    const char *emptyText;
    const char *title;
    QList<XlsxColumn> columns;
};

const ListLayout &layoutOf(ListKind kind)
{
    static const QList<ListLayout> layouts = {
        {ListKind::BasicWords,
         "基本語句の確認",
         "基本語句はありません。",
         "【基本語句】",
         {{QStringLiteral("区分"), 20}, {QStringLiteral("条Code"), 6}, {QStringLiteral("条の名称"), 40}}},
        {ListKind::EmbeddedWords,
         "埋込語句の確認",
         "埋込語句はありません。",
         "【埋込語句】",
         {{QStringLiteral("Code"), 6},
          {QStringLiteral("表示名称"), 40},
          {QStringLiteral("設定内容"), 40},
          {QStringLiteral("条Code"), 6},
          {QStringLiteral("条の名称"), 40}}},
        {ListKind::References,
         "参照条文番号の確認",
         "参照条文番号はありません。",
         "【参照条文番号】",
         {{QStringLiteral("Code"), 6}, {QStringLiteral("参照先"), 40}, {QStringLiteral("条Code"), 6}, {QStringLiteral("条の名称"), 40}}},
        {ListKind::Templates,
         "テンプレートの確認",
         "テンプレートはありません。",
         "【テンプレート】",
         {{QStringLiteral("Code"), 6}, {QStringLiteral("条Code"), 6}, {QStringLiteral("条の名称"), 40}}},
    };
    for (const ListLayout &s : layouts) {
        if (s.kind == kind)
            return s;
    }
    return layouts.first();
}

class Scanner {
public:
    Scanner(QSqlDatabase db, QString style, QString document)
        : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document))
    {
    }

    // Fills the work tables for the list and returns the sheet rows.
    QList<QStringList> run(ListKind kind)
    {
        for (const CompositionRow &row : readArticleRows(m_db, m_style, m_document)) {
            if (row.level == Level::Preamble && kind == ListKind::BasicWords)
                scanBasicWords(row, QStringLiteral("kihongoku01_excel"));
            if (row.level != Level::Article)
                continue;
            for (const CompositionRow &clause : clausesOf(row, kind))
                scanClause(kind, clause);
        }
        return sheetRows(kind);
    }

private:
    QList<CompositionRow> clausesOf(const CompositionRow &article, ListKind kind)
    {
        QList<CompositionRow> rows;
        for (const CompositionRow &r : readClauseRows(m_db, m_style, m_document, article.codes[0], article.codes[1])) {
            const bool wanted = kind == ListKind::Templates    ? r.templateCode != u"0" && !r.templateCode.isEmpty()
                                : kind == ListKind::References ? r.references
                                                               : r.words;
            if (wanted)
                rows << r;
        }
        return rows;
    }

    void insert(const QString &table, const QStringList &columns, const QVariantList &values)
    {
        QStringList marks;
        for (qsizetype i = 0; i < columns.size(); ++i)
            marks << QStringLiteral("?");
        execSql(m_db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, columns.join(u','), marks.join(u',')), values);
    }

    void scanBasicWords(const CompositionRow &row, const QString &table)
    {
        for (const auto &[code, label] : kBasicWords) {
            if (!row.text.contains(u'☆' + QString::fromLatin1(code) + u'☆'))
                continue;
            if (table == u"kihongoku01_excel")
                insert(table, {QStringLiteral("区分"), QStringLiteral("規程Code")}, {QString::fromUtf8(label), m_document});
            else
                insert(table, {QStringLiteral("区分"), QStringLiteral("規程Code"), QStringLiteral("章Code"), QStringLiteral("条Code")},
                       {QString::fromUtf8(label), m_document, row.codes[0], row.codes[1]});
        }
    }

    void scanMarkers(const CompositionRow &row, bool words)
    {
        const QChar sign = words ? u'★' : u'◆';
        RowReader q = execSql(m_db,
                              words ? QStringLiteral("SELECT Code, 語句, 表示名称 FROM 変数テーブル語句 WHERE 規程Code = ? AND 章Code = ? "
                                                     "AND 条Code = ? ORDER BY %1")
                                          .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code")))
                                    : QStringLiteral("SELECT Code, 変換参照■規程Code FROM 変数テーブル番号 WHERE 規程Code = ? AND "
                                                     "章Code = ? AND 条Code = ? ORDER BY %1")
                                          .arg(SqlDialect::of(m_db).integerOf(QStringLiteral("Code"))),
                              {m_document, row.codes[0], row.codes[1]});
        while (q.next()) {
            const QString code = q.value(0).toString();
            if (!row.text.contains(sign + code + sign))
                continue;
            if (words)
                insert(QStringLiteral("goku_excel"),
                       {QStringLiteral("Code"), QStringLiteral("設定内容"), QStringLiteral("規程Code"), QStringLiteral("章Code"),
                        QStringLiteral("条Code"), QStringLiteral("表示名称")},
                       {code, q.value(1), m_document, row.codes[0], row.codes[1], q.value(2)});
            else
                insert(QStringLiteral("bangou_excel"),
                       {QStringLiteral("Code"), QStringLiteral("規程Code"), QStringLiteral("章Code"), QStringLiteral("条Code"),
                        QStringLiteral("変換参照■規程Code")},
                       {code, m_document, row.codes[0], row.codes[1], q.value(1)});
        }
    }

    void scanClause(ListKind kind, const CompositionRow &row)
    {
        switch (kind) {
        case ListKind::BasicWords: scanBasicWords(row, QStringLiteral("kihongoku02_excel")); break;
        case ListKind::EmbeddedWords: scanMarkers(row, true); break;
        case ListKind::References: scanMarkers(row, false); break;
        case ListKind::Templates:
            insert(QStringLiteral("kihongoku_excel"),
                   {QStringLiteral("Code"), QStringLiteral("規程Code"), QStringLiteral("章Code"), QStringLiteral("条Code")},
                   {row.templateCode, m_document, row.codes[0], row.codes[1]});
            break;
        }
    }

    QString articleName(const QString &chapter, const QString &article)
    {
        return scalar(m_db, QStringLiteral("SELECT 条 FROM 条 WHERE 文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND Code = ?"),
                      {m_style, m_document, chapter, article})
            .toString();
    }

    QString documentName(const QString &code)
    {
        return scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE Code = ? ORDER BY 文章形式Code <> ?, 文章形式Code LIMIT 1"),
                      {code, m_style})
            .toString();
    }

    QList<QStringList> sheetRows(ListKind kind)
    {
        QList<QStringList> rows;
        const auto each = [&](const QString &sql, const std::function<QStringList(const RowReader &)> &make) {
            RowReader q = execSql(m_db, sql);
            while (q.next())
                rows << make(q);
        };
        switch (kind) {
        case ListKind::BasicWords:
            each(QStringLiteral("SELECT 区分 FROM kihongoku01_excel ORDER BY ID"), [](const RowReader &q) {
                return QStringList{q.value(0).toString(), QString(), QStringLiteral("前文")};
            });
            each(QStringLiteral("SELECT 区分, 章Code, 条Code FROM kihongoku02_excel ORDER BY ID"), [this](const RowReader &q) {
                return QStringList{q.value(0).toString(), q.value(2).toString(), articleName(q.value(1).toString(), q.value(2).toString())};
            });
            break;
        case ListKind::EmbeddedWords:
            each(QStringLiteral("SELECT Code, 表示名称, 設定内容, 章Code, 条Code FROM goku_excel ORDER BY ID"), [this](const RowReader &q) {
                return QStringList{q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(4).toString(),
                                   articleName(q.value(3).toString(), q.value(4).toString())};
            });
            break;
        case ListKind::References:
            each(QStringLiteral("SELECT Code, 変換参照■規程Code, 章Code, 条Code FROM bangou_excel ORDER BY ID"),
                 [this](const RowReader &q) {
                     return QStringList{q.value(0).toString(), documentName(q.value(1).toString()), q.value(3).toString(),
                                        articleName(q.value(2).toString(), q.value(3).toString())};
                 });
            break;
        case ListKind::Templates:
            each(QStringLiteral("SELECT Code, 章Code, 条Code FROM kihongoku_excel ORDER BY ID"), [this](const RowReader &q) {
                return QStringList{q.value(0).toString(), q.value(2).toString(), articleName(q.value(1).toString(), q.value(2).toString())};
            });
            break;
        }
        return rows;
    }

    QSqlDatabase m_db;
    QString m_style;
    QString m_document;
};

void prepareWorkTables(QSqlDatabase db)
{
    for (const WorkTable &work : kWorkTables) {
        TableDef table{QString::fromUtf8(work.name), {}, {}};
        for (const char *column : work.columns) {
            if (column)
                table.columns << ColumnDef{QString::fromUtf8(column), ColumnType::Text};
        }
        ensureTable(db, table);
        execSql(db, QStringLiteral("DELETE FROM %1").arg(table.name));
    }
}

} // namespace

Outcome ExcelLists::write(ListKind kind, const QString &style, const QString &document, const QString &path, const Show &show)
{
    const ListLayout &layout = layoutOf(kind);
    QList<QStringList> rows;
    try {
        // A failed read of the check is a failure like any other of the step.
        if (readArticleRows(m_db, style, document).isEmpty()) {
            m_prompt.error(QStringLiteral("データの確認"), QStringLiteral("データがありません。"));
            return Outcome::Stopped;
        }
        BusyCursor busy;
        Transaction transaction(m_db);
        prepareWorkTables(m_db);
        rows = Scanner(m_db, style, document).run(kind);
        const QString name =
            scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
        // The work tables are left empty, as they were found.
        prepareWorkTables(m_db);
        // The list comes into place only whole, once the step has committed.
        StagedFiles files;
        if (!rows.isEmpty())
            writeXlsxSheet(files.stage(path), QString::fromUtf8(layout.title) + name, layout.columns, rows);
        transaction.commit();
        files.commit();
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    if (rows.isEmpty()) {
        m_prompt.information(QString::fromUtf8(layout.emptyTitle), QString::fromUtf8(layout.emptyText));
        return Outcome::Stopped;
    }
    if (show && !show(path)) {
        m_prompt.failure(QStringLiteral("一覧表「%1」を開くアプリケーションが見つかりません。").arg(path));
        return Outcome::Failed;
    }
    m_prompt.information(QStringLiteral("処理完了"), QStringLiteral("処理が完了しました。"));
    return Outcome::Done;
}

} // namespace normaris
