#pragma once
// 語句の設定: the word of a 語句 segment, chosen among the words of the clause's
// document or made anew with the document's next free code. The word goes to the
// segment editor; the clause's 更新 writes it.

#include "dictionary/DocumentWords.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QTableWidget;

namespace normaris {

namespace dictionary {
class SegmentEditor;
}

class frmDic_goku : public QDialog {
    Q_OBJECT
public:
    // k: the segment (0-based) of the editor's clause that takes the word.
    frmDic_goku(dictionary::SegmentEditor &editor, int k, QWidget *parent = nullptr);

private:
    void choose();
    void create();

    dictionary::SegmentEditor &m_editor;
    int m_segment;
    dictionary::DocumentWords m_words;
    QTableWidget *m_list = nullptr;
    QLabel *m_nextCode = nullptr;
    QLineEdit *m_caption = nullptr;
    QLineEdit *m_word = nullptr;
};

} // namespace normaris
