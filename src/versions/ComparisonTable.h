#pragma once
// A 新旧対照表 as data: the rows of the table, each an article (or a chapter
// heading, or the preamble) that changed between two versions, with the text
// after the change and the text before it, the changed characters marked; and
// apart from the table, the articles that only moved to another number.

#include "versions/CharacterDiff.h"
#include "versions/VersionStore.h"

namespace normaris {

// One printed clause or heading in a cell: its label and its text. A text that
// ran over several lines holds '\n' between them.
struct ComparisonLine {
    Level level = Level::Article;
    QString label;
    bool labelChanged = false; // a new or a moved number is marked as well
    MarkedText text;
    bool operator==(const ComparisonLine &) const = default;
};

// A cell of the table: the lines of one side, or a placeholder such as （新設）.
struct ComparisonCell {
    QList<ComparisonLine> lines;
    QString placeholder;
};

enum class ChangeKind { Changed, Added, Removed };

struct ComparisonEntry {
    ChangeKind kind = ChangeKind::Changed;
    ComparisonCell newer; // 改正後
    ComparisonCell older; // 改正前

    // The 備考 of the row: （新設）, （削除）, （追加） when the old side lost
    // nothing (only text came in), （変更） otherwise.
    QString remark() const;
};

// An article whose text stayed the same under another number.
struct Renumbering {
    QString oldLabel;
    QString newLabel;
    QString heading; // its text after the label: （目的）

    // 「第５条 → 第６条（目的）」
    QString line() const
    {
        const QString separator = heading.startsWith(u'（') ? QString() : QStringLiteral("　");
        return oldLabel + QStringLiteral(" → ") + newLabel + separator + heading;
    }
};

struct ComparisonTable {
    QString documentName;
    QString company;
    VersionHeader newer;
    VersionHeader older;
    QList<ComparisonEntry> entries;
    QList<Renumbering> renumbered;
    bool remarks = false; // a third column 備考 with each row's remark

    static inline const QString kNewColumn = QStringLiteral("改正後");
    static inline const QString kOldColumn = QStringLiteral("改正前");
    static inline const QString kAdded = QStringLiteral("（新設）");
    static inline const QString kRemoved = QStringLiteral("（削除）");
    static inline const QString kRemarksColumn = QStringLiteral("備考");
    static inline const QString kChanged = QStringLiteral("（変更）");
    static inline const QString kExtended = QStringLiteral("（追加）");
    static inline const QString kClosingNote = QStringLiteral("（傍線部分は改正部分）");
    static inline const QString kRenumberedHeading = QStringLiteral("番号のみの変更");

    // 「就業規則新旧対照表」
    QString title() const { return documentName + QStringLiteral("新旧対照表"); }
};

// The separator a line prints between its label and its text: none before a
// heading's bracket, a full-width blank otherwise, nothing without a label.
QString labelSeparator(const ComparisonLine &line);

} // namespace normaris
