#include "export/DocumentExport.h"

#include "fileformats/DocxTypist.h"
#include "export/TextTypist.h"
#include "export/TypistPair.h"
#include "base/BusyCursor.h"
#include "base/Database.h"
#include "base/Failure.h"
#include "legal/LegalCheck.h"
#include "rulebase/EffectiveDates.h"
#include "versions/VersionRecorder.h"
#include "versions/VersionStore.h"

#include <QDir>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTemporaryFile>

#include <optional>

namespace normaris {

namespace {

void writeText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
}

// The version of a finished document: what its body printed, under the latest
// effective date. The same as the last one of the document, it is not kept again.
void keepVersion(QSqlDatabase db, const QString &style, const QString &document, const PrintedRows &rows)
{
    VersionHeader header;
    header.style = style;
    header.document = document;
    header.name = scalar(db, QStringLiteral("SELECT 正式名称 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString();
    if (header.name.isEmpty() && !rows.isEmpty() && rows.first().level == Level::Document)
        header.name = rows.first().text;
    header.made = QDateTime::currentDateTime();
    for (const EffectiveDate &date : EffectiveDates(db, document).list())
        header.effective = qMax(header.effective, date.date);
    VersionStore(db).keep(header, rows);
}

} // namespace

Outcome DocumentExport::write(const QString &style, const QString &document, const RenderOptions &options, const QString &docxPath,
                              const QString &textPath, ExtraOutput *extra)
{
    // A document of rules or an agreement that lacks what the law asks is made only when the user says so.
    if (options.kind != ExportKind::Filing) {
        const Outcome asked = legal::confirmExportAgainstLaw(m_db, m_prompt, style, document);
        if (asked != Outcome::Done)
            return asked;
    }
    BusyCursor busy;
    DocxTypist docx;
    TextTypist text;
    VersionRecorder recorder;
    TypistPair records(text, recorder);
    TypistPair documents(docx, records);
    std::optional<TypistPair> withExtra;
    if (extra)
        withExtra.emplace(documents, extra->typist());
    Typist &typist = withExtra ? static_cast<Typist &>(*withExtra) : documents;
    const Outcome outcome = DocumentRenderer(m_db, m_prompt).render(typist, style, document, options);
    // A failed read has been reported: no document is written from what was read before it.
    if (outcome != Outcome::Done)
        return outcome;
    QStringList written;
    try {
        // The version is kept with the files that print it, or not at all: its transaction
        // commits only once they are written.
        Transaction transaction(m_db);
        // Only a whole document of rules or an agreement is a version; the filing forms are not.
        if (options.kind != ExportKind::Filing)
            keepVersion(m_db, style, document, recorder.rows());
        if (!docxPath.isEmpty()) {
            written << docxPath;
            docx.save(docxPath);
        }
        if (!textPath.isEmpty()) {
            written << textPath;
            writeText(textPath, text.text());
        }
        if (extra)
            extra->save();
        transaction.commit();
    } catch (const Failure &f) {
        for (const QString &path : std::as_const(written))
            QFile::remove(path);
        m_prompt.failure(f.text());
        return Outcome::Failed;
    }
    return outcome;
}

QString DocumentExport::temporaryPath(const QString &document)
{
    // Only the digits of the code reach the path, never a name.
    QString code = document;
    code.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    QTemporaryFile file(
        QDir::temp().filePath(QStringLiteral("normaris_%1_XXXXXX.docx").arg(code.isEmpty() ? QStringLiteral("todoke") : code)));
    file.setAutoRemove(false);
    if (!file.open())
        throw Failure(QStringLiteral("一時フォルダ「%1」にファイルを作成できません。").arg(QDir::tempPath()));
    return file.fileName();
}

} // namespace normaris
