#include "words/forms/frmGokusentaku_01.h"

#include "composition/Panels.h"
#include "export/ArticlePreview.h"
#include "base/Database.h"
#include "base/AppState.h"
#include "base/Failure.h"
#include "legal/Requirements.h"
#include "shell/forms/FormHelpers.h"
#include "words/EmbeddedWords.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace normaris {

namespace {

// "限度 100時間未満（労働基準法第36条第5項）", or nothing when the table can't be read.
QString wordBoundText(const QString &document, const QString &code)
{
    try {
        const QString bound = legal::wordBound(legal::shippedRequirements(), document, code);
        return bound.isEmpty() ? bound : QStringLiteral("限度 ") + bound;
    } catch (const Failure &) {
        return {};
    }
}

} // namespace

frmGokusentaku_01::frmGokusentaku_01(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGokusentaku_01"));
    setWindowTitle(QStringLiteral("埋込語句の設定"));
    const AppState &state = AppState::instance();
    QSqlDatabase db = AppState::cn();
    auto *outer = new QVBoxLayout(this);

    const PlaceNames place = placeNames(db, state.CurBunshoKeishikiCode, state.CurKiteiCode, state.CurShoCode, state.CurJoCode);
    const std::pair<QString, QString> names[] = {
        {QStringLiteral("文章形式:"), place.style},
        {QStringLiteral("規則・規程:"), place.document},
        {QStringLiteral("章:"), place.chapter},
        {QStringLiteral("条:"), place.article},
    };
    auto *head = new QGridLayout;
    for (int i = 0; i < 4; ++i) {
        auto *value = new QLabel(names[i].second, this);
        value->setObjectName(QStringLiteral("Label1_%1").arg(i));
        head->addWidget(new QLabel(names[i].first, this), i, 0);
        head->addWidget(value, i, 1);
    }
    outer->addLayout(head);

    auto *heading = new QLabel(QStringLiteral("表示名称 / Code / 設定内容"), this);
    heading->setObjectName(QStringLiteral("Label5"));
    outer->addWidget(heading);
    auto *rows = new QGridLayout;
    const QList<EmbeddedWord> words = EmbeddedWords::ofCurrentDocument().words(state.CurShoCode, state.CurJoCode);
    m_shown = int(qMin<qsizetype>(words.size(), kRows));
    for (int k = 0; k < kRows; ++k) {
        auto *caption = new QLabel(this);
        caption->setObjectName(QStringLiteral("Label2_%1").arg(k));
        auto *code = new QLabel(this);
        code->setObjectName(QStringLiteral("Label3_%1").arg(k));
        auto *box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("Text1_%1").arg(k));
        box->installEventFilter(this);
        showBytes(box, kWordLimit);
        // The law's bound on the word, where it has one: a value beyond it is kept all the same.
        auto *bound = new QLabel(this);
        bound->setObjectName(QStringLiteral("Label4_%1").arg(k));
        rows->addWidget(caption, k, 0);
        rows->addWidget(code, k, 1);
        rows->addWidget(box, k, 2);
        rows->addWidget(bound, k, 3);
        const bool used = k < m_shown;
        caption->setVisible(used || k == 0);
        code->setVisible(used);
        box->setVisible(used);
        if (used) {
            caption->setText(words[k].caption);
            code->setText(words[k].code);
            box->setText(words[k].word);
            bound->setText(wordBoundText(state.CurKiteiCode, words[k].code));
        }
        bound->setVisible(used && !bound->text().isEmpty());
        m_codes << code;
        m_words << box;
    }
    outer->addLayout(rows);

    auto *buttons = new QHBoxLayout;
    QPushButton *update = makeButton(this, QStringLiteral("Command2"), QStringLiteral("更新(&U)"));
    QPushButton *cancel = makeButton(this, QStringLiteral("Command3"), QStringLiteral("キャンセル(&C)"));
    QPushButton *preview = makeButton(this, QStringLiteral("Command4"), QStringLiteral("Wordで確認(&E)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command1"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {update, cancel, preview, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    outer->addLayout(buttons);
    preview->setVisible(state.WordsPreviewAllowed);
    if (m_shown == 0) {
        heading->hide();
        findChild<QLabel *>(QStringLiteral("Label2_0"))->setText(QStringLiteral("埋込語句はありません。"));
        update->hide();
        preview->hide();
        cancel->setText(QStringLiteral("閉じる(&C)"));
    }
    connect(update, &QPushButton::clicked, this, &frmGokusentaku_01::save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(preview, &QPushButton::clicked, this, &frmGokusentaku_01::preview);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    PlaceForm(this);
}

bool frmGokusentaku_01::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    if (!box || !m_words.contains(box))
        return QDialog::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            focusNextChild();
            return true;
        }
    } else if (event->type() == QEvent::FocusIn) {
        QTimer::singleShot(0, box, [box] { SelectAllText(box); });
    } else if (event->type() == QEvent::FocusOut && !m_checking) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            m_checking = true;
            if (!EmbeddedWords::checkWord(uiPrompt(), box->text()))
                QTimer::singleShot(0, box, qOverload<>(&QWidget::setFocus));
            m_checking = false;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmGokusentaku_01::save()
{
    QList<std::pair<QString, QString>> words;
    for (int k = 0; k < m_shown; ++k) {
        if (!EmbeddedWords::checkWord(uiPrompt(), m_words[k]->text())) {
            m_words[k]->setFocus();
            return;
        }
        words << std::pair{m_codes[k]->text(), m_words[k]->text()};
    }
    const AppState &state = AppState::instance();
    try {
        EmbeddedWords::ofCurrentDocument().save(state.CurShoCode, state.CurJoCode, words);
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
        return;
    }
    // An emptied word shows its marker again.
    for (int k = 0; k < m_shown; ++k) {
        if (m_words[k]->text().isEmpty())
            m_words[k]->setText(EmbeddedWords::markerOf(m_codes[k]->text()));
    }
    if (uiPrompt().question(QStringLiteral("更新完了"), QStringLiteral("データ更新が完了しました。\nフォームを閉じますか？")))
        accept();
}

void frmGokusentaku_01::preview()
{
    const AppState &state = AppState::instance();
    if (!EmbeddedWords::ofCurrentDocument().hasMadeData(state.CurShoCode, state.CurJoCode)) {
        uiPrompt().error(QStringLiteral("データ未作成"), QStringLiteral("まだ「データ作成」を実行していないため表示できません。"));
        return;
    }
    try {
        m_lastPreview =
            ArticlePreview(AppState::cn(), state.CurBunshoKeishikiCode, state.CurKiteiCode).write(state.CurShoCode, state.CurJoCode);
        if (!m_lastPreview.isEmpty())
            openDocument(m_lastPreview);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

} // namespace normaris
