#include "logging/rotatinglogfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/openwithoutwaiting_p.h"
#include "logging/renamefile_p.h"
#include "writewhole.h"
#include <zeltools/platform.h>

#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace
{

constexpr qint64 bytes(double size_MiB)
{
    return static_cast<qint64>(size_MiB * 1024 * 1024);
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
    connect(this, &RotatingLogFile::workCompleted, this, &RotatingLogFile::completeWork,
            Qt::DirectConnection);
    // The owner may open the file again, with whatever is in it by then.
    connect(
        &file, &QIODevice::aboutToClose, this,
        [this] {
            m_size_B = -1;
            m_nextCheck_ms = 0;
        },
        Qt::DirectConnection);
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
    QMutexLocker locker(&m_mutex);
    if (length < 0 || m_maximumSize_B <= 0 || m_primaryFilename.isEmpty() || !file.isOpen())
        return -1;
    const qint64 written = append(data, length);
    const bool isSharingToTell = std::exchange(m_isSharingToTell, false);
    locker.unlock(); // the line may come back to this file, and its receivers may have locks too
    if (isSharingToTell) {
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << "qint64 RotatingLogFile::write(const char*, qint64)"
            << "Another writer, which alone rotates it, has the log file" << m_primaryFilename;
    }
    return written;
}

qint64 RotatingLogFile::append(const char* data, qint64 length)
{
    checkOutsideChange();
    if (file.bytesToWrite() > 0)
        flush();
    const qint64 incoming = length + (m_hasHalfLine ? 1 : 0);
    const bool mayRotate = m_secondaryFilesCount > 0 && file.isLocked();
    if (m_size_B < 0 || (mayRotate && m_size_B + incoming > m_maximumSize_B))
        rotateIfNeeded(incoming);

    // Past the buffer of QFile, which would keep what a full disk refuses, without bound.
    if (m_hasHalfLine && zeltools::writeWhole(file.handle(), "\n", 1) == 1) {
        m_hasHalfLine = false;
        ++m_size_B;
    }
    if (m_hasHalfLine || file.bytesToWrite() > 0)
        return -1;
    const qint64 written = zeltools::writeWhole(file.handle(), data, size_t(length));
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

void RotatingLogFile::sync()
{
    const QMutexLocker locker(&m_mutex);
    flush();
    m_dataWritten = false;
}

void RotatingLogFile::onDataWritten()
{
    const QMutexLocker locker(&m_mutex);
    flush();
    m_dataWritten = true;
}

// QFile holds back what its owner has written to it, and hands it on a block at a time.
void RotatingLogFile::flush()
{
    if (!file.isOpen())
        return;
    while (file.bytesToWrite() > 0) {
        m_size_B = -1;
        if (!file.flush())
            return;
    }
}

void RotatingLogFile::endHalfLine()
{
    const QMutexLocker locker(&m_mutex);
    m_hasHalfLine = false;
    const int reader = openWithoutWaiting(m_primaryFilename, O_RDONLY);
    if (reader < 0)
        return;
    char last = '\n';
    m_hasHalfLine = isReady() && lseek(reader, -1, SEEK_END) >= 0 &&
                    ::read(reader, &last, 1) == 1 && last != '\n';
    ::close(reader);
}

void RotatingLogFile::deleteFile()
{
    const QMutexLocker locker(&m_mutex);
    sync();
    const QStringList names = filenames(NewestFirst);
    if (m_deletedFilesStorage) {
        const QStringList deleted = deletedFilenames(NewestFirst);
        for (int i = 0; i < names.size(); ++i)
            takePlace(names[i], deleted[i]);
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
