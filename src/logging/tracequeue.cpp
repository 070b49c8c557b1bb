#include "logging/tracequeue_p.h"

#include <cstring>
#include <new>
#include <utility>

TraceQueue::~TraceQueue()
{
    while (takeOldest()) {
    }
}

void TraceQueue::add(const QByteArray& bytes)
{
    if (isRoomFor(bytes.size()))
        push(bytes, false);
    else if (m_dropped.fetch_add(1) == 0)
        m_available.release();
}

void TraceQueue::waitUntilWritten()
{
    const QMutexLocker locker(&m_waiting);
    push(QByteArray(), true);
    m_marksReached.acquire();
}

void TraceQueue::end()
{
    m_isEnded = true;
    m_available.release();
}

TraceQueue::LinePointer TraceQueue::next()
{
    for (;;) {
        if (std::exchange(m_isMarkReached, false))
            m_marksReached.release();
        const bool isEnded = m_isEnded; // read before the lines, so that none is missed
        LinePointer line = takeOldest();
        if (line) {
            m_memory -= memoryOf(line->size);
            m_isMarkReached = line->isMark;
            if (line->size > 0 || line->droppedBefore > 0)
                return line;
        } else if (m_dropped != 0) {
            push(QByteArray(), false);
        } else if (isEnded) {
            return line;
        } else {
            m_available.acquire();
        }
    }
}

qint64 TraceQueue::memoryOf(qint64 size)
{
    constexpr qint64 allocatorHeader = 16;
    return size + qint64(sizeof(Line)) + allocatorHeader;
}

// Several threads may get the last room at the same time. One line of each beyond the limit does no
// harm.
bool TraceQueue::isRoomFor(qint64 size)
{
    const qint64 limit = m_isClosed ? maximumSize_B / 2 : maximumSize_B;
    const bool isRoom = m_memory + memoryOf(size) <= limit;
    if (m_isClosed == isRoom)
        m_isClosed = !isRoom;
    return isRoom;
}

// The writer may take and delete the line as soon as it is linked.
void TraceQueue::push(const QByteArray& bytes, bool isMark)
{
    const qint64 size = bytes.size();
    auto* const line = new (::operator new(sizeof(Line) + size_t(size)))
        Line{m_newest, m_dropped != 0 ? m_dropped.exchange(0) : 0, size, isMark};
    std::memcpy(line + 1, bytes.constData(), size_t(size));
    m_memory += memoryOf(size);
    Line* before = line->next;
    while (!m_newest.compare_exchange_weak(before, line))
        line->next = before;
    if (before == nullptr)
        m_available.release();
}

TraceQueue::LinePointer TraceQueue::takeOldest()
{
    if (m_oldest == nullptr) {
        Line* newest = m_newest.exchange(nullptr);
        while (newest != nullptr) {
            Line* const before = newest->next;
            newest->next = m_oldest;
            m_oldest = newest;
            newest = before;
        }
    }
    if (m_oldest == nullptr)
        return nullptr;
    return LinePointer(std::exchange(m_oldest, m_oldest->next));
}
