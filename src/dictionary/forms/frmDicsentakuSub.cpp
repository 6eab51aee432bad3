#include "dictionary/forms/frmDicsentakuSub.h"

#include "base/AppState.h"
#include "base/Database.h"
#include "dictionary/DictionaryPath.h"
#include "dictionary/forms/frmDic01.h"
#include "dictionary/forms/frmDic03.h"
#include "dictionary/forms/frmJoubunKensaku.h"
#include "intake/forms/frmGenkouTorikomi.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

using dictionary::DictionaryPath;
using dictionary::pickerLevel;

namespace {

QString fromLevel(const char16_t *text) { return QString::fromUtf16(text); }

// The shared value that the focus on picker i+1 takes from picker i.
QString *positionValue(int i)
{
    AppState &s = AppState::instance();
    QString *values[] = {&s.DicKiteiCode, &s.CurShoCode, &s.CurJoCode, &s.CurKouCode, &s.CurGouCode};
    return i < 5 ? values[i] : nullptr;
}

} // namespace

frmDicsentakuSub::frmDicsentakuSub(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDicsentakuSub"));
    setWindowTitle(QStringLiteral("ディクショナリ管理（種別の指定）"));
    setMinimumSize(twips(7770), twips(4770));
    AppState &state = AppState::instance();
    auto *layout = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    auto *style = new QLabel(
        scalar(AppState::cn(), QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {state.CurBunshoKeishikiCode}).toString(),
        this);
    style->setObjectName(QStringLiteral("Label10"));
    left->addWidget(style);
    auto *frame = new QGroupBox(QStringLiteral("種別"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *options = new QVBoxLayout(frame);
    for (int i = 0; i < kLevels; ++i) {
        m_levels[i] = new QRadioButton(QString::fromUtf16(levelInfo(pickerLevel(i)).caption), frame);
        m_levels[i]->setObjectName(QStringLiteral("Option2_%1").arg(i));
        options->addWidget(m_levels[i]);
        connect(m_levels[i], &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                showLevel();
        });
    }
    left->addWidget(frame);
    layout->addLayout(left);

    auto *right = new QVBoxLayout;
    auto *grid = new QGridLayout;
    m_codeHeading = new QLabel(this);
    m_codeHeading->setObjectName(QStringLiteral("Label8"));
    grid->addWidget(m_codeHeading, 0, 2);
    for (int i = 0; i < kPickers; ++i) {
        m_captions[i] = new QLabel(fromLevel(levelInfo(pickerLevel(i)).pickerLabel), this);
        m_captions[i]->setObjectName(QStringLiteral("Label%1").arg(i + 1));
        m_pickers[i] = new QComboBox(this);
        m_pickers[i]->setObjectName(QStringLiteral("DataCombo%1").arg(i + 1));
        m_pickers[i]->setMinimumWidth(twips(4000));
        m_pickers[i]->installEventFilter(this);
        m_codes[i] = new QLabel(this);
        m_codes[i]->setObjectName(QStringLiteral("Label7_%1").arg(i));
        grid->addWidget(m_captions[i], i + 1, 0);
        grid->addWidget(m_pickers[i], i + 1, 1);
        grid->addWidget(m_codes[i], i + 1, 2);
        connect(m_pickers[i], &QComboBox::currentIndexChanged, this, [this, i] { pickerChanged(i); });
    }
    right->addLayout(grid);
    m_hint = new QLabel(this);
    m_hint->setObjectName(QStringLiteral("Label11"));
    right->addWidget(m_hint);
    right->addStretch();
    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *search = makeButton(this, QStringLiteral("Command4"), QStringLiteral("条文検索(&F)..."));
    QPushButton *intake = makeButton(this, QStringLiteral("Command5"), QStringLiteral("現行規程の取込(&I)..."));
    m_next = makeButton(this, QStringLiteral("Command1"), QStringLiteral("次へ(&N)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(help);
    buttons->addWidget(search);
    buttons->addWidget(intake);
    buttons->addStretch();
    buttons->addWidget(m_next);
    buttons->addWidget(close);
    right->addLayout(buttons);
    layout->addLayout(right, 1);
    connect(m_next, &QPushButton::clicked, this, &frmDicsentakuSub::next);
    connect(close, &QPushButton::clicked, this, [this] {
        clearPosition();
        reject();
    });
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    connect(search, &QPushButton::clicked, this, [this] {
        frmJoubunKensaku form(this);
        form.exec();
        placeOverMainWindow(this);
        verifyPath();
    });
    connect(intake, &QPushButton::clicked, this, [this] {
        frmGenkouTorikomi form(this);
        form.exec();
        placeOverMainWindow(this);
    });

    m_levels[0]->setChecked(true);
    showLevel();
    placeOverMainWindow(this);
}

int frmDicsentakuSub::chosenLevel() const
{
    for (int i = 0; i < kLevels; ++i) {
        if (m_levels[i]->isChecked())
            return i;
    }
    return 0;
}

void frmDicsentakuSub::showLevel()
{
    const int level = chosenLevel();
    AppState::instance().CurShubetsu = Level(level + 1);
    // Level i shows the pickers of the levels above it; they keep their text.
    for (int i = 0; i < kPickers; ++i) {
        m_pickers[i]->setVisible(i < level);
        m_captions[i]->setVisible(i < level);
        m_codes[i]->setVisible(i < level);
    }
    m_hint->setText(fromLevel(levelInfo(pickerLevel(level)).pickerHint));
    m_codeHeading->setText(level == 0 ? QString() : QStringLiteral("Code"));
}

QString frmDicsentakuSub::boundCode(int i) const { return m_pickers[i]->currentData().toString(); }

int frmDicsentakuSub::firstUnset(int below) const
{
    for (int j = 0; j < below; ++j) {
        if (boundCode(j).isEmpty())
            return j;
    }
    return -1;
}

void frmDicsentakuSub::refuseUnset(int i)
{
    uiPrompt().error(QStringLiteral("未指定"), QStringLiteral("「%1」を指定してください").arg(levelCaption(pickerLevel(i))));
    m_pickers[i]->setFocus();
}

bool frmDicsentakuSub::eventFilter(QObject *watched, QEvent *event)
{
    for (int i = 0; i < kPickers; ++i) {
        if (watched != m_pickers[i])
            continue;
        // The focus that comes back from the picker's own list, or with the window, is no entry.
        if (event->type() == QEvent::FocusIn && !m_filling) {
            const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                enterPicker(i);
        }
        // A list that already has the focus (it came back with the window, or the kind
        // changed under it) gets no focus event: an empty one is filled as it opens.
        if (event->type() == QEvent::MouseButtonPress && !m_filling && m_pickers[i]->count() == 0 && m_pickers[i]->hasFocus())
            enterPicker(i);
        if (event->type() == QEvent::KeyPress && i < kPickers - 1) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_pickers[i + 1]->isVisible()) {
                focusNextChild();
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmDicsentakuSub::enterPicker(int i)
{
    AppState &state = AppState::instance();
    const QString style = state.CurBunshoKeishikiCode;
    if (i > 0) {
        const int unset = firstUnset(i);
        if (unset >= 0) {
            m_filling = true;
            refuseUnset(unset);
            m_filling = false;
            return;
        }
        *positionValue(i - 1) = boundCode(i - 1);
    }
    QStringList parents;
    for (int j = 0; j < i; ++j)
        parents << boundCode(j);
    // The list is opened afresh: its text and code start empty.
    m_filling = true;
    const QString kept = i == 0 ? boundCode(0) : QString();
    m_pickers[i]->clear();
    for (const CodeAndName &c : DictionaryPath(AppState::cn(), style).choices(pickerLevel(i), parents))
        m_pickers[i]->addItem(c.name, c.code);
    m_pickers[i]->setCurrentIndex(i == 0 ? m_pickers[i]->findData(kept) : -1);
    m_filling = false;
    if (i > 0)
        pickerChanged(i);
}

void frmDicsentakuSub::pickerChanged(int i)
{
    if (m_filling)
        return;
    m_codes[i]->setText(boundCode(i));
    // A position never stays under a parent that has changed.
    m_filling = true;
    for (int j = i + 1; j < kPickers; ++j) {
        if (m_pickers[j]->count() > 0 || !m_pickers[j]->currentText().isEmpty()) {
            m_pickers[j]->clear();
            m_codes[j]->clear();
        }
    }
    m_filling = false;
}

void frmDicsentakuSub::next()
{
    const int level = chosenLevel();
    const int unset = firstUnset(level);
    if (unset >= 0) {
        refuseUnset(unset);
        return;
    }
    AppState &state = AppState::instance();
    // The level editor finds its whole position in the shared values, the parent's too.
    for (int i = 0; i < level && i < 5; ++i)
        *positionValue(i) = boundCode(i);
    if (level == kPickers)
        state.CurMaruCode = boundCode(kPickers - 1);
    if (level == 0) {
        frmDic01 master(this);
        master.exec();
    } else {
        frmDic03 editor(this);
        editor.exec();
    }
    placeOverMainWindow(this);
    verifyPath();
}

void frmDicsentakuSub::verifyPath()
{
    if (boundCode(0).isEmpty())
        return;
    DictionaryPath path(AppState::cn(), AppState::instance().CurBunshoKeishikiCode);
    QStringList parents;
    for (int i = 0; i < kPickers; ++i) {
        if (boundCode(i).isEmpty())
            break;
        if (!path.stands(pickerLevel(i), parents, m_codes[i]->text(), m_pickers[i]->currentText())) {
            uiPrompt().warning(QStringLiteral("イレギュラー処理"),
                               QStringLiteral("Codeの変更・削除を行うと連続処理ができない場合があります。\n"
                                              "このメッセージがでたら、一度フォームを閉じて、再び開いてください。\n"
                                              "処理を終了する場合は、閉じてください。"));
            clearPosition();
            m_next->setEnabled(false);
            return;
        }
        parents << m_codes[i]->text();
    }
}

void frmDicsentakuSub::clearPosition()
{
    AppState &s = AppState::instance();
    for (QString *value : {&s.CurKiteiCode, &s.DicKiteiCode, &s.CurShoCode, &s.CurJoCode, &s.CurKouCode, &s.CurGouCode, &s.CurMaruCode})
        value->clear();
}

} // namespace normaris
