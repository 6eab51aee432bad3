#include "composition/forms/PanelForm.h"

#include "composition/Panels.h"
#include "composition/forms/CompositionPanel.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

PanelForm::PanelForm(const PanelFormKind &kind, QWidget *parent) : QDialog(parent), m_kind(kind)
{
    setObjectName(QString::fromUtf8(kind.objectName));
    setWindowTitle(QString::fromUtf8(kind.caption));
    auto *outer = new QVBoxLayout(this);
    m_headings = new QGridLayout;
    m_headings->setColumnStretch(1, 1);
    outer->addLayout(m_headings);
    m_body = new QVBoxLayout;
    outer->addLayout(m_body, 1);
    m_buttons = new QHBoxLayout;
    m_buttons->addStretch();
    m_process = makeButton(this, QStringLiteral("Command1"), QStringLiteral("処理(&P)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_process, close, help}) {
        b->setAutoDefault(false);
        m_buttons->addWidget(b);
    }
    outer->addLayout(m_buttons);
    m_process->setEnabled(false);
    connect(m_process, &QPushButton::clicked, this, &PanelForm::process);
    connect(close, &QPushButton::clicked, this, &PanelForm::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
}

void PanelForm::load()
{
    AppState &state = AppState::instance();
    // A panel that is not handed over to builds nothing.
    if (!(state.*m_kind.flag))
        return;
    try {
        BusyCursor busy;
        fillHeadings();
        build(readRows());
        state.CurRowIndex = 0;
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    adjustSize();
    placeOverMainWindow(this);
}

void PanelForm::addHeading(const QString &objectName, const QString &caption, const QString &value)
{
    const int row = m_headings->rowCount();
    auto *label = new QLabel(value, this);
    label->setObjectName(objectName);
    m_headings->addWidget(new QLabel(caption, this), row, 0);
    m_headings->addWidget(label, row, 1);
}

QPushButton *PanelForm::addButton(const QString &objectName, const QString &caption)
{
    QPushButton *b = makeButton(this, objectName, caption);
    b->setAutoDefault(false);
    m_buttons->insertWidget(2, b); // after the stretch and 処理
    return b;
}

void PanelForm::build(QList<PanelRow> rows)
{
    if (rows.isEmpty()) {
        auto *none = new QLabel(QStringLiteral("※データがありません"), this);
        none->setObjectName(QString::fromUtf8(m_kind.emptyLabel));
        m_body->addWidget(none);
        m_body->addStretch();
        return;
    }
    m_panel = new CompositionPanel(
        std::move(rows), m_kind.visibleRows, [](Level level) { return panelActions(AppState::cn(), level); }, this);
    m_body->addWidget(m_panel);
    m_process->setEnabled(true);
    connect(m_panel->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [](const QModelIndex &current) { AppState::instance().CurRowIndex = current.row(); });
}

void PanelForm::process()
{
    if (!m_panel)
        return;
    const int i = m_panel->selectedRow();
    try {
        const PanelDecision d = decide(m_panel->rows(), i, m_panel->chosenAction());
        switch (d.kind) {
        case PanelDecision::Kind::Nothing: return;
        case PanelDecision::Kind::Refuse: uiPrompt().error(d.title, d.text); return;
        case PanelDecision::Kind::Confirm:
            if (!uiPrompt().question(d.title, d.text))
                return;
            break;
        case PanelDecision::Kind::OpenParagraphs: break;
        }
        handOver(m_panel->rows().at(i), d);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
}

void PanelForm::handOver(const PanelRow &row, const PanelDecision &d)
{
    AppState &state = AppState::instance();
    QString *codes[] = {&state.CurShoCode, &state.CurJoCode, &state.CurKouCode, &state.CurGouCode, &state.CurMaruCode, &state.CurIrohaCode};
    for (int k = 0; k < 6; ++k)
        *codes[k] = row.codes.value(k);
    state.CurRowIndex = m_panel->selectedRow();
    state.CurShubetsu = levelCode(d.current);
    state.AddShubetsu = d.release || d.kind != PanelDecision::Kind::Confirm ? QString()
                        : d.firstParagraph                                  ? QStringLiteral("0")
                                                                            : levelCode(d.added);
    using CompositionFlow::Form;
    const Form next = d.kind == PanelDecision::Kind::OpenParagraphs ? Form::ParagraphPanel : d.release ? Form::Release : Form::Add;
    state.*m_kind.flag = false;
    CompositionFlow::handOver(next);
    accept();
}

void PanelForm::reject()
{
    AppState::instance().*m_kind.flag = false;
    CompositionFlow::handOver(m_kind.closesTo);
    QDialog::reject();
}

} // namespace normaris
