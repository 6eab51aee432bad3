#include "update/DocumentVersions.h"

#include "base/Database.h"
#include "export/DocumentExport.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "versions/ComparisonExport.h"
#include "versions/ComparisonText.h"
#include "versions/VersionStore.h"

namespace normaris {

namespace {

// The chain's own messages stay inside the update: its questions are answered yes, and a
// failure is remembered for the update to stop on.
class QuietPrompt : public Prompt {
public:
    void message(Icon, const QString &, const QString &text) override { m_last = text; }
    bool question(const QString &, const QString &) override { return true; }
    QString m_last;
};

} // namespace

qint64 DocumentVersions::keep(const QString &style, const QString &document, const QString &kind)
{
    QuietPrompt prompt;
    auto check = [&](Outcome outcome) {
        if (outcome == Outcome::Failed)
            throw Failure(prompt.m_last);
        return outcome == Outcome::Done;
    };
    if (!check(WorkDataBuild(m_db, prompt).build(style, document)) || !check(SettingSubstitution(m_db, prompt).run(style, document)))
        return 0;
    RenderOptions options;
    options.kind = kind == u"2" ? ExportKind::Agreement : ExportKind::Rules;
    if (!check(DocumentExport(m_db, prompt).write(style, document, options, QString())))
        return 0;
    const QList<VersionHeader> versions = VersionStore(m_db).list(style, document);
    return versions.isEmpty() ? 0 : versions.last().id;
}

void DocumentVersions::keepBefore()
{
    m_documents.clear();
    RowReader rows = execSql(m_db, QStringLiteral("SELECT 文章形式Code, Code, 規程, 文章種別 FROM 規程 WHERE 選択フラグ = 1 "
                                                  "AND EXISTS (SELECT 1 FROM 作成データ補助～条 a WHERE a.文章形式Code = 規程.文章形式Code "
                                                  "AND a.規程Code = 規程.Code) ORDER BY 文章形式Code, Code"));
    while (rows.next())
        m_documents << Composed{rows.value(0).toString(), rows.value(1).toString(), rows.value(2).toString(), rows.value(3).toString()};
    for (Composed &d : m_documents)
        d.before = keep(d.style, d.document, d.kind);
}

QList<DocumentComparison> DocumentVersions::keepAfter()
{
    QList<DocumentComparison> out;
    for (const Composed &d : std::as_const(m_documents)) {
        DocumentComparison c{d.style, d.document, d.name, d.before, 0, {}};
        c.after = keep(d.style, d.document, d.kind);
        if (c.before && c.after && c.before != c.after) {
            QuietPrompt prompt;
            ComparisonRequest request;
            request.style = d.style;
            request.document = d.document;
            request.older = c.before;
            request.newer = c.after;
            if (const auto table = ComparisonExport(m_db, prompt).table(request))
                c.text = comparisonText(*table);
        }
        out << c;
    }
    return out;
}

} // namespace normaris
