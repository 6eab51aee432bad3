#pragma once
// Turns the reference markers ◆nnnn◆ of the built rows into the wording a legal
// text uses for the clause they point to, seen from the place of the reference:
// 第５条第２項, 前条, 前項第３号, ②, or another document's formal name and path.
//
// The four entry points differ only in the level of the referring row, which fixes
// the place columns that select its references and the 種別 they carry:
//
//   bangou_kou    項            章Code 条Code 項Code
//   bangou_gou    号            + 号Code
//   bangou_maru   号の細分丸    + 号の細分丸Code
//   bangou_iroha  号の細分イロハ + 号の細分イロハCode
//
// A target that is not built shows "未置換" and leaves the rest of the row's markers
// as they stand.

#include "rulebase/CompositionRow.h"
#include "export/NumberIndex.h"
#include "export/ReferenceRows.h"
#include "base/Prompt.h"

#include <QHash>
#include <optional>

namespace normaris {

class CrossReferences {
public:
    CrossReferences(QSqlDatabase db, Prompt &prompt, const QString &document);

    // Each returns the row's text with its references replaced.
    QString bangou_kou(const CompositionRow &row) { return number(row, Level::Paragraph); }
    QString bangou_gou(const CompositionRow &row) { return number(row, Level::Item); }
    QString bangou_maru(const CompositionRow &row) { return number(row, Level::Maru); }
    QString bangou_iroha(const CompositionRow &row) { return number(row, Level::Iroha); }

    // The entry point by the row's own level; other levels come back unchanged.
    QString replaceIn(const CompositionRow &row);

private:
    QString number(const CompositionRow &row, Level level);
    // The wording of one reference; nothing when the marker is to stay. Throws
    // MissingTarget when a row it needs is not built.
    std::optional<QString> wording(const ReferenceRow &reference, const CompositionRow &row, Level level);
    QString formalName(const QString &document);

    QSqlDatabase m_db;
    Prompt &m_prompt;
    NumberIndex m_numbers;
    // The document's references by article (章Code|条Code), in stored order.
    QHash<QString, QList<ReferenceRow>> m_byArticle;
    QHash<QString, QString> m_formalNames;
};

} // namespace normaris
