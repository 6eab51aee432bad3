#include "composition/forms/frmMakesentakuSub.h"

#include "composition/Panels.h"

namespace normaris {

namespace {
const PanelFormKind kArticlePanel = {
    "frmMakesentakuSub",        "条までの設定", &AppState::ArticlePanelActive, &AppState::ArticlePanelRow, 20, false, "Label4",
    CompositionFlow::Form::None};
}

frmMakesentakuSub::frmMakesentakuSub(QWidget *parent) : PanelForm(kArticlePanel, parent) { load(); }

void frmMakesentakuSub::fillHeadings()
{
    const AppState &s = AppState::instance();
    addHeading(QStringLiteral("Label10"), QStringLiteral("文章形式:"),
               placeNames(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode).style);
}

QList<PanelRow> frmMakesentakuSub::readRows()
{
    const AppState &s = AppState::instance();
    return articlePanel(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode);
}

} // namespace normaris
