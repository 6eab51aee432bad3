#pragma once
// 新規データ作成 from a company the user made before.

#include "rulebase/forms/frmDBSakusei.h"

namespace normaris {

class frmDBSakusei2 : public frmDBSakusei {
    Q_OBJECT
public:
    explicit frmDBSakusei2(QWidget *parent = nullptr);

protected:
    void act() override;

private:
    QComboBox *m_source = nullptr;
};

} // namespace normaris
