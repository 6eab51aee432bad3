#include "rulebase/forms/frmKakusyusettei.h"

#include "rulebase/forms/frmKihon.h"
#include "rulebase/forms/frmSekoubi.h"
#include "base/AppState.h"
#include "shell/forms/FormHelpers.h"

#include <QEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

frmKakusyusettei::frmKakusyusettei(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmKakusyusettei"));
    setWindowTitle(QStringLiteral("各種設定"));
    resize(twips(7770), twips(4770));
    auto *layout = new QVBoxLayout(this);
    QPushButton *settings = makeButton(this, QStringLiteral("Command1"), QStringLiteral("基本設定の編集(&K)"));
    QPushButton *dates = makeButton(this, QStringLiteral("Command4"), QStringLiteral("日付の設定(&H)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    // Alt+H belongs to 日付の設定 here; F1 opens the help as well.
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&P)"));
    for (QPushButton *b : {settings, dates, close, help})
        layout->addWidget(b);
    layout->addStretch();
    dates->setVisible(AppState::instance().DateSettingEnabled);
    connect(settings, &QPushButton::clicked, this, [this] {
        AppState::instance().KihonFromExport = true;
        frmKihon form(this);
        form.exec();
    });
    connect(dates, &QPushButton::clicked, this, [this] {
        frmSekoubi form(this);
        form.exec();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

} // namespace normaris
