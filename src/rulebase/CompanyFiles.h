#pragma once
// The steps of the company dialogs and of `normaris-cli company` on the layout's store
// (rulebase/CompanyStore.h): create from the seed or from another company, choose the
// one to work on, delete. Each step asks and reports through the Prompt, in the order
// the user sees it; the store does the work.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <functional>

namespace normaris {

class CompanyFiles {
public:
    CompanyFiles(DataLayout layout, Prompt &prompt) : m_layout(std::move(layout)), m_prompt(prompt) {}

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
    // True when name may name a company (its length and characters), after saying why
    // not; whether a company of that name exists already is not asked here.
    bool acceptName(const QString &name);

private:
    // Done when name is free; Stopped after saying why not; Failed when the store could not be asked.
    Outcome acceptNewName(const QString &name);
    // Asks, then makes the company through make.
    Outcome create(const QString &name, const std::function<void(const class CompanyStore &)> &make);

    DataLayout m_layout;
    Prompt &m_prompt;
};

} // namespace normaris
