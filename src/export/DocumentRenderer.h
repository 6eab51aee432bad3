#pragma once
// Types a finished document from the work rows of 作成データ: cover, table of
// contents, body and the 付則 lines of a set of rules; the body and the signature
// block of an agreement; or the notification and opinion forms alone.
//
// The renderer reads everything it needs before the first keystroke and writes
// nothing to the data file. What it types goes to a Typist; a failure half way
// leaves there what was typed so far.

#include "base/Prompt.h"

#include <QSqlDatabase>
#include <QString>

namespace normaris {

class Typist;

enum class ExportKind { Rules = 0, Agreement = 1, Filing = 2 };            // 種別: 規則・規程, 協約・協定, 就業規則届
enum class CoverChoice { Both = 0, CoverOnly = 1, TocOnly = 2, None = 3 }; // 表紙・目次の有無

struct RenderOptions {
    ExportKind kind = ExportKind::Rules;
    CoverChoice cover = CoverChoice::Both;
    bool showFirstParagraphNumber = true; // 第１項の数字表示: 表示する
    bool filingIsChange = false;          // 就業規則届: 作成 (false) or 変更 (true)
};

class DocumentRenderer {
public:
    DocumentRenderer(QSqlDatabase db, Prompt &prompt);

    // The opening checks (stop-icon boxes "種別の指定", "データの確認" …, Outcome::Stopped),
    // then the typing. A failure while typing: the failure's own text through
    // prompt.failure(), Outcome::Failed; what was typed stays in the typist.
    // For ExportKind::Filing style and document are not needed.
    Outcome render(Typist &typist, const QString &style, const QString &document, const RenderOptions &options);

private:
    Outcome renderDocument(Typist &typist, const QString &style, const QString &document, const RenderOptions &options);
    Outcome renderFiling(Typist &typist, const RenderOptions &options);
    Outcome stop(const QString &title, const QString &text);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

} // namespace normaris
