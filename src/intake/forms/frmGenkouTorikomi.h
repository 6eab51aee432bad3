#pragma once
// 現行規程の取込: a client's current rules chosen as a file, read, shown as a tree
// (chapters, articles with their captions, paragraph and item counts) beside every
// report line, and written as a document of the company's own with the code, name and
// prose style given. The conversion by LibreOffice runs under a progress dialog.

#include "intake/RulesStructure.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeWidget;

namespace normaris {

class frmGenkouTorikomi : public QDialog {
    Q_OBJECT
public:
    explicit frmGenkouTorikomi(QWidget *parent = nullptr);

    // Reads the file named in the file field and shows what was found.
    void readFile();
    // 取込: writes what was read.
    void takeIn();

private:
    void chooseFile();
    void showRules();

    QLineEdit *m_file = nullptr;
    QTreeWidget *m_tree = nullptr;
    QListWidget *m_report = nullptr;
    QLineEdit *m_code = nullptr;
    QLineEdit *m_name = nullptr;
    QComboBox *m_style = nullptr;
    QCheckBox *m_companyName = nullptr;
    QPushButton *m_take = nullptr;
    std::optional<intake::FoundRules> m_rules;
};

} // namespace normaris
