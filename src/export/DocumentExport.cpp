#include "export/DocumentExport.h"

#include "fileformats/DocxTypist.h"
#include "export/TextTypist.h"
#include "export/TypistPair.h"
#include "base/BusyCursor.h"
#include "base/Failure.h"

#include <QDir>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTemporaryFile>

namespace normaris {

namespace {

void writeText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
}

} // namespace

Outcome DocumentExport::write(const QString &style, const QString &document, const RenderOptions &options, const QString &docxPath,
                              const QString &textPath)
{
    BusyCursor busy;
    DocxTypist docx;
    TextTypist text;
    TypistPair typist(docx, text);
    const Outcome outcome = DocumentRenderer(m_db, m_prompt).render(typist, style, document, options);
    // A failed read has been reported: no document is written from what was read before it.
    if (outcome != Outcome::Done)
        return outcome;
    try {
        docx.save(docxPath);
        if (!textPath.isEmpty())
            writeText(textPath, text.text());
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
