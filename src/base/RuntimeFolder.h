#pragma once
// The user's runtime folder, where the single-instance lock lives. Where
// XDG_RUNTIME_DIR is unset (as root, from cron, in CI), Qt falls back to a folder
// of its own in the temporary folder and says so on stderr; the programs print only
// their own lines, so each names that folder itself, before Qt looks.

namespace normaris {

// Sets XDG_RUNTIME_DIR to <temp>/runtime-<uid>, made private to the user, when it is
// unset. Call before the application object is made.
void settleRuntimeFolder();

} // namespace normaris
