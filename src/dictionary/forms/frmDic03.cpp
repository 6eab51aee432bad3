#include "dictionary/forms/frmDic03.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/Database.h"
#include "dictionary/DictionaryPath.h"
#include "dictionary/forms/SegmentPanel.h"
#include "dictionary/forms/frmDic_bangou.h"
#include "dictionary/forms/frmDic_goku.h"
#include "dictionary/forms/frmDic_kihongoku.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace normaris {

using dictionary::EntryEditor;
using dictionary::LevelEntry;
using dictionary::SegmentEditor;
namespace SegmentKind = dictionary::SegmentKind;

namespace {

// The place codes under the document that the navigator chose, from 章 down to the
// parent of the level.
QStringList chosenParents(Level level)
{
    const AppState &s = AppState::instance();
    const QStringList all = {s.CurShoCode, s.CurJoCode, s.CurKouCode, s.CurGouCode, s.CurMaruCode};
    return all.mid(0, placeDepth(level) - 1);
}

// The note beside the code field: the level's range and the user's part of it.
QString codeNote(Level level)
{
    const LevelInfo &info = levelInfo(level);
    const QString last(info.codeWidth, u'9');
    return QStringLiteral("数字で1～%1（ユーザー設定は%2～%1）").arg(last).arg(info.firstUserCode);
}

} // namespace

frmDic03::frmDic03(QWidget *parent)
    : RecordForm(parent), m_entries(AppState::cn(), AppState::instance().CurBunshoKeishikiCode, AppState::instance().DicKiteiCode,
                                    AppState::instance().CurShubetsu, chosenParents(AppState::instance().CurShubetsu))
{
    const Level level = m_entries.level();
    AppState::instance().CurKiteiCode = m_entries.document();
    setObjectName(QStringLiteral("frmDic03"));
    setWindowTitle(QStringLiteral("「%1」の設定").arg(levelCaption(level)));
    resize(twips(13500), segmented() ? twips(11500) : twips(7800));
    auto *layout = new QVBoxLayout(this);

    // Where the entries stand: the style, the document and the parents, with their codes.
    auto *heading = new QLabel(this);
    heading->setObjectName(QStringLiteral("Label1"));
    QStringList lines{
        scalar(AppState::cn(), QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {m_entries.style()}).toString()};
    dictionary::DictionaryPath path(AppState::cn(), m_entries.style());
    const QStringList place = QStringList{m_entries.document()} + m_entries.parents();
    for (int i = 0; i < place.size(); ++i) {
        const Level above = dictionary::pickerLevel(i);
        QString name;
        for (const CodeAndName &c : path.choices(above, place.mid(0, i)))
            if (c.code == place[i])
                name = c.name;
        lines << QStringLiteral("%1 %2 %3").arg(QString::fromUtf16(levelInfo(above).pickerLabel), place[i], name);
    }
    heading->setText(lines.join(u'\n'));
    layout->addWidget(heading);

    m_grid = new QTableView(this);
    keepRoomWhenHidden(m_grid); // adding and editing hide it; the fields stay where they are
    m_grid->setObjectName(QStringLiteral("DataGrid1"));
    const QStringList headings = {QStringLiteral("Code"), segmented() ? QStringLiteral("文章") : levelCaption(level),
                                  QStringLiteral("正式名称"), QStringLiteral("変更フラグ"), QStringLiteral("区分")};
    m_model = new QStandardItemModel(0, int(headings.size()), this);
    m_model->setHorizontalHeaderLabels(headings);
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->hide();
    const int widths[] = {twips(800), twips(hasFormalName() ? 4000 : 8500), twips(4000), twips(1100), twips(1000)};
    for (int c = 0; c < int(headings.size()); ++c)
        m_grid->setColumnWidth(c, widths[c]);
    m_grid->setColumnHidden(2, !hasFormalName());
    layout->addWidget(m_grid, segmented() ? 2 : 1);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex &index) {
        if (!editing() && index.isValid() && index.row() != m_current)
            moveTo(index.row());
    });

    auto *detail = new QGridLayout;
    const QString labels[3][2] = {{QStringLiteral("Code:"), codeNote(level)},
                                  {QStringLiteral("表示名称:"), QStringLiteral("全角で40字以内")},
                                  {QStringLiteral("正式名称:"), QStringLiteral("全角で40字以内")}};
    const int fields = segmented() ? 1 : hasFormalName() ? 3 : 2;
    for (int i = 0; i < 3; ++i) {
        m_fields[i] = new QLineEdit(this);
        m_fields[i]->setObjectName(QStringLiteral("txtFields_%1").arg(i));
        m_fields[i]->installEventFilter(this);
        if (i >= fields) {
            m_fields[i]->hide();
            continue;
        }
        auto *label = new QLabel(labels[i][0], this);
        label->setObjectName(QStringLiteral("lblLabels_%1").arg(i));
        label->setBuddy(m_fields[i]);
        auto *note = new QLabel(labels[i][1], this);
        note->setObjectName(QStringLiteral("lblNote_%1").arg(i));
        detail->addWidget(label, i, 0);
        detail->addWidget(m_fields[i], i, 1);
        detail->addWidget(note, i, 2);
        if (i > 0)
            showBytes(m_fields[i], 80);
    }
    detail->setColumnStretch(2, 1);
    m_fields[0]->setMaxLength(levelInfo(level).codeWidth);
    m_fields[0]->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), m_fields[0]));
    m_fields[0]->setMaximumWidth(twips(1200));
    layout->addLayout(detail);

    if (segmented()) {
        // Below the 前文 every kind can be chosen: the word dialog and the reference
        // picker stand behind 設定.
        m_panel = new SegmentPanel({SegmentKind::Text, SegmentKind::Word, SegmentKind::Reference, SegmentKind::BasicWord}, this);
        layout->addWidget(m_panel, 3);
        connect(m_panel, &SegmentPanel::valueRequested, this, &frmDic03::setValue);
        auto *notice =
            new QLabel(QStringLiteral("「処理する種別」及び「分割の数」を変更する場合、使用データがあるときは先に「作成・改訂」でこ"
                                      "のデータを外し、変更処理をした後、また追加してください。"),
                       this);
        notice->setObjectName(QStringLiteral("Label30"));
        notice->setWordWrap(true);
        layout->addWidget(notice);
    }

    auto *statusRow = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    statusRow->addWidget(m_status, 1);
    const char *moveNames[] = {"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"};
    const char *moveCaptions[] = {"|<", "<", ">", ">|"};
    for (int i = 0; i < 4; ++i) {
        m_moves[i] = makeButton(this, QString::fromUtf8(moveNames[i]), QString::fromUtf8(moveCaptions[i]));
        m_moves[i]->setAutoDefault(false);
        statusRow->addWidget(m_moves[i]);
    }
    layout->addLayout(statusRow);
    connect(m_moves[0], &QPushButton::clicked, this, [this] { moveTo(0); });
    connect(m_moves[1], &QPushButton::clicked, this, [this] { step(-1); });
    connect(m_moves[2], &QPushButton::clicked, this, [this] { step(1); });
    connect(m_moves[3], &QPushButton::clicked, this, [this] { moveTo(int(m_rows.size()) - 1); });

    auto *buttons = new QHBoxLayout;
    m_add = makeButton(this, QStringLiteral("cmdAdd"), QStringLiteral("追加(&A)"));
    m_edit = makeButton(this, QStringLiteral("cmdEdit"), QStringLiteral("編集(&E)"));
    m_update = makeButton(this, QStringLiteral("cmdUpdate"), QStringLiteral("更新(&U)"));
    m_cancel = makeButton(this, QStringLiteral("cmdCancel"), QStringLiteral("キャンセル(&C)"));
    m_delete = makeButton(this, QStringLiteral("cmdDelete"), QStringLiteral("削除(&D)"));
    m_close = makeButton(this, QStringLiteral("cmdClose"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command1"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_add, m_edit, m_update, m_cancel, m_delete, m_close, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    layout->addLayout(buttons);
    connect(m_add, &QPushButton::clicked, this, [this] { beginEdit(true); });
    connect(m_edit, &QPushButton::clicked, this, [this] { beginEdit(false); });
    connect(m_update, &QPushButton::clicked, this, &frmDic03::save);
    connect(m_cancel, &QPushButton::clicked, this, &frmDic03::cancel);
    connect(m_delete, &QPushButton::clicked, this, &frmDic03::remove);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    installTextBoxBehaviour(this);

    SetButtons(true);
    m_current = 0;
    browse();
    m_grid->setFocus();
    placeOverMainWindow(this);
}

bool frmDic03::segmented() const { return levelInfo(m_entries.level()).segmented; }

// 条 keeps its body in a column of its own (正式名称) beside its name.
bool frmDic03::hasFormalName() const
{
    const LevelInfo &info = levelInfo(m_entries.level());
    return !info.segmented && QString::fromUtf16(info.bodyColumn) != QString::fromUtf16(info.textColumn);
}

void frmDic03::SetButtons(bool browsing)
{
    for (QPushButton *b : {m_add, m_edit, m_delete, m_close})
        b->setVisible(browsing);
    m_update->setVisible(!browsing);
    m_cancel->setVisible(!browsing);
    for (QPushButton *b : m_moves)
        b->setEnabled(browsing);
}

void frmDic03::setFieldsEnabled(bool on)
{
    for (QLineEdit *f : m_fields)
        f->setEnabled(on);
    if (m_panel) {
        m_panel->setEditable(on);
        m_panel->setArmed(on);
    }
}

void frmDic03::browse()
{
    m_rows = m_entries.entries();
    m_model->removeRows(0, m_model->rowCount());
    for (const LevelEntry &e : m_rows) {
        const QString standing = e.standard ? QStringLiteral("標準") : QStringLiteral("ユーザー");
        m_model->appendRow(
            {gridText(e.code), gridText(segmented() ? e.text : e.name), gridText(e.formalName), gridFlag(e.changed), gridText(standing)});
    }
    setFieldsEnabled(false);
    const bool rows = !m_rows.isEmpty();
    m_edit->setEnabled(rows);
    m_delete->setEnabled(rows);
    for (QPushButton *b : m_moves)
        b->setEnabled(rows);
    m_grid->setVisible(true);
    m_current = rows ? qBound(0, m_current, int(m_rows.size()) - 1) : -1;
    showRecord();
}

void frmDic03::showRecord()
{
    const bool onRow = m_current >= 0 && m_current < m_rows.size();
    const LevelEntry e = onRow ? m_rows[m_current] : LevelEntry();
    m_fields[0]->setText(e.code);
    m_fields[1]->setText(e.name);
    m_fields[2]->setText(e.formalName);
    m_status->setText(QStringLiteral("Record: ") + QString::number(m_current + 1));
    if (onRow)
        m_grid->selectRow(m_current);
    if (segmented())
        openSegments(onRow ? e.code : QString());
}

// The clause of that code in the segment panel; none for an empty code.
void frmDic03::openSegments(const QString &code)
{
    m_panel->setEditor(nullptr);
    m_segments.reset();
    if (code.isEmpty())
        return;
    m_segments = std::make_unique<SegmentEditor>(AppState::cn(), m_entries.placeOf(code), m_entries.documentKind());
    m_segments->open(uiPrompt());
    m_panel->setEditor(m_segments.get());
}

void frmDic03::beginEdit(bool adding)
{
    m_grid->setVisible(false);
    m_savedBookmark = m_current;
    m_addNewFlag = adding;
    m_editFlag = !adding;
    m_saved = adding || m_current < 0 ? LevelEntry() : m_rows[m_current];
    if (adding) {
        for (QLineEdit *f : m_fields)
            f->clear();
    }
    m_status->setText(adding ? QStringLiteral("ﾚｺｰﾄﾞを追加します。") : QStringLiteral("ﾚｺｰﾄﾞを編集します。"));
    SetButtons(false);
    setFieldsEnabled(true);
    if (adding && segmented()) {
        // A new clause takes its segments once its code has fixed its place.
        openSegments(QString());
        m_panel->setEditable(false);
    }
    m_fields[0]->setFocus();
}

bool frmDic03::acceptNewClauseCode()
{
    if (m_segments)
        return true;
    if (!checkField(m_fields[0]))
        return false;
    openSegments(m_fields[0]->text());
    m_fields[0]->setReadOnly(true);
    m_panel->setEditable(true);
    m_panel->setArmed(true);
    return true;
}

bool frmDic03::eventFilter(QObject *watched, QEvent *event)
{
    // Moving on by the keyboard checks the field left; a refused value keeps the focus.
    // (A click on キャンセル must still get through, so the mouse does not check here; 更新 does.)
    if (editing() && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        auto *field = qobject_cast<QLineEdit *>(watched);
        if (field && (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)) {
            const bool ok = m_addNewFlag && segmented() && field == m_fields[0] ? acceptNewClauseCode() : checkField(field);
            if (!ok) {
                field->setFocus();
                return true;
            }
        }
    }
    if (editing() && event->type() == QEvent::FocusIn && watched == m_fields[2] && m_fields[2]->text().isEmpty()
        && !m_fields[1]->text().isEmpty())
        m_fields[2]->setText(m_fields[1]->text());
    return QDialog::eventFilter(watched, event);
}

bool frmDic03::checkField(QLineEdit *field)
{
    if (field == m_fields[0]) {
        QString code = field->text();
        const bool ok =
            m_entries.checkCode(uiPrompt(), code, m_addNewFlag ? EntryEditor::Mode::Add : EntryEditor::Mode::Edit, m_saved.code);
        field->setText(code);
        return ok;
    }
    return field == m_fields[1] ? EntryEditor::checkName(uiPrompt(), field->text())
                                : EntryEditor::checkFormalName(uiPrompt(), field->text());
}

LevelEntry frmDic03::entered() const
{
    LevelEntry e = m_saved;
    e.code = m_fields[0]->text();
    e.name = m_fields[1]->text();
    e.formalName = m_fields[2]->text();
    return e;
}

void frmDic03::save()
{
    Outcome outcome;
    if (segmented()) {
        outcome = saveClause();
    } else {
        // The fields in order, as the keyboard checks them: a refused standard code goes back.
        for (QLineEdit *field : m_fields) {
            if (!field->isHidden() && !checkField(field)) {
                field->setFocus();
                return;
            }
        }
        BusyCursor busy;
        outcome = m_entries.updateHeading(uiPrompt(), m_addNewFlag ? EntryEditor::Mode::Add : EntryEditor::Mode::Edit, m_saved, entered());
    }
    if (outcome != Outcome::Done) {
        if (m_panel)
            m_panel->showAll();
        return;
    }
    const QString code = m_fields[0]->text();
    m_editFlag = m_addNewFlag = false;
    m_fields[0]->setReadOnly(false);
    SetButtons(true);
    m_rows = m_entries.entries();
    // The saved entry is the current one, wherever its code sorts.
    m_current = m_savedBookmark >= 0 ? m_savedBookmark : 0;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].code == code)
            m_current = i;
    }
    browse();
}

// 更新 of a clause: a new one is written with its segments; an edited one has its
// segments written anew and, when its code changed, the code carried, in one step.
Outcome frmDic03::saveClause()
{
    if (m_addNewFlag && !acceptNewClauseCode())
        return Outcome::Stopped;
    if (!m_panel->checkTexts())
        return Outcome::Stopped;
    m_panel->readRows();
    BusyCursor busy;
    if (m_addNewFlag)
        return m_entries.addClause(uiPrompt(), *m_segments);
    QString code = m_fields[0]->text();
    if (code != m_saved.code && !m_entries.checkCode(uiPrompt(), code, EntryEditor::Mode::Edit, m_saved.code)) {
        m_fields[0]->setText(code);
        return Outcome::Stopped;
    }
    return m_entries.updateClause(uiPrompt(), *m_segments, code);
}

void frmDic03::cancel()
{
    m_editFlag = m_addNewFlag = false;
    m_fields[0]->setReadOnly(false);
    SetButtons(true);
    m_current = m_savedBookmark >= 0 ? m_savedBookmark : 0;
    browse();
}

void frmDic03::remove()
{
    if (m_current < 0)
        return;
    // The panel lets go of the clause's work tables before the delete.
    if (m_panel)
        openSegments(QString());
    const Outcome outcome = m_entries.remove(uiPrompt(), m_rows[m_current].code);
    if (outcome == Outcome::Done && m_current >= m_rows.size() - 1)
        --m_current; // past the end: the last row
    browse();
}

// 設定 of segment k: the dialog of its kind, then the row shows what it left.
void frmDic03::setValue(int k)
{
    if (!m_segments)
        return;
    const QString kind = m_segments->segments()[k].kind;
    if (kind == SegmentKind::Word) {
        frmDic_goku dialog(*m_segments, k, this);
        dialog.exec();
    } else if (kind == SegmentKind::Reference) {
        frmDic_bangou dialog(*m_segments, k, this);
        dialog.exec();
    } else if (kind == SegmentKind::BasicWord) {
        const QString number = QString::number(k + 1);
        QString code = m_segments->segments()[k].code;
        QString word;
        frmDic_kihongoku dialog(number, code, word, this, m_entries.level());
        if (dialog.exec() == QDialog::Accepted || !code.isEmpty())
            m_segments->setChosenValue(k, code, word);
    }
    placeOverMainWindow(this);
    m_panel->showAll();
}

} // namespace normaris
