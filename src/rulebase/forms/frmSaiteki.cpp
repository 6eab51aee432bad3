#include "rulebase/forms/frmSaiteki.h"
#include "rulebase/CompanyNames.h"

#include "rulebase/Maintenance.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

frmSaiteki::frmSaiteki(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSaiteki"));
    setWindowTitle(QStringLiteral("データベース最適化"));
    const DataLayout layout = AppState::instance().layout();
    QDir::setCurrent(layout.dataDir());
    auto *outer = new QVBoxLayout(this);
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("メッセージ"));
    outer->addWidget(m_message);
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->addItems(companiesOf(layout));
    outer->addWidget(m_list, 1);

    auto *buttons = new QHBoxLayout;
    QPushButton *run = makeButton(this, QStringLiteral("最適化"), QStringLiteral("最適化"));
    QPushButton *cancel = makeButton(this, QStringLiteral("Command1"), QStringLiteral("キャンセル"));
    QPushButton *help = makeButton(this, QStringLiteral("Command2"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {run, cancel, help})
        buttons->addWidget(b);
    run->setDefault(true);
    outer->addLayout(buttons);
    connect(run, &QPushButton::clicked, this, &frmSaiteki::optimise);
    actOnListItem(m_list, run);
    m_list->setFocus();
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });

    m_message->setText(QStringLiteral("データベースを最適化します。"));
    resize(twips(6000), twips(4800));
    PlaceForm(this);
}

void frmSaiteki::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        m_message->setText(QStringLiteral("データベースを最適化します。"));
    QDialog::changeEvent(event);
}

void frmSaiteki::optimise()
{
    const QString name = m_list->currentItem() ? m_list->currentItem()->text() : QString();
    const Outcome outcome = Maintenance(AppState::instance().layout(), uiPrompt()).optimise(name);
    if (outcome != Outcome::Stopped)
        accept();
}

} // namespace normaris
