#pragma once
// Opening a file as a company file: the database opened, then its schema checked.

#include "base/Database.h"

namespace normaris {

// As openDatabase, and refuses a file that is not a company file of this schema.
QSqlDatabase openCompanyDatabase(const QString &path, const QString &connectionName, OpenMode mode = OpenMode::ReadWrite);

} // namespace normaris
