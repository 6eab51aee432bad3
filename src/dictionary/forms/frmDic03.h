#pragma once
// 「章」の設定 … 「イ～ネ」の設定: the entries of one level under the position that the
// navigator chose, as a record form on the pattern of the document master (browse,
// add, edit, update, cancel, delete). A 章 or 条 is edited by its name (and a 条 by its
// 正式名称); a clause (項 to イ～ネ) by its segments in the segment panel, whose 設定
// opens the word dialog, the reference picker or the standard phrase chooser.

#include "dictionary/forms/RecordForm.h"
#include "dictionary/EntryEditor.h"
#include "dictionary/SegmentEditor.h"

#include <array>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace normaris {

class SegmentPanel;

class frmDic03 : public RecordForm {
    Q_OBJECT
public:
    // The level and the position come from the shared values that the navigator set.
    explicit frmDic03(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool segmented() const;
    bool hasFormalName() const;
    void browse();
    void showRecord() override;
    int recordCount() const override { return int(m_rows.size()); }
    bool arrowsMove() const override { return false; } // the arrows are left to the segment rows
    void openSegments(const QString &code);
    void SetButtons(bool browsing);
    void setFieldsEnabled(bool on);
    void beginEdit(bool adding);
    bool checkField(QLineEdit *field);
    // While adding a clause: the code that passed its check fixes the clause's place, and
    // the segments can then be entered.
    bool acceptNewClauseCode();
    dictionary::LevelEntry entered() const;
    void save();
    Outcome saveClause();
    void cancel();
    void remove();
    void setValue(int k);
    bool editing() const override { return m_editFlag || m_addNewFlag; }

    dictionary::EntryEditor m_entries;
    std::unique_ptr<dictionary::SegmentEditor> m_segments;
    QList<dictionary::LevelEntry> m_rows;
    int m_savedBookmark = -1;
    dictionary::LevelEntry m_saved;
    bool m_editFlag = false;
    bool m_addNewFlag = false;

    QTableView *m_grid = nullptr;
    QStandardItemModel *m_model = nullptr;
    std::array<QLineEdit *, 3> m_fields{}; // Code, 表示名称, 正式名称 (the last two for 章 and 条)
    SegmentPanel *m_panel = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_add = nullptr, *m_edit = nullptr, *m_update = nullptr, *m_cancel = nullptr, *m_delete = nullptr, *m_close = nullptr;
    std::array<QPushButton *, 4> m_moves{};
};

} // namespace normaris
