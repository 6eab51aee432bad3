#pragma once
// 新規データ作成 from the standard data (the seed file); frmDBSakusei2 copies another company.
// The company made is opened, with the message that it was made.

#include "rulebase/forms/CompanyWizard.h"

class QLineEdit;
class QComboBox;

namespace normaris {

class frmDBSakusei : public CompanyWizard {
    Q_OBJECT
public:
    explicit frmDBSakusei(QWidget *parent = nullptr);

protected:
    frmDBSakusei(const QString &formName, QWidget *parent);
    void act() override;
    // The company just made is opened, for the user works on it next, and the form closes.
    void openMade();
    QLineEdit *m_name = nullptr;
};

} // namespace normaris
