#pragma once
// 解除: carries out a release that a panel has confirmed: the clause and all below
// it leave the document, and the panel it came from is rebuilt on closing.

#include "composition/ClauseReleaser.h"

#include <QDialog>

class QPushButton;

namespace normaris {

class frmMakesentaku_kaijo : public QDialog {
    Q_OBJECT
public:
    // Reads the selection a panel left in the application state (CurShubetsu,
    // CurRowIndex and the codes of the selected row).
    explicit frmMakesentaku_kaijo(QWidget *parent = nullptr);

protected:
    void reject() override; // 閉じる, the Escape key and the close box alike

private:
    void release();

    ReleaseRequest m_request;
    const ReleaseMember *m_method = nullptr; // the release family's member for the level
    QPushButton *m_release = nullptr;
};

} // namespace normaris
