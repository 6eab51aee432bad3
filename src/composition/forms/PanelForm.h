#pragma once
// What the two row panels (条までの設定 and 項以下の設定) have in common: the panel
// of rows built at load when the panel's flag is set, the choice of a row and an
// action, the position rule and the question, and the hand-over to the add or
// release form with the selection in the application state. The panels differ in
// the table below their class declarations.

#include "composition/PositionRules.h"
#include "composition/forms/CompositionFlow.h"
#include "base/AppState.h"

#include <QDialog>

class QGridLayout;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace normaris {

class CompositionPanel;

struct PanelFormKind {
    const char *objectName;
    const char *caption;
    bool AppState::*flag;           // builds at load only when set
    int visibleRows;                // rows on view before the scroll bar appears
    bool paragraphLevels;           // the levels of the 項 panel
    const char *emptyLabel;         // objectName of "※データがありません"
    CompositionFlow::Form closesTo; // shown again by 閉じる
};

class PanelForm : public QDialog {
    Q_OBJECT
public:
    // The panel, or nullptr when nothing was built.
    CompositionPanel *panel() const { return m_panel; }

protected:
    PanelForm(const PanelFormKind &kind, QWidget *parent);
    // Builds the form when its flag is set: the headings, then the rows (Hairetsu).
    void load();
    void addHeading(const QString &objectName, const QString &caption, const QString &value);
    // A button of the form's own, before 閉じる.
    QPushButton *addButton(const QString &objectName, const QString &caption);

    virtual void fillHeadings() = 0;
    virtual QList<PanelRow> readRows() = 0;
    virtual PanelDecision decide(const QList<PanelRow> &rows, int row, const QString &action) = 0;

    void reject() override; // 閉じる, the Escape key and the close box alike

private:
    void build(QList<PanelRow> rows);
    void process();
    // The selected row's codes and level go to the application state; the form closes.
    void handOver(const PanelRow &row, const PanelDecision &decision);

    const PanelFormKind &m_kind;
    QGridLayout *m_headings = nullptr;
    QVBoxLayout *m_body = nullptr;
    QHBoxLayout *m_buttons = nullptr;
    QPushButton *m_process = nullptr;
    CompositionPanel *m_panel = nullptr;
};

} // namespace normaris
