#pragma once
// Releases of the dictionary. Every entry of the dictionary (one 規程, 前文, 章, 条 or
// clause in one prose style) has a fingerprint of its own content: its rows' texts and
// flags, its words' captions and words, its references' targets; not its selection and
// not what is below it. A release is a name (年.月, such as 2026.11) and the
// fingerprints of every entry it shipped. data/releases/ keeps one file per release;
// the build copies them to releases/ of the program folder.
//
// A data file records the release it was made from in SQLite's user_version (年×100+月):
// it travels with every copy of the file (VACUUM INTO, new companies, backups), and the
// tables stay as they are. 0 means that nothing is recorded.

#include "base/Levels.h"

#include <QMap>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

namespace normaris {

// Where an entry stands: its prose style, its level and the codes 規程 … イロハ (empty below it).
struct EntryKey {
    QString style;
    Level level = Level::Document;
    QStringList place = QStringList(7); // 規程Code, 章Code … 号の細分イロハCode

    // "1|4|01|02|0005|01|||", the form of the release files.
    QString text() const;
    static EntryKey parse(const QString &text); // throws Failure
    QString document() const { return place.value(0); }
    // The codes of the composition tables' place columns (章 … イロハ).
    QStringList codes() const { return place.mid(1); }
    // The key of the entry above it (the 規程 for a 前文 or a 章); invalid for a 規程.
    EntryKey parent() const;
    // A user's own entry, or one under a user's own entry.
    bool isUsers() const;
};

// a,b: column names for a statement, unquoted as the tables were made (the server folds
// them to the names it keeps).
QString columnList(const QStringList &columns);

// The dictionary table's columns that hold a level's codes, 規程 first, its own last.
QStringList entryKeyColumns(Level level);

// Two fingerprints: of the entry without its words' values, and of those values (the
// company sets the values without changing the entry); and the entry's text as it reads,
// so that what a release shipped can be shown beside what became of it.
struct EntryPrint {
    QString shape;
    QString words;
    QString text;
    bool operator==(const EntryPrint &o) const { return shape == o.shape && words == o.words; }
};

using ReleasePrints = QMap<QString, EntryPrint>; // by EntryKey::text()

struct Release {
    QString name;
    ReleasePrints prints;
};

// The fingerprints of every entry in the dictionary tables of db.
ReleasePrints dictionaryPrints(QSqlDatabase db);

// The text of a release file, and back; a damaged file throws Failure naming path.
QString releaseFileText(const Release &release);
Release parseReleaseFile(const QString &path);
// Every release file of folder, oldest first. Throws Failure on a damaged one.
QList<Release> readReleases(const QString &folder);

// The folder of the release files in a program folder: <AppPath>/releases (beside Data/,
// where every folder is a company).
inline QString releasesFolder(const QString &appPath) { return appPath + QStringLiteral("/releases"); }

// 2026.11 ↔ 202611; 0 for a name that is not of the form 年.月.
int releaseNumber(const QString &name);
QString releaseName(int number);
// The release a data file records, or empty; and recording it.
QString recordedRelease(QSqlDatabase db);
void recordRelease(QSqlDatabase db, const QString &name);

} // namespace normaris
