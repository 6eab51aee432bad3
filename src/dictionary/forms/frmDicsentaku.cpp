#include "dictionary/forms/frmDicsentaku.h"

#include "base/AppState.h"
#include "dictionary/forms/frmDicsentakuSub.h"
#include "shell/forms/FormHelpers.h"

#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

frmDicsentaku::frmDicsentaku(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDicsentaku"));
    setWindowTitle(QStringLiteral("ディクショナリ管理（文章形式の指定）"));
    setFixedSize(twips(7770), twips(4770));
    auto *layout = new QVBoxLayout(this);
    auto *frame = new QGroupBox(QStringLiteral("文章形式"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *options = new QVBoxLayout(frame);
    const char *styles[] = {"である調", "ですます調"};
    for (int i = 0; i < 2; ++i) {
        m_style[i] = new QRadioButton(QString::fromUtf8(styles[i]), frame);
        m_style[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        options->addWidget(m_style[i]);
    }
    layout->addWidget(frame);
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    QPushButton *next = makeButton(this, QStringLiteral("Command1"), QStringLiteral("次へ(&N)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(next);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    next->setDefault(true);
    connect(next, &QPushButton::clicked, this, &frmDicsentaku::next);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

void frmDicsentaku::next()
{
    AppState &state = AppState::instance();
    if (m_style[0]->isChecked()) {
        state.CurBunshoKeishikiCode = QStringLiteral("1");
    } else if (m_style[1]->isChecked()) {
        state.CurBunshoKeishikiCode = QStringLiteral("2");
    } else {
        uiPrompt().error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return;
    }
    frmDicsentakuSub sub(this);
    sub.exec();
    placeOverMainWindow(this);
}

} // namespace normaris
