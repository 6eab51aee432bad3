#include "composition/forms/frmMakesentaku_tsuika.h"

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

// The twenty adds by the level of the selected row (CurShubetsu) and the level added
// (AddShubetsu, '0' for a new first 項).
struct AddMethod {
    const char *current;
    const char *added;
    Outcome (*run)(ClauseAdder &, AddRequest);
};
const AddMethod kAddMethods[] = {
    {"1", "10", Tuika0110}, {"1", "2", Tuika0102}, {"10", "2", Tuika1002}, {"2", "3", Tuika0203}, {"3", "2", Tuika0302},
    {"3", "3", Tuika0303},  {"4", "0", Tuika0400}, {"4", "4", Tuika0404},  {"4", "5", Tuika0405}, {"5", "4", Tuika0504},
    {"5", "5", Tuika0505},  {"5", "6", Tuika0506}, {"6", "4", Tuika0604},  {"6", "5", Tuika0605}, {"6", "6", Tuika0606},
    {"6", "7", Tuika0607},  {"7", "4", Tuika0704}, {"7", "5", Tuika0705},  {"7", "6", Tuika0706}, {"7", "7", Tuika0707},
};

auto methodFor(const QString &current, const QString &added) -> decltype(AddMethod::run)
{
    for (const AddMethod &m : kAddMethods) {
        if (current == QLatin1StringView(m.current) && added == QLatin1StringView(m.added))
            return m.run;
    }
    return nullptr;
}

AddRequest requestFromState()
{
    const AppState &s = AppState::instance();
    AddRequest r;
    r.style = s.CurBunshoKeishikiCode;
    r.document = s.CurKiteiCode;
    r.selected = levelOf(s.CurShubetsu);
    r.firstParagraph = s.AddShubetsu == u"0";
    r.added = r.firstParagraph ? Level::Paragraph : levelOf(s.AddShubetsu);
    r.rowIndex = s.CurRowIndex;
    r.codes = {s.CurShoCode, s.CurJoCode, s.CurKouCode, s.CurGouCode, s.CurMaruCode, s.CurIrohaCode};
    return r;
}

} // namespace

frmMakesentaku_tsuika::frmMakesentaku_tsuika(QWidget *parent) : QDialog(parent), m_request(requestFromState())
{
    m_method = methodFor(AppState::instance().CurShubetsu, AppState::instance().AddShubetsu);
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
    AddRequest request = m_request;
    request.chosen = m_stock->currentIndex() >= 0 ? m_stock->currentData().toString() : QString();
    Outcome outcome = Outcome::Failed;
    try {
        BusyCursor busy;
        ClauseAdder adder(AppState::cn(), uiPrompt());
        outcome = m_method(adder, request);
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
