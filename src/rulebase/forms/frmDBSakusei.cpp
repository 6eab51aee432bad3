#include "rulebase/forms/frmDBSakusei.h"

#include "rulebase/CompanyFiles.h"
#include "rulebase/CompanyNames.h"
#include "shell/forms/FormHelpers.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace normaris {

frmDBSakusei::frmDBSakusei(QWidget *parent) : frmDBSakusei(QStringLiteral("frmDBSakusei"), parent) {}

frmDBSakusei::frmDBSakusei(const QString &formName, QWidget *parent)
    : CompanyWizard({formName, QStringLiteral("新規データ作成"), QStringLiteral("作成(&S)"),
                     QStringLiteral("新しいフォルダを作成し、その中にデータファイルを作成します。"),
                     QStringLiteral("フォルダ名（会社名）を入力し、［作成］を押してください。")},
                    parent)
{
    auto *label = new QLabel(QStringLiteral("フォルダ名（会社名）"), this);
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("Text1"));
    content()->addWidget(label);
    content()->addWidget(m_name);
    addCompanyList(QStringLiteral("登録済の会社名"));
    installTextBoxBehaviour(this);
    m_name->setFocus();
}

void frmDBSakusei::act()
{
    if (CompanyFiles(layout(), uiPrompt()).createFromSeed(m_name->text()) == Outcome::Done)
        openMade();
}

void frmDBSakusei::openMade()
{
    const QString name = m_name->text();
    if (CompanyFiles(layout(), uiPrompt()).open(name) == Outcome::Done)
        uiPrompt().information(QStringLiteral("ファイル作成の確認"), quotedName(name) + QStringLiteral("を作成し、開きました。"));
    accept();
}

} // namespace normaris
