#pragma once
// 「前文」の設定 of a standard document: seven text boxes with the markers inline.

#include "dictionary/InlineSegmentEditor.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QLineEdit;

namespace normaris {

class frmDic02 : public QDialog {
    Q_OBJECT
public:
    explicit frmDic02(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void save();

    dictionary::InlineSegmentEditor m_editor;
    std::array<QLineEdit *, dictionary::InlineSegmentEditor::kSegments> m_texts {};
    std::array<QCheckBox *, dictionary::InlineSegmentEditor::kSegments - 1> m_breaks {};
    QCheckBox *m_changed = nullptr;
    QCheckBox *m_selected = nullptr;
};

} // namespace normaris
