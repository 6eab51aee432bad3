#include "composition/forms/CompositionFlow.h"

#include "composition/forms/frmMakesentakuSub.h"
#include "composition/forms/frmMakesentakuSub2.h"
#include "composition/forms/frmMakesentaku_kaijo.h"
#include "composition/forms/frmMakesentaku_tsuika.h"

#include <memory>

namespace normaris::CompositionFlow {

namespace {
Form &next()
{
    static Form form = Form::None;
    return form;
}
} // namespace

void setNext(Form form) { next() = form; }

void run(QWidget *parent, Form first)
{
    Form form = first;
    while (form != Form::None) {
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
        form = next();
    }
}

} // namespace normaris::CompositionFlow
