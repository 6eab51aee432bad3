#include "composition/forms/frmMakesentaku.h"

#include "composition/DocumentList.h"
#include "composition/ExcelLists.h"
#include "composition/forms/CompositionFlow.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QDateTime>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {

// What each process shows: the instruction, the caption of Command1, and whether the
// lists hold the documents on the company's list or those off it.
struct ProcessView {
    const char *instruction;
    const char *button;
    bool onList;
};
const ProcessView kProcesses[3] = {
    {"規則・規程・協定を指定してください", "次へ(&N)", true},
    {"リストに追加する規則・規程・協定を指定してください", "更新(&U)", false},
    {"リストから外す規則・規程・協定を指定してください", "更新(&U)", true},
};

// The lists are written to a new file in the temporary folder and opened from there.
QString listPath(int kind)
{
    return QDir(QDir::tempPath())
        .filePath(QStringLiteral("normaris-list%1-%2.xlsx").arg(kind + 1).arg(QDateTime::currentMSecsSinceEpoch()));
}

} // namespace

frmMakesentaku::frmMakesentaku(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmMakesentaku"));
    setWindowTitle(QStringLiteral("データ作成（規則・規程・協定の指定）"));
    AppState &state = AppState::instance();
    state.ArticlePanelActive = state.ParagraphPanelActive = false;
    auto *outer = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    auto *styleFrame = new QGroupBox(QStringLiteral("文章形式"), this);
    styleFrame->setObjectName(QStringLiteral("Frame1"));
    auto *styleBox = new QHBoxLayout(styleFrame);
    const char *styles[] = {"である調", "ですます調"};
    for (int i = 0; i < 2; ++i) {
        m_style[i] = new QRadioButton(QString::fromUtf8(styles[i]), styleFrame);
        m_style[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        styleBox->addWidget(m_style[i]);
        m_lists[i] = new QListWidget(this);
        m_lists[i]->setObjectName(QStringLiteral("DataList%1").arg(i + 1));
    }
    left->addWidget(styleFrame);
    m_label = new QLabel(this);
    m_label->setObjectName(QStringLiteral("Label1"));
    left->addWidget(m_label);
    left->addWidget(m_lists[0], 1);
    left->addWidget(m_lists[1], 1);
    outer->addLayout(left, 1);

    auto *right = new QVBoxLayout;
    auto *processFrame = new QGroupBox(QStringLiteral("処理区分"), this);
    processFrame->setObjectName(QStringLiteral("Frame2"));
    auto *processBox = new QVBoxLayout(processFrame);
    const char *processes[] = {"データ作成", "リストに追加", "リストから外す"};
    for (int i = 0; i < 3; ++i) {
        m_process[i] = new QRadioButton(QString::fromUtf8(processes[i]), processFrame);
        m_process[i]->setObjectName(QStringLiteral("Option2_%1").arg(i));
        processBox->addWidget(m_process[i]);
    }
    right->addWidget(processFrame);
    auto *listFrame = new QGroupBox(QStringLiteral("Excelで一覧表示"), this);
    listFrame->setObjectName(QStringLiteral("Frame3"));
    auto *listBox = new QVBoxLayout(listFrame);
    const char *lists[] = {"基本語句", "埋込語句", "参照条文番号", "テンプレート"};
    for (int i = 0; i < 4; ++i) {
        QPushButton *b = makeButton(listFrame, QStringLiteral("Command%1").arg(i + 4), QString::fromUtf8(lists[i]));
        b->setAutoDefault(false);
        listBox->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, i] { list(i); });
    }
    right->addWidget(listFrame);
    right->addStretch();
    m_go = makeButton(this, QStringLiteral("Command1"), QString());
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_go, close, help}) {
        b->setAutoDefault(false);
        right->addWidget(b);
    }
    outer->addLayout(right);

    // The lists start with the documents on the list, the である調 one on view.
    m_style[0]->setChecked(true);
    m_process[0]->setChecked(true);
    processChanged();
    for (int i = 0; i < 2; ++i) {
        // Changing the style only changes which list is on view.
        connect(m_style[i], &QRadioButton::toggled, this, [this] {
            for (int k = 0; k < 2; ++k)
                m_lists[k]->setVisible(m_style[k]->isChecked());
        });
    }
    for (QRadioButton *option : m_process)
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                processChanged();
        });
    m_lists[1]->setVisible(false);
    connect(m_go, &QPushButton::clicked, this, &frmMakesentaku::run);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    resize(twips(9000), twips(6000));
    placeOverMainWindow(this);
}

int frmMakesentaku::process() const { return m_process[1]->isChecked() ? 1 : m_process[2]->isChecked() ? 2 : 0; }

void frmMakesentaku::processChanged()
{
    const ProcessView &view = kProcesses[process()];
    m_label->setText(QString::fromUtf8(view.instruction));
    m_go->setText(QString::fromUtf8(view.button));
    refill(0);
    refill(1);
}

void frmMakesentaku::refill(int style)
{
    m_lists[style]->clear();
    try {
        for (const CodeAndName &d : DocumentList(AppState::cn()).documents(QString::number(style + 1), kProcesses[process()].onList)) {
            auto *item = new QListWidgetItem(d.name, m_lists[style]);
            item->setData(Qt::UserRole, d.code);
        }
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
}

bool frmMakesentaku::chosen()
{
    const int i = m_style[0]->isChecked() ? 0 : m_style[1]->isChecked() ? 1 : -1;
    if (i < 0) {
        uiPrompt().error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return false;
    }
    // Only the list of the chosen style counts: a selection left in the other is ignored.
    QListWidgetItem *item = m_lists[i]->currentItem();
    AppState &state = AppState::instance();
    state.CurBunshoKeishikiCode = QString::number(i + 1);
    state.CurKiteiCode = item && item->isSelected() ? item->data(Qt::UserRole).toString() : QString();
    if (state.CurKiteiCode.isEmpty()) {
        uiPrompt().error(QStringLiteral("データ指定の確認"), QStringLiteral("処理するデータを指定してください。"));
        m_lists[i]->setFocus();
        return false;
    }
    return true;
}

void frmMakesentaku::run()
{
    if (!chosen())
        return;
    const AppState &state = AppState::instance();
    const int style = state.CurBunshoKeishikiCode.toInt() - 1;
    try {
        switch (process()) {
        case 0:
            // This form closes; the panels follow one another until the user closes them.
            CompositionFlow::handOver(CompositionFlow::Form::ArticlePanel);
            hide();
            CompositionFlow::run(parentWidget());
            accept();
            return;
        case 1: DocumentList(AppState::cn()).addToList(state.CurBunshoKeishikiCode, state.CurKiteiCode); break;
        default: DocumentList(AppState::cn()).removeFromList(state.CurBunshoKeishikiCode, state.CurKiteiCode); break;
        }
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    refill(style);
}

void frmMakesentaku::list(int kind)
{
    if (!chosen())
        return;
    const AppState &state = AppState::instance();
    const QString path = listPath(kind);
    if (ExcelLists(AppState::cn(), uiPrompt()).write(ListKind(kind), state.CurBunshoKeishikiCode, state.CurKiteiCode, path) == Outcome::Done
        && !openWithDesktop(path))
        uiPrompt().failure(QStringLiteral("一覧表「%1」を開けません。").arg(path));
}

} // namespace normaris
