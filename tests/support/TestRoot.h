#pragma once
// A program folder of its own for one test: Data/ with the generated seed file,
// and help/. It is set as AppPath and the application state starts afresh. In the run
// against the server (TestServer::requested()) its store is a fresh database of its own.

#include "base/DataLayout.h"

#include <QSqlDatabase>
#include <QTemporaryDir>

namespace normaris::test {

class TestRoot {
public:
    TestRoot();
    ~TestRoot();
    const QString &path() const { return m_path; }
    DataLayout layout() const { return DataLayout{m_path, m_store}; }
    // Makes a company straight from the seed, without any question.
    void makeCompany(const QString &name) const;
    // Makes the company and opens it as `cn`, the open company of the application state.
    QSqlDatabase openCompany(const QString &name) const;

private:
    QTemporaryDir m_dir;
    QString m_path;
    // The store the test's companies live in: empty for the Data folder, else the connection
    // string of the test's own database on the process's server.
    QString m_store;
};

// Executes a statement on a file and returns the first value, for checks.
QVariant valueIn(const QString &file, const QString &sql);

} // namespace normaris::test
