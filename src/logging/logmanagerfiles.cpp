// The five files of LogManager.

#include "logging/logmanager.h"

#include "logging/linequeue_p.h"
#include "logging/logfileset_p.h"
#include "path.h"

#include <QThread>

void LogManager::initLogFiles()
{
    static const LogFileSet::Settings settings =
        LogFileSet::settings(Path::instance()->debugLogsDir, Path::instance()->eventLogsDir);
    m_files->open(settings);
}

void LogManager::finalizeLogFiles()
{
    // Lines of other threads that wait for this one belong into the files too.
    if (thread() == QThread::currentThread()) {
        bool hasMore = false;
        while (const std::optional<LineQueue::Line> line = m_queue->take(hasMore))
            logNow(line->level, line->modules, line->message);
    }
    m_files->close();
}

void LogManager::syncLogs()
{
    m_files->sync();
}

void LogManager::writeLogFile(LogFileId id, const QString& text)
{
    const QByteArray bytes = text.toLocal8Bit();
    m_files->write(id, bytes.constData(), bytes.size());
}

QString LogManager::logContent(bool truncate)
{
    constexpr int threshold = 5000;
    constexpr int kept = 50000;
    QString content = totalContent(General);
    if (!truncate || content.size() <= threshold)
        return content;
    return QLatin1String("---- Log truncated ----\r\n") + content.right(kept);
}

QString LogManager::totalContent(LogFileId id) const
{
    const RotatingLogFile* log = m_files->file(id);
    return log != nullptr ? log->totalContent(RotatingLogFile::OldestFirst) : QString();
}

QString LogManager::eventLogTotalContent()
{
    return totalContent(Events);
}

QString LogManager::appLogFilePath()
{
    const RotatingLogFile* log = m_files->file(General);
    return log != nullptr ? log->primaryFilename() : QString();
}

void LogManager::setAppLogFileMaximumSizeMiB(double size_MiB)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setMaximumSizeMiB(size_MiB);
}

void LogManager::setAppLogFileSecondaryFilesCount(int count)
{
    if (RotatingLogFile* log = m_files->file(General))
        log->setSecondaryFilesCount(count);
}

void LogManager::deleteLogFile(LogFileId id)
{
    if (RotatingLogFile* log = m_files->file(id))
        log->deleteFile();
}

void LogManager::deleteEventFile()
{
    deleteLogFile(Events);
}

void LogManager::deleteGrinderFile()
{
    deleteLogFile(Grinder);
}

void LogManager::deleteGeneralFile()
{
    deleteLogFile(General);
}

zeltools::RecursiveMutex* LogManager::mutexOf(LogFileId id) const
{
    const RotatingLogFile* log = m_files->file(id);
    return log != nullptr ? log->mutex() : nullptr;
}
