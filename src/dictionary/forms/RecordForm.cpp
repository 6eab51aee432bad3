#include "dictionary/forms/RecordForm.h"

#include <QStandardItem>

#include <QApplication>
#include <QKeyEvent>

namespace normaris {

void RecordForm::moveTo(int row)
{
    if (recordCount() == 0)
        return;
    m_current = qBound(0, row, recordCount() - 1);
    showRecord();
}

void RecordForm::step(int delta)
{
    const int row = m_current + delta;
    if (row < 0 || row >= recordCount()) {
        QApplication::beep();
        return;
    }
    moveTo(row);
}

void RecordForm::keyPressEvent(QKeyEvent *event)
{
    if (editing()) {
        // Escape must not close the form in the middle of an edit.
        if (event->key() != Qt::Key_Escape)
            QDialog::keyPressEvent(event);
        return;
    }
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    const int key = event->key();
    const bool back = key == Qt::Key_PageUp || (arrowsMove() && key == Qt::Key_Up);
    const bool on = key == Qt::Key_PageDown || (arrowsMove() && key == Qt::Key_Down);
    if (key == Qt::Key_Escape)
        accept();
    else if (key == Qt::Key_End || (on && ctrl))
        moveTo(recordCount() - 1);
    else if (key == Qt::Key_Home || (back && ctrl))
        moveTo(0);
    else if (back || on)
        step(back ? -1 : 1);
    else
        QDialog::keyPressEvent(event);
}

QStandardItem *gridFlag(bool flag)
{
    auto *item = new QStandardItem;
    // Shown, not user-checkable: a click on it selects the row and changes nothing.
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setData(flag ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    return item;
}

QStandardItem *gridText(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setEditable(false);
    return item;
}

} // namespace normaris
