#include "composition/forms/CompositionPanel.h"

#include "composition/Panels.h"

#include <QComboBox>
#include <QHeaderView>

namespace normaris {

namespace {

// The four level colours, in order of the levels of each panel (given as blue-green-red).
QColor levelColour(int place)
{
    static const QColor colours[] = {QColor(0xFF, 0xC0, 0xC0), QColor(0xFF, 0xE0, 0xC0), QColor(0xFF, 0xFF, 0xC0), QColor(0xC0, 0xFF, 0xC0)};
    return colours[qBound(0, place, 3)];
}

int colourPlace(Level level, bool paragraphLevels)
{
    if (paragraphLevels)
        return clauseDepth(level);
    switch (level) {
    case Level::Document: return 0;
    case Level::Preamble: return 1;
    case Level::Chapter: return 2;
    default: return 3;
    }
}

} // namespace

PanelModel::PanelModel(QList<PanelRow> rows, bool paragraphLevels, QObject *parent)
    : QAbstractTableModel(parent), m_rows(std::move(rows)), m_paragraphLevels(paragraphLevels)
{
}

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
    case Qt::BackgroundRole:
        if (index.column() == Caption)
            return levelColour(colourPlace(row.level, m_paragraphLevels));
        return {};
    case Qt::FontRole:
        if (index.column() == Caption && (row.level == Level::Maru || row.level == Level::Iroha)) {
            QFont small;
            small.setPointSize(7);
            return small;
        }
        return {};
    case Qt::TextAlignmentRole:
        return index.column() == Caption ? QVariant(Qt::AlignCenter) : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
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

CompositionPanel::CompositionPanel(QList<PanelRow> rows, bool paragraphLevels, int visibleRows,
                                   std::function<QList<CodeAndName>(Level)> actions, QWidget *parent)
    : QTableView(parent), m_model(new PanelModel(std::move(rows), paragraphLevels, this)), m_actions(std::move(actions))
{
    setObjectName(QStringLiteral("Picture1"));
    setModel(m_model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    horizontalHeader()->setSectionResizeMode(Text, QHeaderView::Stretch);
    setColumnWidth(Caption, 70);
    setColumnWidth(Code, 50);
    setColumnWidth(Action, 230);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    // The scroll bar appears only past the rows the panel shows at once.
    const int shown = qMin(visibleRows, qMax(1, m_model->rowCount()));
    setMinimumHeight(horizontalHeader()->sizeHint().height() + shown * verticalHeader()->defaultSectionSize() + 4);
    setVerticalScrollBarPolicy(m_model->rowCount() > visibleRows ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex &current) { selectRow(current.row()); });
    if (m_model->rowCount() > 0)
        selectRow(0);
}

void CompositionPanel::selectRow(int row)
{
    if (row == m_selected || row < 0 || row >= m_model->rowCount())
        return;
    if (m_selected >= 0)
        setIndexWidget(m_model->index(m_selected, PanelModel::Action), nullptr);
    m_selected = row;
    QTableView::selectRow(row);
    // Only the selected row offers its actions, none chosen yet.
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
