#include "composition/forms/CompositionFlow.h"

#include "composition/forms/frmMakesentakuSub.h"
#include "composition/forms/frmMakesentakuSub2.h"
#include "composition/forms/frmMakesentaku_kaijo.h"
#include "composition/forms/frmMakesentaku_tsuika.h"
#include "base/AppState.h"

#include <memory>

namespace normaris::CompositionFlow {

namespace {
Form &next()
{
    static Form form = Form::None;
    return form;
}
} // namespace

void handOver(Form form)
{
    AppState &state = AppState::instance();
    if (form == Form::ArticlePanel)
        state.ArticlePanelActive = true;
    else if (form == Form::ParagraphPanel)
        state.ParagraphPanelActive = true;
    next() = form;
}

Form pending() { return next(); }

void run(QWidget *parent)
{
    // One form at a time: each is made, shown and destroyed before the next, so that
    // the chain of hand-overs never deepens the stack of open dialogs.
    while (next() != Form::None) {
        const Form form = next();
        next() = Form::None;
        std::unique_ptr<QDialog> dialog;
        switch (form) {
        case Form::ArticlePanel: dialog = std::make_unique<frmMakesentakuSub>(parent); break;
        case Form::ParagraphPanel: dialog = std::make_unique<frmMakesentakuSub2>(parent); break;
        case Form::Add: dialog = std::make_unique<frmMakesentaku_tsuika>(parent); break;
        case Form::Release: dialog = std::make_unique<frmMakesentaku_kaijo>(parent); break;
        case Form::None: break;
        }
        dialog->exec();
    }
}

} // namespace normaris::CompositionFlow
