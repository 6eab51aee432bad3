#include "rulebase/forms/CompanyPicker.h"

#include "shell/forms/FormHelpers.h"

#include <QListWidget>

namespace normaris {

CompanyPicker::CompanyPicker(const Texts &texts, Step step, QWidget *parent) : CompanyWizard(texts, parent), m_step(step)
{
    m_list = addCompanyList(QStringLiteral("登録済の会社名"));
    // The user starts on the list: Down picks a company, Enter acts on it.
    actOnListItem(m_list, actionButton());
    m_list->setFocus();
}

void CompanyPicker::act()
{
    const QString name = m_list->currentItem() ? m_list->currentItem()->text() : QString();
    CompanyFiles files(layout(), uiPrompt());
    if ((files.*m_step)(name) == Outcome::Done)
        accept();
}

} // namespace normaris
