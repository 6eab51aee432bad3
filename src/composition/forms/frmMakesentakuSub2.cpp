#include "composition/forms/frmMakesentakuSub2.h"

#include "composition/Panels.h"
#include "words/forms/frmGokusentaku_01.h"

#include <QPushButton>

namespace normaris {

namespace {
const PanelFormKind kParagraphPanel = {
    "frmMakesentakuSub2", "項以下の設定", &AppState::ParagraphPanelActive, 19, true, "Label4_1", CompositionFlow::Form::ArticlePanel};
}

frmMakesentakuSub2::frmMakesentakuSub2(QWidget *parent) : PanelForm(kParagraphPanel, parent)
{
    QPushButton *words = addButton(QStringLiteral("Command4"), QStringLiteral("埋込語句の設定(&G)"));
    connect(words, &QPushButton::clicked, this, &frmMakesentakuSub2::openWords);
    load();
}

void frmMakesentakuSub2::fillHeadings()
{
    const AppState &s = AppState::instance();
    const PlaceNames names = placeNames(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode, s.CurShoCode, s.CurJoCode);
    addHeading(QStringLiteral("Label10_0"), QStringLiteral("文章形式:"), names.style);
    addHeading(QStringLiteral("Label10_1"), QStringLiteral("規則・規程:"), names.document);
    addHeading(QStringLiteral("Label10_2"), QStringLiteral("章:"), names.chapter);
    addHeading(QStringLiteral("Label10_3"), QStringLiteral("条:"), names.article);
}

QList<PanelRow> frmMakesentakuSub2::readRows()
{
    const AppState &s = AppState::instance();
    return paragraphPanel(AppState::cn(), s.CurBunshoKeishikiCode, s.CurKiteiCode, s.CurShoCode, s.CurJoCode);
}

PanelDecision frmMakesentakuSub2::decide(const QList<PanelRow> &rows, int i, const QString &action)
{
    return paragraphPanelAction(rows, i, action);
}

void frmMakesentakuSub2::openWords()
{
    // The words of this 条, without the preview that needs the work data; this panel stays open.
    AppState::instance().WordsPreviewAllowed = false;
    frmGokusentaku_01 words(this);
    words.exec();
}

} // namespace normaris
