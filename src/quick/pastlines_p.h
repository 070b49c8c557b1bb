#pragma once

#include "quick/logfilter_p.h"

#include <atomic>
#include <deque>
#include <functional>
#include <memory>

#include <sys/stat.h>

namespace zeltools::quick
{

/// One reading of the last lines of the general log file and, if it is short, of its predecessor,
/// in a thread of readingPool(). A packed predecessor is not read. The file tells neither the
/// modules nor the thread of a line.
///
/// The past ends where the file ends when the object is created: the times of the lines do not
/// tell, since the clock may have been set back.
class PastLines
{
public:
    static constexpr qint64 maximum_B = qint64(256) * 1024;

    /// The path layout must exist.
    PastLines();

    /// Begins the reading, which ends with a call of `finished` in the thread of the pool. The
    /// caller need not keep the object.
    static void start(const std::shared_ptr<PastLines>& reading, std::function<void()> finished);

    /// Whether `lines` may be used.
    bool isDone() const { return m_isDone; }
    std::deque<KeptLine> lines; ///< the oldest first

private:
    void run();
    QByteArray read() const;
    void add(const QString& line);

    struct stat m_end = {}; // of the file
    std::atomic<bool> m_isDone = false;
};

} // namespace zeltools::quick
