#pragma once
// Releasing a clause from a document being composed: its rows and all below them
// leave the working tables, the later rows close up, the running numbers follow,
// and the clause (only that clause) and the words of its subtree go back to stock.
// The seven releases (Kaijo + level) are one algorithm, listed in kReleaseFamily.

#include "base/Levels.h"
#include "base/Prompt.h"

#include <QSqlDatabase>
#include <QStringList>

namespace normaris {

struct ReleaseRequest {
    QString style;
    QString document;
    Level level = Level::Article;       // the level released (CurShubetsu)
    int rowIndex = 0;                   // the selected row's place from 0: its 順番 is rowIndex + 1
    QStringList codes = QStringList(6); // the selected row's 章Code … 号の細分イロハCode
};

class ClauseReleaser {
public:
    ClauseReleaser(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}
    Outcome release(const ReleaseRequest &request);

private:
    void releaseFromDocument(const ReleaseRequest &r);
    void releaseFromArticle(const ReleaseRequest &r);

    QSqlDatabase m_db;
    Prompt &m_prompt;
};

// The entry points by name: Kaijo + the level released.
Outcome Kaijo10(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo02(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo03(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo04(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo05(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo06(ClauseReleaser &k, ReleaseRequest r);
Outcome Kaijo07(ClauseReleaser &k, ReleaseRequest r);

// One release of the family: the level released and its entry point. 規程 is never released.
struct ReleaseMember {
    Level level;
    Outcome (*run)(ClauseReleaser &, ReleaseRequest);
};

inline constexpr ReleaseMember kReleaseFamily[] = {
    {Level::Preamble, Kaijo10}, {Level::Chapter, Kaijo02}, {Level::Article, Kaijo03}, {Level::Paragraph, Kaijo04},
    {Level::Item, Kaijo05},     {Level::Maru, Kaijo06},    {Level::Iroha, Kaijo07},
};

// The member of the family for a level; nullptr for a level that is not released.
const ReleaseMember *releaseMember(Level level);

} // namespace normaris
