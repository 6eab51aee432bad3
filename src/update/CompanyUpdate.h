#pragma once
// ディクショナリ更新: a company made from an older release of the dictionary brought up
// to the program's release, entry by entry, in one transaction after a snapshot backup.
// For each entry the new release changed, added or removed against the company's release:
//   - as the company's release shipped it: replaced (its words keep the company's values,
//     its composition rows follow);
//   - changed by the company: kept, and listed as 競合 with the three texts, unless the
//     user takes the new text for it;
//   - new: added as stock; one the release puts in the standard draft of a document the
//     company has composed is listed as 追加候補;
//   - removed by the release: kept when composed, changed or holding entries of the
//     user's, and listed; otherwise removed.
// The user's own entries (70–99, 7000–) are never touched. A second run finds nothing.

#include "base/DataLayout.h"
#include "base/Prompt.h"
#include "update/DictionaryRelease.h"

#include <QSqlDatabase>
#include <functional>

namespace normaris {

enum class UpdateKind { Replaced, Conflict, Added, Proposed, Removed, Kept };

// 置換, 競合, 追加, 追加候補, 削除, 残置.
QString updateKindCaption(UpdateKind kind);

struct UpdateEntry {
    UpdateKind kind = UpdateKind::Replaced;
    QString key;          // EntryKey::text()
    QString place;        // what --take names: 1:規程01:章03:条0012:項02
    QString documentName; // 規程 of the company
    QString article;      // the printed article number in the company's documents: 第１２条
    QString shipped;      // the text as the company's release shipped it
    QString company;      // as the company has it
    QString offered;      // as the program's release has it
    QString requirement;  // 追加候補: the legal requirement behind it
    QString note;
};

// The 新旧対照表 of one composed document over the update.
struct DocumentComparison {
    QString style;
    QString document;
    QString name;
    qint64 before = 0; // the kept versions
    qint64 after = 0;
    QString text; // the table as plain text; empty when nothing printed changed
    QString note; // why there is no table (a document that can't be substituted yet)
};

struct UpdateResult {
    QString company;
    QString from;         // the company's release
    bool guessed = false; // no release recorded: the best-agreeing one
    QString to;           // the program's release
    bool dryRun = false;
    QString backup; // the snapshot's folder
    QList<UpdateEntry> entries;
    QList<DocumentComparison> comparisons;

    int count(UpdateKind kind) const;
    // 「甲: 2026.11 → 2026.12 置換 2、競合 1、…」
    QString summary() const;
};

struct UpdateOptions {
    bool dryRun = false; // everything is worked out and nothing kept
    QStringList take;    // the places of 競合 whose new text the user takes
    bool compare = true; // keep the versions and make the 新旧対照表
};

// The program's release: the seed file's, with every recorded release.
struct ProgramReleases {
    QString seedFile;
    Release current;
    QList<Release> known; // oldest first
    // Reads Data/releases/ and the seed file. Throws Failure.
    static ProgramReleases read(const DataLayout &layout);
    const Release *find(const QString &name) const;
};

class CompanyUpdate {
public:
    CompanyUpdate(DataLayout layout, Prompt &prompt) : m_layout(std::move(layout)), m_prompt(prompt) {}

    // One company by name: checked, locked (or the open company's connection), backed up,
    // updated. Stopped after a refusal's message; Failed after the "取消" box (the company
    // as it was, the backup kept).
    Outcome update(const QString &name, const UpdateOptions &options, UpdateResult &result);

    // Every company of the data folder, one after another; progress is told after each.
    // A company in use by another program is skipped and named.
    using Progress = std::function<void(int done, int total, const QString &name, Outcome outcome, const UpdateResult &result)>;
    Outcome updateAll(const UpdateOptions &options, const Progress &progress);

    // The step on a company file open as db (its lock held).
    Outcome updateOpen(QSqlDatabase db, const QString &name, const ProgramReleases &releases, const UpdateOptions &options,
                       UpdateResult &result);

    static inline const QString kTitle = QStringLiteral("ディクショナリ更新");

private:
    DataLayout m_layout;
    Prompt &m_prompt;
};

} // namespace normaris
