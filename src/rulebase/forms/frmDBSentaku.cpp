#include "rulebase/forms/frmDBSentaku.h"

#include "base/AppState.h"
#include "rulebase/CompanyStore.h"
#include "rulebase/ServerStore.h"
#include "shell/forms/FormHelpers.h"

namespace normaris {

frmDBSentaku::frmDBSentaku(QWidget *parent)
    : CompanyPicker({QStringLiteral("frmDBSentaku"), QStringLiteral("会社指定"), QStringLiteral("指定(&S)"),
                     QStringLiteral("処理する会社を指定します。"), QStringLiteral("会社名を選択し、［指定］を押してください。")},
                    &CompanyFiles::select, parent)
{
    setWindowTitle(windowTitle() + QStringLiteral(" － ") + CompanyStore::of(layout())->title());
}

void frmDBSentaku::act()
{
    CompanyPicker::act();
    const AppState &state = AppState::instance();
    if (result() != Accepted || !state.isCompanyOpen() || !CompanyStore::of(layout())->isServer())
        return;
    const QString name = state.companyPanel();
    if (const auto mark = ServerStore(layout()).takenOut(name))
        uiPrompt().information(QStringLiteral("会社指定の確認"),
                               QStringLiteral("『%1』は持ち出し中です（持ち出した人：%2、日時：%3）。\n"
                                              "読むことと印刷はできますが、持ち帰るまで変更はできません。")
                                   .arg(name, mark->by, mark->at));
}

} // namespace normaris
