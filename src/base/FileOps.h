#pragma once
// File steps that either finish or leave the destination as it was.

#include <QString>
#include <QStringList>
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

// Writes text as UTF-8 to path through a temporary file renamed into place, so that
// path holds either what it held or the whole text. Throws Failure.
void writeTextFile(const QString &path, const QString &text);

// The files a step writes: each is written under a temporary name beside its place
// (stage), and only once the whole step has committed are they renamed into place
// (commit). Whatever is still staged when the object goes, after a failure or a
// refusal, is removed: a failed step leaves no file, not even a part of one.
class StagedFiles {
public:
    StagedFiles() = default;
    StagedFiles(const StagedFiles &) = delete;
    StagedFiles &operator=(const StagedFiles &) = delete;
    ~StagedFiles();

    // The temporary name to write the file of path to. Throws Failure.
    QString stage(const QString &path);
    // Renames every staged file into place, replacing what is there. Throws Failure.
    void commit();

private:
    QList<std::pair<QString, QString>> m_files; // temporary name, place
};

// Forces the file's content to the disk (fsync); a failure of it is a failure of the
// step that wrote the file. Throws Failure.
void syncFile(const QString &path);
// A test hook: while set, every syncFile fails as a failed fsync would.
void failSyncsForTests(bool fail);

// Removes path and the files SQLite keeps beside it while it writes it (-journal, -wal,
// -shm): what a failed step that wrote a database file leaves nowhere.
void removeWithSideFiles(const QString &path);
// Removes only the files SQLite keeps beside path: before a new file takes the name, so
// that a journal of the file it replaces is not rolled into it. Throws Failure.
void removeSideFiles(const QString &path);

// True when path is folder itself or lies inside it (after resolving links).
bool isInsideFolder(const QString &path, const QString &folder);

} // namespace normaris
