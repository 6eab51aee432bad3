#include "dictionary/forms/frmDic_goku.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/SegmentEditor.h"
#include "shell/forms/FormHelpers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace normaris {

using dictionary::DocumentWord;
using dictionary::DocumentWords;

frmDic_goku::frmDic_goku(dictionary::SegmentEditor &editor, int k, QWidget *parent)
    : QDialog(parent), m_editor(editor), m_segment(k), m_words(AppState::cn(), editor.place().document)
{
    setObjectName(QStringLiteral("frmDic_goku"));
    setWindowTitle(QStringLiteral("語句の設定"));
    resize(twips(10500), twips(7500));
    auto *layout = new QVBoxLayout(this);
    auto *lead = new QLabel(QStringLiteral("%1番目の部分に使う語句を選ぶか、新しく作成してください").arg(k + 1), this);
    lead->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(lead);

    auto *listCaption = new QLabel(QStringLiteral("この文書の語句(&L):"), this);
    layout->addWidget(listCaption);
    m_list = new QTableWidget(0, 3, this);
    m_list->setObjectName(QStringLiteral("DataGrid1"));
    listCaption->setBuddy(m_list);
    m_list->setHorizontalHeaderLabels({QStringLiteral("Code"), QStringLiteral("表示名称"), QStringLiteral("語句")});
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->setColumnWidth(0, twips(800));
    m_list->setColumnWidth(1, twips(5000));
    m_list->horizontalHeader()->setStretchLastSection(true);
    const QList<DocumentWord> words = m_words.words();
    for (const DocumentWord &w : words) {
        const int row = m_list->rowCount();
        m_list->insertRow(row);
        m_list->setItem(row, 0, new QTableWidgetItem(w.code));
        m_list->setItem(row, 1, new QTableWidgetItem(w.caption));
        m_list->setItem(row, 2, new QTableWidgetItem(w.word));
    }
    // The word the segment holds is the one chosen when the dialog opens.
    const QString current = editor.segments()[k].code;
    for (int row = 0; row < m_list->rowCount(); ++row) {
        if (m_list->item(row, 0)->text() == current)
            m_list->selectRow(row);
    }
    layout->addWidget(m_list, 1);
    auto *chooseRow = new QHBoxLayout;
    QPushButton *choose = makeButton(this, QStringLiteral("cmdChoose"), QStringLiteral("選択(&S)"));
    choose->setAutoDefault(false);
    chooseRow->addStretch();
    chooseRow->addWidget(choose);
    layout->addLayout(chooseRow);
    connect(choose, &QPushButton::clicked, this, &frmDic_goku::choose);
    connect(m_list, &QTableWidget::cellDoubleClicked, this, &frmDic_goku::choose);

    auto *frame = new QGroupBox(QStringLiteral("新しい語句"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *grid = new QGridLayout(frame);
    grid->addWidget(new QLabel(QStringLiteral("Code:"), frame), 0, 0);
    m_nextCode = new QLabel(m_words.nextCode(&editor), frame);
    m_nextCode->setObjectName(QStringLiteral("lblCode"));
    grid->addWidget(m_nextCode, 0, 1);
    const QString captions[] = {QStringLiteral("表示名称(&N):"), QStringLiteral("語句(&W):")};
    const QString names[] = {QStringLiteral("txtCaption"), QStringLiteral("txtWord")};
    QLineEdit **boxes[] = {&m_caption, &m_word};
    for (int i = 0; i < 2; ++i) {
        auto *label = new QLabel(captions[i], frame);
        *boxes[i] = new QLineEdit(frame);
        (*boxes[i])->setObjectName(names[i]);
        label->setBuddy(*boxes[i]);
        showBytes(*boxes[i], 80);
        grid->addWidget(label, i + 1, 0);
        grid->addWidget(*boxes[i], i + 1, 1);
        grid->addWidget(new QLabel(QStringLiteral("全角で40字以内"), frame), i + 1, 2);
    }
    QPushButton *create = makeButton(frame, QStringLiteral("cmdCreate"), QStringLiteral("新規作成(&R)"));
    create->setAutoDefault(false);
    grid->addWidget(create, 3, 1, Qt::AlignRight);
    layout->addWidget(frame);
    connect(create, &QPushButton::clicked, this, &frmDic_goku::create);

    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    close->setAutoDefault(false);
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    installTextBoxBehaviour(this);
    setTabOrder(m_list, choose);
    setTabOrder(choose, m_caption);
    setTabOrder(m_caption, m_word);
    setTabOrder(m_word, create);
    // With no word to choose from, the new word is what the user came for.
    if (words.isEmpty())
        m_caption->setFocus();
    else
        m_list->setFocus();
    placeOverMainWindow(this);
}

void frmDic_goku::choose()
{
    const int row = m_list->currentRow();
    if (row < 0 || m_list->selectedItems().isEmpty()) {
        uiPrompt().error(QStringLiteral("語句の選択"), QStringLiteral("語句を選択してください。"));
        m_list->setFocus();
        return;
    }
    if (m_words.choose(uiPrompt(), m_editor, m_segment, m_list->item(row, 0)->text()) == Outcome::Done)
        accept();
}

void frmDic_goku::create()
{
    Outcome outcome;
    {
        BusyCursor busy;
        outcome = m_words.create(uiPrompt(), m_editor, m_segment, m_caption->text(), m_word->text());
    }
    if (outcome == Outcome::Done) {
        accept();
        return;
    }
    // A refused word: the user starts again from its caption.
    m_caption->setFocus();
}

} // namespace normaris
