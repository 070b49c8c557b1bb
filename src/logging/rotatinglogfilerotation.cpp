// The rotation of a RotatingLogFile, and who may do it.

#include "logging/rotatinglogfile.h"

#include "logging/renamefile_p.h"

#include <cerrno>

#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace
{

const QLatin1String s_archiveSuffix(".tar.gz");

qint64 monotonicMilliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

} // namespace

bool RotatingLogFile::rotateIfNeeded(qint64 incoming)
{
    const QMutexLocker locker(&m_mutex);
    if (file.isOpen())
        checkOutsideChange();
    // Asked anew: others may have cut or extended the file.
    m_size_B = file.isOpen() ? file.openSize_B() : file.size();
    if (m_size_B + incoming > m_maximumSize_B && m_secondaryFilesCount > 0)
        rotate();
    return true;
}

// The primary stays open all along: its descriptor is made to refer to the fresh file only when
// there is one. When it does not hold P any more (that step failed last time, or somebody moved P),
// the predecessors stay where they are and just P is opened. The lock of an open P makes sure that
// nobody else rotates meanwhile.
void RotatingLogFile::rotate()
{
    const bool isOpen = file.isOpen();
    if (isOpen && !file.isLocked())
        return;
    if ((isOpen && !file.hasName()) || (m_compressed ? shiftCompressed() : shift()))
        reopenPrimary();
    if (m_compressed && isLinux())
        packPredecessor();
}

bool RotatingLogFile::shift()
{
    if (!makeRoom(QString()) || !renameFile(m_primaryFilename, filename(1)))
        return false;
    endShift();
    return true;
}

// On the board P becomes P.1, which is packed next. A P.1 that is being packed, or was left by a
// power cut, comes first and P grows until that is done. Where packing fails again and again, P.1
// gives way when P takes as much as all files may: the disk stays bounded.
bool RotatingLogFile::shiftCompressed()
{
    if (!isLinux()) {
        if (makeRoom(s_archiveSuffix))
            endShift();
        if (m_secondaryFilesCount == 1)
            QFile::remove(filename(1) + s_archiveSuffix);
        return false;
    }
    const qint64 total_B = m_maximumSize_B * (qint64(m_secondaryFilesCount) + 1);
    const bool hasFailed = m_nextPacking_B > 0;
    if (m_isCompressing || (QFile::exists(filename(1)) && !(hasFailed && m_size_B > total_B)))
        return false;
    if (QFile::exists(filename(1) + s_archiveSuffix) && !makeRoom(s_archiveSuffix))
        return false;
    if (!renameFile(m_primaryFilename, filename(1)))
        return false;
    m_nextPacking_B = 0;
    endShift();
    return true;
}

// Moves the predecessors up, so that the place of the first is free for one that takes it; a gap in
// the numbering moves up like a file. A shift that was interrupted has left a gap too, and goes on
// there: beginning at the top again would cost one more file. To know one gap from the other after
// the process was killed, an empty file "P.rotating" stands beside P during the shift. Making it by
// mknod() takes no descriptor; when that fails the shift goes on without.
//
// A single predecessor is replaced by one rename(), which has no such state in between. It makes
// ext4 push P to the disk there and then, so that a power cut does not leave an empty P.1.
bool RotatingLogFile::makeRoom(const QString& suffix)
{
    if (m_secondaryFilesCount < 2)
        return true;
    const bool wasKilled =
        mknod(QFile::encodeName(shiftMark()).constData(), S_IFREG | 0644, 0) != 0 &&
        errno == EEXIST;
    int index = wasKilled || m_isShifting ? firstGap(suffix) : m_secondaryFilesCount;
    m_isShifting = true;
    for (; index > 1; --index) {
        if (!takePlace(filename(index - 1) + suffix, filename(index) + suffix))
            return false;
    }
    return true;
}

void RotatingLogFile::endShift()
{
    m_isShifting = false;
    if (m_secondaryFilesCount > 1)
        QFile::remove(shiftMark());
}

QString RotatingLogFile::shiftMark() const
{
    return m_primaryFilename + QLatin1String(".rotating");
}

// The oldest predecessor when there is no gap.
int RotatingLogFile::firstGap(const QString& suffix) const
{
    int index = 1;
    while (index < m_secondaryFilesCount && QFile::exists(filename(index) + suffix))
        ++index;
    return index;
}

void RotatingLogFile::reopenPrimary()
{
    if (!file.isOpen()) {
        file.setFileName(m_primaryFilename);
        file.open(QIODevice::Append);
        return;
    }
    if (!file.reopen()) {
        // What is in a deleted file nobody can read; it must not fill the disk unseen either.
        struct stat open;
        if (fstat(file.handle(), &open) == 0 && open.st_nlink == 0 &&
            ftruncate(file.handle(), 0) == 0)
            m_size_B = 0;
        return;
    }
    m_size_B = file.openSize_B();
    m_hasHalfLine = false;
}

// A folder that was removed and made again, a file moved or cut by a technician, another process
// that rotated or ended: looked for ten times a second at most, since asking costs as much as
// writing.
void RotatingLogFile::checkOutsideChange()
{
    const qint64 now = monotonicMilliseconds();
    if (now < m_nextCheck_ms)
        return;
    m_nextCheck_ms = now + s_checkInterval_ms;
    if (!file.hasName())
        reopenPrimary();
    else if (!file.isLocked())
        claim();
    m_size_B = file.openSize_B();
}

// Whoever has the lock of P rotates; everybody else, such as a second process on the same files,
// appends to P and follows within the interval of checkOutsideChange(). A file that such a one has
// just opened is claimed only at the next check: who made it gets that long to lock it.
void RotatingLogFile::claim()
{
    if (!file.lock() && !m_isSharingTold->exchange(true))
        m_isSharingToTell = true;
}
