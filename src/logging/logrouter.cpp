#include "logging/logrouter_p.h"

#include "logging/log.h"
#include "logging/logbuffer_p.h"
#include "logging/logfileset_p.h"
#include "logging/logline_p.h"
#include "logging/logrenderer.h"
#include "logging/logtail.h"
#include "logging/sinklist_p.h"
#include "logging/standarderror_p.h"

#include <QDateTime>
#include <QThread>

namespace
{

bool hasOwnFile(LogLevel::Level level)
{
    return level == LogLevel::Event || level == LogLevel::Grinder || level == LogLevel::Capsule ||
           level == LogLevel::M4;
}

// Keeps the line for a crash report, before anything that may wait or fail.
void keepForCrash(const char* bytes, int size)
{
    if (LogTail::isEnabled())
        LogTail::add(bytes, size);
}

} // namespace

LogRouter::LogRouter(LogManager& manager, LogFileSet& files, SinkList& sinks)
    : m_manager(manager)
    , m_files(files)
    , m_sinks(sinks)
    , m_folding([this](LogLevel::Level level, const QString& message, const LogModules& modules) {
        writeUnfolded(level, message, modules);
    })
{
}

void LogRouter::log(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    // A line of a sink is not for the sinks, which only this thread can tell.
    if (!m_isQueueing || SinkList::isWritingHere() ||
        m_manager.thread() == QThread::currentThread())
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
    // A line whose only module is Failure is a failure at every level.
    const bool isFailure = modules == Log::Failure;
    if (!isFailure && !hasOwnFile(level))
        return writeGeneral(level, message, modules);
    const QString line = LogRenderer::formattedMessage(level, message);
    RingLine route = this->route(level);
    route.modules = modules.bits();
    route.messageOffset = quint16(line.size() - message.size());
    if (isFailure)
        writeFailure(line, route);
    else if (level == LogLevel::Event)
        writeEvent(line, route);
    else if (level == LogLevel::Grinder)
        writeGrinder(line, route);
    else
        writeToFile(level == LogLevel::Capsule ? LogManager::Capsule : LogManager::M4ActuatorBoard,
                    line, route);
}

RingLine LogRouter::route(LogLevel::Level level, qint64 time_ms)
{
    RingLine route = {};
    route.time_ms = time_ms;
    route.level = quint8(level);
    route.file = -1;
    route.isForSinks = SinkList::isWritingHere() ? 0 : 1;
    return route;
}

void LogRouter::writeGeneral(LogLevel::Level level, const QString& message,
                             const LogModules& modules)
{
    if (m_folding.isEnabled() && !SinkList::isWritingHere())
        m_folding.write(level, message, modules);
    else
        writeUnfolded(level, message, modules);
}

void LogRouter::writeUnfolded(LogLevel::Level level, const QString& message,
                              const LogModules& modules)
{
    const LogLine line(level, message);
    RingLine route = this->route(level, line.moment_ms());
    route.modules = modules.bits();
    route.messageOffset = quint16(line.messageOffset());
    route.isPrinted = 1;
    route.file = generalFile();
    deliver(route, line.data(), line.size());
}

void LogRouter::writeGeneralLine(const QString& line)
{
    RingLine route = this->route(LogLevel::Info);
    route.isPrinted = 1;
    route.file = generalFile();
    const LogLine bytes(line);
    deliver(route, bytes.data(), bytes.size());
}

void LogRouter::writeFailure(const QString& line, RingLine route)
{
    const LogLine bytes(line);
    route.isPrinted = 1;
    deliver(route, bytes.data(), bytes.size());
    const QString ended = line + QLatin1Char('\n');
    const LogLine endedBytes(ended);
    route.file = generalFile();
    route.isForSinks = 0;
    deliverUnkept(route, endedBytes.data(), endedBytes.size());
    Q_EMIT m_manager.failureLogged(ended);
}

void LogRouter::writeEvent(const QString& line, RingLine route)
{
    route.file = LogManager::Events;
    writeAndAnnounce(line, route, &LogManager::eventLogged);
}

void LogRouter::writeGrinder(const QString& line, RingLine route)
{
    route.file = LogManager::Grinder;
    if (m_manager.isPrinted(LogLevel::Debug, Log::GrinderRegulation))
        writeAndAnnounce(line, route, &LogManager::grinderLogged);
}

void LogRouter::writeToFile(LogManager::LogFileId id, const QString& line, RingLine route)
{
    const LogLine bytes(line);
    route.file = id;
    deliver(route, bytes.data(), bytes.size());
}

void LogRouter::writeBytes(LogManager::LogFileId id, const QByteArray& bytes)
{
    RingLine route = this->route(LogLevel::Info);
    route.file = id;
    route.isForSinks = 0;
    deliver(route, bytes.constData(), bytes.size());
}

// In immediate delivery the lock of the file is held until all receivers of the signal have
// returned, so that the file that they read ends with this line. In buffered delivery those who
// read the file flush the ring first.
void LogRouter::writeAndAnnounce(const QString& line, RingLine route,
                                 void (LogManager::*announce)(const QString&))
{
    const LogLine bytes(line);
    route.isPrinted = 1;
    keepForCrash(bytes.data(), bytes.size());
    LogBuffer* const buffer = LogBuffer::current();
    const bool isBuffered = buffer != nullptr && buffer->add(route, bytes.data(), bytes.size());
    if (isBuffered) {
        Q_EMIT(m_manager.*announce)(line + QLatin1Char('\n'));
        return;
    }
    {
        const QMutexLocker locker(m_files.mutex(LogManager::LogFileId(route.file)));
        writeToPlaces(route, bytes.data(), bytes.size());
        Q_EMIT(m_manager.*announce)(line + QLatin1Char('\n'));
    }
    // A sink may log such a line itself, and must not meet a thread that holds the lock.
    writeToSinks(route, bytes.data(), bytes.size());
}

void LogRouter::deliver(const RingLine& route, const char* bytes, int size)
{
    keepForCrash(bytes, size);
    deliverUnkept(route, bytes, size);
}

// For a line that is kept for a crash report already.
void LogRouter::deliverUnkept(const RingLine& route, const char* bytes, int size)
{
    LogBuffer* const buffer = LogBuffer::current();
    if (buffer != nullptr && buffer->add(route, bytes, size))
        return;
    writeToPlaces(route, bytes, size);
    writeToSinks(route, bytes, size);
}

void LogRouter::writeToPlaces(const RingLine& route, const char* bytes, int size)
{
    if (route.isPrinted != 0)
        writeToStandardError(bytes, size_t(size));
    if (route.file >= 0)
        m_files.write(LogManager::LogFileId(route.file), bytes, size,
                      LogFileSet::urgencyOf(LogLevel::Level(route.level)));
}

void LogRouter::writeToSinks(const RingLine& route, const char* bytes, int size)
{
    if (route.isForSinks != 0 && !m_sinks.isEmpty()) {
        const int end = size - 1; // without the line feed
        m_sinks.write(
            {LogLevel::Level(route.level), LogModules::fromBits(route.modules), route.time_ms,
             LogBuffer::thread(),
             QByteArray::fromRawData(bytes + route.messageOffset, end - route.messageOffset)});
    }
}
