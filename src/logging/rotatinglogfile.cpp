#include "logging/rotatinglogfile.h"

#include "logging/log.h"
#include "logging/logcompression_p.h"
#include "logging/logcontent_p.h"
#include "logging/logformatter.h"
#include "logging/logrotation_p.h"
#include "logging/primarywriter_p.h"
#include <zeltools/platform.h>

#include <algorithm>

namespace
{

QStringList ordered(QStringList newestFirst, RotatingLogFile::Order order)
{
    if (order == RotatingLogFile::OldestFirst)
        std::reverse(newestFirst.begin(), newestFirst.end());
    return newestFirst;
}

} // namespace

CompressionTask::~CompressionTask() = default;

RotatingLogFile::RotatingLogFile(const RotatingLogFileConfiguration& configuration, QObject* parent)
    : QObject(parent)
    , m_writer(std::make_unique<PrimaryWriter>(file))
    , m_compression(std::make_unique<LogCompression>(this))
    , m_rotation(std::make_unique<LogRotation>(configuration, file, *m_writer, *m_compression))
{
    connect(this, &RotatingLogFile::workCompleted, this, &RotatingLogFile::completeWork,
            Qt::DirectConnection);
    connect(
        &file, &QIODevice::aboutToClose, this, [this] { m_writer->forget(); },
        Qt::DirectConnection);
}

RotatingLogFile::~RotatingLogFile()
{
    m_compression->wait();
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
    m_rotation->setPrimary(filename);
    file.setFileName(filename);
    return true;
}

void RotatingLogFile::setMaximumSizeMiB(double size_MiB)
{
    const QMutexLocker locker(&m_mutex);
    m_rotation->setMaximumSizeMiB(size_MiB);
}

qint64 RotatingLogFile::maximumSize_B() const
{
    const QMutexLocker locker(&m_mutex);
    return m_rotation->maximumSize_B();
}

void RotatingLogFile::setSecondaryFilesCount(int count)
{
    const QMutexLocker locker(&m_mutex);
    m_rotation->setPredecessorsCount(count);
}

void RotatingLogFile::enableDeletedFilesStorage(bool enable)
{
    const QMutexLocker locker(&m_mutex);
    m_deletedFilesStorage = enable;
}

QString RotatingLogFile::filename(int index) const
{
    const QMutexLocker locker(&m_mutex);
    return m_rotation->filename(index);
}

QStringList RotatingLogFile::filenames(Order order) const
{
    const QMutexLocker locker(&m_mutex);
    return ordered(m_rotation->filenames(), order);
}

QStringList RotatingLogFile::deletedFilenames(Order order) const
{
    const QMutexLocker locker(&m_mutex);
    return ordered(m_rotation->deletedFilenames(), order);
}

bool RotatingLogFile::isReady() const
{
    const QMutexLocker locker(&m_mutex);
    return isWritable();
}

bool RotatingLogFile::isWritable() const
{
    return m_rotation->maximumSize_B() > 0 && !m_rotation->primary().isEmpty() && file.isOpen();
}

bool RotatingLogFile::isLinux() const
{
    return platform::isBoard;
}

bool RotatingLogFile::dataWritten() const
{
    const QMutexLocker locker(&m_mutex);
    return m_writer->hasUnsyncedData();
}

qint64 RotatingLogFile::write(const char* data, qint64 length)
{
    QMutexLocker locker(&m_mutex);
    if (length < 0 || !isWritable())
        return -1;
    m_writer->follow();
    if (file.bytesToWrite() > 0)
        m_writer->flush();
    const qint64 growth_B = m_writer->growth_B(length);
    if (m_writer->size_B() < 0 ||
        (m_rotation->isDue(m_writer->size_B() + growth_B) && file.isLocked()))
        rotateIfNeeded(growth_B);
    else
        m_writer->setError(PrimaryWriter::Rotating, 0);
    const qint64 written = m_writer->append(data, length);
    if (!m_writer->takeWarning())
        return written;
    // The Warning may come back to this file, and its receivers may have locks of their own.
    const QString name = m_rotation->primary();
    locker.unlock();
    LogFormatter(LogLevel::Warning).log(Log::Global)
        << "qint64 RotatingLogFile::write(const char*, qint64)"
        << "Another writer, which alone rotates it, has the log file" << name;
    return written;
}

void RotatingLogFile::sync()
{
    const QMutexLocker locker(&m_mutex);
    m_writer->flush();
    m_writer->setUnsyncedData(false);
}

void RotatingLogFile::onDataWritten()
{
    const QMutexLocker locker(&m_mutex);
    m_writer->flush();
    m_writer->setUnsyncedData(true);
}

void RotatingLogFile::endHalfLine()
{
    const QMutexLocker locker(&m_mutex);
    if (isWritable())
        m_writer->endHalfLine();
}

bool RotatingLogFile::rotateIfNeeded(qint64 incoming)
{
    const QMutexLocker locker(&m_mutex);
    if (file.isOpen())
        m_writer->follow();
    m_writer->updateSize(); // others may have cut or extended the file
    if (m_rotation->isDue(m_writer->size_B() + incoming))
        m_rotation->rotate();
    return true;
}

void RotatingLogFile::deleteFile()
{
    const QMutexLocker locker(&m_mutex);
    sync();
    m_rotation->deleteFiles(m_deletedFilesStorage);
}

bool RotatingLogFile::deleteFileByName(const QString& name)
{
    const QMutexLocker locker(&m_mutex);
    return QFile::remove(name);
}

QStringList RotatingLogFile::getLogLines(const QString& path)
{
    return logcontent::lines(path);
}

QString RotatingLogFile::totalContent(Order order) const
{
    const QMutexLocker locker(&m_mutex);
    return isWritable() ? logcontent::total(readableFiles(), order) : QString();
}

QString RotatingLogFile::pageContent(unsigned firstLine, unsigned lastLine, Order order) const
{
    const QMutexLocker locker(&m_mutex);
    return isWritable() ? logcontent::page(readableFiles(), firstLine, lastLine, order) : QString();
}

// The primary is readable with a negative number of predecessors, too.
QStringList RotatingLogFile::readableFiles() const
{
    const QStringList names = m_rotation->filenames();
    return names.isEmpty() ? QStringList(m_rotation->primary()) : names;
}

void RotatingLogFile::compressFile(const QString& source, RotatingLogFile* target)
{
    const QString archive = target->filename(0) + QLatin1String(".1.tar.gz");
    if (LogCompression::pack(source, archive, *target)) {
        Q_EMIT target->workCompleted(source);
        return;
    }
    Q_EMIT target->workCompleted(QString());
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "static void RotatingLogFile::compressFile(const QString&, RotatingLogFile*)"
        << "Failed to compress " << source;
}

// A compression that the owner runs is completed in the thread of this object. The file's own
// compression is completed in its worker, because the thread of this object may run no event loop,
// and in a queued call the source could be the next P.1 already.
void RotatingLogFile::completeWork(const QString& name)
{
    if (!m_compression->isInWorker()) {
        QMetaObject::invokeMethod(this, [this, name] { onWorkCompleted(name); });
        return;
    }
    onWorkCompleted(name);
    const QMutexLocker locker(&m_mutex);
    m_compression->end(m_writer->size_B() + m_rotation->maximumSize_B());
}

void RotatingLogFile::onWorkCompleted(const QString& name)
{
    if (!name.isEmpty() && !deleteFileByName(name)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void RotatingLogFile::onWorkCompleted(const QString&)"
            << "Failed to delete file after compression" << name;
    }
}
