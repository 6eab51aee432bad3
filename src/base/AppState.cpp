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

void AppState::markCompanyOpen(const QString &name, std::unique_ptr<CompanyLock> lock)
{
    m_companyLock = std::move(lock);
    m_companyPanel = name;
    m_commandVisible.fill(true);
    emit changed();
}

void AppState::closeCompany(CommandsOnClose commands)
{
    closeDatabase(kMainConnection);
    m_companyLock.reset();
    m_companyPanel = NoCompanyPrompt;
    switch (commands) {
    case CommandsOnClose::HideAll: m_commandVisible.fill(false); break;
    case CommandsOnClose::HideFirstFour:
        for (int i = 0; i < 4; ++i)
            m_commandVisible[i] = false;
        break;
    case CommandsOnClose::LeaveAsTheyAre: break;
    }
    emit changed();
}

void AppState::reset()
{
    closeDatabase(kMainConnection);
    m_companyLock.reset();
    AppPath.clear();
    KihonFromExport = DateSettingEnabled = WordsPreviewAllowed = ArticlePanelActive = ParagraphPanelActive = false;
    CurRowIndex = 0;
    m_companyPanel = NoCompanyPrompt;
    m_commandVisible.fill(false);
    emit changed();
}

} // namespace normaris
