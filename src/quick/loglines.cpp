#include "quick/loglines_p.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace zeltools::quick
{

namespace
{

qint64 memory_B(const KeptLine& line)
{
    constexpr qint64 overhead_B = 64; // of a heap block and the entries in both queues
    return qint64(sizeof line) + qint64(sizeof(QChar)) * line.text.size() + overhead_B;
}

/// The line as it is found again in a file: the reader does not know empty lines at its end.
std::pair<qint64, QString> identity(const KeptLine& line)
{
    QString text = line.text;
    while (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return {line.time_ms, text};
}

qint64 memory_B(const std::deque<KeptLine>& lines)
{
    qint64 sum_B = 0;
    for (const KeptLine& line : lines)
        sum_B += memory_B(line);
    return sum_B;
}

} // namespace

void LogLines::setFilter(const LogFilter& filter)
{
    m_filter = filter;
    m_shown.clear();
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (m_filter.accepts(m_lines[i]))
            m_shown.push_back(m_first + i);
    }
}

void LogLines::decode(const LogCollector::Lines& collected, std::deque<KeptLine>& fresh)
{
    for (const LogCollector::Line& line : collected.lines) {
        const QString text =
            QString::fromLocal8Bit(collected.text.data() + line.begin, int(line.size_B));
        // The text of an event starts with a blank.
        const bool isEvent = line.level == LogLevel::Event && text.startsWith(QLatin1Char(' '));
        fresh.push_back({line.time_ms, line.modules, line.level, line.thread, line.isCut,
                         isEvent ? text.mid(1) : text});
    }
}

quint64 LogLines::trim(std::deque<KeptLine>& fresh) const
{
    quint64 removed = 0;
    for (qint64 sum_B = memory_B(fresh); fresh.size() > m_maximumLines || sum_B > maximumMemory_B;
         ++removed) {
        sum_B -= memory_B(fresh.front());
        fresh.pop_front();
    }
    return removed;
}

size_t LogLines::surplus(const std::deque<KeptLine>& fresh) const
{
    size_t count = 0;
    for (qint64 sum_B = m_memory_B + memory_B(fresh);
         count < m_lines.size() &&
         (m_lines.size() - count + fresh.size() > m_maximumLines || sum_B > maximumMemory_B);
         ++count)
        sum_B -= memory_B(m_lines[count]);
    return count;
}

int LogLines::shownAmong(size_t count) const
{
    const auto end = std::lower_bound(m_shown.begin(), m_shown.end(), m_first + count);
    return int(end - m_shown.begin());
}

void LogLines::removeFirst(size_t count)
{
    m_shown.erase(m_shown.begin(), m_shown.begin() + shownAmong(count));
    for (size_t i = 0; i < count; ++i)
        m_memory_B -= memory_B(m_lines[i]);
    m_lines.erase(m_lines.begin(), m_lines.begin() + std::ptrdiff_t(count));
    m_first += count;
}

int LogLines::acceptedAmong(const std::deque<KeptLine>& fresh) const
{
    return int(std::count_if(fresh.begin(), fresh.end(),
                             [this](const KeptLine& line) { return m_filter.accepts(line); }));
}

void LogLines::append(std::deque<KeptLine>& fresh)
{
    for (KeptLine& line : fresh) {
        if (m_filter.accepts(line))
            m_shown.push_back(m_first + m_lines.size());
        m_memory_B += memory_B(line);
        m_lines.push_back(std::move(line));
    }
}

void LogLines::trimPast(std::deque<KeptLine>& past) const
{
    QHash<std::pair<qint64, QString>, int> known;
    for (const KeptLine& line : m_lines) {
        if (!past.empty() && line.time_ms <= past.back().time_ms)
            ++known[identity(line)];
    }
    const auto isKnown = [&known](const KeptLine& line) {
        const auto place = known.find(identity(line));
        return place != known.end() && (*place)-- > 0;
    };
    past.erase(std::remove_if(past.begin(), past.end(), isKnown), past.end());
    qint64 sum_B = m_memory_B + memory_B(past);
    while (!past.empty() &&
           (past.size() + m_lines.size() > m_maximumLines || sum_B > maximumMemory_B)) {
        sum_B -= memory_B(past.front());
        past.pop_front();
    }
}

void LogLines::prepend(std::deque<KeptLine>& past)
{
    for (auto line = past.rbegin(); line != past.rend(); ++line) {
        --m_first;
        if (m_filter.accepts(*line))
            m_shown.push_front(m_first);
        m_memory_B += memory_B(*line);
        m_lines.push_front(std::move(*line));
    }
}

} // namespace zeltools::quick
