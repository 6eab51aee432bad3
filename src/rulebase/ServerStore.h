#pragma once
// The server store: one PostgreSQL database of the office, a schema per company (see
// rulebase/CompanyStore.h). The catalog normaris.会社 names each company's schema, when
// it was made, the dictionary release it records, and whether it is taken out.
//
// A company taken out (持ち出し) travels as a company file; on the server it can be read
// and printed but not changed: a trigger on each of its tables of content refuses a
// change (SQLSTATE 25006) until it is brought back (持ち帰り). The work data of the
// export chain stays writable, so that the company can still be printed.

#include "rulebase/CompanyStore.h"

#include <optional>

namespace normaris {

// The mark of a company taken out.
struct TakenOut {
    QString by;     // who took it: user@machine
    QString at;     // when (ISO date and time)
    QString digest; // the content of its tables of content, as it was then
};

class ServerStore : public CompanyStore {
public:
    explicit ServerStore(DataLayout layout);

    QString title() const override;
    bool isServer() const override { return true; }
    QStringList companyList() const override;
    std::unique_ptr<CompanyHold> hold(const QString &name) const override;
    QSqlDatabase open(const QString &name, const QString &connection, OpenMode mode) const override;
    void addFromFile(const QString &name, const QString &file, bool cleared) const override;
    void addFromCompany(const QString &name, const QString &source, bool cleared) const override;
    void replaceFromFile(const QString &name, const QString &file) const override;
    void remove(const QString &name) const override;
    void backup(const QString &name, const QString &target) const override;
    Outcome optimise(Prompt &prompt, const QString &name) const override;

    // The mark of company name, if it is taken out.
    std::optional<TakenOut> takenOut(const QString &name) const;
    // Marks company name taken out, in the caller's transaction on db (the company's own
    // connection), with the digest of its content now.
    static void markTakenOut(QSqlDatabase db, const QString &by);
    // The digest of the content of the company on db (its tables of content).
    static QString contentDigest(QSqlDatabase db);
    // The tables whose change a taken-out company refuses.
    static bool isContentTable(const QString &table);

    // How messages name company name on the server.
    static QString placeOf(const QString &name) { return QStringLiteral("『%1』").arg(name); }

private:
    QSqlDatabase catalog() const;
    QString schemaOf(const QString &name) const;
    // Makes company name from the company on source, in one transaction on the server.
    void addFrom(QSqlDatabase source, const QString &name, bool cleared, bool replacing) const;

    DataLayout m_layout;
};

} // namespace normaris
