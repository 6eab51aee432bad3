#pragma once
// Where the companies live. The program and the CLI choose the store at start:
//
//   - the folder store: a company is a folder and a file, Data/<N>/<N>.sqlite, held by
//     a lock file beside it (one machine);
//   - the server store: one PostgreSQL database of the office, a schema per company with
//     the tables and columns of a company file, a catalog of the companies
//     (normaris.会社), and a company held by the server's advisory lock (an office).
//
// The company file stays the way a company travels: a backup, a company taken to a
// client's office, and a company put into the server are company files either way.
// The steps on a whole company (rulebase/CompanyFiles, rulebase/Maintenance) ask and
// report; the store does the work and throws Failure (CompanyInUse for a held company).

#include "base/CompanyLock.h"
#include "base/DataLayout.h"
#include "base/Database.h"
#include "base/Prompt.h"

#include <QStringList>
#include <memory>

namespace normaris {

class CompanyStore {
public:
    // The store of the layout: its `store` names the server, or is empty for the folder.
    static std::unique_ptr<CompanyStore> of(const DataLayout &layout);
    virtual ~CompanyStore() = default;

    // How the user sees the store named: the status bar and the company chooser's title.
    virtual QString title() const = 0;
    virtual bool isServer() const = 0;
    // The companies by name, sorted. Throws DbError when the server can't be asked.
    virtual QStringList companyList() const = 0;
    // Takes company name for this program, waiting as long as CompanyLock does; throws
    // CompanyInUse with the same message when another program keeps it.
    virtual std::unique_ptr<CompanyHold> hold(const QString &name) const = 0;
    // Opens the company's tables under the connection name, checked as a company's.
    virtual QSqlDatabase open(const QString &name, const QString &connection, OpenMode mode = OpenMode::ReadWrite) const = 0;

    // Makes company name (a new name: the caller has checked it) with the content of the
    // company file at file, the tables of tablesClearedForNewCompany() emptied when
    // cleared. All or nothing: a failure leaves no company of that name.
    virtual void addFromFile(const QString &name, const QString &file, bool cleared) const = 0;
    // The same from another company of this store, held by the caller.
    virtual void addFromCompany(const QString &name, const QString &source, bool cleared) const = 0;
    // Puts the company file's content in place of company name's, in one step.
    virtual void replaceFromFile(const QString &name, const QString &file) const = 0;
    // Removes the company, held by the caller.
    virtual void remove(const QString &name) const = 0;
    // Writes the backup of company name (held by the caller) into the folder target:
    // <target>/<name>.sqlite and, on the folder store, the rest of its folder.
    virtual void backup(const QString &name, const QString &target) const = 0;
    // The database's own maintenance of the company's tables; the caller holds it.
    virtual Outcome optimise(Prompt &prompt, const QString &name) const = 0;
};

} // namespace normaris
