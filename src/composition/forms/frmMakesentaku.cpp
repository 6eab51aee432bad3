#include "composition/forms/frmMakesentaku.h"

#include "composition/DocumentList.h"
#include "composition/ExcelLists.h"
#include "composition/forms/CompositionFlow.h"
#include "shell/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace normaris {

namespace {
const char *const kInstructions[] = {"規則・規程・協定を指定してください", "リストに追加する規則・規程・協定を指定してください",
                                     "リストから外す規則・規程・協定を指定してください"};
}

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
        connect(m_style[i], &QRadioButton::toggled, this, [this] { refill(); });
    }
    m_style[0]->setChecked(true);
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
        connect(m_process[i], &QRadioButton::toggled, this, [this](bool on) { if (on) refill(); });
    }
    m_process[0]->setChecked(true);
    right->addWidget(processFrame);
    auto *listFrame = new QGroupBox(QStringLiteral("Excelで一覧表示"), this);
    listFrame->setObjectName(QStringLiteral("Frame3"));
    auto *listBox = new QVBoxLayout(listFrame);
    const char *lists[] = {"基本語句", "埋込語句", "参照条文番号", "テンプレート"};
    for (int i = 0; i < 4; ++i) {
        QPushButton *b = makeButton(listFrame, QStringLiteral("Command%1").arg(i + 4), QString::fromUtf8(lists[i]));
        listBox->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, i] { list(i); });
    }
    right->addWidget(listFrame);
    right->addStretch();
    m_go = makeButton(this, QStringLiteral("Command1"), QStringLiteral("次へ(&N)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_go, close, help})
        right->addWidget(b);
    outer->addLayout(right);
    connect(m_go, &QPushButton::clicked, this, &frmMakesentaku::run);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    resize(twips(9000), twips(6000));
    placeOverMainWindow(this);
}

void frmMakesentaku::refill()
{
    const int process = m_process[1]->isChecked() ? 1 : m_process[2]->isChecked() ? 2 : 0;
    m_label->setText(QString::fromUtf8(kInstructions[process]));
    m_go->setText(process == 0 ? QStringLiteral("次へ(&N)") : QStringLiteral("更新(&U)"));
    DocumentList documents(AppState::cn());
    for (int i = 0; i < 2; ++i) {
        m_lists[i]->clear();
        for (const CodeAndName &d : documents.documents(QString::number(i + 1), process != 1)) {
            auto *item = new QListWidgetItem(d.name, m_lists[i]);
            item->setData(Qt::UserRole, d.code);
        }
        // Only the list of the chosen style is shown.
        m_lists[i]->setVisible(m_style[i]->isChecked());
    }
}

bool frmMakesentaku::chosen(QString &style, QString &document)
{
    const int i = m_style[0]->isChecked() ? 0 : m_style[1]->isChecked() ? 1 : -1;
    if (i < 0) {
        uiPrompt().error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return false;
    }
    style = QString::number(i + 1);
    QListWidgetItem *item = m_lists[i]->currentItem();
    document = item ? item->data(Qt::UserRole).toString() : QString();
    if (document.isEmpty()) {
        uiPrompt().error(QStringLiteral("データ指定の確認"), QStringLiteral("処理するデータを指定してください。"));
        m_lists[i]->setFocus();
        return false;
    }
    AppState::instance().CurBunshoKeishikiCode = style;
    AppState::instance().CurKiteiCode = document;
    return true;
}

void frmMakesentaku::run()
{
    QString style, document;
    if (!chosen(style, document))
        return;
    try {
        if (m_process[0]->isChecked()) {
            AppState::instance().ArticlePanelActive = true;
            hide();
            CompositionFlow::run(parentWidget(), CompositionFlow::Form::ArticlePanel);
            accept();
            return;
        }
        DocumentList documents(AppState::cn());
        if (m_process[1]->isChecked())
            documents.addToList(style, document);
        else
            documents.removeFromList(style, document);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    refill();
}

void frmMakesentaku::list(int kind)
{
    QString style, document;
    if (!chosen(style, document))
        return;
    const QString path = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                             .filePath(QStringLiteral("normaris-%1-%2.xlsx").arg(QDateTime::currentMSecsSinceEpoch()).arg(kind));
    if (ExcelLists(AppState::cn(), uiPrompt()).write(ListKind(kind), style, document, path) == Outcome::Done)
        openWithDesktop(path);
}

} // namespace normaris
