#include "words/forms/frmGokusentakuSub.h"

#include "composition/Panels.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"
#include "words/EmbeddedWords.h"
#include "words/forms/frmGokusentaku_01.h"

#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace normaris {

frmGokusentakuSub::frmGokusentakuSub(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGokusentakuSub"));
    setWindowTitle(QStringLiteral("語句設定（条の指定）"));
    const AppState &state = AppState::instance();
    auto *outer = new QVBoxLayout(this);
    auto *label11 = new QLabel(QStringLiteral("「章」と「条」を指定してください"), this);
    label11->setObjectName(QStringLiteral("Label11"));
    outer->addWidget(label11);
    const PlaceNames place = placeNames(AppState::cn(), state.CurBunshoKeishikiCode, state.CurKiteiCode);
    const QString documentName = place.document;
    auto *names = new QGridLayout;
    const std::pair<QString, QString> heads[] = {{QStringLiteral("文章形式:"), place.style}, {QStringLiteral("規則・規程:"), documentName}};
    for (int i = 0; i < 2; ++i) {
        auto *value = new QLabel(heads[i].second, this);
        value->setObjectName(QStringLiteral("Label10_%1").arg(i));
        names->addWidget(new QLabel(heads[i].first, this), i, 0);
        names->addWidget(value, i, 1);
    }
    m_chapter = new QComboBox(this);
    m_chapter->setObjectName(QStringLiteral("DataCombo2"));
    m_chapterCode = new QLabel(this);
    m_chapterCode->setObjectName(QStringLiteral("Label7_1"));
    m_article = new QComboBox(this);
    m_article->setObjectName(QStringLiteral("DataCombo3"));
    m_articleCode = new QLabel(this);
    m_articleCode->setObjectName(QStringLiteral("Label7_2"));
    names->addWidget(new QLabel(QStringLiteral("章:"), this), 2, 0);
    names->addWidget(m_chapter, 2, 1);
    names->addWidget(m_chapterCode, 2, 2);
    names->addWidget(new QLabel(QStringLiteral("条:"), this), 3, 0);
    names->addWidget(m_article, 3, 1);
    names->addWidget(m_articleCode, 3, 2);
    outer->addLayout(names);
    // Chapter and article titles of up to 80 bytes show whole.
    showBytes(m_chapter, 80);
    showBytes(m_article, 80);
    m_chapter->installEventFilter(this);
    m_article->installEventFilter(this);
    connect(m_chapter, &QComboBox::currentIndexChanged, this, [this] {
        m_chapterCode->setText(m_chapter->currentData().toString());
        m_article->clear();
        m_articleCode->clear();
    });
    connect(m_article, &QComboBox::currentIndexChanged, this, [this] { m_articleCode->setText(m_article->currentData().toString()); });

    // The bulk conversion of 担当者: shown for two agreements, with nothing behind its button.
    auto *frame = new QGroupBox(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *frameBox = new QVBoxLayout(frame);
    auto *label1 = new QLabel(frame);
    label1->setObjectName(QStringLiteral("Label1"));
    auto *label5 = new QLabel(QStringLiteral("一括変換する場合はこのボタンを押してください。"), frame);
    label5->setObjectName(QStringLiteral("Label5"));
    QPushButton *bulk = makeButton(frame, QStringLiteral("Command4"), QStringLiteral("まとめて変換(&M)"));
    frameBox->addWidget(label1);
    frameBox->addWidget(label5);
    frameBox->addWidget(bulk, 0, Qt::AlignLeft);
    outer->addWidget(frame);
    const bool counted = state.CurKiteiCode == u"34" || state.CurKiteiCode == u"32";
    frame->setVisible(counted);
    if (counted)
        label1->setText(documentName
                        + QStringLiteral("には「担当者」の設定が%1ヶ所あります。")
                              .arg(EmbeddedWords::ofCurrentDocument().countCaptioned(QStringLiteral("担当者"))));

    auto *buttons = new QHBoxLayout;
    QPushButton *go = makeButton(this, QStringLiteral("Command1"), QStringLiteral("次へ(&N)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {go, close, help})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    connect(go, &QPushButton::clicked, this, &frmGokusentakuSub::next);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    PlaceForm(this);
}

void frmGokusentakuSub::fillChapters()
{
    const QSignalBlocker block(m_chapter);
    m_chapter->clear();
    for (const CodeAndName &c : EmbeddedWords::ofCurrentDocument().chapters())
        m_chapter->addItem(c.name, c.code);
    m_chapter->setCurrentIndex(-1);
    m_chapterCode->clear();
    m_articleCode->clear();
    m_article->clear();
}

bool frmGokusentakuSub::fillArticles()
{
    if (m_chapter->currentIndex() < 0) {
        uiPrompt().error(QStringLiteral("未指定"), QStringLiteral("「章」を指定してください"));
        QTimer::singleShot(0, m_chapter, qOverload<>(&QWidget::setFocus));
        return false;
    }
    try {
        BusyCursor busy;
        AppState::instance().CurShoCode = m_chapter->currentData().toString();
        const QList<CodeAndName> articles = EmbeddedWords::ofCurrentDocument().articlesWithWords(AppState::instance().CurShoCode);
        const QSignalBlocker block(m_article);
        m_article->clear();
        for (const CodeAndName &a : articles)
            m_article->addItem(a.name, a.code);
        m_article->setCurrentIndex(-1);
        m_articleCode->clear();
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
        return false;
    }
    return true;
}

bool frmGokusentakuSub::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::FocusIn)
        return QDialog::eventFilter(watched, event);
    // A list is filled when the user (or a message sending the user) moves to it. The focus
    // that comes back as the list closes, or with the window after a box or another program,
    // keeps the choice just made; only the window's first focus fills the empty 章 list.
    switch (static_cast<QFocusEvent *>(event)->reason()) {
    case Qt::PopupFocusReason: break;
    case Qt::ActiveWindowFocusReason:
        if (watched == m_chapter && m_chapter->count() == 0)
            fillChapters();
        break;
    default:
        if (watched == m_chapter)
            fillChapters();
        else if (watched == m_article)
            fillArticles();
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmGokusentakuSub::next()
{
    if (m_chapter->currentIndex() < 0) {
        uiPrompt().error(QStringLiteral("未指定"), QStringLiteral("「章」を指定してください"));
        m_chapter->setFocus();
        return;
    }
    if (m_article->currentIndex() < 0) {
        uiPrompt().error(QStringLiteral("未指定"), QStringLiteral("「条」を指定してください"));
        m_article->setFocus();
        return;
    }
    AppState &state = AppState::instance();
    state.CurShoCode = m_chapter->currentData().toString();
    state.CurJoCode = m_article->currentData().toString();
    state.WordsPreviewAllowed = true;
    frmGokusentaku_01 words(this);
    words.exec();
}

} // namespace normaris
