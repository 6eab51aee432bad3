#pragma once
// 「規則・規程・協定」の設定: the documents of one prose style as a record form, with
// the add, edit, update and cancel cycle, the delete, and the door to the 前文 editors.

#include "dictionary/forms/RecordForm.h"
#include "dictionary/DocumentMaster.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStandardItemModel;
class QTableView;

namespace normaris {

class frmDic01 : public RecordForm {
    Q_OBJECT
public:
    explicit frmDic01(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void browse();
    void showRecord() override;
    int recordCount() const override { return int(m_rows.size()); }
    void SetButtons(bool browsing);
    void setFieldsEnabled(bool on);
    void beginEdit(bool adding);
    bool checkField(QLineEdit *field);
    dictionary::DocumentRecord entered() const;
    void save();
    void cancel();
    void remove();
    void editPreamble();
    bool editing() const override { return m_editFlag || m_addNewFlag; }

    dictionary::DocumentMaster m_master;
    QList<dictionary::DocumentRecord> m_rows;
    int m_savedBookmark = -1;
    dictionary::DocumentRecord m_saved;
    bool m_editFlag = false;
    bool m_addNewFlag = false;

    QTableView *m_grid = nullptr;
    QStandardItemModel *m_model = nullptr;
    std::array<QLineEdit *, 3> m_fields{};
    QCheckBox *m_changed = nullptr;
    QCheckBox *m_selected = nullptr;
    std::array<QRadioButton *, 2> m_kind{};
    QLabel *m_status = nullptr;
    QLabel *m_preambleMark = nullptr;
    QPushButton *m_add = nullptr, *m_edit = nullptr, *m_update = nullptr, *m_cancel = nullptr, *m_delete = nullptr, *m_close = nullptr;
    std::array<QPushButton *, 4> m_moves{};
    QPushButton *m_preamble = nullptr;
};

} // namespace normaris
