#include "logging/tracedelivery_p.h"

#include "logging/logbuffer_p.h"
#include "logging/logmodule.h"
#include "logging/sinklist_p.h"

#include <QDateTime>

#include <unistd.h>

TraceDelivery::TraceDelivery(RotatingLogFile* file, const std::function<void()>& waitForQueue)
    : m_file(file)
    , m_waitForQueue(waitForQueue)
    , m_process(getpid())
{
}

TraceDelivery::~TraceDelivery()
{
    leaveRing();
}

void TraceDelivery::setRingAllowed(const RotatingLogFileConfiguration& configuration,
                                   const LogModule& module)
{
    m_configuration = configuration;
    m_modules = LogModules(module).bits();
    m_isRingAllowed = true;
}

void TraceDelivery::waitForRing()
{
    LogBuffer* buffer = nullptr; // buffers are never destroyed
    {
        const std::shared_lock<std::shared_mutex> lock(m_mutex);
        buffer = m_place >= 0 ? m_buffer : nullptr;
    }
    if (buffer != nullptr)
        buffer->flushWithoutLimit();
}

// A sink in the writer thread cannot wait for the ring. A forked child may inherit a locked mutex.
// It has no writer thread either.
void TraceDelivery::add(const QByteArray& line)
{
    if (!m_isRingAllowed || SinkList::isWritingHere() || getpid() != m_process)
        return queue.add(line);
    std::shared_lock<std::shared_mutex> lock(m_mutex);
    while (m_buffer != LogBuffer::current() || !addInWay(line)) {
        lock.unlock();
        changeWay();
        lock.lock();
    }
}

bool TraceDelivery::addInWay(const QByteArray& line)
{
    if (m_place < 0) {
        queue.add(line);
        return true;
    }
    RingLine ringLine = {};
    ringLine.time_ms = QDateTime::currentMSecsSinceEpoch();
    ringLine.modules = m_modules;
    ringLine.level = LogLevel::Debug;
    ringLine.file = qint16(m_place);
    return m_buffer->add(ringLine, line.constData(), line.size());
}

void TraceDelivery::changeWay()
{
    const std::unique_lock<std::shared_mutex> lock(m_mutex);
    LogBuffer* const buffer = LogBuffer::current();
    if (m_buffer == buffer)
        return;
    if (m_place < 0)
        m_waitForQueue();
    leaveRing();
    m_buffer = buffer;
    m_place = buffer != nullptr ? buffer->places().add(m_file, m_configuration) : -1;
}

void TraceDelivery::leaveRing()
{
    if (m_place < 0)
        return;
    m_buffer->flushWithoutLimit();
    m_buffer->places().remove(m_place);
    m_place = -1;
}
