#include "logging/logbuffer_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/urgentlevel_p.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <unistd.h>

using namespace std::chrono_literals;

namespace
{

// The buffers that were stopped.
std::vector<std::unique_ptr<LogBuffer>>& stopped()
{
    static auto* const buffers = new std::vector<std::unique_ptr<LogBuffer>>;
    return *buffers;
}

thread_local qint32 s_thread = 0;

using Clock = std::chrono::steady_clock;

Clock::time_point deadlineAfter(std::chrono::milliseconds timeout)
{
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24);
    return Clock::now() + std::clamp(timeout, std::chrono::milliseconds(0), longest);
}

// The part of the ring that lines of the level may fill.
quint64 limit(quint8 level, quint64 capacity)
{
    if (level == LogLevel::Debug)
        return capacity / 2;
    if (level == LogLevel::Warning || isUrgentLevel(level))
        return capacity - RingFile::reserve_B;
    return capacity / 4 * 3;
}

} // namespace

std::atomic<LogBuffer*> LogBuffer::s_current{nullptr};
std::atomic<LogBuffer*> LogBuffer::s_latest{nullptr};
std::atomic<void (*)()> LogBuffer::s_lossReceiver{[] {}};

bool LogBuffer::start(const LogDelivery& delivery, const QStringList& folders, LogFileSet& files,
                      SinkList& sinks, QString& error)
{
    if (current() != nullptr)
        return false;
    for (const QString& folder : folders) {
        if (auto ring = RingFile::create(folder, delivery.ringSize_B, error)) {
            flushAtExit();
            if (LogBuffer* const before = s_latest)
                ring->header().losses.continueFrom(before->m_ring->header().losses);
            auto buffer =
                std::unique_ptr<LogBuffer>(new LogBuffer(delivery, std::move(ring), files, sinks));
            if (!buffer->m_writer.start(error)) {
                buffer->m_ring->remove();
                return false;
            }
            s_latest = buffer.release();
            s_current = s_latest.load();
            return true;
        }
    }
    return false;
}

// A host that returns from main() without finalizeLogFiles() needs no recovery.
void LogBuffer::flushAtExit()
{
    static const int handler = std::atexit([] {
        if (LogBuffer* const buffer = current())
            buffer->finish(1s);
    });
    Q_UNUSED(handler)
}

bool LogBuffer::stop(std::chrono::milliseconds timeout)
{
    LogBuffer* const buffer = current();
    if (buffer == nullptr)
        return true;
    const Time deadline = deadlineAfter(timeout);
    buffer->finish(timeout);
    buffer->m_ring->lines().close();
    const bool isDone = buffer->flushUntil(deadline);
    s_current = nullptr;
    stopped().emplace_back(buffer);
    if (!isDone) {
        buffer->m_writer.detach();
        return false;
    }
    buffer->m_writer.end();
    buffer->tellLastLosses();
    buffer->m_ring->remove();
    return true;
}

void LogBuffer::forgetInChild()
{
    s_thread = 0;
    s_current = nullptr;
    if (LogBuffer* const buffer = s_latest)
        buffer->m_ring->releaseInChild();
    for (const std::unique_ptr<LogBuffer>& buffer : stopped())
        buffer->m_ring->releaseInChild();
}

LogBuffer::LogBuffer(const LogDelivery& delivery, std::unique_ptr<RingFile> ring, LogFileSet& files,
                     SinkList& sinks)
    : m_fullRingWait(delivery.fullRingWait)
    , m_ring(std::move(ring))
    , m_places(m_ring->header(), files)
    , m_writer(*m_ring, m_places, sinks, [this] { giveUp(); })
{
}

qint32 LogBuffer::thread()
{
    if (s_thread == 0)
        s_thread = gettid();
    return s_thread;
}

bool LogBuffer::add(RingLine line, const char* text, int size)
{
    line.thread = thread();
    Time deadline;
    if (isUrgentLevel(line.level))
        deadline = deadlineAfter(m_fullRingWait);
    if (!addInTime(line, text, size, deadline)) {
        if (m_ring->lines().isClosed())
            return waitForStop();
        m_ring->header().losses.add(LogLevel::Level(line.level), line.modules);
        m_writer.noteLoss();
        s_lossReceiver.load()();
    } else if (line.level == LogLevel::Critical && !RingWriter::isHere()) {
        flushUntil(deadline);
    }
    m_writer.wakeFromLongSleep();
    return true;
}

bool LogBuffer::waitForStop()
{
    while (current() == this && !RingWriter::isHere())
        std::this_thread::sleep_for(1ms);
    return false;
}

bool LogBuffer::addInTime(const RingLine& line, const char* text, int size, Time deadline)
{
    const quint64 limit_B = limit(line.level, m_ring->capacity());
    if (m_ring->add(line, text, size, limit_B))
        return true;
    const quint64 length = LineRing<>::lengthOf(quint32(sizeof line) + quint32(size));
    if (!isUrgentLevel(line.level) || RingWriter::isHere() || length > limit_B)
        return false;
    while (Clock::now() < deadline && !m_ring->lines().isClosed()) {
        std::this_thread::sleep_for(1ms);
        if (m_ring->add(line, text, size, limit_B))
            return true;
    }
    return false;
}

bool LogBuffer::flush(std::chrono::milliseconds timeout)
{
    return flushUntil(deadlineAfter(timeout));
}

bool LogBuffer::flushUntil(Time deadline)
{
    if (RingWriter::isHere()) // a sink, which cannot wait for itself
        return false;
    const auto lines = m_ring->lines();
    const quint64 end = lines.head();
    auto pause = 50us;
    while (lines.written() < end) {
        if (m_writer.isEnded() || Clock::now() >= deadline)
            return false;
        m_writer.wake();
        std::this_thread::sleep_for(pause);
        pause = std::min<std::chrono::microseconds>(pause * 2, 1ms);
    }
    return true;
}

// The losses are told, too, for which the lines make room.
bool LogBuffer::finish(std::chrono::milliseconds timeout)
{
    const Time deadline = deadlineAfter(timeout);
    m_writer.hurry();
    while (flushUntil(deadline) && m_writer.hasNewLosses()) {
        m_writer.wake();
        std::this_thread::sleep_for(1ms);
        if (Clock::now() >= deadline)
            return false;
    }
    return flushUntil(deadline);
}

void LogBuffer::flushWithoutLimit()
{
    while (!flush(1s) && !m_writer.isEnded() && !RingWriter::isHere()) {
    }
}

LogLosses LogBuffer::losses()
{
    LogBuffer* const buffer = s_latest;
    return buffer != nullptr ? LossCounts::losses(buffer->m_ring->header().losses.lost())
                             : LogLosses();
}

// The ring takes no lines any more, but the files are open.
void LogBuffer::tellLastLosses()
{
    LossCounts& losses = m_ring->header().losses;
    if (!losses.isUntold())
        return;
    const LossCounts::Counts lost = losses.lost();
    LogFormatter(LogLevel::Warning).log(Log::Global).noquote()
        << losses.text(lost, m_ring->header().process);
    losses.setTold(lost);
}

// Somebody has written to the ring. What is in it stays for a look by hand.
void LogBuffer::giveUp()
{
    LogBuffer* self = this;
    s_current.compare_exchange_strong(self, nullptr);
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "The ring of log lines is damaged; lines are written immediately:" << m_ring->path();
}
