#include "logging/logrouter_p.h"

#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logline_p.h"
#include "logging/logrenderer.h"

#include <QThread>

LogRouter::LogRouter(LogManager& manager, LogFileSet& files)
    : m_manager(manager)
    , m_files(files)
{
}

void LogRouter::log(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    if (!m_isQueueing || m_manager.thread() == QThread::currentThread())
        writeNow(level, modules, message);
    else if (m_queue.add({level, modules, message}))
        postWriteNext();
}

void LogRouter::writeQueuedLines()
{
    bool hasMore = false;
    while (const std::optional<LineQueue::Line> line = m_queue.take(hasMore))
        writeNow(line->level, line->modules, line->message);
}

// Each posted call writes one line and posts the next call before, since a receiver of the line may
// run an event loop, which is to write the other lines.
void LogRouter::postWriteNext()
{
    const auto writeNext = [this] {
        bool hasMore = false;
        const std::optional<LineQueue::Line> line = m_queue.take(hasMore);
        if (hasMore)
            postWriteNext();
        if (line)
            writeNow(line->level, line->modules, line->message);
    };
    QMetaObject::invokeMethod(&m_manager, writeNext, Qt::QueuedConnection);
}

void LogRouter::writeNow(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    if (!m_manager.isPrinted(level, modules))
        return;
    const auto line = [&] { return LogRenderer::formattedMessage(level, message); };
    // A line whose only module is Failure is a failure at every level.
    if (modules == Log::Failure)
        return writeFailure(line());
    switch (level) {
    case LogLevel::Event:
        return writeEvent(line());
    case LogLevel::Grinder:
        return writeGrinder(line());
    case LogLevel::Capsule:
        return write(LogManager::Capsule, line());
    case LogLevel::M4:
        return write(LogManager::M4ActuatorBoard, line());
    default:
        writeGeneral(LogLine(level, message));
    }
}

void LogRouter::writeGeneral(const LogLine& line)
{
    line.print();
    if (m_isGeneralFileEnabled)
        m_files.write(LogManager::General, line.data(), line.size());
}

void LogRouter::writeFailure(const QString& line)
{
    LogLine(line).print();
    const QString ended = line + QLatin1Char('\n');
    writeGeneral(LogLine(ended));
    Q_EMIT m_manager.failureLogged(ended);
}

void LogRouter::writeEvent(const QString& line)
{
    writeAndAnnounce(LogManager::Events, line, &LogManager::eventLogged);
}

void LogRouter::writeGrinder(const QString& line)
{
    if (m_manager.isPrinted(LogLevel::Debug, Log::GrinderRegulation))
        writeAndAnnounce(LogManager::Grinder, line, &LogManager::grinderLogged);
}

void LogRouter::write(LogManager::LogFileId id, const QString& line)
{
    const LogLine bytes(line);
    m_files.write(id, bytes.data(), bytes.size());
}

// The lock of the file is held until all receivers of the signal have returned, so that the file
// that they read ends with this line.
void LogRouter::writeAndAnnounce(LogManager::LogFileId id, const QString& line,
                                 void (LogManager::*announce)(const QString&))
{
    const QMutexLocker locker(m_files.mutex(id));
    const LogLine bytes(line);
    bytes.print();
    m_files.write(id, bytes.data(), bytes.size());
    Q_EMIT(m_manager.*announce)(line + QLatin1Char('\n'));
}
