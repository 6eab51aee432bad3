#include "dictionary/BasicPhrases.h"

#include "base/Database.h"

namespace normaris::dictionary {

const QList<BasicPhrase> &basicPhrases()
{
    static const QList<BasicPhrase> list = {
        {QStringLiteral("事業場名"), QStringLiteral("0001"), QStringLiteral("１．事業場名")},
        {QStringLiteral("従業員氏名"), QStringLiteral("0010"), QStringLiteral("２．従業員氏名")},
        {QStringLiteral("日付"), QStringLiteral("0030"), QStringLiteral("３．日付")},
    };
    return list;
}

QString basicPhraseName(const QString &code)
{
    for (const BasicPhrase &p : basicPhrases()) {
        if (p.code == code)
            return p.name;
    }
    return {};
}

Outcome chooseBasicPhrase(Prompt &prompt, QSqlDatabase db, const QString &segmentNumber, QString &code, const QString &choice)
{
    if (choice.isEmpty()) {
        prompt.error(QStringLiteral("基本語句の選択"), QStringLiteral("基本語句を選択してください。"));
        return Outcome::Stopped;
    }
    QString chosen = code;
    const bool done = runInTransaction(prompt, db, [&] {
        execSql(db, QStringLiteral("DELETE FROM 基本語句更新後 WHERE Code = ?"), {code});
        // A text outside the list leaves the code as it was.
        for (const BasicPhrase &p : basicPhrases()) {
            if (p.name == choice)
                chosen = p.code;
        }
        execSql(db, QStringLiteral("INSERT INTO 基本語句更新後 (Code, 語句) VALUES (?, ?)"), {chosen, segmentNumber});
    });
    if (!done)
        return Outcome::Failed;
    code = chosen;
    return Outcome::Done;
}

} // namespace normaris::dictionary
