#include "dictionary/forms/frmDic02_2.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/forms/PreambleHeading.h"
#include "dictionary/forms/frmDic_kihongoku.h"
#include "shell/forms/FormHelpers.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
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

    auto *scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("Picture1"));
    scroll->setWidgetResizable(true);
    auto *panel = new QWidget(scroll);
    auto *grid = new QGridLayout(panel);
    for (int k = 0; k < kSegments; ++k) {
        Row &r = m_rows[k];
        const QString n = QString::number(k);
        auto *number = new QLabel(QString::number(k + 1), panel);
        number->setObjectName(QStringLiteral("Label3_") + n);
        auto *frame = new QGroupBox(panel);
        frame->setObjectName(QStringLiteral("Frame1_") + n);
        auto *options = new QHBoxLayout(frame);
        options->setContentsMargins(2, 2, 2, 2);
        auto *group = new QButtonGroup(frame);
        const std::pair<QRadioButton **, const char *> radios[] = {
            {&r.text, "文章"}, {&r.word, "語句"}, {&r.number, "番号"}, {&r.basicWord, "基本語句"}, {&r.spare, ""}};
        for (int o = 0; o < 5; ++o) {
            *radios[o].first = new QRadioButton(QString::fromUtf8(radios[o].second), frame);
            (*radios[o].first)->setObjectName(QStringLiteral("Option%1_%2").arg(o + 1).arg(k));
            group->addButton(*radios[o].first);
            options->addWidget(*radios[o].first);
        }
        // This form chooses only 文章 and 基本語句; a 語句 the data holds is shown and kept.
        for (QRadioButton *off : {r.word, r.number, r.spare})
            off->setEnabled(false);
        connect(r.text, &QRadioButton::clicked, this, [this, k] { kindClicked(k, SegmentKind::Text); });
        connect(r.word, &QRadioButton::clicked, this, [this, k] { kindClicked(k, SegmentKind::Word); });
        connect(r.basicWord, &QRadioButton::clicked, this, [this, k] { kindClicked(k, SegmentKind::BasicWord); });
        r.box = new QLineEdit(panel);
        r.box->setObjectName(QStringLiteral("Text1_") + n);
        r.box->installEventFilter(this);
        r.set = makeButton(panel, QStringLiteral("Command4_") + n, QStringLiteral("設定"));
        r.set->setAutoDefault(false);
        connect(r.set, &QPushButton::clicked, this, [this, k] { setValue(k); });
        r.mark = new QLabel(panel);
        r.mark->setObjectName(QStringLiteral("Label5_") + n);
        r.codeCaption = new QLabel(QStringLiteral("Code:"), panel);
        r.codeCaption->setObjectName(QStringLiteral("Label7_") + n);
        r.code = new QLabel(panel);
        r.code->setObjectName(QStringLiteral("Label8_") + n);
        r.wordLabel = new QLabel(panel);
        r.wordLabel->setObjectName(QStringLiteral("Label6_") + n);
        int column = 0;
        for (QWidget *w : std::initializer_list<QWidget *>{number, frame, r.box, r.set, r.mark, r.codeCaption, r.code, r.wordLabel})
            grid->addWidget(w, k, column++);
        if (k < kSegments - 1) {
            r.lineBreak = new QCheckBox(QStringLiteral("改行"), panel);
            r.lineBreak->setObjectName(QStringLiteral("Check1_") + n);
            grid->addWidget(r.lineBreak, k, column);
        }
    }
    grid->setColumnStretch(2, 1);
    scroll->setWidget(panel);
    layout->addWidget(scroll, 1);
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
    showAll();
    m_armed = true;
    placeOverMainWindow(this);
}

void frmDic02_2::showRow(int k)
{
    const SegmentRecord &s = m_editor.segments()[k];
    Row &r = m_rows[k];
    const bool text = s.kind == SegmentKind::Text;
    r.text->setChecked(text);
    r.word->setChecked(s.kind == SegmentKind::Word);
    r.basicWord->setChecked(s.kind == SegmentKind::BasicWord);
    r.box->setVisible(text);
    r.box->setText(s.text);
    for (QWidget *w : std::initializer_list<QWidget *>{r.set, r.mark, r.codeCaption, r.code})
        w->setVisible(!text);
    r.wordLabel->setVisible(s.kind == SegmentKind::Word);
    r.code->setText(s.code);
    r.wordLabel->setText(s.word);
    r.mark->setText(text ? QString() : s.hasValue ? QStringLiteral("既") : QStringLiteral("未"));
    r.mark->setStyleSheet(s.hasValue ? QStringLiteral("color: blue") : QStringLiteral("color: red"));
    if (k > 0)
        m_rows[k - 1].lineBreak->setChecked(s.lineBreak);
}

void frmDic02_2::showAll()
{
    const bool armed = m_armed;
    m_armed = false;
    for (int k = 0; k < kSegments; ++k)
        showRow(k);
    m_armed = armed;
}

// The texts and line breaks as the user left them, into the records.
void frmDic02_2::readRows()
{
    for (int k = 0; k < kSegments; ++k) {
        SegmentRecord &s = m_editor.segments()[k];
        if (s.kind == SegmentKind::Text)
            s.text = m_rows[k].box->text();
        if (k > 0)
            s.lineBreak = m_rows[k - 1].lineBreak->isChecked();
    }
}

void frmDic02_2::kindClicked(int k, const QString &kind)
{
    if (!m_armed)
        return;
    readRows();
    m_editor.changeKind(uiPrompt(), k, kind);
    // On no the options go back; either way the row shows its record.
    showRow(k);
}

void frmDic02_2::setValue(int k)
{
    readRows();
    if (m_editor.segments()[k].kind != SegmentKind::BasicWord)
        return; // no chooser of words in this form
    SegmentNumber = QString::number(k + 1);
    SegmentCode = m_rows[k].code->text();
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
    if (n < 0 || n >= kSegments)
        return;
    SegmentRecord &s = m_editor.segments()[n];
    if (!SegmentCode.isEmpty())
        s.hasValue = true;
    s.code = SegmentCode;
    if (s.kind == SegmentKind::Word)
        s.word = SegmentWord;
    showAll();
}

bool frmDic02_2::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
        for (const Row &r : m_rows) {
            if (watched == r.box && isVisible()
                && !CheckOptionalField(uiPrompt(), r.box->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
                r.box->setFocus();
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmDic02_2::save()
{
    for (const Row &r : m_rows) {
        if (r.box->isVisible()
            && !CheckOptionalField(uiPrompt(), r.box->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
            r.box->setFocus();
            return;
        }
    }
    readRows();
    Outcome outcome;
    {
        BusyCursor busy;
        outcome = m_editor.update(uiPrompt());
    }
    // A rollback leaves the rows as the user had them; a refusal has put them back.
    if (outcome != Outcome::Failed)
        showAll();
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
