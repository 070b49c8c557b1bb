#include "logging/sinklist_p.h"

#include <algorithm>

LogSink::~LogSink() = default;

thread_local bool SinkList::s_isWritingHere = false;

void SinkList::add(LogSink* sink)
{
    const QMutexLocker locker(m_mutex.get());
    m_sinks.append(sink);
    m_isEmpty = false;
}

// A sink may remove itself while write() goes through the list.
void SinkList::remove(LogSink* sink)
{
    if (m_isEmpty)
        return;
    const QMutexLocker locker(m_mutex.get());
    std::replace(m_sinks.begin(), m_sinks.end(), sink, static_cast<LogSink*>(nullptr));
    if (s_isWritingHere)
        return;
    m_sinks.removeAll(nullptr);
    m_isEmpty = m_sinks.isEmpty();
}

void SinkList::write(const LogRecord& record)
{
    if (m_isEmpty)
        return;
    const QMutexLocker locker(m_mutex.get());
    s_isWritingHere = true;
    for (int i = 0; i < m_sinks.size(); ++i) {
        if (LogSink* const sink = m_sinks.at(i))
            sink->write(record);
    }
    s_isWritingHere = false;
}

// The mutex of the parent may be locked and is left alone for ever.
void SinkList::forgetInChild()
{
    static_cast<void>(m_mutex.release());
    m_mutex = std::make_unique<zeltools::RecursiveMutex>();
    m_sinks.clear();
    m_isEmpty = true;
    s_isWritingHere = false;
}
