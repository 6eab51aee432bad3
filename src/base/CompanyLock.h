#pragma once
// One program at a time per company: whoever works on a company (the desktop program
// while it has the company open, the CLI for one command, a backup, a compaction, a
// copy or a deletion) holds a lock file in the company's folder. QLockFile takes over
// a lock whose program has died, so a crash never blocks the company for good.

#include "base/Failure.h"

#include <QLockFile>
#include <QString>
#include <memory>

namespace normaris {

// Another program keeps the company: a refusal, not a fault of the data.
class CompanyInUse : public Failure {
public:
    using Failure::Failure;
};

// Whoever works on a company holds it for as long as this lives: a lock file beside a
// company file, or the server's advisory lock on a company of the office's server.
class CompanyHold {
public:
    virtual ~CompanyHold() = default;
};

class CompanyLock : public CompanyHold {
public:
    // Takes the lock of the company named name in folder, waiting up to about three
    // seconds; throws CompanyInUse with a message naming the company.
    CompanyLock(const QString &folder, const QString &name);
    CompanyLock(const CompanyLock &) = delete;
    CompanyLock &operator=(const CompanyLock &) = delete;

    // The lock file's name inside the company's folder: backups and copies leave it out.
    static QString fileName(const QString &name);
    static bool isLockFile(const QString &fileName);
    // How long another program's lock is waited for, in milliseconds.
    static int waitMs();

private:
    QLockFile m_file;
};

} // namespace normaris
