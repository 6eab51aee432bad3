#include "composition/forms/frmMakesentakuSub.h"

#include "composition/Panels.h"

namespace normaris {

namespace {
const PanelFormKind kArticlePanel = {"frmMakesentakuSub",        "条までの設定", &AppState::ArticlePanelActive, 20, false, "Label4",
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

PanelDecision frmMakesentakuSub::decide(const QList<PanelRow> &rows, int i, const QString &action)
{
    const AppState &s = AppState::instance();
    const PanelRow &row = rows.at(i);
    // Only going down to the 項 level needs to know whether the dictionary holds any.
    const bool hasParagraphs = action == u"5" && row.level == Level::Article
                               && articleHasParagraphs(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode, row.codes[0], row.codes[1]);
    return articlePanelAction(rows, i, action, hasParagraphs);
}

} // namespace normaris
