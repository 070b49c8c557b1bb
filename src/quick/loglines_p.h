#pragma once

#include "quick/logcollector_p.h"
#include "quick/logfilter_p.h"

#include <deque>
#include <vector>

namespace zeltools::quick
{

/// The lines that LogModel keeps, in the order of their arrival, and which of them it shows. Their
/// number and their memory are bounded.
class LogLines
{
public:
    static constexpr qint64 maximumMemory_B = qint64(16) * 1024 * 1024;

    size_t count() const { return m_lines.size(); }
    int shownCount() const { return int(m_shown.size()); }
    const KeptLine& shownLine(int row) const
    {
        return m_lines[size_t(m_shown[size_t(row)] - m_first)];
    }
    const LogFilter& filter() const { return m_filter; }
    /// Sets the filter and finds the lines that it accepts.
    void setFilter(const LogFilter& filter);
    size_t maximumLines() const { return m_maximumLines; }
    void setMaximumLines(size_t count) { m_maximumLines = count; }

    /// Decodes collected lines and appends them to `fresh`.
    static void decode(const LogCollector::Lines& collected, std::deque<KeptLine>& fresh);
    /// Removes the first of the fresh lines if they alone are too many. Returns how many.
    quint64 trim(std::deque<KeptLine>& fresh) const;
    /// How many of the first lines must go before there is room for the fresh ones.
    size_t surplus(const std::deque<KeptLine>& fresh) const;
    /// How many of the first shown lines are among the first `count` lines.
    int shownAmong(size_t count) const;
    void removeFirst(size_t count);
    int acceptedAmong(const std::deque<KeptLine>& fresh) const;
    void append(std::deque<KeptLine>& fresh);
    /// Removes the lines of the past that are here already, and those for which there is no room.
    void trimPast(std::deque<KeptLine>& past) const;
    void prepend(std::deque<KeptLine>& past);

private:
    std::deque<KeptLine> m_lines;
    std::deque<quint64> m_shown; // the numbers of lines, which are consecutive
    quint64 m_first = 1U << 31U; // the number of the first line
    qint64 m_memory_B = 0;
    size_t m_maximumLines = 10000;
    LogFilter m_filter;
};

} // namespace zeltools::quick
