#include "dictionary/forms/PreambleHeading.h"

#include "base/AppState.h"
#include "base/Database.h"

namespace normaris {

PreambleHeading PreambleHeading::current()
{
    const AppState &s = AppState::instance();
    return {scalar(AppState::cn(), QStringLiteral("SELECT 文章形式 FROM 文章形式 WHERE Code = ?"), {s.CurBunshoKeishikiCode}).toString(),
            scalar(AppState::cn(), QStringLiteral("SELECT 規程 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"),
                   {s.CurBunshoKeishikiCode, s.CurKiteiCode})
                .toString()};
}

} // namespace normaris
