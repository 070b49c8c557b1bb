#pragma once

#include "logging/logsink.h"

#include <QMutex>

#include <functional>
#include <string>
#include <vector>

namespace zeltools::quick
{

class FrameUpdates;

/// Takes the lines of all threads for a model, and asks for an update of the model. A line costs
/// its thread a lock and a copy of the text into memory that is reused.
///
/// The lines that wait for the model are bounded: there are two parts, and when the newer one is
/// full, the older one is dropped and counted.
class LogCollector : public LogSink
{
public:
    static constexpr size_t maximumText_B = size_t(4) * 1024 * 1024; ///< in each part
    static constexpr int maximumLine_B = 64 * 1024;                  ///< A longer line is cut.

    struct Line
    {
        qint64 time_ms;
        quint64 modules;
        LogLevel::Level level;
        qint32 thread;
        quint32 begin; ///< of the text in Lines::text
        quint32 size_B;
        bool isCut;
    };
    struct Lines
    {
        std::vector<Line> lines;
        std::string text;

        void clear();
    };

    /// The updates must outlive the collector.
    explicit LogCollector(FrameUpdates& updates);
    ~LogCollector() override;

    void write(const LogRecord& record) override;
    void setMaximumLines(size_t count);
    /// Passes the waiting lines to the function and forgets them. Returns the number of lines that
    /// were dropped since the last call. Only the thread of the model calls it.
    quint64 take(const std::function<void(const Lines&)>& use);

private:
    FrameUpdates& m_updates;
    QMutex m_mutex;
    Lines m_older;
    Lines m_newer;
    Lines m_takenOlder; // keep their memory for the next lines
    Lines m_takenNewer;
    size_t m_maximumLines = 10000;
    quint64 m_dropped = 0;
};

} // namespace zeltools::quick
