#include "quick/logcollector_p.h"

#include "quick/frameupdates_p.h"

#include <utility>

namespace zeltools::quick
{

namespace
{

// The size of the text up to the limit, without a part of a character at its end.
int cutSize(const QByteArray& text, int limit)
{
    if (text.size() <= limit)
        return int(text.size());
    constexpr int longestRest = 3; // of a character in UTF-8
    for (int size = limit; size >= limit - longestRest; --size) {
        if ((uchar(text.at(size)) & 0xC0U) != 0x80U)
            return size;
    }
    return limit;
}

} // namespace

void LogCollector::Lines::clear()
{
    constexpr size_t kept_B = size_t(256) * 1024;
    lines.clear();
    text.clear();
    if (text.capacity() > kept_B)
        *this = Lines();
}

LogCollector::LogCollector(FrameUpdates& updates)
    : m_updates(updates)
{
}

LogCollector::~LogCollector() = default;

void LogCollector::write(const LogRecord& record)
{
    const auto size = size_t(cutSize(record.text, maximumLine_B));
    const QMutexLocker locker(&m_mutex);
    if (m_newer.lines.size() >= m_maximumLines || m_newer.text.size() + size > maximumText_B) {
        m_dropped += m_older.lines.size();
        m_older.clear();
        std::swap(m_older, m_newer);
    }
    m_newer.lines.push_back({record.time_ms, record.modules.bits(), record.level, record.thread,
                             quint32(m_newer.text.size()), quint32(size),
                             size < size_t(record.text.size())});
    m_newer.text.append(record.text.constData(), size);
    m_updates.request();
}

void LogCollector::setMaximumLines(size_t count)
{
    const QMutexLocker locker(&m_mutex);
    m_maximumLines = count;
}

quint64 LogCollector::take(const std::function<void(const Lines&)>& use)
{
    quint64 dropped = 0;
    {
        const QMutexLocker locker(&m_mutex);
        std::swap(m_takenOlder, m_older);
        std::swap(m_takenNewer, m_newer);
        dropped = std::exchange(m_dropped, 0);
    }
    for (Lines* const lines : {&m_takenOlder, &m_takenNewer}) {
        use(*lines);
        lines->clear();
    }
    return dropped;
}

} // namespace zeltools::quick
