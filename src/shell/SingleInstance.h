#pragma once
// Refuses a second copy of the desktop program for the same user.

#include <QLockFile>
#include <memory>

namespace normaris {

class SingleInstance {
public:
    // Takes the lock in the user's runtime folder (or lockPath when given).
    explicit SingleInstance(const QString &lockPath = QString());
    // False when another copy of the program holds the lock.
    bool isFirst() const { return m_first; }

private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_first = false;
};

} // namespace normaris
