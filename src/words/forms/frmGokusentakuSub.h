#pragma once
// 語句設定（条の指定）: the chapter and article whose words are to be set.

#include <QDialog>

class QComboBox;
class QLabel;

namespace normaris {

class frmGokusentakuSub : public QDialog {
    Q_OBJECT
public:
    explicit frmGokusentakuSub(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fillChapters();
    bool fillArticles();
    void next();

    QComboBox *m_chapter = nullptr;
    QComboBox *m_article = nullptr;
    QLabel *m_chapterCode = nullptr;
    QLabel *m_articleCode = nullptr;
};

} // namespace normaris
