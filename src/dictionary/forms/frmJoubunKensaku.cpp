#include "dictionary/forms/frmJoubunKensaku.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/ClauseSearch.h"
#include "dictionary/forms/frmDic03.h"
#include "shell/forms/FormHelpers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace normaris {

namespace {

// Where a hit's row keeps its place: style, document, level, codes.
constexpr int kPlaceRole = Qt::UserRole;

} // namespace

frmJoubunKensaku::frmJoubunKensaku(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmJoubunKensaku"));
    setWindowTitle(QStringLiteral("条文検索"));
    resize(twips(12000), twips(6000));
    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("検索する語句:"), this));
    m_words = new QLineEdit(this);
    m_words->setObjectName(QStringLiteral("Text1"));
    row->addWidget(m_words, 1);
    QPushButton *find = makeButton(this, QStringLiteral("Command1"), QStringLiteral("検索(&S)"));
    row->addWidget(find);
    layout->addLayout(row);
    m_hits = new QTreeWidget(this);
    m_hits->setObjectName(QStringLiteral("List1"));
    m_hits->setRootIsDecorated(false);
    m_hits->setHeaderLabels(
        {QStringLiteral("文章形式"), QStringLiteral("規程"), QStringLiteral("場所"), QStringLiteral("条番号"), QStringLiteral("本文")});
    m_hits->header()->setStretchLastSection(true);
    layout->addWidget(m_hits, 1);
    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(close);
    layout->addLayout(buttons);
    find->setDefault(true);
    connect(find, &QPushButton::clicked, this, &frmJoubunKensaku::search);
    connect(m_words, &QLineEdit::returnPressed, this, &frmJoubunKensaku::search);
    connect(m_hits, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *item) { open(item); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

void frmJoubunKensaku::search()
{
    m_hits->clear();
    QList<dictionary::SearchHit> hits;
    {
        BusyCursor busy;
        hits = dictionary::ClauseSearch(AppState::cn()).find(m_words->text());
    }
    for (const dictionary::SearchHit &h : hits) {
        auto *item =
            new QTreeWidgetItem(m_hits, {h.style == u"2" ? QStringLiteral("ですます調") : QStringLiteral("である調"),
                                         h.document + QStringLiteral("　") + h.documentName, h.place(), h.articleNumber, h.context});
        item->setData(0, kPlaceRole, QStringList{h.style, h.document, QString::number(int(h.level))} + h.codes);
    }
    if (hits.isEmpty() && !m_words->text().trimmed().isEmpty())
        uiPrompt().plain(QStringLiteral("条文検索"), QStringLiteral("「%1」を含む条文はありません。").arg(m_words->text().trimmed()));
}

void frmJoubunKensaku::open(QTreeWidgetItem *item)
{
    const QStringList place = item->data(0, kPlaceRole).toStringList();
    if (place.size() < 4)
        return; // a 前文 has no level editor of this kind
    AppState &state = AppState::instance();
    state.CurBunshoKeishikiCode = place[0];
    state.DicKiteiCode = place[1];
    state.CurShubetsu = Level(place[2].toInt());
    QString *parents[] = {&state.CurShoCode, &state.CurJoCode, &state.CurKouCode, &state.CurGouCode, &state.CurMaruCode};
    const QStringList codes = place.mid(3);
    for (qsizetype i = 0; i < 5; ++i)
        *parents[i] = i + 1 < codes.size() ? codes[i] : QString();
    frmDic03 editor(this);
    editor.exec();
    placeOverMainWindow(this);
}

} // namespace normaris
