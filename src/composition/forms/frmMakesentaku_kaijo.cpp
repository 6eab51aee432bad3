#include "composition/forms/frmMakesentaku_kaijo.h"

#include "composition/forms/CompositionFlow.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

namespace {

// The seven releases by the level of the selected row (CurShubetsu).
struct ReleaseMethod {
    const char *current;
    Outcome (*run)(ClauseReleaser &, ReleaseRequest);
};
const ReleaseMethod kReleaseMethods[] = {
    {"10", Kaijo10}, {"2", Kaijo02}, {"3", Kaijo03}, {"4", Kaijo04}, {"5", Kaijo05}, {"6", Kaijo06}, {"7", Kaijo07},
};

auto methodFor(const QString &current) -> decltype(ReleaseMethod::run)
{
    for (const ReleaseMethod &m : kReleaseMethods) {
        if (current == QLatin1StringView(m.current))
            return m.run;
    }
    return nullptr;
}

ReleaseRequest requestFromState()
{
    const AppState &s = AppState::instance();
    ReleaseRequest r;
    r.style = s.CurBunshoKeishikiCode;
    r.document = s.CurKiteiCode;
    r.level = levelOf(s.CurShubetsu);
    r.rowIndex = s.CurRowIndex;
    r.codes = {s.CurShoCode, s.CurJoCode, s.CurKouCode, s.CurGouCode, s.CurMaruCode, s.CurIrohaCode};
    return r;
}

} // namespace

frmMakesentaku_kaijo::frmMakesentaku_kaijo(QWidget *parent)
    : QDialog(parent), m_request(requestFromState()), m_method(methodFor(AppState::instance().CurShubetsu))
{
    setObjectName(QStringLiteral("frmMakesentaku_kaijo"));
    setWindowTitle(QStringLiteral("解除"));
    auto *outer = new QVBoxLayout(this);
    auto *instruction = new QLabel(QStringLiteral("解除ボタンを押してください"), this);
    instruction->setObjectName(QStringLiteral("Label1"));
    outer->addWidget(instruction);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    m_release = makeButton(this, QStringLiteral("Command1"), QStringLiteral("解除(&K)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_release, close, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    outer->addLayout(buttons);
    m_release->setEnabled(m_method != nullptr);
    connect(m_release, &QPushButton::clicked, this, &frmMakesentaku_kaijo::release);
    connect(close, &QPushButton::clicked, this, &frmMakesentaku_kaijo::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    resize(twips(5400), sizeHint().height());
    PlaceForm(this);
}

void frmMakesentaku_kaijo::release()
{
    if (!m_method)
        return;
    try {
        BusyCursor busy;
        ClauseReleaser releaser(AppState::cn(), uiPrompt());
        // A release runs once per opening.
        if (m_method(releaser, m_request) == Outcome::Done)
            m_release->setEnabled(false);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
}

void frmMakesentaku_kaijo::reject()
{
    // Back to the panel the release was chosen on, rebuilt from the tables.
    CompositionFlow::handOver(isClauseLevel(m_request.level) ? CompositionFlow::Form::ParagraphPanel : CompositionFlow::Form::ArticlePanel);
    QDialog::reject();
}

} // namespace normaris
