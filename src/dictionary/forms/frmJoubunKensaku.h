#pragma once
// 条文検索: the words typed searched in every clause of the company's dictionary; each hit
// with its document, place, printed article number and the words around it. A
// double-click opens the level editor on the hit's level under its parent.

#include <QDialog>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace normaris {

class frmJoubunKensaku : public QDialog {
    Q_OBJECT
public:
    explicit frmJoubunKensaku(QWidget *parent = nullptr);

    void search();

private:
    void open(QTreeWidgetItem *item);

    QLineEdit *m_words = nullptr;
    QTreeWidget *m_hits = nullptr;
};

} // namespace normaris
