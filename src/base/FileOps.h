#pragma once
// File steps that either finish or leave the destination as it was.

#include <QString>
#include <functional>

namespace normaris {

// Copies a file to dest through a temporary file beside it, then renames it into
// place, so that dest is never half-written. Overwrites dest. Throws Failure.
void copyFileAtomically(const QString &source, const QString &dest);

// Copies every file and folder inside source into dest (made when missing),
// each file as copyFileAtomically, but those whose path relative to source
// leaveOut answers true for. Throws Failure.
void copyFolderContents(const QString &source, const QString &dest, const std::function<bool(const QString &)> &leaveOut = {});

// Replaces dest by source in one rename. Throws Failure.
void replaceFile(const QString &source, const QString &dest);

// True when path is folder itself or lies inside it (after resolving links).
bool isInsideFolder(const QString &path, const QString &folder);

} // namespace normaris
