#pragma once
// 他社データ取込（種別の指定）: the level and the entry to import, picked from the
// source's lists, and データ取込. It stays open after an import for the next one.
// When an import is refused only for word and reference codes that the current
// company's document has already, コードを振り直して取り込む appears beside データ取込.

#include "import/ImportPlace.h"
#include "import/MarkerRenumbering.h"

#include <QDialog>
#include <array>

class QLabel;
class QPushButton;
class QRadioButton;

namespace normaris {

class FillOnOpenCombo;

class frmCopy03 : public QDialog {
    Q_OBJECT
public:
    explicit frmCopy03(QWidget *parent = nullptr);

private:
    static constexpr int kDepths = int(kImportLevels.size());

    void chooseLevel(int depth);
    bool fillList(int depth);
    void listChanged(int depth);
    QString chosenCode(int depth) const;
    void importChosen(MarkerCodes codes);

    int m_level = 0;
    std::array<QRadioButton *, kDepths> m_options{};
    std::array<QLabel *, kDepths> m_captions{};
    std::array<FillOnOpenCombo *, kDepths> m_lists{};
    std::array<QLabel *, kDepths> m_codes{};
    QLabel *m_prompt = nullptr;
    QPushButton *m_renumber = nullptr; // cmdRenumber
};

} // namespace normaris
