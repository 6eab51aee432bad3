#include "rulebase/forms/frmDBSakuseiSub.h"

#include "rulebase/forms/frmDBSakusei.h"
#include "rulebase/forms/frmDBSakusei2.h"
#include "shell/forms/FormHelpers.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {
const QString kExplanation = QStringLiteral(
    "データソース（コピー元のデータ）は、本システムが標準で用意するデータの他に、ユーザーが作成したデータの中から選ぶことができます。");
}

frmDBSakuseiSub::frmDBSakuseiSub(QWidget *parent)
    : CompanyWizard(
        {QStringLiteral("frmDBSakuseiSub"), QStringLiteral("新規データ作成"), QStringLiteral("次へ(&N)"), kExplanation, QString()}, parent)
{
    auto *frame = new QGroupBox(QStringLiteral("データソース"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *box = new QVBoxLayout(frame);
    m_standard = new QRadioButton(QStringLiteral("標準データ"), frame);
    m_standard->setObjectName(QStringLiteral("Option1_0"));
    m_standard->setChecked(true);
    auto *user = new QRadioButton(QStringLiteral("ユーザー作成データ"), frame);
    user->setObjectName(QStringLiteral("Option1_1"));
    box->addWidget(m_standard);
    box->addWidget(user);
    content()->addWidget(frame);
    content()->addStretch();
}

void frmDBSakuseiSub::act()
{
    QDialog *next = m_standard->isChecked() ? static_cast<QDialog *>(new frmDBSakusei(parentWidget()))
                                            : static_cast<QDialog *>(new frmDBSakusei2(parentWidget()));
    auto *step = static_cast<CompanyWizard *>(next);
    step->allowBack();
    next->setAttribute(Qt::WA_DeleteOnClose);
    // The next step takes this one's place; 戻る brings this one back.
    hide();
    if (next->exec() == WizardBack) {
        show();
        return;
    }
    accept();
}

} // namespace normaris
