#include "logging/rotatinglogfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/writewhole_p.h"
#include <zeltools/platform.h>

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace
{

constexpr qint64 bytes(double size_MiB)
{
    return static_cast<qint64>(size_MiB * 1024 * 1024);
}

qint64 monotonicMilliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

bool renameFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

// A gap in the numbering moves up like a file. (Letting rename() replace `to` would save a step,
// but makes ext4 push the whole file to the disk there and then, in the thread that logs.)
void moveUp(const QString& from, const QString& to)
{
    QFile::remove(to);
    renameFile(from, to);
}

QString deletedFilename(const QString& filename)
{
    const QFileInfo info(filename);
    return QFileInfo(info.path()).canonicalFilePath() + QLatin1Char('/') + info.baseName() +
           QLatin1String("_deleted.") + info.completeSuffix();
}

} // namespace

CompressionTask::~CompressionTask() = default;

RotatingLogFile::RotatingLogFile(const RotatingLogFileConfiguration& configuration, QObject* parent)
    : QObject(parent)
    , m_maximumSize_B(bytes(double(configuration.maximumSizeMiB)))
    , m_secondaryFilesCount(configuration.secondaryFilesCount)
    , m_compressed(configuration.compressed)
{
    m_compressor.setMaxThreadCount(1);
    connect(this, &RotatingLogFile::workCompleted, this, &RotatingLogFile::onWorkCompleted);
    // The owner may open the file again, with whatever is in it by then.
    connect(
        &file, &QIODevice::aboutToClose, this, [this] { m_size_B = -1; }, Qt::DirectConnection);
}

RotatingLogFile::~RotatingLogFile()
{
    m_compressor.waitForDone();
    disconnect(&file, nullptr, this, nullptr);
}

bool RotatingLogFile::setPrimaryFilename(const QString& filename)
{
    QMutexLocker locker(&m_mutex);
    if (file.isOpen()) {
        locker.unlock();
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "bool RotatingLogFile::setPrimaryFilename(const QString&)"
            << "File is already opened !";
        return false;
    }
    m_primaryFilename = filename;
    file.setFileName(filename);
    return true;
}

QString RotatingLogFile::primaryFilename() const
{
    const QMutexLocker locker(&m_mutex);
    return m_primaryFilename;
}

void RotatingLogFile::setMaximumSizeMiB(double size_MiB)
{
    const QMutexLocker locker(&m_mutex);
    m_maximumSize_B = bytes(size_MiB);
}

qint64 RotatingLogFile::maximumSize_B() const
{
    const QMutexLocker locker(&m_mutex);
    return m_maximumSize_B;
}

void RotatingLogFile::setSecondaryFilesCount(int count)
{
    const QMutexLocker locker(&m_mutex);
    m_secondaryFilesCount = count;
}

void RotatingLogFile::enableDeletedFilesStorage(bool enable)
{
    const QMutexLocker locker(&m_mutex);
    m_deletedFilesStorage = enable;
}

QString RotatingLogFile::filename(int index) const
{
    const QMutexLocker locker(&m_mutex);
    if (index < 0 || m_primaryFilename.isEmpty())
        return QString();
    return index == 0 ? m_primaryFilename
                      : m_primaryFilename + QLatin1Char('.') + QString::number(index);
}

QStringList RotatingLogFile::filenames(Order order) const
{
    const QMutexLocker locker(&m_mutex);
    QStringList names;
    for (int i = 0; i <= m_secondaryFilesCount; ++i)
        names.append(filename(i));
    if (order == OldestFirst)
        std::reverse(names.begin(), names.end());
    return names;
}

QStringList RotatingLogFile::deletedFilenames(Order order) const
{
    QStringList names = filenames(order);
    std::transform(names.begin(), names.end(), names.begin(), deletedFilename);
    return names;
}

bool RotatingLogFile::isReady() const
{
    const QMutexLocker locker(&m_mutex);
    return m_maximumSize_B > 0 && !m_primaryFilename.isEmpty() && file.isOpen();
}

bool RotatingLogFile::isLinux() const
{
    return platform::isBoard;
}

bool RotatingLogFile::dataWritten() const
{
    const QMutexLocker locker(&m_mutex);
    return m_dataWritten;
}

qint64 RotatingLogFile::write(const char* data, qint64 length)
{
    const QMutexLocker locker(&m_mutex);
    if (m_maximumSize_B <= 0 || m_primaryFilename.isEmpty() || !file.isOpen())
        return -1;
    checkOutsideChange();
    const qint64 incoming = length + (m_hasHalfLine ? 1 : 0);
    if (m_size_B < 0 || m_size_B + incoming > m_maximumSize_B)
        rotateIfNeeded(incoming);

    // Past the buffer of QFile, which would keep what a full disk refuses, without bound.
    if (m_hasHalfLine && writeWhole(file.handle(), "\n", 1) == 1) {
        m_hasHalfLine = false;
        ++m_size_B;
    }
    if (m_hasHalfLine)
        return -1;
    const qint64 written = writeWhole(file.handle(), data, size_t(length));
    if (written == length) {
        m_size_B += length;
        m_dataWritten = true;
        return written;
    }
    if (written > 0) {
        const off_t end = lseek(file.handle(), 0, SEEK_CUR);
        m_hasHalfLine = ftruncate(file.handle(), end - written) != 0;
    }
    return -1;
}

qint64 RotatingLogFile::write(const char* text)
{
    return write(text, static_cast<qint64>(std::strlen(text)));
}

qint64 RotatingLogFile::write(const QByteArray& data)
{
    return write(data.constData(), data.size());
}

bool RotatingLogFile::rotateIfNeeded(qint64 incoming)
{
    const QMutexLocker locker(&m_mutex);
    m_size_B = file.size(); // asked anew: others may have cut or extended the file
    if (m_size_B + incoming > m_maximumSize_B && m_secondaryFilesCount > 0)
        rotate();
    return true;
}

// The primary stays open all along: its descriptor is made to refer to the fresh file only when
// there is one. When it does not hold P any more (that step failed last time, or somebody moved P),
// the predecessors stay where they are and just P is opened.
void RotatingLogFile::rotate()
{
    if (!holdsPrimary() || (m_compressed ? shiftCompressed() : shift()))
        reopenPrimary();
}

bool RotatingLogFile::shift()
{
    for (int i = m_secondaryFilesCount; i > 0; --i)
        moveUp(filename(i - 1), filename(i));
    return true;
}

// On the board P becomes P.1, which a worker packs. A P.1 that is being packed, or was left by a
// power cut, comes first and P grows until that is done. Where packing fails, P.1 gives way to the
// next one: the disk stays bounded.
bool RotatingLogFile::shiftCompressed()
{
    const QString source = filename(1);
    if (m_isCompressing)
        return false;
    const bool isLeft = isLinux() && !m_hasCompressionFailed && QFile::exists(source);
    if (!isLeft) {
        const QLatin1String suffix(".tar.gz");
        QFile::remove(filename(m_secondaryFilesCount) + suffix);
        for (int i = m_secondaryFilesCount; i > 1; --i)
            moveUp(filename(i - 1) + suffix, filename(i) + suffix);
        if (!isLinux() || !renameFile(m_primaryFilename, source))
            return false;
    }
    m_isCompressing = true;
    m_compressor.start([this, source] { compressFile(source, this); });
    return !isLeft;
}

void RotatingLogFile::reopenPrimary()
{
    if (!file.isOpen()) {
        file.setFileName(m_primaryFilename);
        file.open(QIODevice::Append);
        return;
    }
    const int fresh = ::open(QFile::encodeName(m_primaryFilename).constData(),
                             O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (fresh < 0) {
        // What is in a deleted file nobody can read; it must not fill the disk unseen either.
        struct stat open;
        if (fstat(file.handle(), &open) == 0 && open.st_nlink == 0 &&
            ftruncate(file.handle(), 0) == 0)
            m_size_B = 0;
        return;
    }
    dup3(fresh, file.handle(), O_CLOEXEC);
    ::close(fresh);
    m_size_B = file.size();
    m_hasHalfLine = false;
}

bool RotatingLogFile::holdsPrimary() const
{
    struct stat open;
    struct stat named;
    if (!file.isOpen())
        return true;
    return fstat(file.handle(), &open) == 0 &&
           stat(QFile::encodeName(m_primaryFilename).constData(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// A folder that was removed and made again, a file moved or cut by a technician: looked for ten
// times a second at most, since asking costs as much as writing.
void RotatingLogFile::checkOutsideChange()
{
    constexpr qint64 interval_ms = 100;
    const qint64 now = monotonicMilliseconds();
    if (now < m_nextCheck_ms)
        return;
    m_nextCheck_ms = now + interval_ms;
    if (!holdsPrimary())
        reopenPrimary();
    m_size_B = file.size();
}

void RotatingLogFile::sync()
{
    const QMutexLocker locker(&m_mutex);
    if (file.isOpen())
        file.flush();
    m_dataWritten = false;
}

void RotatingLogFile::onDataWritten()
{
    const QMutexLocker locker(&m_mutex);
    if (file.isOpen())
        file.flush();
    m_dataWritten = true;
}

void RotatingLogFile::endHalfLine()
{
    const QMutexLocker locker(&m_mutex);
    m_hasHalfLine = false;
    QFile reader(m_primaryFilename);
    if (!isReady() || !reader.open(QIODevice::ReadOnly) || reader.size() == 0)
        return;
    char last = '\n';
    m_hasHalfLine = reader.seek(reader.size() - 1) && reader.getChar(&last) && last != '\n';
}

void RotatingLogFile::deleteFile()
{
    const QMutexLocker locker(&m_mutex);
    sync();
    const QStringList names = filenames(NewestFirst);
    if (m_deletedFilesStorage) {
        const QStringList deleted = deletedFilenames(NewestFirst);
        for (const QString& name : deleted)
            QFile::remove(name);
        for (int i = 0; i < names.size(); ++i)
            renameFile(names[i], deleted[i]);
    } else {
        for (const QString& name : names)
            QFile::remove(name);
    }
    reopenPrimary();
}

bool RotatingLogFile::deleteFileByName(const QString& name)
{
    const QMutexLocker locker(&m_mutex);
    return QFile::remove(name);
}
