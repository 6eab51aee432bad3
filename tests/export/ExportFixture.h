#pragma once
// A company from the seed, opened as `cn`, for the tests of the export chain.

#include "ScriptedPrompt.h"
#include "TestRoot.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"

#include <QSqlRecord>
#include <QTest>
#include <memory>

namespace normaris::test {

struct OpenCompany {
    OpenCompany() : root(std::make_unique<TestRoot>()), db(root->openCompany(QStringLiteral("甲"))) {}
    ~OpenCompany()
    {
        db = QSqlDatabase();
        root.reset();
    }
    std::unique_ptr<TestRoot> root;
    QSqlDatabase db;
};

// The rows of a table for one document and style as text, one line a row, every column but ID.
inline QStringList tableLines(QSqlDatabase db, const QString &table, const QString &style, const QString &document)
{
    RowReader q = execSql(db, QStringLiteral("SELECT * FROM \"%1\" WHERE 文章形式Code = ? AND 規程Code = ? ORDER BY 順番").arg(table),
                          {style, document});
    QStringList lines;
    while (q.next()) {
        QStringList values;
        for (int i = 1; i < q.record().count(); ++i)
            values << q.value(i).toString();
        lines << values.join(u'|');
    }
    return lines;
}

} // namespace normaris::test
