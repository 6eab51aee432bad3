#include "composition/forms/frmMakesentaku_tsuika.h"

#include "composition/PanelStep.h"
#include "composition/Panels.h"
#include "composition/forms/CompositionFlow.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {

AddRequest requestFromState()
{
    const AppState &s = AppState::instance();
    AddRequest r;
    r.style = s.CurBunshoKeishikiCode;
    r.document = s.CurKiteiCode;
    r.selected = s.CurShubetsu;
    r.added = s.AddShubetsu;
    r.firstParagraph = s.AddFirstParagraph;
    r.rowIndex = s.CurRowIndex;
    r.codes = {s.CurShoCode, s.CurJoCode, s.CurKouCode, s.CurGouCode, s.CurMaruCode, s.CurIrohaCode};
    return r;
}

} // namespace

frmMakesentaku_tsuika::frmMakesentaku_tsuika(QWidget *parent)
    : QDialog(parent), m_request(requestFromState()), m_method(addMember(m_request))
{
    setObjectName(QStringLiteral("frmMakesentaku_tsuika"));
    setWindowTitle(QStringLiteral("追加"));
    const StockTexts texts = stockTexts(m_request.added, m_request.firstParagraph);
    auto *outer = new QVBoxLayout(this);
    auto *instruction = new QLabel(texts.instruction, this);
    instruction->setObjectName(QStringLiteral("Label1"));
    outer->addWidget(instruction);
    m_stock = new QComboBox(this);
    m_stock->setObjectName(QStringLiteral("DataCombo1"));
    m_stock->setMinimumWidth(twips(7200));
    outer->addWidget(m_stock);
    auto *codeRow = new QHBoxLayout;
    auto *codeCaption = new QLabel(QStringLiteral("Code："), this);
    codeCaption->setObjectName(QStringLiteral("Label51"));
    m_code = new QLabel(this);
    m_code->setObjectName(QStringLiteral("Label50"));
    codeRow->addWidget(codeCaption);
    codeRow->addWidget(m_code, 1);
    outer->addLayout(codeRow);
    connect(m_stock, &QComboBox::currentIndexChanged, this, [this] { m_code->setText(m_stock->currentData().toString()); });

    auto *frame = new QGroupBox(QStringLiteral("データ表示"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *filters = new QHBoxLayout(frame);
    const char *captions[] = {"すべて表示", "未選択のデータのみ表示", "ユーザー作成データのみ表示"};
    for (int i = 0; i < 3; ++i) {
        m_filter[i] = new QRadioButton(QString::fromUtf8(captions[i]), frame);
        m_filter[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        filters->addWidget(m_filter[i]);
    }
    m_filter[0]->setChecked(true);
    // The 前文 is one clause: there is nothing to filter.
    for (int i = 1; i < 3; ++i)
        m_filter[i]->setEnabled(m_request.added != Level::Preamble);
    for (QRadioButton *option : m_filter)
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                fill();
        });
    outer->addWidget(frame);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    m_add = makeButton(this, QStringLiteral("Command1"), QStringLiteral("追加(&A)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_add, close, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    outer->addLayout(buttons);
    // Enter on the chosen stock adds it.
    m_add->setDefault(true);
    connect(m_add, &QPushButton::clicked, this, &frmMakesentaku_tsuika::add);
    connect(close, &QPushButton::clicked, this, &frmMakesentaku_tsuika::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    PlaceForm(this);
    fill();
}

void frmMakesentaku_tsuika::fill()
{
    const StockFilter filter = m_filter[1]->isChecked()   ? StockFilter::Unselected
                               : m_filter[2]->isChecked() ? StockFilter::UserMade
                                                          : StockFilter::All;
    QStringList parent = ClauseAdder::placeOf(m_request);
    if (!parent.isEmpty())
        parent.removeLast(); // the place of the clause to be chosen, less its own code
    QList<CodeAndName> stock;
    try {
        stock = stockList(AppState::cn(), m_request.style, m_request.document, m_request.added, parent, filter);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    {
        const QSignalBlocker block(m_stock);
        m_stock->clear();
        for (const CodeAndName &c : stock)
            m_stock->addItem(c.name, c.code);
        m_stock->setCurrentIndex(-1);
    }
    m_code->clear();
    m_add->setEnabled(!stock.isEmpty() && !m_done && m_method);
    if (stock.isEmpty())
        uiPrompt().error(QStringLiteral("ストックデータなし"), stockTexts(m_request.added, m_request.firstParagraph).empty);
}

void frmMakesentaku_tsuika::add()
{
    if (!m_method)
        return;
    const QString chosen = m_stock->currentIndex() >= 0 ? m_stock->currentData().toString() : QString();
    Outcome outcome = Outcome::Failed;
    try {
        BusyCursor busy;
        outcome = carryOutAdd(AppState::cn(), uiPrompt(), m_request, chosen);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
        return;
    }
    if (outcome == Outcome::Done) {
        m_done = true;
        m_add->setEnabled(false);
    } else if (outcome == Outcome::Stopped) {
        // An empty choice or a clause in use: back to the list.
        m_stock->setFocus();
    }
}

void frmMakesentaku_tsuika::reject()
{
    // Back to the panel the add was chosen on, rebuilt whether an add took place or not.
    CompositionFlow::handOver(isClauseLevel(m_request.added) ? CompositionFlow::Form::ParagraphPanel : CompositionFlow::Form::ArticlePanel);
    QDialog::reject();
}

} // namespace normaris
