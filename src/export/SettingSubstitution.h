#pragma once
// 設定項目の置換: rewrites the built rows of one document in place. Embedded-word
// markers ★nnnn★ become the words set for their clause, setting markers ☆nnnn☆ the
// company's basic settings and the latest effective date, and reference markers
// ◆nnnn◆ the numbers of the clauses they cite. 作成データ置換前 stays as it is,
// so that the next build starts again from clean text.
//
// A marker whose word or setting is still empty stays, and the row prints in blue;
// running again after filling it in replaces it then.

#include "rulebase/CompositionRow.h"
#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

class SettingSubstitution {
public:
    SettingSubstitution(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

    // Done after "置換処理が完了しました。"; Stopped after a check's message.
    Outcome run(const QString &style, const QString &document);

    // Fills the preamble segment of an agreement that names the workers' side with the
    // party chosen in the basic settings and the short name the agreement calls it by.
    void roushi(const QString &style, const QString &document);

private:
    // False, after the message, when the document cites another one that is not built
    // at the cited place yet; the message names each such document once.
    bool checkMakingOrder(const QString &style, const QString &document);
    // The words, settings and latest date of the first pass, in place.
    void substituteWordsAndSettings(QList<CompositionRow> &rows, const QString &document);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
