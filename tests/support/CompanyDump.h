#pragma once
// A company's content as lines of text, read through its store: the same lines for the
// same content whether the company is a file of the Data folder, a schema of the
// office's server or a company file elsewhere. For comparisons before and after a step,
// and across a journey between the two.

#include "CompanyProbe.h"
#include "base/DataLayout.h"

#include <QSqlDatabase>
#include <QStringList>
#include <QVariant>

namespace normaris::test {

// Every table of the company on the open connection db, by name, and its rows in ID
// order, each value as text; the dictionary release it records last.
QStringList dumpCompany(QSqlDatabase db);
// The same for company name of the layout's store (opened read-only for the dump).
QStringList dumpCompany(const DataLayout &layout, const QString &name);
// The same for a company file.
QStringList dumpCompanyFile(const QString &file);

// The first line where a and b part, for a failure's message; empty when they are equal.
QString firstDifference(const QStringList &a, const QStringList &b);

} // namespace normaris::test
