#pragma once

#include "quick/logfilter_p.h"

#include <atomic>
#include <deque>
#include <functional>
#include <memory>

namespace zeltools::quick
{

/// One reading of the last lines of the general log file and, if it is short, of its predecessor,
/// in a thread of readingPool(). A packed predecessor is not read. The file tells neither the
/// modules nor the thread of a line.
class PastLines
{
public:
    static constexpr qint64 maximum_B = qint64(256) * 1024;

    /// Later lines than this time, in milliseconds since 1970, are left out.
    explicit PastLines(qint64 latest_ms);

    /// Begins the reading, which ends with a call of `finished` in the thread of the pool. The
    /// caller need not keep the object.
    static void start(const std::shared_ptr<PastLines>& reading, std::function<void()> finished);

    /// Whether `lines` may be used.
    bool isDone() const { return m_isDone; }
    std::deque<KeptLine> lines; ///< the oldest first

private:
    void run();
    void add(const QString& line);

    const qint64 m_latest_ms;
    std::atomic<bool> m_isDone = false;
};

} // namespace zeltools::quick
