#include "dictionary/forms/PreambleHeading.h"

#include "base/AppState.h"
#include "base/Database.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>

namespace normaris {

PreambleHeading PreambleHeading::current()
{
    const AppState &s = AppState::instance();
    return {scalar(AppState::cn(), QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {s.CurBunshoKeishikiCode}).toString(),
            scalar(AppState::cn(), QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"),
                   {s.CurBunshoKeishikiCode, s.CurKiteiCode})
                .toString()};
}

void addPreambleHeading(QWidget *form, QBoxLayout *layout)
{
    const PreambleHeading heading = PreambleHeading::current();
    auto *head = new QGridLayout;
    head->addWidget(new QLabel(QStringLiteral("文章形式:"), form), 0, 0);
    head->addWidget(new QLabel(QStringLiteral("規則・規程:"), form), 1, 0);
    const QString values[] = {heading.style, heading.document};
    for (int i = 0; i < 2; ++i) {
        auto *label = new QLabel(values[i], form);
        label->setObjectName(QStringLiteral("Label1_%1").arg(i));
        head->addWidget(label, i, 1);
    }
    layout->addLayout(head);
}

} // namespace normaris
