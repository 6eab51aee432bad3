#pragma once
// The two file-level services of the File menu: a backup that copies a company's
// folder, and the optimisation that compacts its data file through a work file.
// Both may close the open company first, after asking.

#include "base/DataLayout.h"
#include "base/Prompt.h"

#include <optional>

namespace normaris {

// Compacts the data file at path into its work file and puts the result in its place.
// False only when a work file is there already (nothing is changed then); a failed
// compaction has been reported and counts as done, leaving the data file as it was.
bool CompactDataFile(Prompt &prompt, const QString &path);
// The same step, telling all three ends apart: Stopped for the work file, Failed, Done.
Outcome compactDataFile(Prompt &prompt, const QString &path);

class Maintenance {
public:
    Maintenance(DataLayout layout, Prompt &prompt) : m_layout(std::move(layout)), m_prompt(prompt) {}

    // Copies the company's folder to BackupDB/<name>, or, when destination is given,
    // its content straight into that folder (made when missing). Overwrites.
    Outcome backup(const QString &name, const std::optional<QString> &destination = std::nullopt);
    // Compacts the company's data file.
    Outcome optimise(const QString &name);

private:
    DataLayout m_layout;
    Prompt &m_prompt;
};

} // namespace normaris
