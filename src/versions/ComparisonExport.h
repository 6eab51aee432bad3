#pragma once
// 新旧対照表: two kept versions of one document compared and written as a .docx,
// with a plain text beside it when asked. By default the last two versions.

#include "base/FileOps.h"
#include "base/Prompt.h"
#include "document/DocumentModel.h"
#include "versions/ComparisonTable.h"
#include "versions/DocumentPairing.h"

#include <QSqlDatabase>
#include <optional>

namespace normaris {

struct ComparisonRequest {
    QString style;
    QString document;
    std::optional<qint64> older; // the version before the change; by default the one before newer
    std::optional<qint64> newer; // the version after it; by default the latest
    QString company;             // the company's name when its 事業所名 is not set
    bool remarks = false;        // a third column 備考 with each row's remark
    // The old side from another document of the company (its latest version), paired
    // by similarity with the overrides given; the pairing used goes to pairing.
    QString against = QString();
    QList<PairOverride> overrides = {};
    QList<ArticlePair> *pairing = nullptr;
};

// A further rendering of the table beside the .docx, such as its PDF: the same
// blocks under the same page set-up, its file staged in files.
class ComparisonOutput {
public:
    virtual ~ComparisonOutput() = default;
    virtual void save(StagedFiles &files, const ComparisonTable &table, const QList<model::Block> &blocks,
                      const model::PageSetup &setup) = 0; // throws Failure
};

// How the table names the company on db: its 事業所名 when set, else fallback.
QString comparisonCompanyName(QSqlDatabase db, const QString &fallback);

class ComparisonExport {
public:
    ComparisonExport(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // The table of the two versions; nothing after a message (fewer than two
    // versions, an unknown version, a version of another document or style).
    std::optional<ComparisonTable> table(const ComparisonRequest &request);

    // The table written to docxPath (none when empty), as text to textPath when one
    // is given, and into extra; the files come into place together once all are
    // written. Stopped after a check's message with nothing written; Failed after the
    // failure's own text, with nothing left of what it wrote.
    Outcome write(const ComparisonRequest &request, const QString &docxPath, const QString &textPath = {},
                  ComparisonOutput *extra = nullptr);

    static inline const QString kTitle = QStringLiteral("新旧対照表");

private:
    std::optional<ComparisonTable> againstDocument(const ComparisonRequest &request);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
