#include "logging/primaryfile.h"

#include "logging/openwithoutwaiting_p.h"
#include "samefile.h"

#include <cerrno>

#include <sys/file.h>

PrimaryFile::~PrimaryFile() = default;

bool PrimaryFile::open(OpenMode mode)
{
    struct stat named;
    if (!isOpen() && stat(encodeName(fileName()).constData(), &named) == 0 &&
        !needsNoPeer(named.st_mode)) {
        setErrorString(QStringLiteral("Neither a regular file nor a character device"));
        return false;
    }
    return QFile::open(mode);
}

void PrimaryFile::close()
{
    unlock();
    QFile::close();
}

bool PrimaryFile::hasName() const
{
    struct stat open;
    struct stat named;
    return fstat(handle(), &open) == 0 && stat(encodeName(fileName()).constData(), &named) == 0 &&
           zeltools::isSameFile(open, named);
}

bool PrimaryFile::reopen()
{
    const int fresh = openWithoutWaiting(fileName(), O_WRONLY | O_APPEND | O_CREAT);
    if (fresh < 0)
        return false;
    if (m_isLocked)
        flock(fresh, LOCK_EX | LOCK_NB);
    const bool wasLocked = m_isLocked;
    unlock();
    const bool isDone = dup3(fresh, handle(), O_CLOEXEC) >= 0;
    ::close(fresh);
    if (wasLocked)
        lock(); // if it is the same file, its own lock prevented the first attempt
    return isDone;
}

qint64 PrimaryFile::openSize_B() const
{
    struct stat open;
    return fstat(handle(), &open) == 0 ? open.st_size : 0;
}

bool PrimaryFile::lock()
{
    m_isLocked = flock(handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    struct stat open;
    // Any number of log files may be links to one device, such as /dev/null.
    if (!m_isLocked && fstat(handle(), &open) == 0 && !S_ISREG(open.st_mode))
        m_isLocked = true;
    m_lockingProcess = getpid();
    return m_isLocked;
}

// Duplicates of the descriptor share the lock, and some last longer than the descriptor. A forked
// child shares it too and must not take it from its parent.
void PrimaryFile::unlock()
{
    if (m_isLocked && m_lockingProcess == getpid())
        flock(handle(), LOCK_UN);
    m_isLocked = false;
}
