#pragma once
// The row panel of the composition forms: one line per composition row with its
// level caption in the level's colour, its code and its text, and the list of
// actions on the selected row only.

#include "base/CodeAndName.h"
#include "composition/PositionRules.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <functional>

class QComboBox;

namespace normaris {

class PanelModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Caption, Code, Text, Action, ColumnCount };
    // Each level's caption takes the level's colour from the level table.
    PanelModel(QList<PanelRow> rows, QObject *parent);
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    const QList<PanelRow> &rows() const { return m_rows; }

private:
    QList<PanelRow> m_rows;
};

class CompositionPanel : public QTableView {
    Q_OBJECT
public:
    using Actions = std::function<QList<CodeAndName>(Level)>;
    // visibleRows: how many rows show at once; the scroll bar appears only past them.
    CompositionPanel(QList<PanelRow> rows, int visibleRows, Actions actions, QWidget *parent);
    const QList<PanelRow> &rows() const { return m_model->rows(); }
    int selectedRow() const { return m_selected; }
    // The code of the action chosen on the selected row; empty for none.
    QString chosenAction() const;
    // Makes the row the selected one and offers its actions, none chosen yet.
    void chooseRow(int row);

protected:
    void updateGeometries() override;

private:
    PanelModel *m_model;
    Actions m_actions;
    QComboBox *m_combo = nullptr;
    int m_selected = -1;
};

} // namespace normaris
