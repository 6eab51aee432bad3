#include "rulebase/forms/frmDBSakusei2.h"
#include "rulebase/CompanyNames.h"

#include "rulebase/CompanyFiles.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace normaris {

frmDBSakusei2::frmDBSakusei2(QWidget *parent) : frmDBSakusei(QStringLiteral("frmDBSakusei2"), parent)
{
    auto *label = new QLabel(QStringLiteral("ソースファイルを選択してください｡"), this);
    m_source = new QComboBox(this);
    m_source->setObjectName(QStringLiteral("Combo1"));
    m_source->addItems(companiesOf(layout()));
    m_source->setCurrentIndex(-1);
    content()->addWidget(label);
    content()->addWidget(m_source);
}

void frmDBSakusei2::act()
{
    if (CompanyFiles(layout(), uiPrompt()).createFromCompany(m_name->text(), m_source->currentText()) == Outcome::Done)
        openMade();
}

} // namespace normaris
