#include "logging/logfilewatch_p.h"

#include "logging/logline_p.h"
#include "logging/logrenderer.h"
#include "logging/monotonicclock_p.h"
#include "logging/primarywriter_p.h"

#include <algorithm>
#include <utility>

namespace
{

// An empty line, which ends a failure in the general file, is not a line of its own.
qint64 countLines(const char* text, qint64 length)
{
    qint64 count = 0;
    for (qint64 i = 0; i < length; ++i) {
        if (text[i] != '\n' && (i == 0 || text[i - 1] == '\n'))
            ++count;
    }
    return count;
}

} // namespace

LogFileWatch::LogFileWatch(LogManager::LogFileId id, RotatingLogFile& file, PrimaryWriter& writer,
                           std::function<void()> changed)
    : m_id(id)
    , m_file(file)
    , m_writer(writer)
    , m_changed(std::move(changed))
{
}

void LogFileWatch::open()
{
    const QMutexLocker locker(m_file.mutex());
    m_isOpened = true;
    m_nextOpening_ms = 0;
    if (!tryToOpen())
        judge(true, 0);
    else if (m_isFailing)
        writeLocked("", 0);
}

void LogFileWatch::close()
{
    const QMutexLocker locker(m_file.mutex());
    m_isOpened = false;
    m_file.file.close();
}

// A write that has failed has changed nothing, and is repeated under the mutex to learn the reason.
void LogFileWatch::write(const char* text, qint64 length)
{
    const bool isWritten = !m_isFailing && m_file.write(text, length) == length;
    if (isWritten && !m_writer.hasFault())
        return;
    const QMutexLocker locker(m_file.mutex());
    if (isWritten)
        judge(!m_writer.isDeleted(), countLines(text, length));
    else
        writeLocked(text, length);
}

void LogFileWatch::writeLocked(const char* text, qint64 length)
{
    if (!m_isOpened)
        return;
    bool isKept = false;
    if (m_file.file.isOpen() || tryToOpen()) {
        const QByteArray bytes = report() + QByteArray::fromRawData(text, int(length));
        isKept = m_file.write(bytes) == bytes.size() && !m_writer.isDeleted();
        if (isKept)
            m_missing = 0;
    }
    judge(isKept, countLines(text, length));
}

// Only a line of full length shows whether a rotation succeeds.
void LogFileWatch::retry()
{
    if (!m_isFailing || !m_file.mutex()->tryLock())
        return;
    const qint64 now_ms = monotonicMilliseconds();
    if (m_isFailing && m_fault.step != LogFileFault::Rotating && now_ms >= m_nextRetry_ms) {
        m_nextRetry_ms = now_ms + retryInterval_ms;
        writeLocked("", 0);
    }
    m_file.mutex()->unlock();
}

bool LogFileWatch::tryToOpen()
{
    const qint64 now_ms = monotonicMilliseconds();
    if (now_ms < m_nextOpening_ms)
        return false;
    m_nextOpening_ms = now_ms + retryInterval_ms;
    m_fault = {}; // the reason may be another one now
    if (!m_file.file.open(QIODevice::Append))
        return false;
    m_file.endHalfLine();
    return true;
}

// The state follows what the last write or opening has left. On a full disk, thousands of lines in
// a second come here, so a reason is only put into words when it is a new one.
void LogFileWatch::judge(bool isKept, qint64 linesCount)
{
    const qint64 now_ms = monotonicMilliseconds();
    const qint64 linesLost = isKept ? 0 : linesCount;
    m_missing += linesLost;
    const LogFileFault fault = LogFileFault::of(m_file, m_writer, isKept);
    {
        const QMutexLocker locker(&m_healthMutex);
        m_health.linesNotWritten += linesLost;
        if (fault != m_fault)
            m_health.reason = fault.reason(m_file);
    }
    m_fault = fault;
    if (fault.step != LogFileFault::None)
        begin(now_ms);
    else if (m_isFailing)
        end();
}

// Failures that come and go faster than Warnings may be printed get theirs when they last longer.
void LogFileWatch::begin(qint64 now_ms)
{
    if (!m_isWarned && now_ms >= m_nextWarning_ms) {
        m_isWarned = true;
        m_nextWarning_ms = now_ms + warningInterval_ms;
        warn(health().reason);
    }
    if (m_isFailing)
        return;
    {
        const QMutexLocker locker(&m_healthMutex);
        m_health.isHealthy = false;
        m_health.failingSince = QDateTime::currentDateTime();
        m_since = m_health.failingSince.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz"));
    }
    m_isFailing = true;
    m_changed();
}

void LogFileWatch::end()
{
    qint64 total = 0;
    {
        const QMutexLocker locker(&m_healthMutex);
        m_health.isHealthy = true;
        m_health.failingSince = QDateTime();
        m_health.reason.clear();
        total = m_health.linesNotWritten;
    }
    m_isFailing = false;
    if (std::exchange(m_isWarned, false))
        warn(QStringLiteral("The fault is gone. %1 lines were not written since the start")
                 .arg(total));
    m_changed();
}

void LogFileWatch::warn(const QString& text) const
{
    LogLine(LogLevel::Warning,
            QStringLiteral("Log file %1: %2").arg(m_file.primaryFilename(), text))
        .print();
}

// The report has the form of the other lines in the file. In the events file it has the kind of
// events without a kind, which only the unfiltered history shows.
QByteArray LogFileWatch::report() const
{
    if (m_missing == 0)
        return QByteArray();
    QString text = QStringLiteral("%1 lines are missing here since %2. %3")
                       .arg(m_missing)
                       .arg(m_since, health().reason);
    LogLevel::Level level = LogLevel::Warning;
    if (m_id == LogManager::Grinder) {
        level = LogLevel::Grinder;
    } else if (m_id == LogManager::Capsule) {
        level = LogLevel::Capsule;
    } else if (m_id == LogManager::Events) {
        level = LogLevel::Event;
        text = QStringLiteral(" %1| %2").arg(LogRenderer::eventToString(LogEventModule::NoneEvent),
                                             text);
    }
    const LogLine line(level, text);
    return QByteArray(line.data(), line.size());
}

LogFileHealth LogFileWatch::health() const
{
    const QMutexLocker locker(&m_healthMutex);
    return m_health;
}
