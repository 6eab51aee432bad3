#include "dictionary/forms/frmDic01.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "dictionary/DictionaryMessages.h"
#include "dictionary/forms/frmDic02.h"
#include "dictionary/forms/frmDic02_2.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace normaris {

using dictionary::DocumentMaster;
using dictionary::DocumentRecord;

namespace {

// The grid's columns: what each shows and its width in twips (0 hides it).
struct GridColumn {
    const char *heading;
    int width;
};
const GridColumn kGridColumns[] = {{"Code", 525},   {"規程", 6120},      {"変更フラグ", 900},
                                   {"正式名称", 0}, {"選択フラグ", 900}, {"文章種別", 0}};

} // namespace

frmDic01::frmDic01(QWidget *parent) : RecordForm(parent), m_master(AppState::cn(), AppState::instance().CurBunshoKeishikiCode)
{
    setObjectName(QStringLiteral("frmDic01"));
    setWindowTitle(QStringLiteral("「規則・規程・協定」の設定"));
    resize(twips(10500), twips(7800));
    auto *layout = new QVBoxLayout(this);
    m_grid = new QTableView(this);
    keepRoomWhenHidden(m_grid); // adding and editing hide it; the fields stay where they are
    m_grid->setObjectName(QStringLiteral("DataGrid1"));
    m_model = new QStandardItemModel(0, int(std::size(kGridColumns)), this);
    for (int c = 0; c < int(std::size(kGridColumns)); ++c)
        m_model->setHeaderData(c, Qt::Horizontal, QString::fromUtf8(kGridColumns[c].heading));
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->hide();
    for (int c = 0; c < int(std::size(kGridColumns)); ++c) {
        m_grid->setColumnWidth(c, twips(kGridColumns[c].width));
        m_grid->setColumnHidden(c, kGridColumns[c].width == 0);
    }
    layout->addWidget(m_grid, 1);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex &index) {
        if (!editing() && index.isValid() && index.row() != m_current)
            moveTo(index.row());
    });

    auto *detail = new QGridLayout;
    const char *labels[3][2] = {
        {"Code:", "数字で1～99（ユーザー設定は70～99）"}, {"表示名称:", "全角で40字以内"}, {"正式名称:", "全角で40字以内"}};
    for (int i = 0; i < 3; ++i) {
        auto *label = new QLabel(QString::fromUtf8(labels[i][0]), this);
        label->setObjectName(QStringLiteral("lblLabels_%1").arg(i));
        m_fields[i] = new QLineEdit(this);
        m_fields[i]->setObjectName(QStringLiteral("txtFields_%1").arg(i));
        m_fields[i]->installEventFilter(this);
        auto *note = new QLabel(QString::fromUtf8(labels[i][1]), this);
        note->setObjectName(QStringLiteral("lblNote_%1").arg(i));
        detail->addWidget(label, i, 0);
        detail->addWidget(m_fields[i], i, 1);
        detail->addWidget(note, i, 2);
    }
    m_fields[0]->setMaxLength(2);
    m_fields[0]->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), m_fields[0]));
    m_fields[0]->setMaximumWidth(twips(900));
    m_changed = new QCheckBox(QStringLiteral("変更"), this);
    m_changed->setObjectName(QStringLiteral("Check1"));
    m_selected = new QCheckBox(QStringLiteral("選択"), this);
    m_selected->setObjectName(QStringLiteral("Check3"));
    m_selected->setEnabled(false);
    detail->addWidget(m_changed, 0, 3);
    detail->addWidget(m_selected, 1, 3);
    auto *kindFrame = new QGroupBox(QStringLiteral("【文章種別】"), this);
    kindFrame->setObjectName(QStringLiteral("Frame1"));
    auto *kinds = new QHBoxLayout(kindFrame);
    const char *kindCaptions[] = {"規則・規程", "協約・協定"};
    for (int i = 0; i < 2; ++i) {
        m_kind[i] = new QRadioButton(QString::fromUtf8(kindCaptions[i]), kindFrame);
        m_kind[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
        kinds->addWidget(m_kind[i]);
    }
    detail->addWidget(kindFrame, 2, 3);
    layout->addLayout(detail);

    auto *statusRow = new QHBoxLayout;
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_preambleMark = new QLabel(dictionary::kPreambleMarkText, this);
    m_preambleMark->setObjectName(QStringLiteral("Label6"));
    statusRow->addWidget(m_preambleMark);
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
    m_preamble = makeButton(this, QStringLiteral("Command2"), QStringLiteral("前文の編集(&E)"));
    keepRoomWhenHidden(m_preamble);
    QPushButton *help = makeButton(this, QStringLiteral("Command1"), QStringLiteral("ヘルプ(&H)"));
    for (QPushButton *b : {m_add, m_edit, m_update, m_cancel, m_delete, m_close, m_preamble, help}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    layout->addLayout(buttons);
    connect(m_add, &QPushButton::clicked, this, [this] { beginEdit(true); });
    connect(m_edit, &QPushButton::clicked, this, [this] { beginEdit(false); });
    connect(m_update, &QPushButton::clicked, this, &frmDic01::save);
    connect(m_cancel, &QPushButton::clicked, this, &frmDic01::cancel);
    connect(m_delete, &QPushButton::clicked, this, &frmDic01::remove);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_preamble, &QPushButton::clicked, this, &frmDic01::editPreamble);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    installTextBoxBehaviour(this);

    SetButtons(true);
    m_current = 0;
    browse();
    placeOverMainWindow(this);
}

void frmDic01::SetButtons(bool browsing)
{
    for (QPushButton *b : {m_add, m_edit, m_delete, m_close})
        b->setVisible(browsing);
    m_update->setVisible(!browsing);
    m_cancel->setVisible(!browsing);
    for (QPushButton *b : m_moves)
        b->setEnabled(browsing);
}

void frmDic01::setFieldsEnabled(bool on)
{
    for (QLineEdit *f : m_fields)
        f->setEnabled(on);
    for (QRadioButton *o : m_kind)
        o->setEnabled(on);
    m_changed->setEnabled(false);
}

void frmDic01::browse()
{
    m_rows = m_master.documents();
    m_model->removeRows(0, m_model->rowCount());
    for (const DocumentRecord &r : m_rows) {
        m_model->appendRow(
            {gridText(r.code), gridText(r.name), gridFlag(r.changed), gridText(r.formalName), gridFlag(r.selected), gridText(r.kind)});
    }
    setFieldsEnabled(false);
    const bool rows = !m_rows.isEmpty();
    m_edit->setEnabled(rows);
    m_delete->setEnabled(rows);
    for (QPushButton *b : m_moves)
        b->setEnabled(rows);
    m_grid->setVisible(true);
    m_preamble->setVisible(true);
    m_current = rows ? qBound(0, m_current, int(m_rows.size()) - 1) : -1;
    showRecord();
}

void frmDic01::showRecord()
{
    const bool onRow = m_current >= 0 && m_current < m_rows.size();
    const DocumentRecord r = onRow ? m_rows[m_current] : DocumentRecord();
    m_fields[0]->setText(r.code);
    m_fields[1]->setText(r.name);
    m_fields[2]->setText(r.formalName);
    m_changed->setChecked(r.changed);
    m_selected->setChecked(r.selected);
    m_kind[0]->setChecked(r.kind == u"1");
    m_kind[1]->setChecked(r.kind == u"2");
    m_status->setText(QStringLiteral("Record: ") + QString::number(m_current + 1));
    if (onRow) {
        AppState::instance().CurKiteiCode = r.code;
        m_grid->selectRow(m_current);
    }
    m_preambleMark->setVisible(onRow && m_master.hasPreamble(r.code));
}

void frmDic01::beginEdit(bool adding)
{
    m_grid->setVisible(false);
    m_savedBookmark = m_current;
    m_addNewFlag = adding;
    m_editFlag = !adding;
    m_saved = adding || m_current < 0 ? DocumentRecord() : m_rows[m_current];
    if (adding) {
        for (QLineEdit *f : m_fields)
            f->clear();
        m_changed->setChecked(false);
        m_selected->setChecked(false);
        m_kind[0]->setChecked(false);
        m_kind[1]->setChecked(false);
    }
    m_status->setText(adding ? QStringLiteral("ﾚｺｰﾄﾞを追加します。") : QStringLiteral("ﾚｺｰﾄﾞを編集します。"));
    SetButtons(false);
    setFieldsEnabled(true);
    m_preamble->setVisible(false);
    if (adding)
        m_preambleMark->setVisible(false);
    m_fields[0]->setFocus();
}

bool frmDic01::eventFilter(QObject *watched, QEvent *event)
{
    // Moving on by the keyboard checks the field left; a refused value keeps the focus.
    // (A click on キャンセル must still get through, so the mouse does not check here; 更新 does.)
    if (editing() && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        auto *field = qobject_cast<QLineEdit *>(watched);
        if (field && (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) && !checkField(field)) {
            field->setFocus();
            return true;
        }
    }
    if (editing() && event->type() == QEvent::FocusIn && watched == m_fields[2] && m_fields[2]->text().isEmpty()
        && !m_fields[1]->text().isEmpty())
        m_fields[2]->setText(m_fields[1]->text());
    return QDialog::eventFilter(watched, event);
}

bool frmDic01::checkField(QLineEdit *field)
{
    if (field == m_fields[0]) {
        QString code = field->text();
        const bool ok =
            m_master.checkCode(uiPrompt(), code, m_addNewFlag ? DocumentMaster::Mode::Add : DocumentMaster::Mode::Edit, m_saved.code);
        field->setText(code);
        return ok;
    }
    return field == m_fields[1] ? DocumentMaster::checkName(uiPrompt(), field->text())
                                : DocumentMaster::checkFormalName(uiPrompt(), field->text());
}

DocumentRecord frmDic01::entered() const
{
    DocumentRecord r = m_saved;
    r.code = m_fields[0]->text();
    if (r.code.size() == 1)
        r.code.prepend(u'0');
    r.name = m_fields[1]->text();
    r.formalName = m_fields[2]->text();
    r.changed = m_changed->isChecked();
    r.kind = m_kind[1]->isChecked() ? QStringLiteral("2") : QStringLiteral("1");
    return r;
}

void frmDic01::save()
{
    const DocumentRecord r = entered();
    Outcome outcome;
    {
        BusyCursor busy;
        AppState::instance().CompanyName = AppState::instance().companyPanel();
        outcome = m_master.update(uiPrompt(), m_addNewFlag ? DocumentMaster::Mode::Add : DocumentMaster::Mode::Edit, m_saved, r);
    }
    if (outcome != Outcome::Done) {
        // The field that a check refused takes the focus.
        for (QLineEdit *f : m_fields) {
            if (f->text().isEmpty()) {
                f->setFocus();
                break;
            }
        }
        return;
    }
    const bool added = m_addNewFlag;
    m_editFlag = m_addNewFlag = false;
    SetButtons(true);
    m_rows = m_master.documents();
    m_current = m_savedBookmark >= 0 ? m_savedBookmark : 0;
    if (!added) {
        // An edited row stays the current one, wherever its code now sorts.
        for (int i = 0; i < m_rows.size(); ++i) {
            if (m_rows[i].code == r.code)
                m_current = i;
        }
    }
    browse();
}

void frmDic01::cancel()
{
    m_editFlag = m_addNewFlag = false;
    SetButtons(true);
    m_current = m_savedBookmark >= 0 ? m_savedBookmark : 0;
    browse();
}

void frmDic01::remove()
{
    if (m_current < 0)
        return;
    m_grid->setVisible(false);
    const Outcome outcome = m_master.remove(uiPrompt(), m_rows[m_current].code);
    if (outcome == Outcome::Done && m_current >= m_rows.size() - 1)
        --m_current; // past the end: the last row
    browse();
}

void frmDic01::editPreamble()
{
    if (m_current < 0)
        return;
    AppState &state = AppState::instance();
    state.CurKiteiCode = m_fields[0]->text();
    state.CurBunshoShubetsu = m_rows[m_current].kind;
    if (state.CurKiteiCode.toInt() < levelInfo(Level::Document).firstUserCode) {
        frmDic02 editor(this);
        editor.exec();
    } else {
        frmDic02_2 editor(this);
        editor.exec();
    }
    placeOverMainWindow(this);
    browse();
}

} // namespace normaris
