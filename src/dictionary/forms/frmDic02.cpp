#include "dictionary/forms/frmDic02.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/Database.h"
#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/forms/PreambleHeading.h"
#include "shell/forms/FormHelpers.h"

#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

using dictionary::InlineSegmentEditor;

frmDic02::frmDic02(QWidget *parent)
    : QDialog(parent),
      m_editor(AppState::cn(),
               dictionary::ClausePlace::preamble(AppState::instance().CurBunshoKeishikiCode, AppState::instance().CurKiteiCode),
               AppState::instance().CurBunshoShubetsu)
{
    setObjectName(QStringLiteral("frmDic02"));
    setWindowTitle(QStringLiteral("「前文」の設定"));
    resize(twips(11000), twips(7000));
    auto *layout = new QVBoxLayout(this);
    addPreambleHeading(this, layout);
    auto *rows = new QGridLayout;
    for (int k = 0; k < InlineSegmentEditor::kSegments; ++k) {
        rows->addWidget(new QLabel(QString::number(k + 1), this), 2 * k, 0);
        m_texts[k] = new QLineEdit(this);
        m_texts[k]->setObjectName(QStringLiteral("Text1_%1").arg(k));
        m_texts[k]->installEventFilter(this);
        rows->addWidget(m_texts[k], 2 * k, 1);
        if (k < InlineSegmentEditor::kSegments - 1) {
            m_breaks[k] = new QCheckBox(QStringLiteral("改行"), this);
            m_breaks[k]->setObjectName(QStringLiteral("Check1_%1").arg(k));
            rows->addWidget(m_breaks[k], 2 * k + 1, 1);
        }
    }
    layout->addLayout(rows);
    auto *flags = new QHBoxLayout;
    m_changed = new QCheckBox(QStringLiteral("変更"), this);
    m_changed->setObjectName(QStringLiteral("Check2"));
    m_selected = new QCheckBox(QStringLiteral("選択"), this);
    m_selected->setObjectName(QStringLiteral("Check3"));
    for (QCheckBox *c : {m_changed, m_selected}) {
        c->setEnabled(false);
        flags->addWidget(c);
    }
    flags->addStretch();
    layout->addLayout(flags);
    auto *notice = new QLabel(
        QStringLiteral(
            "分割の数を変更する場合、使用データがあるときは先に「作成・改訂」でこのデータを外し、変更処理をした後、また追加してください。"),
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
    connect(update, &QPushButton::clicked, this, &frmDic02::save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    installTextBoxBehaviour(this);

    m_editor.open();
    fill();
    placeOverMainWindow(this);
}

void frmDic02::fill()
{
    for (int k = 0; k < InlineSegmentEditor::kSegments; ++k) {
        m_texts[k]->setText(m_editor.texts[k]);
        if (k > 0)
            m_breaks[k - 1]->setChecked(m_editor.breaks[k - 1]);
    }
    const dictionary::ClausePlace place =
        dictionary::ClausePlace::preamble(AppState::instance().CurBunshoKeishikiCode, AppState::instance().CurKiteiCode);
    m_changed->setChecked(
        scalar(AppState::cn(), QStringLiteral("SELECT max(変更フラグ) FROM 前文 WHERE ") + place.whereSql(), place.whereValues()).toBool());
    m_selected->setChecked(m_editor.selectFlag());
}

bool frmDic02::eventFilter(QObject *watched, QEvent *event)
{
    // Leaving a text box runs its check; a refused text keeps the focus.
    if (event->type() == QEvent::FocusOut && static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
        for (QLineEdit *box : m_texts) {
            if (watched == box && isVisible()
                && !CheckOptionalField(uiPrompt(), box->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
                box->setFocus();
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmDic02::save()
{
    for (int k = 0; k < InlineSegmentEditor::kSegments; ++k) {
        if (!CheckOptionalField(uiPrompt(), m_texts[k]->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
            m_texts[k]->setFocus();
            return;
        }
        m_editor.texts[k] = m_texts[k]->text();
        if (k > 0)
            m_editor.breaks[k - 1] = m_breaks[k - 1]->isChecked();
    }
    Outcome outcome;
    {
        BusyCursor busy;
        outcome = m_editor.update(uiPrompt());
    }
    fill();
    if (outcome == Outcome::Done && uiPrompt().question(dictionary::kUpdateDoneTitle, dictionary::kUpdateDoneText))
        accept();
}

} // namespace normaris
