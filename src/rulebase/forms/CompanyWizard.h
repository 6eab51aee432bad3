#pragma once
// The frame of the company dialogs: two instruction lines, the content between two
// rules, and the buttons 戻る (on only for a step after the first), the action,
// キャンセル and ヘルプ. Every one is a step of a wizard (see markWizardStep).

#include "base/DataLayout.h"

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace normaris {

class CompanyWizard : public QDialog {
    Q_OBJECT
public:
    struct Texts {
        QString formName;
        QString caption;
        QString action; // Command2
        QString label1;
        QString label2;
    };
    CompanyWizard(const Texts &texts, QWidget *parent);
    // Makes this a step after the first: 戻る goes back to the step before.
    void allowBack();

protected:
    // Where a dialog puts its own controls.
    QVBoxLayout *content() const { return m_content; }
    // The company list under a heading, as a list box named List1.
    QListWidget *addCompanyList(const QString &heading);
    DataLayout layout() const;
    QPushButton *actionButton() const { return m_action; }
    // Called by the action button.
    virtual void act() = 0;
    void changeEvent(QEvent *event) override;

private:
    QVBoxLayout *m_content = nullptr;
    QPushButton *m_action = nullptr;
    QPushButton *m_back = nullptr;
};

} // namespace normaris
