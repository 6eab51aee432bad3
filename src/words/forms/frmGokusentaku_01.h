#pragma once
// 埋込語句の設定: the words of one article, up to fifteen, typed in and saved together.

#include <QDialog>
#include <QList>

class QLabel;
class QLineEdit;

namespace normaris {

class frmGokusentaku_01 : public QDialog {
    Q_OBJECT
public:
    // The article is CurShoCode / CurJoCode of CurKiteiCode in CurBunshoKeishikiCode.
    explicit frmGokusentaku_01(QWidget *parent = nullptr);
    static constexpr int kRows = 15;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void save();
    void preview();

    QList<QLabel *> m_codes;
    QList<QLineEdit *> m_words;
    int m_shown = 0;
    bool m_checking = false;
};

} // namespace normaris
