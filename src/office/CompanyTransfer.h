#pragma once
// A company in and out of the store as a company file, the way a company travels:
//
//   - 会社データの読込 (importFile): a company file put into the store as a company of
//     its own, or in place of the company of that name after a question;
//   - 持ち出し (checkout): a company of the office's server written to a file and marked
//     taken out, so that on the server it can be read and printed but not changed;
//   - 持ち帰り (checkin): the file, changed on the way, put back in place of the company,
//     which lifts the mark. Refused when the server's copy changed meanwhile: then the
//     新旧対照表 of each kept document that differs, the server's copy before and the
//     file after, is written beside the file for the user to reconcile.
//
// Each step asks and reports through the Prompt and holds the company while it works;
// the store does the work, all or nothing.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <optional>

namespace normaris {

class CompanyTransfer {
public:
    CompanyTransfer(DataLayout layout, Prompt &prompt) : m_layout(std::move(layout)), m_prompt(prompt) {}

    // Puts the company file file into the store as company name (empty: the file's base
    // name). A name that exists is replaced only when the user says yes.
    Outcome importFile(const QString &file, const QString &name = QString());
    // Writes company name of the server to file and marks it taken out.
    Outcome checkout(const QString &name, const QString &file);
    // Puts file back in place of company name, taken out before, and lifts the mark.
    Outcome checkin(const QString &name, const QString &file);

    static inline const QString kImportTitle = QStringLiteral("会社データの読込");
    static inline const QString kCheckoutTitle = QStringLiteral("持ち出し");
    static inline const QString kCheckinTitle = QStringLiteral("持ち帰り");

private:
    // Stopped after saying why when file is not there or is no company file; Failed
    // when it could not be read; nothing when it is a company file.
    std::optional<Outcome> refuseFile(const QString &title, const QString &file);
    // True after saying why when the store is not the server (the folder store keeps no marks).
    bool refuseFolderStore(const QString &title, const QString &what);
    // The open company is closed after the question; false when the user says no.
    bool closeWhenOpen(const QString &title, const QString &name, const QString &what);

    DataLayout m_layout;
    Prompt &m_prompt;
};

} // namespace normaris
