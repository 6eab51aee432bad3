#include "app/forms/frmAbout.h"

#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

frmAbout::frmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("ハルモニアワークス【ノルマリス】のバージョン情報"));
    auto *layout = new QVBoxLayout(this);
    const auto label = [this, layout](const QString &name, const QString &text) {
        auto *l = new QLabel(text, this);
        l->setObjectName(name);
        l->setWordWrap(true);
        layout->addWidget(l);
        return l;
    };
    QLabel *title = label(QStringLiteral("lblTitle_0"), QStringLiteral("ハルモニアワークス【ノルマリス】"));
    QFont f = title->font();
    f.setPointSize(f.pointSize() + 4);
    f.setBold(true);
    title->setFont(f);
    label(QStringLiteral("lblTitle_1"), QStringLiteral("ノルマリスのVersion5.0.0に基づいています"));
    label(QStringLiteral("lblDescription"),
          QStringLiteral("就業規則、諸規程、労使協定と届出書類を、標準条文の辞書から会社ごとに作成するためのプログラムです。"));
    label(QStringLiteral("lblDisclaimer"),
          QStringLiteral("作成した文書は、法令の改正や会社の実情に照らして内容を確かめたうえでお使いください。"
                         "本プログラムの使用により生じた結果について、作成者は責任を負いません。"));
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(ok, 0, Qt::AlignRight);
    resize(440, 240);
    PlaceForm(this);
}

void frmAbout::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QApplication::restoreOverrideCursor();
    QDialog::changeEvent(event);
}

} // namespace normaris
