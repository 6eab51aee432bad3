#pragma once
// The folder store: Data/<N>/<N>.sqlite on this machine (see rulebase/CompanyStore.h).

#include "rulebase/CompanyStore.h"

namespace normaris {

class FolderStore : public CompanyStore {
public:
    explicit FolderStore(DataLayout layout) : m_layout(std::move(layout)) {}

    QString title() const override;
    bool isServer() const override { return false; }
    QStringList companyList() const override { return m_layout.companyList(); }
    std::unique_ptr<CompanyHold> hold(const QString &name) const override;
    QSqlDatabase open(const QString &name, const QString &connection, OpenMode mode) const override;
    void addFromFile(const QString &name, const QString &file, bool cleared) const override;
    void addFromCompany(const QString &name, const QString &source, bool cleared) const override;
    void replaceFromFile(const QString &name, const QString &file) const override;
    void remove(const QString &name) const override;
    void backup(const QString &name, const QString &target) const override;
    Outcome optimise(Prompt &prompt, const QString &name) const override;

private:
    DataLayout m_layout;
};

} // namespace normaris
