#pragma once
// The basic settings (企業情報) as they stand in the file, for the documents. A
// setting the user never touched still holds its own marker (☆0001☆ …): the
// documents type it as it is, in blue, so that the gap shows.

#include <QSqlDatabase>
#include <QStringList>
#include <optional>

namespace normaris {

class SettingValues {
public:
    // The first row of 企業情報; nothing when the table has no row.
    static std::optional<SettingValues> read(QSqlDatabase db);

    // The value of a column of 企業情報 by its name (事業所名, tel …).
    QString value(const QString &column) const;
    // True when the column holds its own marker ☆00NN☆, NN its ordinal.
    bool isUnset(const QString &column) const;

private:
    QStringList m_values; // by ordinal, from 1
};

} // namespace normaris
