#include "logging/logrotation_p.h"

#include "logging/logcompression_p.h"
#include "logging/primarywriter_p.h"
#include "logging/renamefile_p.h"
#include "logging/rotatinglogfile.h"
#include <zeltools/platform.h>

#include <QFileInfo>

#include <algorithm>

namespace
{

const QLatin1String s_archiveSuffix(".tar.gz");

QString deletedFilename(const QString& filename)
{
    const QFileInfo info(filename);
    return QFileInfo(info.path()).canonicalFilePath() + QLatin1Char('/') + info.baseName() +
           QLatin1String("_deleted.") + info.completeSuffix();
}

} // namespace

LogRotation::LogRotation(const RotatingLogFileConfiguration& configuration, PrimaryFile& file,
                         PrimaryWriter& writer, LogCompression& compression)
    : m_file(file)
    , m_writer(writer)
    , m_compression(compression)
    , m_predecessorsCount(configuration.secondaryFilesCount)
    , m_compressed(configuration.compressed)
{
    setMaximumSizeMiB(double(configuration.maximumSizeMiB));
}

void LogRotation::setMaximumSizeMiB(double size_MiB)
{
    m_maximumSize_B = static_cast<qint64>(size_MiB * 1024 * 1024);
}

void LogRotation::copyLimits(const LogRotation& other)
{
    m_maximumSize_B = other.m_maximumSize_B;
    m_predecessorsCount = other.m_predecessorsCount;
}

QString LogRotation::filename(int index) const
{
    if (index < 0 || m_primary.isEmpty())
        return QString();
    return index == 0 ? m_primary : m_primary + QLatin1Char('.') + QString::number(index);
}

QStringList LogRotation::filenames() const
{
    QStringList names;
    for (int i = 0; i <= m_predecessorsCount; ++i)
        names.append(filename(i));
    return names;
}

QStringList LogRotation::deletedFilenames() const
{
    QStringList names = filenames();
    std::transform(names.begin(), names.end(), names.begin(), deletedFilename);
    return names;
}

// The primary stays open during the renames. Its descriptor is made to refer to the new file only
// when there is one. If the name P no longer refers to the open file (the last reopening failed, or
// somebody moved P), nothing is renamed and P is only opened again. The lock of an open P prevents
// that another writer rotates at the same time.
void LogRotation::rotate()
{
    const bool isOpen = m_file.isOpen();
    if (isOpen && !m_file.isLocked())
        return;
    if ((isOpen && !m_file.hasName()) || shift())
        m_writer.reopen(m_primary);
    if (m_compressed && platform::isBoard)
        m_compression.start(m_writer.size_B());
}

void LogRotation::deleteFiles(bool areKept)
{
    const QStringList names = filenames();
    const QStringList deleted = areKept ? deletedFilenames() : QStringList();
    for (int i = 0; i < names.size(); ++i) {
        if (areKept)
            takePlace(names[i], deleted[i]);
        else
            QFile::remove(names[i]);
    }
    m_writer.reopen(m_primary);
}

bool LogRotation::shift()
{
    if (m_compressed && platform::isBoard)
        return shiftToBePacked();
    if (m_compressed) {
        shiftArchives();
        return false;
    }
    if (!makeRoom(QString()) || !renameFile(m_primary, filename(1)))
        return false;
    endShift();
    return true;
}

// On the board P becomes P.1, which is packed next.
bool LogRotation::shiftToBePacked()
{
    const qint64 total_B = m_maximumSize_B * (qint64(m_predecessorsCount) + 1);
    if (!m_compression.mayReplacePredecessor(m_writer.size_B(), total_B) ||
        (QFile::exists(archive()) && !makeRoom(s_archiveSuffix)) ||
        !renameFile(m_primary, filename(1)))
        return false;
    m_compression.setPredecessorReplaced();
    endShift();
    return true;
}

// On the desktop P keeps growing, and only the archives move up.
void LogRotation::shiftArchives()
{
    if (makeRoom(s_archiveSuffix))
        endShift();
    if (m_predecessorsCount == 1)
        QFile::remove(archive());
}

// Moves the predecessors up, so that the first place is free. A gap in the numbering moves up like
// a file. A shift that was interrupted has left a gap too and continues there, since a new start at
// the top would lose one more file. An empty file "P.rotating" stands beside P during the shift and
// tells, after the process was killed, which kind of gap it is. mknod() creates it without a file
// descriptor; if that fails, the shift continues without the mark.
//
// A single predecessor is replaced by one rename(), which has no such state in between. The rename
// makes ext4 write P to the disk immediately, so that a power cut does not leave an empty P.1.
bool LogRotation::makeRoom(const QString& suffix)
{
    if (m_predecessorsCount < 2)
        return true;
    const bool wasKilled =
        mknod(QFile::encodeName(shiftMark()).constData(), S_IFREG | 0644, 0) != 0 &&
        errno == EEXIST;
    int index = wasKilled || m_isShifting ? firstGap(suffix) : m_predecessorsCount;
    m_isShifting = true;
    for (; index > 1; --index) {
        if (!takePlace(filename(index - 1) + suffix, filename(index) + suffix))
            return false;
    }
    return true;
}

void LogRotation::endShift()
{
    m_isShifting = false;
    if (m_predecessorsCount > 1)
        QFile::remove(shiftMark());
}

QString LogRotation::archive() const
{
    return filename(1) + s_archiveSuffix;
}

QString LogRotation::shiftMark() const
{
    return m_primary + QLatin1String(".rotating");
}

// Without a gap it is the number of the oldest predecessor.
int LogRotation::firstGap(const QString& suffix) const
{
    int index = 1;
    while (index < m_predecessorsCount && QFile::exists(filename(index) + suffix))
        ++index;
    return index;
}
