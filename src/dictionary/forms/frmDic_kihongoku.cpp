#include "dictionary/forms/frmDic_kihongoku.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/BasicPhrases.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

frmDic_kihongoku::frmDic_kihongoku(const QString &segmentNumber, QString &segmentCode, QString &segmentWord, QWidget *parent, Level level)
    : QDialog(parent), m_level(level), m_segmentNumber(segmentNumber), m_segmentCode(segmentCode), m_segmentWord(segmentWord)
{
    setObjectName(QStringLiteral("frmDic_kihongoku"));
    setWindowTitle(QStringLiteral("基本語句の設定"));
    setFixedSize(twips(7770), twips(4770));
    auto *layout = new QVBoxLayout(this);
    auto *label = new QLabel(QStringLiteral("基本語句を選んでください"), this);
    label->setObjectName(QStringLiteral("Label1"));
    layout->addWidget(label);
    m_choice = new QComboBox(this);
    m_choice->setObjectName(QStringLiteral("Combo1"));
    layout->addWidget(m_choice);
    const QList<dictionary::BasicPhrase> &phrases = dictionary::basicPhrasesAt(level);
    // The three of the 前文 have their notes on the form; the long list of every setting
    // shows in the list alone.
    const bool notes = phrases.size() <= 3;
    for (const dictionary::BasicPhrase &p : phrases) {
        m_choice->addItem(p.name);
        if (notes)
            layout->addWidget(new QLabel(p.note, this));
    }
    m_choice->setMaxVisibleItems(int(phrases.size()));
    const QString current = dictionary::basicPhraseName(level, segmentCode);
    m_choice->setCurrentIndex(current.isEmpty() ? -1 : m_choice->findText(current));
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *update = makeButton(this, QStringLiteral("Command1"), QStringLiteral("更新(&U)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(update);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(update, &QPushButton::clicked, this, &frmDic_kihongoku::save);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

void frmDic_kihongoku::save()
{
    Outcome outcome;
    {
        BusyCursor busy;
        outcome =
            dictionary::chooseBasicPhrase(uiPrompt(), AppState::cn(), m_level, m_segmentNumber, m_segmentCode, m_choice->currentText());
    }
    if (outcome == Outcome::Stopped) {
        m_choice->setFocus();
        return;
    }
    if (outcome != Outcome::Done)
        return;
    m_segmentWord.clear();
    if (uiPrompt().question(QStringLiteral("確認"), QStringLiteral("更新しました。フォームを閉じますか？")))
        accept();
}

} // namespace normaris
