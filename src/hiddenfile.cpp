#include "hiddenfile_p.h"

#include "samefile.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>

namespace zeltools
{

namespace
{

bool isNamed(int file, int folder, const char* name)
{
    struct stat held = {};
    struct stat named = {};
    return fstat(file, &held) == 0 && fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           isSameFile(held, named);
}

/// Returns false with `errno` if there is a file that cannot be removed; EWOULDBLOCK means that it
/// is in use.
bool removeStale(int folder, const char* name)
{
    const FileDescriptor stale(
        openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (stale < 0)
        return errno == ENOENT;
    if (flock(stale, LOCK_EX | LOCK_NB) != 0)
        return false;
    return !isNamed(stale, folder, name) || unlinkat(folder, name, 0) == 0;
}

/// Returns the descriptor of a new and locked file, or -1 with `errno`.
///
/// Another process may take the new file for a stale one and remove it before it is locked here, so
/// the name is checked after the lock.
int createLocked(int folder, const char* name, mode_t mode)
{
    constexpr int attempts = 100; // each failure means that another process has made progress
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const int file = openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (file < 0 && (errno != EEXIST || !removeStale(folder, name)))
            return -1;
        if (file < 0)
            continue;
        const bool isLocked = flock(file, LOCK_EX | LOCK_NB) == 0;
        const int number = errno;
        if (isLocked && isNamed(file, folder, name))
            return file;
        const bool hasNoLocks = !isLocked && number != EWOULDBLOCK;
        if (hasNoLocks) // no other process can write such a file either
            unlinkat(folder, name, 0);
        close(file);
        if (hasNoLocks) {
            errno = number;
            return -1;
        }
    }
    errno = EWOULDBLOCK;
    return -1;
}

} // namespace

HiddenFile::HiddenFile(int folder, const QByteArray& name, mode_t mode)
    : m_folder(folder)
    , m_name(name)
    , m_file(createLocked(folder, name.constData(), mode))
{
}

HiddenFile::~HiddenFile()
{
    if (m_file >= 0 && !m_isRenamed)
        unlinkat(m_folder, m_name.constData(), 0);
}

bool HiddenFile::rename(const QByteArray& name)
{
    m_isRenamed = renameat(m_folder, m_name.constData(), m_folder, name.constData()) == 0;
    return m_isRenamed;
}

} // namespace zeltools
