#pragma once
// A real PostgreSQL server of the test process's own, for the suites that run once more
// against the office store (`normaris_test_both` in tests/CMakeLists.txt sets
// NORMARIS_TEST_STORE=server for that run).
//
// The server is made at first use in a folder under /tmp, listens on a Unix socket in that
// folder only, and is stopped and removed when the process ends; a watchdog stops it when the
// process dies without ending (a crash, a kill). Where the server programs are missing, the
// process says so on stderr and ends with exit code 77, which ctest counts as skipped.

#include <QString>
#include <QVariant>

namespace normaris::test {

class TestServer {
public:
    // Whether this run of the suite is the one against the server.
    static bool requested();
    // A fresh, empty database on the process's server (started at first use), as the
    // key=value connection string the program takes as its store. Text in it sorts by
    // code point, as in SQLite.
    static QString newDatabase();
    // Drops a database newDatabase() made, closing whatever connections still use it.
    static void dropDatabase(const QString &store);
    // Runs one statement with its bound values on the database of a connection string and
    // returns the first value of its first row (an invalid value when it returns none), for
    // checks. A failed statement ends the test with its error.
    static QVariant value(const QString &store, const QString &sql, const QVariantList &bound = {});
};

} // namespace normaris::test
