#include "import/forms/frmCopy01.h"

#include "base/AppState.h"
#include "import/SourceCompany.h"
#include "import/forms/frmCopy02.h"
#include "shell/forms/FormHelpers.h"

#include <QListWidget>
#include <QPushButton>

namespace normaris {

namespace {
const QString kTitle = QStringLiteral("会社指定の確認");
}

frmCopy01::frmCopy01(QWidget *parent)
    : CompanyWizard({QStringLiteral("frmCopy01"), QStringLiteral("他社データ取込（会社指定）"), QStringLiteral("次へ(&N)"),
                     QStringLiteral("取り込みたいデータのある会社を指定します。"),
                     QStringLiteral("会社名を選択し、［次へ］を押してください。")},
                    parent)
{
    findChild<QPushButton *>(QStringLiteral("Command3"))->setText(QStringLiteral("閉じる(&C)"));
    m_list = addCompanyList(QStringLiteral("登録済の会社名"));
    SourceCompany::close();
}

frmCopy01::~frmCopy01() { SourceCompany::close(); }

void frmCopy01::act()
{
    const QString name = m_list->currentItem() ? m_list->currentItem()->text() : QString();
    if (name.isEmpty()) {
        uiPrompt().plain(kTitle, QStringLiteral("処理する会社を指定してください。"));
        return;
    }
    if (!uiPrompt().question(kTitle, QStringLiteral("『%1』を指定します。").arg(name)))
        return;
    // A refused file leaves the wizard on this step, with nothing open.
    if (SourceCompany::open(uiPrompt(), layout(), name) != Outcome::Done)
        return;
    frmCopy02 next(this);
    if (next.exec() != WizardBack)
        reject(); // 閉じる on a later step closes the whole wizard
}

void frmCopy01::done(int result)
{
    SourceCompany::close();
    CompanyWizard::done(result);
}

} // namespace normaris
