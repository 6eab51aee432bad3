#include "rulebase/forms/CompanyWizard.h"
#include "rulebase/CompanyNames.h"

#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace normaris {

namespace {

QFrame *rule(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

CompanyWizard::CompanyWizard(const Texts &texts, QWidget *parent) : QDialog(parent)
{
    setObjectName(texts.formName);
    setWindowTitle(texts.caption);
    auto *outer = new QVBoxLayout(this);
    for (const auto &[name, text] :
         {std::pair{QStringLiteral("Label1"), texts.label1}, std::pair{QStringLiteral("Label2"), texts.label2}}) {
        auto *label = new QLabel(text, this);
        label->setObjectName(name);
        label->setWordWrap(true);
        outer->addWidget(label);
    }
    outer->addWidget(rule(this));
    m_content = new QVBoxLayout;
    outer->addLayout(m_content, 1);
    outer->addWidget(rule(this));

    auto *buttons = new QHBoxLayout;
    QPushButton *back = m_back = makeButton(this, QStringLiteral("Command1"), QStringLiteral("< 戻る(&B)"));
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, this, [this] { done(WizardBack); });
    QPushButton *action = m_action = makeButton(this, QStringLiteral("Command2"), texts.action);
    action->setDefault(true);
    QPushButton *cancel = makeButton(this, QStringLiteral("Command3"), QStringLiteral("キャンセル(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command4"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {back, action, cancel, help})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    connect(action, &QPushButton::clicked, this, [this] { act(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });

    QDir::setCurrent(layout().dataDir());
    resize(twips(7200), twips(5400));
    markWizardStep(this);
    PlaceForm(this);
}

void CompanyWizard::allowBack() { m_back->setEnabled(true); }

QListWidget *CompanyWizard::addCompanyList(const QString &heading)
{
    auto *label = new QLabel(heading, this);
    label->setObjectName(QStringLiteral("List1Heading"));
    auto *list = new QListWidget(this);
    list->setObjectName(QStringLiteral("List1"));
    list->addItems(companiesOf(layout()));
    m_content->addWidget(label);
    m_content->addWidget(list, 1);
    return list;
}

DataLayout CompanyWizard::layout() const { return AppState::instance().layout(); }

void CompanyWizard::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QApplication::restoreOverrideCursor();
    QDialog::changeEvent(event);
}

} // namespace normaris
