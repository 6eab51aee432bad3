#include "dictionary/forms/frmDic02_2.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/forms/PreambleHeading.h"
#include "dictionary/forms/frmDic_kihongoku.h"
#include "shell/forms/FormHelpers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

namespace SegmentKind = dictionary::SegmentKind;
using dictionary::SegmentRecord;

frmDic02_2::frmDic02_2(QWidget *parent)
    : QDialog(parent),
      m_editor(AppState::cn(),
               dictionary::ClausePlace::preamble(AppState::instance().CurBunshoKeishikiCode, AppState::instance().CurKiteiCode),
               AppState::instance().CurBunshoShubetsu)
{
    setObjectName(QStringLiteral("frmDic02_2"));
    setWindowTitle(QStringLiteral("「前文」の設定"));
    resize(twips(13000), twips(8500));
    auto *layout = new QVBoxLayout(this);
    addPreambleHeading(this, layout);

    // This form chooses only 文章 and 基本語句; a 語句 the data holds is shown and kept.
    m_panel = new SegmentPanel({SegmentKind::Text, SegmentKind::BasicWord}, this);
    layout->addWidget(m_panel, 1);
    connect(m_panel, &SegmentPanel::valueRequested, this, &frmDic02_2::setValue);
    auto *notice = new QLabel(QStringLiteral("「処理する種別」及び「分割の数」を変更する場合、使用データがあるときは先に「作成・改訂」でこ"
                                             "のデータを外し、変更処理をした後、また追加してください。"),
                              this);
    notice->setObjectName(QStringLiteral("Label30"));
    notice->setWordWrap(true);
    layout->addWidget(notice);
    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command1"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *update = makeButton(this, QStringLiteral("Command2"), QStringLiteral("更新(&U)"));
    QPushButton *cancel = makeButton(this, QStringLiteral("Command3"), QStringLiteral("キャンセル(&C)"));
    buttons->addWidget(help);
    buttons->addStretch();
    for (QPushButton *b : {update, cancel}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    layout->addLayout(buttons);
    connect(update, &QPushButton::clicked, this, &frmDic02_2::save);
    connect(cancel, &QPushButton::clicked, this, &frmDic02_2::closeForm);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    installTextBoxBehaviour(this);

    m_editor.open(uiPrompt());
    m_panel->setEditor(&m_editor);
    m_panel->setArmed(true);
    placeOverMainWindow(this);
}

void frmDic02_2::setValue(int k)
{
    if (m_editor.segments()[k].kind != SegmentKind::BasicWord)
        return; // no chooser of words in this form
    SegmentNumber = QString::number(k + 1);
    SegmentCode = m_editor.segments()[k].code;
    frmDic_kihongoku chooser(SegmentNumber, SegmentCode, SegmentWord, this);
    chooser.exec();
    comeBack();
}

void frmDic02_2::comeBack()
{
    placeOverMainWindow(this);
    if (SegmentNumber.isEmpty())
        return;
    const int n = SegmentNumber.toInt() - 1;
    if (n < 0 || n >= SegmentPanel::kSegments)
        return;
    SegmentRecord &s = m_editor.segments()[n];
    if (!SegmentCode.isEmpty())
        s.hasValue = true;
    s.code = SegmentCode;
    if (s.kind == SegmentKind::Word)
        s.word = SegmentWord;
    m_panel->showAll();
}

void frmDic02_2::save()
{
    if (!m_panel->checkTexts())
        return;
    m_panel->readRows();
    Outcome outcome;
    {
        BusyCursor busy;
        outcome = m_editor.update(uiPrompt());
    }
    // A rollback leaves the rows as the user had them; a refusal has put them back.
    if (outcome != Outcome::Failed)
        m_panel->showAll();
    if (outcome == Outcome::Done && uiPrompt().question(dictionary::kUpdateDoneTitle, dictionary::kUpdateDoneText))
        closeForm();
}

void frmDic02_2::closeForm()
{
    SegmentNumber.clear();
    SegmentCode.clear();
    SegmentWord.clear();
    accept();
}

} // namespace normaris
