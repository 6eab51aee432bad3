#pragma once
// A record form of the dictionary (the document master, the editors of the levels):
// one record shown at a time, moved through by the buttons and the keyboard while no
// record is being edited. Escape closes the form when browsing and is held back
// during an edit, so that an edit is never lost to it.

#include <QDialog>

class QStandardItem;

namespace normaris {

class RecordForm : public QDialog {
public:
    using QDialog::QDialog;

protected:
    virtual int recordCount() const = 0;
    virtual bool editing() const = 0;
    // Shows the record at m_current (none when it is out of range).
    virtual void showRecord() = 0;
    // Whether the up and down arrows move between records (a form whose fields use them
    // moves with Page Up and Page Down only).
    virtual bool arrowsMove() const { return true; }

    void moveTo(int row);
    // One record on or back; a beep at either end.
    void step(int delta);
    void keyPressEvent(QKeyEvent *event) override;

    int m_current = -1;
};

// The cells of the record forms' grids: a text, and a flag as a check mark (neither
// changed in the grid).
QStandardItem *gridText(const QString &text);
QStandardItem *gridFlag(bool flag);

} // namespace normaris
