#pragma once
// The fifteen segment rows of a clause, one screen row each, over the segment records
// of a SegmentEditor: the kind options, the text box of a 文章 segment, the 設定 button,
// the mark "既"/"未", the code and word of a 語句, 番号 or 基本語句 segment, and the
// 改行 box of the gap after it. Both the 前文 editor of a document of the user's own and
// the level editor show their clause through it; they differ only in the kinds that
// can be chosen and in what the 設定 button opens.

#include "dictionary/SegmentEditor.h"

#include <QScrollArea>
#include <QStringList>
#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace normaris {

class SegmentPanel : public QScrollArea {
    Q_OBJECT
public:
    static constexpr int kSegments = dictionary::SegmentEditor::kSegments;

    // choosable: the kinds (結合種別) whose option the user may click; the other options
    // stay disabled, and a segment the data holds in such a kind is shown and kept.
    SegmentPanel(QStringList choosable, QWidget *parent = nullptr);

    // The editor whose records the rows show; nullptr shows fifteen blank rows.
    void setEditor(dictionary::SegmentEditor *editor);
    dictionary::SegmentEditor *editor() const { return m_editor; }
    // Whether the user can change the rows (a browsing record form shows them read-only).
    void setEditable(bool on);

    // Every row from its record, with the option clicks ignored meanwhile.
    void showAll();
    void showRow(int k);
    // The texts and line breaks as the user left them, into the records.
    void readRows();
    // The check of every visible text box (250 bytes, no quotes); the first that fails
    // takes the focus.
    bool checkTexts();

    // The option clicks are ignored while the program itself fills the rows.
    void setArmed(bool on) { m_armed = on; }
    bool armed() const { return m_armed; }

signals:
    // 設定 of segment k (0-based) was pressed, with the records read from the rows.
    void valueRequested(int k);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Row {
        std::array<QRadioButton *, 5> options{}; // 文章, 語句, 番号, 基本語句, spare
        QLineEdit *box = nullptr;
        QPushButton *set = nullptr;
        QLabel *mark = nullptr, *codeCaption = nullptr, *code = nullptr, *wordLabel = nullptr;
        QCheckBox *lineBreak = nullptr; // the gap after the segment
    };

    void kindClicked(int k, const QString &kind);
    dictionary::SegmentRecord record(int k) const;

    QStringList m_choosable;
    dictionary::SegmentEditor *m_editor = nullptr;
    std::array<Row, kSegments> m_rows{};
    bool m_armed = false;
    bool m_editable = true;
};

} // namespace normaris
