#pragma once
// 項以下の設定: the rows of one 条 (項, 号, ①～⑳, イ～ネ); a row and an action on it
// lead to the add or release form. The embedded words of the 条 are set from here.

#include "composition/forms/PanelForm.h"

namespace normaris {

class frmMakesentakuSub2 : public PanelForm {
    Q_OBJECT
public:
    // Reads CurBunshoKeishikiCode, CurKiteiCode, CurShoCode and CurJoCode; builds only
    // when ParagraphPanelActive is set.
    explicit frmMakesentakuSub2(QWidget *parent = nullptr);

protected:
    void fillHeadings() override;
    QList<PanelRow> readRows() override;

private:
    void openWords();
};

} // namespace normaris
