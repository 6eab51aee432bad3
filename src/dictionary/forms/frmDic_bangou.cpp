#include "dictionary/forms/frmDic_bangou.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/DictionaryPath.h"
#include "dictionary/SegmentEditor.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace normaris {

using dictionary::pickerLevel;
using dictionary::ReferenceTarget;

frmDic_bangou::frmDic_bangou(dictionary::SegmentEditor &editor, int k, QWidget *parent)
    : QDialog(parent), m_editor(editor), m_segment(k), m_targets(AppState::cn(), editor.place().style)
{
    setObjectName(QStringLiteral("frmDic_bangou"));
    setWindowTitle(QStringLiteral("参照先の設定"));
    resize(twips(10500), twips(6500));
    auto *layout = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    auto *frame = new QGroupBox(QStringLiteral("参照する種別"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *options = new QVBoxLayout(frame);
    for (int i = 0; i < kLevels; ++i) {
        m_levels[i] = new QRadioButton(levelCaption(pickerLevel(i)), frame);
        m_levels[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        options->addWidget(m_levels[i]);
        connect(m_levels[i], &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                showLevel();
        });
    }
    left->addWidget(frame);
    left->addStretch();
    layout->addLayout(left);

    auto *right = new QVBoxLayout;
    auto *lead = new QLabel(QStringLiteral("%1番目の部分が参照する位置を指定してください").arg(k + 1), this);
    lead->setObjectName(QStringLiteral("Label1"));
    right->addWidget(lead);
    auto *grid = new QGridLayout;
    auto *codeHeading = new QLabel(QStringLiteral("Code"), this);
    grid->addWidget(codeHeading, 0, 2);
    for (int i = 0; i < kLevels; ++i) {
        m_captions[i] = new QLabel(levelCaption(pickerLevel(i)) + u':', this);
        m_captions[i]->setObjectName(QStringLiteral("Label2_%1").arg(i));
        m_pickers[i] = new QComboBox(this);
        m_pickers[i]->setObjectName(QStringLiteral("DataCombo%1").arg(i + 1));
        m_pickers[i]->setMinimumWidth(twips(5000));
        m_captions[i]->setBuddy(m_pickers[i]);
        m_codes[i] = new QLabel(this);
        m_codes[i]->setObjectName(QStringLiteral("Label7_%1").arg(i));
        grid->addWidget(m_captions[i], i + 1, 0);
        grid->addWidget(m_pickers[i], i + 1, 1);
        grid->addWidget(m_codes[i], i + 1, 2);
        connect(m_pickers[i], &QComboBox::currentIndexChanged, this, [this, i] { pickerChanged(i); });
    }
    m_segmentCaption = new QLabel(QStringLiteral("部分:"), this);
    m_segments = new QComboBox(this);
    m_segments->setObjectName(QStringLiteral("Combo2"));
    m_segmentCaption->setBuddy(m_segments);
    grid->addWidget(m_segmentCaption, kLevels + 1, 0);
    grid->addWidget(m_segments, kLevels + 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Code:"), this), kLevels + 2, 0);
    auto *nextCode = new QLabel(m_targets.nextCode(editor.place().document, &editor), this);
    nextCode->setObjectName(QStringLiteral("lblCode"));
    grid->addWidget(nextCode, kLevels + 2, 1);
    right->addLayout(grid);
    right->addStretch();

    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    QPushButton *decide = makeButton(this, QStringLiteral("Command1"), QStringLiteral("決定(&O)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(decide);
    buttons->addWidget(close);
    right->addLayout(buttons);
    layout->addLayout(right, 1);
    connect(decide, &QPushButton::clicked, this, &frmDic_bangou::decide);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });

    // The citing clause's own document and an article are where most references go.
    fill(0);
    m_pickers[0]->setCurrentIndex(m_pickers[0]->findData(editor.place().document));
    m_levels[int(Level::Article) - 1]->setChecked(true);
    m_pickers[1]->setFocus();
    placeOverMainWindow(this);
}

int frmDic_bangou::chosenLevel() const
{
    for (int i = 0; i < kLevels; ++i) {
        if (m_levels[i]->isChecked())
            return i;
    }
    return 0;
}

void frmDic_bangou::showLevel()
{
    const int level = chosenLevel();
    for (int i = 0; i < kLevels; ++i) {
        m_pickers[i]->setVisible(i <= level);
        m_captions[i]->setVisible(i <= level);
        m_codes[i]->setVisible(i <= level);
    }
    // A list that the level now shows is filled from its parent's choice.
    for (int i = 1; i <= level; ++i) {
        if (m_pickers[i]->count() == 0 && !m_pickers[i - 1]->currentData().toString().isEmpty())
            fill(i);
    }
    fillSegments();
}

void frmDic_bangou::fill(int i)
{
    m_filling = true;
    m_pickers[i]->clear();
    QList<CodeAndName> choices;
    if (i == 0) {
        choices = m_targets.documents();
    } else {
        QStringList parents;
        for (int j = 1; j < i; ++j)
            parents << m_pickers[j]->currentData().toString();
        choices = m_targets.entries(m_pickers[0]->currentData().toString(), pickerLevel(i), parents);
    }
    for (const CodeAndName &c : choices)
        m_pickers[i]->addItem(c.name, c.code);
    m_pickers[i]->setCurrentIndex(-1);
    m_codes[i]->clear();
    m_filling = false;
}

void frmDic_bangou::pickerChanged(int i)
{
    if (m_filling)
        return;
    m_codes[i]->setText(m_pickers[i]->currentData().toString());
    // A place never stays under a parent that has changed.
    for (int j = i + 1; j < kLevels; ++j) {
        m_filling = true;
        m_pickers[j]->clear();
        m_codes[j]->clear();
        m_filling = false;
    }
    if (i + 1 <= chosenLevel())
        fill(i + 1);
    fillSegments();
}

// The segments of the cited clause, when it is split: none chosen cites it whole.
void frmDic_bangou::fillSegments()
{
    m_segments->clear();
    m_segments->addItem(QStringLiteral("（全体）"), QString());
    const ReferenceTarget t = target();
    const bool clause = isClauseLevel(t.level) && t.codes.size() == placeDepth(t.level) && !t.codes.contains(QString());
    const QList<CodeAndName> segments = clause ? m_targets.segments(t) : QList<CodeAndName>();
    for (const CodeAndName &s : segments)
        m_segments->addItem(s.code + QStringLiteral("  ") + s.name, s.code);
    m_segments->setEnabled(!segments.isEmpty());
    m_segmentCaption->setEnabled(!segments.isEmpty());
}

ReferenceTarget frmDic_bangou::target() const
{
    ReferenceTarget t;
    const int level = chosenLevel();
    t.level = pickerLevel(level);
    t.document = m_pickers[0]->currentData().toString();
    for (int i = 1; i <= level; ++i)
        t.codes << m_pickers[i]->currentData().toString();
    t.join = m_segments->currentData().toString();
    return t;
}

void frmDic_bangou::decide()
{
    for (int i = 0; i <= chosenLevel(); ++i) {
        if (m_pickers[i]->currentData().toString().isEmpty()) {
            uiPrompt().error(QStringLiteral("未指定"), QStringLiteral("「%1」を指定してください").arg(levelCaption(pickerLevel(i))));
            m_pickers[i]->setFocus();
            return;
        }
    }
    Outcome outcome;
    {
        BusyCursor busy;
        outcome = m_targets.make(uiPrompt(), m_editor, m_segment, target());
    }
    if (outcome == Outcome::Done)
        accept();
}

} // namespace normaris
