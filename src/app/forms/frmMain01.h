#pragma once
// The main window: five commands that appear once a company is chosen, the File
// and Help menus, and the status bar whose third panel names the open company and
// the one beside it the store.

#include <QMainWindow>
#include <array>
#include <functional>
#include <vector>

class QLabel;
class QPushButton;

namespace normaris {

class frmMain01 : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain01(QWidget *parent = nullptr);

    // What a main command opens: set by the program, replaced by tests.
    using DialogFactory = std::function<QDialog *(QWidget *parent)>;
    void setCommandDialog(int index, DialogFactory factory);

    QPushButton *command(int index) const { return m_commands.at(index); }
    QString companyPanelText() const;
    // The panel beside it: the store the companies are kept in.
    QString storePanelText() const;

    // The menu actions, by index of ファイル(&F).
    void newCompany();    // 0
    void chooseCompany(); // 1
    void backup();        // 3
    void optimise();      // 4
    void deleteCompany(); // 6
    void quit();          // 8
    // 会社データの読込 (10), 持ち出し (11) and 持ち帰り (12): the last two only on the server.

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void buildCommands();
    void buildStatusBar();
    void refreshFromState();
    static std::array<bool, 5> commandsOnView();
    void onActivated();
    void runCommand(int index);
    // Asks to close the open company before a dialog that replaces it; false on no.
    // The question holds %1 for the company's name.
    bool closeOpenCompanyFirst(const QString &question);
    void showModal(QDialog *dialog);

    std::array<QPushButton *, 5> m_commands{};
    std::array<DialogFactory, 5> m_factories{};
    QLabel *m_companyPanel = nullptr;
    QLabel *m_storePanel = nullptr;
    std::vector<QAction *> m_serverOnly;
    bool m_quitting = false;
};

} // namespace normaris
