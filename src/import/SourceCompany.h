#pragma once
// The other company's file, opened as the second connection `cnSource` for the span
// of an import. It is another company's file and may be old, damaged or no company
// file at all, so it is only read, and trusted only once it has passed its checks:
//
//   - a folder of Data/ by a usable name, neither it nor its file a symbolic link,
//     the file's real place inside the data folder;
//   - an SQLite file (its header), opened with the read-only flag and immutable, so
//     that nothing, not even a journal, is ever written beside it;
//   - not the company open in this program (the import's target);
//   - no journal or write-ahead log beside it (a write that stopped half-way, which
//     opening the company normally rolls back), checked under the company's lock;
//   - PRAGMA trusted_schema=OFF, no trigger, no view, no virtual table (named);
//   - every table and column of a company file, in the current or the older form.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <QSqlDatabase>

namespace normaris {

// The refusal of an import while no company of one's own is open.
inline const QString kNoTargetCompany = QStringLiteral("取込先の会社が開かれていません。会社指定で会社を開いてから取り込んでください。");

class SourceCompany {
public:
    // Opens the company's file as `cnSource`, only while a company of one's own is
    // open to take its entries. On a refusal the message names the company, nothing
    // stays open, and the result is not Done.
    static Outcome open(Prompt &prompt, const DataLayout &layout, const QString &name);
    static void close();
    static bool isOpen();
    static QSqlDatabase connection();

    // Why the file can't be a source; empty when it can. Throws nothing.
    static QString refusal(const DataLayout &layout, const QString &name);
};

} // namespace normaris
