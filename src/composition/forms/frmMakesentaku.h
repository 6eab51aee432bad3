#pragma once
// データ作成（規則・規程・協定の指定）: the style and document to compose, putting
// documents on the company's list and taking them off it, and the four lists.

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmMakesentaku : public QDialog {
    Q_OBJECT
public:
    explicit frmMakesentaku(QWidget *parent = nullptr);

private:
    // 0 データ作成, 1 リストに追加, 2 リストから外す.
    int process() const;
    void processChanged();
    // Fills the list of a style (0 or 1) with the documents the process works on.
    void refill(int style);
    // The chosen style and document into the application state, after the checks;
    // false when a message was shown.
    bool chosen();
    void run();
    void list(int kind);

    QRadioButton *m_style[2]{};
    QRadioButton *m_process[3]{};
    QListWidget *m_lists[2]{};
    QLabel *m_label = nullptr;
    QPushButton *m_go = nullptr;
};

} // namespace normaris
