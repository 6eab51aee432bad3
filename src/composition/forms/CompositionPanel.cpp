#include "composition/forms/CompositionPanel.h"

#include "composition/Panels.h"

#include <QComboBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>

namespace normaris {

namespace {

// A page of the scroll bar moves six rows, however many rows are on view.
constexpr int kRowsPerPage = 6;

} // namespace

PanelModel::PanelModel(QList<PanelRow> rows, QObject *parent) : QAbstractTableModel(parent), m_rows(std::move(rows)) {}

int PanelModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_rows.size()); }
int PanelModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant PanelModel::data(const QModelIndex &index, int role) const
{
    const PanelRow &row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == Caption)
            return panelCaption(row.level);
        if (index.column() == Code)
            return panelCode(row);
        if (index.column() == Text)
            return row.text;
        return {};
    case Qt::ToolTipRole:
        // A long text is cut at the column's edge: the tip shows it whole.
        return index.column() == Text ? QVariant(row.text) : QVariant();
    case Qt::BackgroundRole:
        if (index.column() == Caption)
            return QColor::fromRgb(levelInfo(row.level).panelColour);
        return {};
    case Qt::FontRole:
        // The two captions of the sub-item levels are long and take a smaller type.
        if (index.column() == Caption && (row.level == Level::Maru || row.level == Level::Iroha)) {
            QFont small;
            small.setPointSize(7);
            return small;
        }
        return {};
    case Qt::TextAlignmentRole: return index.column() == Caption ? QVariant(Qt::AlignCenter) : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default: return {};
    }
}

QVariant PanelModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Caption: return QStringLiteral("区分");
    case Code: return QStringLiteral("Code");
    case Text: return QStringLiteral("内容");
    default: return QStringLiteral("処理");
    }
}

CompositionPanel::CompositionPanel(QList<PanelRow> rows, int visibleRows, Actions actions, QWidget *parent)
    : QTableView(parent), m_model(new PanelModel(std::move(rows), this)), m_actions(std::move(actions))
{
    setObjectName(QStringLiteral("Picture1"));
    setModel(m_model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 12);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(PanelModel::Text, QHeaderView::Stretch);
    setColumnWidth(PanelModel::Caption, 64);
    setColumnWidth(PanelModel::Code, 56);
    setColumnWidth(PanelModel::Action, 300);
    // A long text is cut at the column's width rather than widening the row.
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // Exactly visibleRows rows fit at the form's own size, so that the scroll range is the
    // rows beyond them; a larger window shows more rows and scrolls less.
    m_heightOfLinesOnView =
        2 * frameWidth() + horizontalHeader()->sizeHint().height() + visibleRows * verticalHeader()->defaultSectionSize();
    setMinimumHeight(m_heightOfLinesOnView);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumWidth(860);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { chooseRow(current.row()); });
    if (m_model->rowCount() > 0)
        chooseRow(0);
}

QSize CompositionPanel::sizeHint() const { return {minimumWidth(), m_heightOfLinesOnView}; }

void CompositionPanel::bringBack(int row)
{
    if (m_model->rowCount() == 0)
        return;
    chooseRow(qBound(0, row, m_model->rowCount() - 1));
    scrollTo(m_model->index(m_selected, 0), PositionAtCenter);
}

void CompositionPanel::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    // The view knows its height only now: keep the chosen row in view.
    if (m_selected > 0)
        QTimer::singleShot(0, this, [this] { scrollTo(m_model->index(m_selected, 0), PositionAtCenter); });
}

void CompositionPanel::updateGeometries()
{
    QTableView::updateGeometries();
    verticalScrollBar()->setPageStep(kRowsPerPage);
}

void CompositionPanel::chooseRow(int row)
{
    if (row == m_selected || row < 0 || row >= m_model->rowCount())
        return;
    if (m_combo) {
        // The view deletes the old list later, and later may be only after the form's
        // modal loop: meanwhile it must be neither found by name nor seen.
        QComboBox *old = m_combo;
        old->setObjectName(QString());
        setIndexWidget(m_model->index(m_selected, PanelModel::Action), nullptr);
        old->hide();
        m_combo = nullptr;
    }
    m_selected = row;
    selectRow(row);
    m_combo = new QComboBox(this);
    m_combo->setObjectName(QStringLiteral("DataCombo1"));
    for (const CodeAndName &a : m_actions(m_model->rows().at(row).level))
        m_combo->addItem(a.name, a.code);
    m_combo->setCurrentIndex(-1);
    setIndexWidget(m_model->index(row, PanelModel::Action), m_combo);
}

QString CompositionPanel::chosenAction() const
{
    return m_combo && m_combo->currentIndex() >= 0 ? m_combo->currentData().toString() : QString();
}

} // namespace normaris
