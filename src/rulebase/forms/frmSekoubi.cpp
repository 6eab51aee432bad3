#include "rulebase/forms/frmSekoubi.h"

#include "rulebase/JapaneseDate.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace normaris {

frmSekoubi::frmSekoubi(QWidget *parent) : QDialog(parent), m_dates(AppState::cn(), AppState::instance().CurKiteiCode)
{
    setObjectName(QStringLiteral("frmSekoubi"));
    setWindowTitle(QStringLiteral("日付の設定"));
    const AppState &state = AppState::instance();
    auto *outer = new QVBoxLayout(this);
    const QString name = m_dates.documentName(state.CurBunshoKeishikiCode);
    const QString style = m_dates.styleName(state.CurBunshoKeishikiCode);
    auto *label1 = new QLabel(name, this);
    label1->setObjectName(QStringLiteral("Label1"));
    outer->addWidget(label1);
    outer->addWidget(new QLabel(QStringLiteral("文章形式: ") + style, this));

    m_grid = new QTableWidget(0, 1, this);
    m_grid->setObjectName(QStringLiteral("DataGrid1"));
    m_grid->setHorizontalHeaderLabels({QStringLiteral("年月日")});
    m_grid->setColumnWidth(0, twips(1500));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->verticalHeader()->hide();
    outer->addWidget(m_grid, 1);

    auto *entry = new QHBoxLayout;
    m_date = new QLineEdit(this);
    m_date->setObjectName(QStringLiteral("Text1"));
    m_date->installEventFilter(this);
    entry->addWidget(m_date);
    entry->addWidget(new QLabel(QStringLiteral("入力例： 2009/1/1"), this));
    outer->addLayout(entry);
    for (const char *note :
         {"【規則・規程】 一番古い日付は「新規作成年月日」、その後追加した日付は「改訂年月日」となります。",
          "【協約・協定】 日付は「有効期間起算日」です。複数の日付を設定した場合は、一番新しい日付のみ有効となります。"}) {
        auto *l = new QLabel(QString::fromUtf8(note), this);
        l->setWordWrap(true);
        outer->addWidget(l);
    }
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    outer->addWidget(m_status);

    auto *moves = new QHBoxLayout;
    const std::pair<const char *, const char *> moveButtons[] = {
        {"cmdFirst", "|<"}, {"cmdPrevious", "<"}, {"cmdNext", ">"}, {"cmdLast", ">|"}};
    for (const auto &[objectName, caption] : moveButtons) {
        QPushButton *b = makeButton(this, QString::fromUtf8(objectName), QString::fromUtf8(caption));
        b->setAutoDefault(false);
        moves->addWidget(b);
        m_moves << b;
    }
    outer->addLayout(moves);
    connect(m_moves[0], &QPushButton::clicked, this, [this] { moveTo(0); });
    connect(m_moves[1], &QPushButton::clicked, this, [this] { moveTo(m_grid->currentRow() - 1); });
    connect(m_moves[2], &QPushButton::clicked, this, [this] { moveTo(m_grid->currentRow() + 1); });
    connect(m_moves[3], &QPushButton::clicked, this, [this] { moveTo(int(m_rows.size()) - 1); });

    auto *buttons = new QHBoxLayout;
    m_add = makeButton(this, QStringLiteral("cmdAdd"), QStringLiteral("追加(&A)"));
    m_edit = makeButton(this, QStringLiteral("cmdEdit"), QStringLiteral("編集(&E)"));
    m_update = makeButton(this, QStringLiteral("cmdUpdate"), QStringLiteral("更新(&U)"));
    m_cancel = makeButton(this, QStringLiteral("cmdCancel"), QStringLiteral("キャンセル(&C)"));
    m_delete = makeButton(this, QStringLiteral("cmdDelete"), QStringLiteral("削除(&D)"));
    m_close = makeButton(this, QStringLiteral("cmdClose"), QStringLiteral("閉じる(&L)"));
    for (QPushButton *b : {m_add, m_edit, m_update, m_cancel, m_delete, m_close}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    outer->addLayout(buttons);
    connect(m_add, &QPushButton::clicked, this, &frmSekoubi::add);
    connect(m_edit, &QPushButton::clicked, this, &frmSekoubi::edit);
    connect(m_update, &QPushButton::clicked, this, &frmSekoubi::commit);
    connect(m_cancel, &QPushButton::clicked, this, &frmSekoubi::cancel);
    connect(m_delete, &QPushButton::clicked, this, &frmSekoubi::remove);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_grid, &QTableWidget::currentCellChanged, this,
            [this](int row) { m_status->setText(row >= 0 ? QStringLiteral("Record: %1").arg(row + 1) : QString()); });

    // The buttons that come and go with the dates keep their room: the form keeps its width.
    for (QPushButton *b : std::initializer_list<QPushButton *>{m_edit, m_delete, m_moves[0], m_moves[1], m_moves[2], m_moves[3]})
        keepRoomWhenHidden(b);
    reload();
    setMode(Mode::Browsing);
    placeOverMainWindow(this);
}

qint64 frmSekoubi::currentId() const
{
    const int row = m_grid->currentRow();
    return row >= 0 && row < m_rows.size() ? m_rows[row].id : 0;
}

void frmSekoubi::reload(std::optional<qint64> select)
{
    m_rows = m_dates.list();
    m_grid->setRowCount(int(m_rows.size()));
    int selected = 0;
    for (int i = 0; i < m_rows.size(); ++i) {
        m_grid->setItem(i, 0, new QTableWidgetItem(displayDate(m_rows[i].date)));
        if (select && m_rows[i].id == *select)
            selected = i;
    }
    if (!m_rows.isEmpty())
        m_grid->setCurrentCell(selected, 0);
}

void frmSekoubi::setMode(Mode mode)
{
    m_mode = mode;
    const bool browsing = mode == Mode::Browsing;
    const bool hasRows = !m_rows.isEmpty();
    m_update->setEnabled(!browsing);
    m_cancel->setEnabled(!browsing);
    m_add->setEnabled(browsing);
    m_close->setEnabled(browsing);
    m_edit->setEnabled(browsing);
    m_delete->setEnabled(browsing);
    m_edit->setVisible(hasRows);
    m_delete->setVisible(hasRows);
    for (QPushButton *b : m_moves)
        b->setVisible(browsing && hasRows);
    m_grid->setEnabled(browsing);
    m_date->setVisible(!browsing);
    if (browsing)
        m_status->setText(hasRows ? QStringLiteral("Record: %1").arg(m_grid->currentRow() + 1) : QString());
}

void frmSekoubi::moveTo(int row)
{
    if (m_rows.isEmpty())
        return;
    if (row < 0 || row >= m_rows.size()) {
        QApplication::beep();
        row = qBound(0, row, int(m_rows.size()) - 1);
    }
    m_grid->setCurrentCell(row, 0);
}

void frmSekoubi::add()
{
    m_bookmark = currentId();
    m_date->clear();
    setMode(Mode::Adding);
    m_status->setText(QStringLiteral("ﾚｺｰﾄﾞを追加します。"));
    m_date->setFocus();
}

void frmSekoubi::edit()
{
    m_bookmark = currentId();
    if (!m_bookmark)
        return;
    m_date->setText(m_grid->item(m_grid->currentRow(), 0)->text());
    setMode(Mode::Editing);
    m_status->setText(QStringLiteral("ﾚｺｰﾄﾞを編集します。"));
    m_date->setFocus();
    SelectAllText(m_date);
}

void frmSekoubi::commit()
{
    if (m_date->text().trimmed().isEmpty() && m_rows.isEmpty())
        return;
    qint64 changed = m_bookmark;
    Outcome outcome = Outcome::Failed;
    {
        BusyCursor busy;
        outcome = m_mode == Mode::Adding ? m_dates.addStep(uiPrompt(), AppState::instance().CurBunshoKeishikiCode, m_date->text(), &changed)
                                         : m_dates.changeStep(uiPrompt(), m_bookmark, m_date->text());
    }
    if (outcome == Outcome::Stopped) {
        m_date->setFocus(); // a wrong date: the entry stays open
        return;
    }
    reload(changed);
    setMode(Mode::Browsing);
}

void frmSekoubi::cancel()
{
    m_date->clear();
    reload(m_bookmark);
    setMode(Mode::Browsing);
}

void frmSekoubi::remove()
{
    const int row = m_grid->currentRow();
    if (row < 0)
        return;
    const qint64 id = m_rows[row].id;
    const std::optional<qint64> next = row + 1 < m_rows.size() ? std::optional(m_rows[row + 1].id)
                                       : row > 0               ? std::optional(m_rows[row - 1].id)
                                                               : std::nullopt;
    if (m_dates.removeStep(uiPrompt(), id, m_grid->item(row, 0)->text()) == Outcome::Stopped)
        return;
    reload(next);
    setMode(Mode::Browsing);
}

bool frmSekoubi::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_date && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (EffectiveDates::checkDate(uiPrompt(), m_date->text()))
                m_update->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmSekoubi::keyPressEvent(QKeyEvent *event)
{
    if (m_mode != Mode::Browsing) {
        if (event->key() == Qt::Key_Escape)
            return cancel();
        return QDialog::keyPressEvent(event);
    }
    const bool ctrl = event->modifiers() & Qt::ControlModifier;
    const int last = int(m_rows.size()) - 1;
    switch (event->key()) {
    case Qt::Key_Escape: accept(); return;
    case Qt::Key_End: moveTo(last); return;
    case Qt::Key_Home: moveTo(0); return;
    case Qt::Key_Up:
    case Qt::Key_PageUp: moveTo(ctrl ? 0 : m_grid->currentRow() - 1); return;
    case Qt::Key_Down:
    case Qt::Key_PageDown: moveTo(ctrl ? last : m_grid->currentRow() + 1); return;
    default: QDialog::keyPressEvent(event);
    }
}

} // namespace normaris
