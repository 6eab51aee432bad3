#pragma once
// 条までの設定: the rows of a document down to its 条 (規則, 前文, 章, 条); a row and
// an action on it lead to the add or release form, or down to the 項 panel of a 条.

#include "composition/forms/PanelForm.h"

namespace normaris {

class frmMakesentakuSub : public PanelForm {
    Q_OBJECT
public:
    // Reads CurBunshoKeishikiCode and CurKiteiCode; builds only when ArticlePanelActive is set.
    explicit frmMakesentakuSub(QWidget *parent = nullptr);

protected:
    void fillHeadings() override;
    QList<PanelRow> readRows() override;
};

} // namespace normaris
