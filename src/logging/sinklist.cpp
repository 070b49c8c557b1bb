#include "logging/sinklist_p.h"

#include <algorithm>

LogSink::~LogSink() = default;

thread_local bool SinkList::s_isWritingHere = false;

void SinkList::add(LogSink* sink)
{
    const QMutexLocker locker(&m_mutex);
    m_sinks.append(sink);
    m_isEmpty = false;
}

// A sink may remove itself while write() goes through the list.
void SinkList::remove(LogSink* sink)
{
    const QMutexLocker locker(&m_mutex);
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
    const QMutexLocker locker(&m_mutex);
    s_isWritingHere = true;
    for (int i = 0; i < m_sinks.size(); ++i) {
        if (LogSink* const sink = m_sinks.at(i))
            sink->write(record);
    }
    s_isWritingHere = false;
}
