#include "export/DocumentExport.h"

#include "export/WorkDataAge.h"
#include "base/BusyCursor.h"
#include "base/Database.h"
#include "base/Failure.h"
#include "document/TypistPair.h"
#include "legal/LegalCheck.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryFile>

namespace normaris {

Outcome DocumentExport::write(const QString &style, const QString &document, const RenderOptions &options, const DocumentOutputs &outputs)
{
    // Work data older than their words are built and substituted again first, if the user wishes.
    if (!document.isEmpty()) {
        const Outcome fresh = WorkDataAge(m_db, m_prompt).refreshIfStale(style, document, true, WorkDataAge::ReadFailure::Described);
        if (fresh != Outcome::Done)
            return fresh;
    }
    // A document of rules or an agreement that lacks what the law asks is made only when the user says so.
    if (options.kind != ExportKind::Filing) {
        const Outcome asked = legal::confirmExportAgainstLaw(m_db, m_prompt, style, document);
        if (asked != Outcome::Done)
            return asked;
    }
    BusyCursor busy;
    QList<Typist *> typists;
    for (DocumentOutput *output : outputs)
        typists << &output->typist();
    TypistFan typist(typists);
    const Outcome outcome = DocumentRenderer(m_db, m_prompt).render(typist, style, document, options);
    // A failed read has been reported: no document is written from what was read before it.
    if (outcome != Outcome::Done)
        return outcome;
    try {
        // The files come into place once the transaction, the version with them, has
        // committed; until then they are staged, and removed when anything fails.
        StagedFiles files;
        Transaction transaction(m_db);
        for (DocumentOutput *output : outputs) {
            if (!output->complete(files))
                return Outcome::Stopped;
        }
        transaction.commit();
        files.commit();
    } catch (const Failure &f) {
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
