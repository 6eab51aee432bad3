#include "base/AppState.h"

#include "base/CompanyLock.h"
#include "base/Database.h"

namespace normaris {

AppState &AppState::instance()
{
    static AppState state;
    return state;
}

AppState::AppState() = default;
AppState::~AppState() = default;

QSqlDatabase AppState::cn() { return QSqlDatabase::database(kMainConnection, false); }

void AppState::markCompanyOpen(const QString &name, std::unique_ptr<CompanyHold> lock)
{
    m_companyLock = std::move(lock);
    m_companyPanel = name;
    m_lastClose.reset();
    emit changed();
}

void AppState::closeCompany(ClosedBy why)
{
    closeDatabase(kMainConnection);
    m_companyLock.reset();
    m_companyPanel = NoCompanyPrompt;
    m_lastClose = why;
    emit changed();
}

void AppState::reset()
{
    closeDatabase(kMainConnection);
    m_companyLock.reset();
    AppPath.clear();
    Store.clear();
    KihonFromExport = DateSettingEnabled = WordsPreviewAllowed = ArticlePanelActive = ParagraphPanelActive = false;
    CurRowIndex = 0;
    ArticlePanelRow = ParagraphPanelRow = -1;
    m_companyPanel = NoCompanyPrompt;
    m_lastClose.reset();
    emit changed();
}

} // namespace normaris
