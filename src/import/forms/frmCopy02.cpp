#include "import/forms/frmCopy02.h"

#include "base/AppState.h"
#include "import/forms/frmCopy03.h"
#include "shell/forms/FormHelpers.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

frmCopy02::frmCopy02(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCopy02"));
    setWindowTitle(QStringLiteral("他社データ取込（文章形式の指定）"));
    auto *outer = new QVBoxLayout(this);
    auto *label = new QLabel(QStringLiteral("処理する「文章形式」を指定してください"), this);
    label->setObjectName(QStringLiteral("Label1"));
    outer->addWidget(label);
    auto *frame = new QGroupBox(QStringLiteral("文章形式"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *box = new QVBoxLayout(frame);
    const QString captions[2] = {QStringLiteral("である調"), QStringLiteral("ですます調")};
    for (int i = 0; i < 2; ++i) {
        m_styles[i] = new QRadioButton(captions[i], frame);
        m_styles[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        box->addWidget(m_styles[i]);
    }
    outer->addWidget(frame);
    auto *buttons = new QHBoxLayout;
    QPushButton *back = makeButton(this, QStringLiteral("cmdBack"), QStringLiteral("< 戻る(&B)"));
    QPushButton *next = makeButton(this, QStringLiteral("Command1"), QStringLiteral("次へ(&N)"));
    next->setDefault(true);
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {back, next, close, help})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    connect(back, &QPushButton::clicked, this, [this] { done(WizardBack); });
    connect(next, &QPushButton::clicked, this, &frmCopy02::next);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    markWizardStep(this);
    PlaceForm(this);
}

void frmCopy02::next()
{
    const int chosen = m_styles[0]->isChecked() ? 0 : m_styles[1]->isChecked() ? 1 : -1;
    if (chosen < 0) {
        uiPrompt().error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return;
    }
    AppState::instance().CurBunshoKeishikiCode = QString::number(chosen + 1);
    frmCopy03 step(this);
    if (step.exec() != WizardBack)
        reject(); // 閉じる on the last step closes the whole wizard
}

} // namespace normaris
