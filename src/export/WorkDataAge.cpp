#include "export/WorkDataAge.h"

#include "base/Database.h"
#include "base/Failure.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "rulebase/Schema.h"

#include <QCryptographicHash>
#include <QSqlRecord>

namespace normaris {

namespace {

// Which rows of a table the work data of one document take: the step that takes
// them, the condition, and whether it binds the style and the document, the document
// alone or nothing.
enum class Binds { StyleAndDocument, Document, None };

struct Input {
    WorkDataStep step;
    const char *table;
    const char *where;
    Binds binds;
};

constexpr const char *kOfStyleAndDocument = " WHERE 文章形式Code = ? AND 規程Code = ?";
constexpr const char *kOfDocument = " WHERE 規程Code = ?";
constexpr WorkDataStep kBuild = WorkDataStep::Build;
constexpr WorkDataStep kSubstitution = WorkDataStep::Substitution;

// Everything データ作成 and 設定項目の置換 read for a document.
constexpr Input kInputs[] = {
    {kBuild, "規程", " WHERE 文章形式Code = ? AND Code = ?", Binds::StyleAndDocument},
    {kBuild, "前文", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "章", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "条", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "項", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "号", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "号の細分丸", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "号の細分イロハ", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "作成データ補助～条", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kBuild, "作成データ補助項～", kOfStyleAndDocument, Binds::StyleAndDocument},
    {kSubstitution, "変数テーブル語句", kOfDocument, Binds::Document},
    {kSubstitution, "変数テーブル番号", kOfDocument, Binds::Document},
    {kSubstitution, "施行日", kOfDocument, Binds::Document},
    {kSubstitution, "企業情報", "", Binds::None},
    {kSubstitution, "代表労働者の選択", "", Binds::None},
};

QVariantList bindsOf(Binds binds, const QString &style, const QString &document)
{
    if (binds == Binds::StyleAndDocument)
        return {style, document};
    if (binds == Binds::Document)
        return {document};
    return {};
}

bool hasRecordTable(QSqlDatabase db) { return hasTable(db, kWorkDataRecordTable); }

const TableDef &recordTable()
{
    static const TableDef table{kWorkDataRecordTable,
                                {{QStringLiteral("文章形式Code"), ColumnType::Text},
                                 {QStringLiteral("規程Code"), ColumnType::Text},
                                 {QStringLiteral("作成日時"), ColumnType::Text},
                                 {QStringLiteral("作成指紋"), ColumnType::Text},
                                 {QStringLiteral("置換日時"), ColumnType::Text},
                                 {QStringLiteral("置換指紋"), ColumnType::Text}},
                                {}};
    return table;
}

} // namespace

QString WorkDataAge::fingerprint(WorkDataStep step, const QString &style, const QString &document) const
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const Input &input : kInputs) {
        if (input.step != step)
            continue;
        const QString table = QString::fromUtf8(input.table);
        RowReader q = execSql(m_db, QStringLiteral("SELECT * FROM %1").arg(table) + QString::fromUtf8(input.where),
                              bindsOf(input.binds, style, document));
        // A clause saved again comes back under new row numbers: the rows count by
        // what they hold, in an order of their own.
        QStringList rows;
        while (q.next()) {
            const QSqlRecord record = q.record();
            QStringList values;
            for (int i = 0; i < record.count(); ++i) {
                if (record.fieldName(i).compare(u"ID", Qt::CaseInsensitive) != 0)
                    values << q.value(i).toString();
            }
            rows << values.join(QChar(0x1f));
        }
        rows.sort();
        hash.addData(table.toUtf8());
        hash.addData(QByteArrayView("\x1e"));
        hash.addData(rows.join(QChar(0x1e)).toUtf8());
    }
    return QString::fromLatin1(hash.result().toHex());
}

void WorkDataAge::record(WorkDataStep step, const QString &style, const QString &document)
{
    const QString now = QDateTime::currentDateTime().toString(Qt::ISODate);
    if (step == WorkDataStep::Build) {
        ensureTable(m_db, recordTable());
        execSql(m_db, QStringLiteral("DELETE FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(kWorkDataRecordTable),
                {style, document});
        execSql(m_db,
                QStringLiteral("INSERT INTO %1 (文章形式Code, 規程Code, 作成日時, 作成指紋) VALUES (?, ?, ?, ?)").arg(kWorkDataRecordTable),
                {style, document, now, fingerprint(step, style, document)});
        return;
    }
    // Work data built before the record began have none, and get none here.
    if (!hasRecordTable(m_db))
        return;
    execSql(m_db,
            QStringLiteral("UPDATE %1 SET 置換日時 = ?, 置換指紋 = ? WHERE 文章形式Code = ? AND 規程Code = ?").arg(kWorkDataRecordTable),
            {now, fingerprint(step, style, document), style, document});
}

QDateTime WorkDataAge::recorded(WorkDataStep step, const QString &style, const QString &document) const
{
    if (!hasRecordTable(m_db))
        return {};
    return QDateTime::fromString(
        scalar(m_db,
               QStringLiteral("SELECT %1 FROM %2 WHERE 文章形式Code = ? AND 規程Code = ?")
                   .arg(step == WorkDataStep::Build ? QStringLiteral("作成日時") : QStringLiteral("置換日時"), kWorkDataRecordTable),
               {style, document})
            .toString(),
        Qt::ISODate);
}

bool WorkDataAge::isStale(const QString &style, const QString &document) const
{
    if (!hasRecordTable(m_db))
        return false;
    RowReader q =
        execSql(m_db, QStringLiteral("SELECT 作成指紋, 置換指紋 FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(kWorkDataRecordTable),
                {style, document});
    if (!q.next())
        return false;
    // What the substitution took matters only once it has run on these work data.
    const QString substituted = q.value(1).toString();
    return q.value(0).toString() != fingerprint(WorkDataStep::Build, style, document)
           || (!substituted.isEmpty() && substituted != fingerprint(WorkDataStep::Substitution, style, document));
}

QString WorkDataAge::question(const QString &documentName)
{
    return QStringLiteral("「%1」の語句が変更されています。データ作成からやり直しますか？").arg(documentName);
}

Outcome WorkDataAge::refreshIfStale(const QString &style, const QString &document, bool substitute, ReadFailure failure)
{
    // A failed read is reported as the calling step reports its own, and nothing goes on.
    bool stale = false;
    QString name;
    const auto read = [&] {
        stale = isStale(style, document);
        if (stale)
            name = scalar(m_db, QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
        return Outcome::Done;
    };
    Outcome outcome = Outcome::Done;
    if (failure == ReadFailure::Cancelled) {
        outcome = runStep(m_prompt, m_db, read);
    } else {
        try {
            read();
        } catch (const Failure &f) {
            m_prompt.failure(f.text());
            outcome = Outcome::Failed;
        }
    }
    if (outcome != Outcome::Done || !stale)
        return outcome;
    if (!m_prompt.question(QStringLiteral("データ作成の確認"), question(name)))
        return Outcome::Stopped;
    const Outcome built = WorkDataBuild(m_db, m_prompt).build(style, document);
    if (built != Outcome::Done || !substitute)
        return built;
    return SettingSubstitution(m_db, m_prompt).run(style, document);
}

} // namespace normaris
