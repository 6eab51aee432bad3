#pragma once
// Where a clause of the dictionary stands: its level, prose style, document and the
// codes below the document down to its own. The rows of a clause's chain are found
// by these keys; the key columns come from the level table.

#include "base/Levels.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace normaris::dictionary {

struct ClausePlace {
    Level level = Level::Preamble;
    QString style;     // 文章形式Code
    QString document;  // 規程Code
    QStringList codes; // the place codes under the document, the clause's own Code last

    // The 前文 of a document: the one row of its level, with the level's fixed Code.
    static ClausePlace preamble(const QString &style, const QString &document)
    {
        return {Level::Preamble, style, document, {QString::fromUtf16(levelInfo(Level::Preamble).fixedCode)}};
    }

    QString table() const { return dictionaryTable(level); }
    QString textColumn() const { return normaris::textColumn(level); }
    // The key columns of the clause's rows, 文章形式Code first, and their values.
    QStringList keyColumns() const;
    // "文章形式Code = ? AND 規程Code = ? AND … AND Code = ?" and its values.
    QString whereSql() const;
    QVariantList whereValues() const;
    // The same without the clause's own Code: every entry of the level under its parent.
    QString siblingsWhereSql() const;
    QVariantList siblingsWhereValues() const;
    // Whether the clause stands in a composed document of its style.
    bool isComposed(QSqlDatabase db) const;
    // The same keys without the style, for the word and reference tables (規程Code …);
    // with the level code 種別.
    QString variableWhereSql() const;
    QVariantList variableWhereValues() const;
};

} // namespace normaris::dictionary
