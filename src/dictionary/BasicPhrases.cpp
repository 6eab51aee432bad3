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

const QList<BasicPhrase> &basicPhrasesAt(Level level)
{
    // Every setting of 基本設定 by its ordinal in 企業情報, then the effective date.
    static const QList<BasicPhrase> every = [] {
        const char *const captions[] = {
            "事業場名",   "郵便番号",   "所在地１",   "所在地２",   "電話番号", "使用者職名", "使用者氏名",   "労働組合名",
            "従業員職名", "従業員氏名", "パート職名", "パート氏名", "業種",     "労働者数",   "労働保険番号", "管轄の労働基準監督署"};
        QList<BasicPhrase> list;
        int n = 0;
        for (const char *caption : captions) {
            ++n;
            const QString name = QString::fromUtf8(caption);
            list << BasicPhrase{name, QStringLiteral("%1").arg(n, 4, 10, QLatin1Char('0')), QStringLiteral("%1．%2").arg(n).arg(name)};
        }
        list << BasicPhrase{QStringLiteral("日付"), QStringLiteral("0030"), QStringLiteral("%1．日付").arg(n + 1)};
        return list;
    }();
    return levelInfo(level).everySetting ? every : basicPhrases();
}

QString basicPhraseName(Level level, const QString &code)
{
    for (const BasicPhrase &p : basicPhrasesAt(level)) {
        if (p.code == code)
            return p.name;
    }
    return {};
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
    return chooseBasicPhrase(prompt, db, Level::Preamble, segmentNumber, code, choice);
}

Outcome chooseBasicPhrase(Prompt &prompt, QSqlDatabase db, Level level, const QString &segmentNumber, QString &code, const QString &choice)
{
    if (choice.isEmpty()) {
        prompt.error(QStringLiteral("基本語句の選択"), QStringLiteral("基本語句を選択してください。"));
        return Outcome::Stopped;
    }
    QString chosen = code;
    const bool done = runInTransaction(prompt, db, [&] {
        execSql(db, QStringLiteral("DELETE FROM 基本語句更新後 WHERE Code = ?"), {code});
        // A text outside the list leaves the code as it was.
        for (const BasicPhrase &p : basicPhrasesAt(level)) {
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
