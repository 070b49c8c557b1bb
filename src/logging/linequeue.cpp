#include "logging/linequeue_p.h"

bool LineQueue::add(const Line& line)
{
    const QMutexLocker locker(&m_mutex);
    m_lines.enqueue(line);
    return m_lines.size() == 1;
}

std::optional<LineQueue::Line> LineQueue::take(bool& hasMore)
{
    const QMutexLocker locker(&m_mutex);
    hasMore = m_lines.size() > 1;
    if (m_lines.isEmpty())
        return std::nullopt;
    return m_lines.dequeue();
}
