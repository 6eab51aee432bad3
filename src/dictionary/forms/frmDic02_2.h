#pragma once
// 「前文」の設定 of a document of the user's own: a view of the fifteen segment records
// of the segment editor, one screen row each.

#include "dictionary/SegmentEditor.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace normaris {

class frmDic02_2 : public QDialog {
    Q_OBJECT
public:
    explicit frmDic02_2(QWidget *parent = nullptr);

    // The values shared with the standard phrase chooser.
    QString SegmentNumber, SegmentCode, SegmentWord;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int kSegments = dictionary::SegmentEditor::kSegments;
    struct Row {
        QRadioButton *text = nullptr, *word = nullptr, *number = nullptr, *basicWord = nullptr, *spare = nullptr;
        QLineEdit *box = nullptr;
        QPushButton *set = nullptr;
        QLabel *mark = nullptr, *codeCaption = nullptr, *code = nullptr, *wordLabel = nullptr;
        QCheckBox *lineBreak = nullptr; // the gap after the segment
    };

    void showRow(int k);
    void showAll();
    void readRows();
    void kindClicked(int k, const QString &kind);
    void setValue(int k);
    void comeBack();
    void save();
    void closeForm();

    dictionary::SegmentEditor m_editor;
    std::array<Row, kSegments> m_rows {};
    bool m_armed = false;
};

} // namespace normaris
