#include "TestRoot.h"

#include "ScriptedPrompt.h"
#include "TestServer.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "base/AppState.h"
#include "shell/ProgramFolder.h"

#include <QTest>

namespace normaris::test {

TestRoot::TestRoot() : m_path(m_dir.path())
{
    AppState::instance().reset();
    prepareProgramFolder(m_path, QStringLiteral(NORMARIS_APP_DIR));
    AppState::instance().AppPath = m_path;
    // The run against the server: a database of the test's own, so no two tests see each
    // other's companies.
    if (TestServer::requested())
        m_store = TestServer::newDatabase();
    AppState::instance().Store = m_store;
}

TestRoot::~TestRoot()
{
    AppState::instance().reset();
    // Hundreds of tests in one process each leave a database otherwise.
    if (!m_store.isEmpty())
        TestServer::dropDatabase(m_store);
}

void TestRoot::makeCompany(const QString &name) const
{
    ScriptedPrompt prompt;
    prompt.answer({true});
    if (CompanyFiles(layout(), prompt).createFromSeed(name) != Outcome::Done)
        qFatal("could not make company %s: %s", qUtf8Printable(name), qUtf8Printable(prompt.lines().join(u'\n')));
}

QSqlDatabase TestRoot::openCompany(const QString &name) const
{
    makeCompany(name);
    ScriptedPrompt prompt;
    if (CompanyFiles(layout(), prompt).open(name) != Outcome::Done)
        qFatal("could not open company %s: %s", qUtf8Printable(name), qUtf8Printable(prompt.lines().join(u'\n')));
    return AppState::cn();
}

QVariant valueIn(const QString &file, const QString &sql)
{
    const QString connection = QStringLiteral("test_probe");
    QVariant value;
    {
        QSqlDatabase db = openDatabase(file, connection, OpenMode::ReadOnly);
        value = scalar(db, sql);
    }
    closeDatabase(connection);
    return value;
}

} // namespace normaris::test
