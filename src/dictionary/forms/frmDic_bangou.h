#pragma once
// 参照先の設定: the place a 番号 segment cites. A document of the same prose style, the
// level to cite (the document itself, or its 章 … イ～ネ), the entries down to that
// level and, for a split clause, optionally one of its segments. The reference goes to
// the segment editor as ◆code◆; the clause's 更新 writes its row.

#include "dictionary/ReferenceTargets.h"

#include <QDialog>
#include <array>

class QComboBox;
class QLabel;
class QRadioButton;

namespace normaris {

class frmDic_bangou : public QDialog {
    Q_OBJECT
public:
    static constexpr int kLevels = 7; // 規程, 章, 条, 項, 号, ①～⑳, イ～ネ

    // k: the segment (0-based) of the editor's clause that takes the reference.
    frmDic_bangou(dictionary::SegmentEditor &editor, int k, QWidget *parent = nullptr);

private:
    int chosenLevel() const;
    void showLevel();
    // Picker i changed: the pickers below it are refilled from its choice.
    void pickerChanged(int i);
    void fill(int i);
    void fillSegments();
    dictionary::ReferenceTarget target() const;
    void decide();

    dictionary::SegmentEditor &m_editor;
    int m_segment;
    dictionary::ReferenceTargets m_targets;
    std::array<QRadioButton *, kLevels> m_levels{};
    std::array<QComboBox *, kLevels> m_pickers{};
    std::array<QLabel *, kLevels> m_captions{};
    std::array<QLabel *, kLevels> m_codes{};
    QLabel *m_segmentCaption = nullptr;
    QComboBox *m_segments = nullptr;
    bool m_filling = false;
};

} // namespace normaris
