#pragma once
// データ作成: freezes one document for output. The two composition tables are
// merged in document order into 作成データ置換前, and 作成データ is written from it
// with the current text of every clause from the dictionary, ending with a closing
// row. Building afresh also takes back every earlier substitution.
//
// A code is built in one prose style only: when the other style's work data of the
// same code exist, the user is asked whether to drop them (and take that style's
// document off the list). Everything happens in one transaction.

#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

class WorkDataBuild {
public:
    WorkDataBuild(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Done after "データ作成が完了しました。"; Stopped when there is nothing to build or
    // the user keeps the other style; Failed after the "取消" message (nothing changed).
    Outcome build(const QString &style, const QString &document);

private:
    bool replaceOtherStyle(const QString &style, const QString &document);
    void freeze(const QString &style, const QString &document);
    void writeOutputRows(const QString &style, const QString &document);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
