#pragma once
// A user's own dictionary entries written by SQL into a company file: document 75
// with 章 70, 条 7001, and below it a 項, 号, ① and イ, each code 70. The 項 holds the
// word ★7501★ and the reference ◆7502◆, with their rows in the tables of markers.

#include "CompanyProbe.h"
#include "base/Database.h"
#include "base/Levels.h"
#include "rulebase/Schema.h"

#include <QStringList>

namespace normaris::test {

inline const QString kUserConnection = QStringLiteral("test_user_entries");

// The codes of the chain, 規程 first.
inline const QStringList kUserCodes = {QStringLiteral("75"), QStringLiteral("70"), QStringLiteral("7001"), QStringLiteral("70"),
                                       QStringLiteral("70"), QStringLiteral("70"), QStringLiteral("70")};

// A clause row of the chain (項 to イ～ネ): its keys, its text and its segment.
inline QVariantList clauseRow(Level level, const QString &style, const QString &text, const QString &join = QStringLiteral("0"))
{
    QVariantList row{style};
    for (int i = 0; i <= clauseDepth(level) + 3; ++i) // 規程Code … the level's own Code
        row << kUserCodes[i];
    row << text << join << 0 << QStringLiteral("0") << text.contains(u'★') << text.contains(u'◆') << 0 << 1
        << (text.startsWith(u'★') && text.size() == 6 ? QStringLiteral("1") : QStringLiteral("0"));
    return row;
}

// The whole chain under document 75 in one style, into the company of db.
inline void addUserChain(QSqlDatabase db, const QString &style = QStringLiteral("1"))
{
    insertRow(db, QStringLiteral("規程"),
              {style, kUserCodes[0], QStringLiteral("テスト規程"), 0, QStringLiteral("テスト規程"), 1, QStringLiteral("1")});
    insertRow(db, QStringLiteral("前文"),
              {style, kUserCodes[0], QStringLiteral("01"), QStringLiteral("0"), 0, QStringLiteral("この規程は試しの規程である。"), 0, 0, 1,
               QStringLiteral("0")});
    insertRow(db, QStringLiteral("章"), {style, kUserCodes[0], kUserCodes[1], QStringLiteral("総則"), 0, 1});
    insertRow(db, QStringLiteral("条"),
              {style, kUserCodes[0], kUserCodes[1], kUserCodes[2], QStringLiteral("目的"), 0, QStringLiteral("目的"), 1});
    insertRow(db, QStringLiteral("項"), clauseRow(Level::Paragraph, style, QStringLiteral("従業員は、"), QStringLiteral("1")));
    insertRow(db, QStringLiteral("項"), clauseRow(Level::Paragraph, style, QStringLiteral("★7501★"), QStringLiteral("2")));
    insertRow(db, QStringLiteral("項"), clauseRow(Level::Paragraph, style, QStringLiteral("を守り、◆7502◆に従う。"), QStringLiteral("3")));
    insertRow(db, QStringLiteral("号"), clauseRow(Level::Item, style, QStringLiteral("出勤すること")));
    insertRow(db, QStringLiteral("号の細分丸"), clauseRow(Level::Maru, style, QStringLiteral("定時に")));
    insertRow(db, QStringLiteral("号の細分イロハ"), clauseRow(Level::Iroha, style, QStringLiteral("朝に")));
    const QVariantList place = {kUserCodes[0], kUserCodes[1], kUserCodes[2], kUserCodes[3], QString(), QString(), QString()};
    insertRow(db, QStringLiteral("変数テーブル語句"),
              QVariantList{QStringLiteral("7501"), QStringLiteral("就業規則")} + place
                  + QVariantList{QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("守るもの"), 1});
    insertRow(db, QStringLiteral("変数テーブル番号"),
              QVariantList{QStringLiteral("7502")} + place
                  + QVariantList{QStringLiteral("3"), QStringLiteral("4"), kUserCodes[0], kUserCodes[1], kUserCodes[2], QString(),
                                 QString(), QString(), QString(), QString(), QStringLiteral("3")});
}

// The same into the company file.
inline void addUserChain(const QString &file, const QString &style = QStringLiteral("1"))
{
    {
        QSqlDatabase db = openDatabase(file, kUserConnection);
        addUserChain(db, style);
    }
    closeDatabase(kUserConnection);
}

// The same into company name of the layout's store.
inline void addUserChain(const DataLayout &layout, const QString &name, const QString &style = QStringLiteral("1"))
{
    inCompany(layout, name, OpenMode::ReadWrite, [&](QSqlDatabase db) { addUserChain(db, style); });
}

// Runs one statement on a company file, outside `cn`.
inline void execIn(const QString &file, const QString &sql, const QVariantList &binds = {})
{
    {
        QSqlDatabase db = openDatabase(file, kUserConnection);
        execSql(db, sql, binds);
    }
    closeDatabase(kUserConnection);
}

} // namespace normaris::test
