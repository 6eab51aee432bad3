#include "dictionary/forms/SegmentPanel.h"

#include "base/FieldChecks.h"
#include "dictionary/DictionaryMessages.h"
#include "shell/forms/FormHelpers.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace normaris {

namespace SegmentKind = dictionary::SegmentKind;
using dictionary::SegmentRecord;

namespace {

// The options of a row, left to right: caption and the kind each stands for. The last
// is the spare button of the group, which stands for nothing.
struct KindOption {
    const char *caption;
    const char *kind;
};
constexpr KindOption kOptions[] = {{"文章", "0"}, {"語句", "1"}, {"番号", "2"}, {"基本語句", "3"}, {"", ""}};

QString optionKind(int o) { return QString::fromUtf8(kOptions[o].kind); }

} // namespace

SegmentPanel::SegmentPanel(QStringList choosable, QWidget *parent) : QScrollArea(parent), m_choosable(std::move(choosable))
{
    setObjectName(QStringLiteral("Picture1"));
    setWidgetResizable(true);
    auto *panel = new QWidget(this);
    auto *grid = new QGridLayout(panel);
    for (int k = 0; k < kSegments; ++k) {
        Row &r = m_rows[k];
        const QString n = QString::number(k);
        auto *number = new QLabel(QString::number(k + 1), panel);
        number->setObjectName(QStringLiteral("Label3_") + n);
        auto *frame = new QGroupBox(panel);
        frame->setObjectName(QStringLiteral("Frame1_") + n);
        auto *options = new QHBoxLayout(frame);
        options->setContentsMargins(2, 2, 2, 2);
        auto *group = new QButtonGroup(frame);
        for (int o = 0; o < int(std::size(kOptions)); ++o) {
            auto *option = new QRadioButton(QString::fromUtf8(kOptions[o].caption), frame);
            option->setObjectName(QStringLiteral("Option%1_%2").arg(o + 1).arg(k));
            option->setEnabled(!optionKind(o).isEmpty() && m_choosable.contains(optionKind(o)));
            group->addButton(option);
            options->addWidget(option);
            r.options[o] = option;
            if (!optionKind(o).isEmpty())
                connect(option, &QRadioButton::clicked, this, [this, k, o] { kindClicked(k, optionKind(o)); });
        }
        r.box = new QLineEdit(panel);
        r.box->setObjectName(QStringLiteral("Text1_") + n);
        r.box->installEventFilter(this);
        r.set = makeButton(panel, QStringLiteral("Command4_") + n, QStringLiteral("設定"));
        r.set->setAutoDefault(false);
        connect(r.set, &QPushButton::clicked, this, [this, k] {
            readRows();
            emit valueRequested(k);
        });
        r.mark = new QLabel(panel);
        r.mark->setObjectName(QStringLiteral("Label5_") + n);
        r.codeCaption = new QLabel(QStringLiteral("Code:"), panel);
        r.codeCaption->setObjectName(QStringLiteral("Label7_") + n);
        r.code = new QLabel(panel);
        r.code->setObjectName(QStringLiteral("Label8_") + n);
        r.wordLabel = new QLabel(panel);
        r.wordLabel->setObjectName(QStringLiteral("Label6_") + n);
        // The word or target label takes a width of its own, not its text's: the rows keep
        // their widths when one appears, as do the controls of a marker, which keep their
        // room in a row of text.
        r.wordLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        r.wordLabel->setMinimumWidth(twips(2400));
        for (QWidget *w : std::initializer_list<QWidget *>{r.set, r.mark, r.codeCaption, r.code, r.wordLabel})
            keepRoomWhenHidden(w);
        int column = 0;
        for (QWidget *w : std::initializer_list<QWidget *>{number, frame, r.box, r.set, r.mark, r.codeCaption, r.code, r.wordLabel})
            grid->addWidget(w, k, column++);
        if (k < kSegments - 1) {
            r.lineBreak = new QCheckBox(QStringLiteral("改行"), panel);
            r.lineBreak->setObjectName(QStringLiteral("Check1_") + n);
            grid->addWidget(r.lineBreak, k, column);
        }
    }
    grid->setColumnStretch(2, 1);
    setWidget(panel);
    showAll();
}

void SegmentPanel::setEditor(dictionary::SegmentEditor *editor)
{
    m_editor = editor;
    showAll();
}

void SegmentPanel::setEditable(bool on)
{
    m_editable = on;
    for (Row &r : m_rows) {
        for (int o = 0; o < int(std::size(kOptions)); ++o)
            r.options[o]->setEnabled(on && !optionKind(o).isEmpty() && m_choosable.contains(optionKind(o)));
        r.box->setReadOnly(!on);
        r.set->setEnabled(on);
        if (r.lineBreak)
            r.lineBreak->setEnabled(on);
    }
}

SegmentRecord SegmentPanel::record(int k) const { return m_editor ? m_editor->segments()[k] : SegmentRecord(); }

void SegmentPanel::showRow(int k)
{
    const SegmentRecord s = record(k);
    Row &r = m_rows[k];
    const bool text = s.kind == SegmentKind::Text;
    for (int o = 0; o < int(std::size(kOptions)); ++o)
        r.options[o]->setChecked(optionKind(o) == s.kind);
    r.box->setVisible(text);
    r.box->setText(s.text);
    r.box->setCursorPosition(0); // a long text shows from its start
    for (QWidget *w : std::initializer_list<QWidget *>{r.set, r.mark, r.codeCaption, r.code})
        w->setVisible(!text);
    // A word shows its default; a reference, where the records give one, its target.
    r.wordLabel->setVisible(!text && s.kind != SegmentKind::BasicWord);
    r.code->setText(s.code);
    r.wordLabel->setText(s.word);
    r.wordLabel->setToolTip(s.word); // whole, where the label cuts it
    r.mark->setText(text ? QString() : s.hasValue ? QStringLiteral("既") : QStringLiteral("未"));
    r.mark->setStyleSheet(s.hasValue ? QStringLiteral("color: blue") : QStringLiteral("color: red"));
    if (k > 0)
        m_rows[k - 1].lineBreak->setChecked(s.lineBreak);
}

void SegmentPanel::showAll()
{
    const bool armed = m_armed;
    m_armed = false;
    for (int k = 0; k < kSegments; ++k)
        showRow(k);
    m_armed = armed;
}

void SegmentPanel::readRows()
{
    if (!m_editor)
        return;
    for (int k = 0; k < kSegments; ++k) {
        SegmentRecord &s = m_editor->segments()[k];
        if (s.kind == SegmentKind::Text)
            s.text = m_rows[k].box->text();
        if (k > 0)
            s.lineBreak = m_rows[k - 1].lineBreak->isChecked();
    }
}

void SegmentPanel::kindClicked(int k, const QString &kind)
{
    if (!m_armed || !m_editor)
        return;
    readRows();
    m_editor->changeKind(uiPrompt(), k, kind);
    // On no the options go back; either way the row shows its record.
    showRow(k);
}

bool SegmentPanel::checkTexts()
{
    for (const Row &r : m_rows) {
        if (r.box->isVisible()
            && !CheckOptionalField(uiPrompt(), r.box->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
            r.box->setFocus();
            return false;
        }
    }
    return true;
}

bool SegmentPanel::eventFilter(QObject *watched, QEvent *event)
{
    // Leaving a text box checks it, unless the focus only went to a list or a menu.
    if (m_editable && event->type() == QEvent::FocusOut && static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason) {
        for (const Row &r : m_rows) {
            if (watched == r.box && r.box->isVisible() && window()->isVisible()
                && !CheckOptionalField(uiPrompt(), r.box->text(), dictionary::kSegmentTextLimit, true, dictionary::kSegmentTextLabel)) {
                r.box->setFocus();
                return true;
            }
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace normaris
