#pragma once
// 「前文」の設定 of a document of the user's own: a view of the fifteen segment records
// of the segment editor, one screen row each (the segment panel).

#include "dictionary/SegmentEditor.h"
#include "dictionary/forms/SegmentPanel.h"

#include <QDialog>

namespace normaris {

class frmDic02_2 : public QDialog {
    Q_OBJECT
public:
    explicit frmDic02_2(QWidget *parent = nullptr);

    // The values shared with the standard phrase chooser.
    QString SegmentNumber, SegmentCode, SegmentWord;

private:
    void setValue(int k);
    void comeBack();
    void save();
    void closeForm();

    dictionary::SegmentEditor m_editor;
    SegmentPanel *m_panel = nullptr;
};

} // namespace normaris
