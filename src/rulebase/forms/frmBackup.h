#pragma once
// バックアップ: copies a company's folder to BackupDB/<name> or into a folder the user picks.

#include <QDialog>

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace normaris {

class frmBackup : public QDialog {
    Q_OBJECT
public:
    explicit frmBackup(QWidget *parent = nullptr);

private:
    void pickFolder();
    void backUp();

    QComboBox *m_source = nullptr;
    QRadioButton *m_standardPlace = nullptr;
    QRadioButton *m_chosenPlace = nullptr;
    QLineEdit *m_folder = nullptr;
};

} // namespace normaris
