#pragma once
// A company is a folder and a file: Data/<N>/<N>.sqlite. These are the steps of
// the company dialogs and of `normaris-cli company`: create from the seed or from
// another company, choose the one to work on, delete. Each step asks and reports
// through the Prompt, in the order the user sees it.

#include "base/DataLayout.h"
#include "base/Prompt.h"

namespace normaris {

class CompanyFiles {
public:
    CompanyFiles(DataLayout layout, Prompt &prompt) : m_layout(std::move(layout)), m_prompt(prompt) {}

    QStringList companyList() const { return m_layout.companyList(); }

    // A new company copied from the seed file, with no dates and no composed output.
    Outcome createFromSeed(const QString &name);
    // A new company copied from the company source; closes source first when it is open.
    Outcome createFromCompany(const QString &name, const QString &source);
    // Asks, then opens the connection `cn` on the company and records it as the open one.
    Outcome select(const QString &name);
    // The same without the question: for the command line, which names its company.
    Outcome open(const QString &name);
    // Deletes the company's folder; the open company can't be deleted.
    Outcome remove(const QString &name);

private:
    bool acceptNewName(const QString &name);
    Outcome create(const QString &name, const QString &sourceFile);
    void copyAndClear(const QString &sourceFile, const QString &dir, const QString &file);

    DataLayout m_layout;
    Prompt &m_prompt;
};

} // namespace normaris
