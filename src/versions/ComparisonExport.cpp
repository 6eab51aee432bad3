#include "versions/ComparisonExport.h"

#include "base/BusyCursor.h"
#include "base/Failure.h"
#include "export/SettingValues.h"
#include "fileformats/DocxPackage.h"
#include "versions/ComparisonDocx.h"
#include "versions/ComparisonText.h"
#include "versions/VersionComparison.h"

namespace normaris {

QString comparisonCompanyName(QSqlDatabase db, const QString &fallback)
{
    const std::optional<SettingValues> settings = SettingValues::read(db);
    const QString column = QStringLiteral("事業所名");
    if (settings && !settings->isUnset(column) && !settings->value(column).isEmpty())
        return settings->value(column);
    return fallback;
}

std::optional<ComparisonTable> ComparisonExport::table(const ComparisonRequest &request)
{
    VersionStore store(m_db);
    const QList<VersionHeader> versions = store.list(request.style, request.document);
    const auto refuse = [&](const QString &text) {
        m_prompt.error(kTitle, text);
        return std::nullopt;
    };
    if (!request.against.isEmpty())
        return againstDocument(request);
    if (versions.size() < 2)
        return refuse(QStringLiteral("規程「%1」（文章形式 %2）の版が二つ以上ないので、新旧対照表を作成できません。")
                          .arg(request.document, request.style));
    // A named version must be one of this document in this style.
    const auto check = [&](qint64 id) -> bool {
        const std::optional<VersionHeader> found = store.header(id);
        if (!found) {
            m_prompt.error(kTitle, QStringLiteral("版 %1 はありません。").arg(id));
            return false;
        }
        if (found->style != request.style || found->document != request.document) {
            m_prompt.error(kTitle, QStringLiteral("版 %1 は規程「%2」（文章形式 %3）の版ではありません。")
                                       .arg(QString::number(id), request.document, request.style));
            return false;
        }
        return true;
    };
    if ((request.newer && !check(*request.newer)) || (request.older && !check(*request.older)))
        return std::nullopt;
    const qint64 newer = request.newer.value_or(versions.last().id);
    qint64 older = 0;
    if (request.older) {
        older = *request.older;
    } else {
        // The version before newer; the oldest newer has none before it.
        for (const VersionHeader &v : versions)
            if (v.id < newer)
                older = v.id;
        if (older == 0)
            return refuse(QStringLiteral("版 %1 より前の版がありません。").arg(newer));
    }
    if (older == newer)
        return refuse(QStringLiteral("同じ版どうしは比較できません。"));
    ComparisonTable table = compareVersions(store.read(older), store.read(newer));
    table.company = comparisonCompanyName(m_db, request.company);
    return table;
}

std::optional<ComparisonTable> ComparisonExport::againstDocument(const ComparisonRequest &request)
{
    VersionStore store(m_db);
    const QList<VersionHeader> olds = store.list(request.style, request.against);
    const QList<VersionHeader> news = store.list(request.style, request.document);
    for (const auto &[versions, document] : {std::pair{&olds, request.against}, std::pair{&news, request.document}}) {
        if (versions->isEmpty()) {
            m_prompt.error(
                kTitle, QStringLiteral("規程「%1」（文章形式 %2）の版がありません。先に出力してください。").arg(document, request.style));
            return std::nullopt;
        }
    }
    qint64 newer = news.last().id;
    if (request.newer) {
        const std::optional<VersionHeader> found = store.header(*request.newer);
        if (!found || found->style != request.style || found->document != request.document) {
            m_prompt.error(kTitle, QStringLiteral("版 %1 は規程「%2」（文章形式 %3）の版ではありません。")
                                       .arg(QString::number(*request.newer), request.document, request.style));
            return std::nullopt;
        }
        newer = *request.newer;
    }
    ComparisonTable table = compareDocuments(store.read(olds.last().id), store.read(newer), request.overrides, request.pairing);
    table.company = comparisonCompanyName(m_db, request.company);
    return table;
}

Outcome ComparisonExport::write(const ComparisonRequest &request, const QString &docxPath, const QString &textPath, ComparisonOutput *extra)
{
    BusyCursor busy;
    try {
        StagedFiles files;
        std::optional<ComparisonTable> made = table(request);
        if (!made)
            return Outcome::Stopped;
        made->remarks = request.remarks;
        const QList<model::Block> blocks = comparisonBlocks(*made);
        if (!docxPath.isEmpty())
            docx::saveDocx(files.stage(docxPath), blocks, comparisonPageSetup());
        if (!textPath.isEmpty())
            writeTextFile(files.stage(textPath), comparisonText(*made));
        if (extra)
            extra->save(files, *made, blocks, comparisonPageSetup());
        files.commit();
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

} // namespace normaris
