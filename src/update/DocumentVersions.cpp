#include "update/DocumentVersions.h"

#include "base/Database.h"
#include "export/DocumentExport.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataBuild.h"
#include "versions/ComparisonExport.h"
#include "versions/ComparisonText.h"
#include "versions/VersionOutput.h"
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

// Every document is built before any is substituted: a document that cites another
// numbers its references from the other's work data.
void DocumentVersions::keepAll()
{
    QuietPrompt prompt;
    auto check = [&](Outcome outcome) {
        if (outcome == Outcome::Failed)
            throw Failure(prompt.m_last);
        return outcome == Outcome::Done;
    };
    QList<bool> built;
    for (Composed &d : m_documents) {
        prompt.m_last.clear();
        built << check(WorkDataBuild(m_db, prompt).build(d.style, d.document));
        d.note = built.last() ? QString() : prompt.m_last;
    }
    for (qsizetype i = 0; i < m_documents.size(); ++i) {
        Composed &d = m_documents[i];
        d.latest = 0;
        if (!built[i])
            continue;
        prompt.m_last.clear();
        if (!check(SettingSubstitution(m_db, prompt).run(d.style, d.document))) {
            d.note = prompt.m_last;
            continue;
        }
        RenderOptions options;
        options.kind = d.kind == u"2" ? ExportKind::Agreement : ExportKind::Rules;
        prompt.m_last.clear();
        VersionOutput version(m_db, d.style, d.document);
        if (!check(DocumentExport(m_db, prompt).write(d.style, d.document, options, DocumentOutputs{&version}))) {
            d.note = prompt.m_last;
            continue;
        }
        const QList<VersionHeader> versions = VersionStore(m_db).list(d.style, d.document);
        d.latest = versions.isEmpty() ? 0 : versions.last().id;
    }
}

void DocumentVersions::keepBefore()
{
    m_documents.clear();
    RowReader rows = execSql(m_db, QStringLiteral("SELECT 文章形式Code, Code, 規程, 文章種別 FROM 規程 WHERE 選択フラグ = 1 "
                                                  "AND EXISTS (SELECT 1 FROM 作成データ補助～条 a WHERE a.文章形式Code = 規程.文章形式Code "
                                                  "AND a.規程Code = 規程.Code) ORDER BY 文章形式Code, Code"));
    while (rows.next()) {
        Composed d;
        d.style = rows.value(0).toString();
        d.document = rows.value(1).toString();
        d.name = rows.value(2).toString();
        d.kind = rows.value(3).toString();
        m_documents << d;
    }
    keepAll();
    for (Composed &d : m_documents)
        d.before = d.latest;
}

QList<DocumentComparison> DocumentVersions::keepAfter()
{
    keepAll();
    QList<DocumentComparison> out;
    for (const Composed &d : std::as_const(m_documents)) {
        DocumentComparison c{d.style, d.document, d.name, d.before, d.latest, {}, d.note};
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
