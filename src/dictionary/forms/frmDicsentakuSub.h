#pragma once
// ディクショナリ管理（種別の指定）: the level to work on and, through up to six
// cascading pickers, the position in the dictionary. The choice goes to the shared
// values; level 1 opens the document master.

#include <QDialog>
#include <array>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmDicsentakuSub : public QDialog {
    Q_OBJECT
public:
    static constexpr int kLevels = 7;
    static constexpr int kPickers = 6;

    explicit frmDicsentakuSub(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int chosenLevel() const;
    void showLevel();
    // The focus on picker i: its parents must be chosen; then its list is filled.
    void enterPicker(int i);
    void pickerChanged(int i);
    // The first visible picker without a choice, or -1.
    int firstUnset(int below) const;
    void refuseUnset(int i);
    void next();
    // After a child form: the chosen path must still stand in the tables.
    void verifyPath();
    void clearPosition();
    QString boundCode(int i) const;

    std::array<QRadioButton *, kLevels> m_levels {};
    std::array<QComboBox *, kPickers> m_pickers {};
    std::array<QLabel *, kPickers> m_codes {};
    std::array<QLabel *, kPickers> m_captions {};
    QLabel *m_codeHeading = nullptr;
    QLabel *m_hint = nullptr;
    QPushButton *m_next = nullptr;
    bool m_filling = false;
};

} // namespace normaris
