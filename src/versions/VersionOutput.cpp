#include "versions/VersionOutput.h"

#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "versions/VersionStore.h"

namespace normaris {

// Under the latest effective date; named as the document is, or by its title row.
bool VersionOutput::complete(StagedFiles &)
{
    const PrintedRows &rows = m_recorder.rows();
    VersionHeader header;
    header.style = m_style;
    header.document = m_document;
    header.name =
        scalar(m_db, QStringLiteral("SELECT 正式名称 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {m_style, m_document}).toString();
    if (header.name.isEmpty() && !rows.isEmpty() && rows.first().level == Level::Document)
        header.name = rows.first().text;
    header.made = QDateTime::currentDateTime();
    for (const EffectiveDate &date : EffectiveDates(m_db, m_document).list())
        header.effective = qMax(header.effective, date.date);
    VersionStore(m_db).keep(header, rows);
    return true;
}

} // namespace normaris
