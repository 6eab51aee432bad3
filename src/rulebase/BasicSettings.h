#pragma once
// The company's own values that the documents take: the 16 basic settings of
// 企業情報 (one row) and the choice of the workers' representative.
//
// A setting left empty keeps its marker (☆0001☆ …), so that the gap shows in the
// finished document; 郵便番号, 所在地2 and 労働保険番号 have no marker and stay empty.

#include "base/Prompt.h"

#include <QList>
#include <QSqlDatabase>
#include <QStringList>

namespace normaris {

struct SettingField {
    enum class Keys { Any, Digits, DigitsAndHyphen };
    QString column;
    int limit;      // CP932 bytes
    QString marker; // empty: the field has none
    Keys keys;
    QString hint;
};

// The 16 fields in column order (element i is ordinal i + 1 of 企業情報).
const QList<SettingField> &settingFields();
// Index of a column in settingFields(), or -1.
int settingIndex(const QString &column);

// Representatives: 1 労働組合, 2 従業員代表, 3 パート代表.
inline const QStringList kRepresentatives = {QStringLiteral("労働組合"), QStringLiteral("従業員代表"), QStringLiteral("パート代表")};

class BasicSettings {
public:
    explicit BasicSettings(QSqlDatabase db) : m_db(std::move(db)) {}

    // The 16 values as the form shows them: the row is made when there is none yet,
    // and an empty field with a marker shows its marker.
    QStringList load();
    // The representative's code, '1' to '3'.
    QString representative();

    // The check of one field, on Enter or on leaving it. True when good.
    static bool checkField(Prompt &prompt, int index, const QString &value);
    // True when the key may be typed into the field (the other keys are swallowed).
    static bool acceptsKey(int index, QChar key);

    // Writes the 16 values (an empty one with a marker becomes the marker) and the
    // representative, in one transaction. Throws on failure.
    void save(const QStringList &values, const QString &representative);

private:
    QSqlDatabase m_db;
};

} // namespace normaris
