#include "shell/forms/DialogButtons.h"

#include "shell/forms/FormHelpers.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace normaris {

QHBoxLayout *okCancelHelpRow(QDialog *dialog, const std::function<void()> &ok)
{
    auto *buttons = new QHBoxLayout;
    QPushButton *okButton = makeButton(dialog, QStringLiteral("cmdOK"), QStringLiteral("OK"));
    QPushButton *cancel = makeButton(dialog, QStringLiteral("cmdCancel"), QStringLiteral("キャンセル"));
    QPushButton *help = makeButton(dialog, QStringLiteral("Command1"), QStringLiteral("ヘルプ(&H)"));
    okButton->setDefault(true);
    buttons->addStretch();
    for (QPushButton *b : {okButton, cancel, help})
        buttons->addWidget(b);
    QObject::connect(okButton, &QPushButton::clicked, dialog, ok);
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    QObject::connect(help, &QPushButton::clicked, dialog, [dialog] { showHelp(dialog); });
    return buttons;
}

} // namespace normaris
