#include "import/forms/frmCopy03.h"

#include "base/AppState.h"
#include "base/Failure.h"
#include "import/EntryImport.h"
#include "import/ImportLists.h"
#include "import/SourceCompany.h"
#include "import/forms/FillOnOpenCombo.h"
#include "shell/forms/FormHelpers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

namespace {
const QString kUnchosen = QStringLiteral("未指定");
}

frmCopy03::frmCopy03(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCopy03"));
    setWindowTitle(QStringLiteral("他社データ取込（種別の指定）"));
    AppState &state = AppState::instance();
    auto *outer = new QVBoxLayout(this);

    auto *styleRow = new QHBoxLayout;
    auto *styleCaption = new QLabel(QStringLiteral("文章形式:"), this);
    auto *style = new QLabel(this);
    style->setObjectName(QStringLiteral("Label10"));
    try {
        style->setText(styleName(SourceCompany::connection(), state.CurBunshoKeishikiCode));
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
    }
    styleRow->addWidget(styleCaption);
    styleRow->addWidget(style, 1);
    outer->addLayout(styleRow);

    auto *levels = new QGroupBox(QStringLiteral("種別"), this);
    levels->setObjectName(QStringLiteral("Frame2"));
    auto *levelRow = new QHBoxLayout(levels);
    for (int i = 0; i < kDepths; ++i) {
        m_options[i] = new QRadioButton(importLevelCaption(kImportLevels[i]), levels);
        m_options[i]->setObjectName(QStringLiteral("Option2_%1").arg(i));
        levelRow->addWidget(m_options[i]);
        connect(m_options[i], &QRadioButton::clicked, this, [this, i] { chooseLevel(i); });
    }
    outer->addWidget(levels);

    m_prompt = new QLabel(this);
    m_prompt->setObjectName(QStringLiteral("Label11"));
    outer->addWidget(m_prompt);
    auto *grid = new QGridLayout;
    for (int i = 0; i < kDepths; ++i) {
        m_captions[i] = new QLabel(importLevelCaption(kImportLevels[i]), this);
        m_captions[i]->setObjectName(QStringLiteral("Label%1").arg(i + 1));
        m_lists[i] = new FillOnOpenCombo(this);
        m_lists[i]->setObjectName(QStringLiteral("DataCombo%1").arg(i + 1));
        m_lists[i]->setMinimumWidth(twips(5400));
        m_lists[i]->setFill([this, i] { return fillList(i); });
        connect(m_lists[i], &QComboBox::activated, this, [this, i] { listChanged(i); });
        m_codes[i] = new QLabel(this);
        m_codes[i]->setObjectName(QStringLiteral("Label7_%1").arg(i));
        m_captions[i]->setBuddy(m_lists[i]);
        grid->addWidget(m_captions[i], i, 0);
        grid->addWidget(m_lists[i], i, 1);
        grid->addWidget(m_codes[i], i, 2);
    }
    outer->addLayout(grid);
    auto *note = new QLabel(this);
    note->setObjectName(QStringLiteral("Label8"));
    outer->addWidget(note);

    auto *buttons = new QHBoxLayout;
    QPushButton *back = makeButton(this, QStringLiteral("cmdBack"), QStringLiteral("< 戻る(&B)"));
    QPushButton *run = makeButton(this, QStringLiteral("Command1"), QStringLiteral("データ取込(&I)"));
    m_renumber = makeButton(this, QStringLiteral("cmdRenumber"), QStringLiteral("コードを振り直して取り込む(&N)"));
    m_renumber->hide();
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    buttons->addStretch();
    for (QPushButton *b : {back, m_renumber, run, close, help})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    connect(back, &QPushButton::clicked, this, [this] { done(WizardBack); });
    connect(run, &QPushButton::clicked, this, [this] { importChosen(MarkerCodes::Keep); });
    connect(m_renumber, &QPushButton::clicked, this, [this] { importChosen(MarkerCodes::Renumber); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });

    m_options[0]->setChecked(true);
    chooseLevel(0);
    markWizardStep(this);
    PlaceForm(this);
}

void frmCopy03::chooseLevel(int depth)
{
    m_renumber->hide();
    m_level = depth;
    AppState::instance().CurShubetsu = kImportLevels[depth];
    for (int i = 0; i < kDepths; ++i) {
        m_captions[i]->setVisible(i <= depth);
        m_lists[i]->setVisible(i <= depth);
        m_codes[i]->setVisible(i <= depth);
    }
    m_prompt->setText(importLevelPrompt(kImportLevels[depth]));
    // The list of the level offers only the user's own entries, a parent's any entry:
    // a parent's pick stays good, the level's own and those below are picked again.
    for (int i = depth; i < kDepths; ++i) {
        m_lists[i]->clear();
        m_codes[i]->clear();
    }
}

QString frmCopy03::chosenCode(int depth) const
{
    return m_lists[depth]->currentIndex() < 0 ? QString() : m_lists[depth]->currentData().toString();
}

bool frmCopy03::fillList(int depth)
{
    QStringList parents;
    for (int i = 0; i < depth; ++i) {
        if (chosenCode(i).isEmpty()) {
            uiPrompt().error(kUnchosen, importGuardText(kImportLevels[i]));
            m_lists[i]->setFocus();
            return false;
        }
        parents << chosenCode(i);
    }
    const QString kept = chosenCode(depth);
    try {
        const QList<CodeAndName> choices = importChoices(SourceCompany::connection(), AppState::instance().CurBunshoKeishikiCode,
                                                         kImportLevels[depth], parents, depth == m_level);
        m_lists[depth]->clear();
        for (const CodeAndName &c : choices)
            m_lists[depth]->addItem(c.name, c.code);
        m_lists[depth]->setCurrentIndex(m_lists[depth]->findData(kept));
    } catch (const std::exception &e) {
        uiPrompt().failure(QString::fromUtf8(e.what()));
        return false;
    }
    return true;
}

void frmCopy03::listChanged(int depth)
{
    m_renumber->hide();
    m_codes[depth]->setText(chosenCode(depth));
    for (int i = depth + 1; i < kDepths; ++i) {
        m_lists[i]->clear();
        m_codes[i]->clear();
    }
}

void frmCopy03::importChosen(MarkerCodes codes)
{
    m_renumber->hide();
    for (int i = 0; i <= m_level; ++i) {
        if (chosenCode(i).isEmpty()) {
            uiPrompt().error(kUnchosen, importGuardText(kImportLevels[i]));
            m_lists[i]->setFocus();
            return;
        }
    }
    AppState &state = AppState::instance();
    ImportPlace place{state.CurBunshoKeishikiCode, kImportLevels[m_level], {}};
    for (int i = 0; i <= m_level; ++i)
        place.codes << chosenCode(i);
    QString *current[kDepths] = {&state.CurKiteiCode, &state.CurShoCode,  &state.CurJoCode,   &state.CurKouCode,
                                 &state.CurGouCode,   &state.CurMaruCode, &state.CurIrohaCode};
    for (int i = 0; i < kDepths; ++i)
        *current[i] = place.codes.value(i);
    if (importEntry(AppState::cn(), SourceCompany::connection(), uiPrompt(), place, codes) != Outcome::Stopped)
        return;
    try {
        m_renumber->setVisible(codes == MarkerCodes::Keep && importRenumberable(AppState::cn(), SourceCompany::connection(), place));
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

} // namespace normaris
