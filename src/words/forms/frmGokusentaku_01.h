#pragma once
// 埋込語句の設定: the words of one article, up to fifteen, typed in and saved together.

#include <QDialog>
#include <QList>
#include <QString>

class QLabel;
class QLineEdit;

namespace normaris {

class frmGokusentaku_01 : public QDialog {
    Q_OBJECT
public:
    // The article is CurShoCode / CurJoCode of CurKiteiCode in CurBunshoKeishikiCode.
    explicit frmGokusentaku_01(QWidget *parent = nullptr);
    static constexpr int kRows = 15;
    // The file of the last preview (Wordで確認), in the temporary folder.
    QString lastPreview() const { return m_lastPreview; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void save();
    void preview();

    QList<QLabel *> m_codes;
    QList<QLineEdit *> m_words;
    int m_shown = 0;
    bool m_checking = false;
    QString m_lastPreview;
};

} // namespace normaris
