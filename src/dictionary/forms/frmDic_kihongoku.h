#pragma once
// 基本語句の設定: one of the company settings that a 基本語句 segment stands for.

#include "base/Levels.h"

#include <QDialog>

class QComboBox;

namespace normaris {

class frmDic_kihongoku : public QDialog {
    Q_OBJECT
public:
    // segmentCode takes the chosen code, and segmentWord is emptied, on an update. The
    // choices are those of the segment's level: the 前文's three, or below it every
    // setting that substitution knows.
    frmDic_kihongoku(const QString &segmentNumber, QString &segmentCode, QString &segmentWord, QWidget *parent = nullptr,
                     Level level = Level::Preamble);

private:
    void save();

    Level m_level;
    QString m_segmentNumber;
    QString &m_segmentCode;
    QString &m_segmentWord;
    QComboBox *m_choice = nullptr;
};

} // namespace normaris
