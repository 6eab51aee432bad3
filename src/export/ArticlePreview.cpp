#include "export/ArticlePreview.h"

#include "rulebase/CompositionRow.h"
#include "export/ClauseWriter.h"
#include "export/DocumentExport.h"
#include "export/DocumentTexts.h"
#include "fileformats/DocxTypist.h"
#include "base/BusyCursor.h"
#include "base/Failure.h"

#include <QFile>

namespace normaris {

namespace {

void typeRow(Typist &typist, ClauseWriter &writer, const CompositionRow &row)
{
    // The rows of an article are its heading and its clauses.
    if (isClauseLevel(row.level)) {
        writer.type(row.level);
        return;
    }
    if (row.level != Level::Article)
        return;
    typist.setCharacterUnitFirstLineIndent(0);
    typist.typeText(QStringLiteral("第●条（") + row.text + u'）');
}

} // namespace

bool ArticlePreview::type(Typist &typist, const QString &chapter, const QString &article)
{
    const QList<CompositionRow> rows =
        readRows(m_db, kOutputRowsTable, QStringLiteral("文章形式Code = ? AND 規程Code = ? AND 章Code = ? AND 条Code = ?"),
                 {m_style, m_document, chapter, article});
    if (rows.isEmpty())
        return false;
    typist.setFontName(Typist::kMinchoFont);
    typist.setColor(Typist::Color::Black);
    RowCursor cursor(rows);
    ClauseWriter writer = ClauseWriter::preview(typist, cursor);
    for (; !cursor.atEnd(); cursor.advance()) {
        const CompositionRow &row = cursor.row();
        typist.setColor(wordMarkColor(row.text));
        // A row without text stands for a template the user inserts by hand.
        if (row.text.isEmpty()) {
            typist.setCharacterUnitFirstLineIndent(0);
            typeTemplateLine(typist, row.templateCode);
        } else {
            typeRow(typist, writer, row);
        }
        typist.typeParagraph();
    }
    return true;
}

QString ArticlePreview::write(const QString &chapter, const QString &article)
{
    BusyCursor busy;
    DocxTypist docx;
    if (!type(docx, chapter, article))
        return {};
    const QString path = DocumentExport::temporaryPath(m_document);
    try {
        docx.save(path);
    } catch (const Failure &) {
        QFile::remove(path);
        throw;
    }
    return path;
}

} // namespace normaris
