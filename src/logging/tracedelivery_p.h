#pragma once

#include "logging/logmodules.h"
#include "logging/rotatinglogfile.h"
#include "logging/tracequeue_p.h"

#include <functional>
#include <mutex>
#include <shared_mutex>

class LogBuffer;

/// Takes the lines of a LogInFile to its file: through the ring in buffered delivery, and
/// otherwise, or if the ring has no place for the file, through a queue of its own. When the
/// delivery changes, the lines of the old way are written before the first one takes the new way.
/// Any thread may call the functions.
class TraceDelivery
{
public:
    /// `waitForQueue()` is called to empty the queue when the delivery has changed.
    TraceDelivery(RotatingLogFile* file, const std::function<void()>& waitForQueue);
    ~TraceDelivery();
    Q_DISABLE_COPY(TraceDelivery)

    /// Allows the use of the ring, for which the file has these limits and the lines this module.
    /// Call it before the first line.
    void setRingAllowed(const RotatingLogFileConfiguration& configuration, const LogModule& module);

    /// Takes the line or drops it. It only waits when the delivery has changed.
    void add(const QByteArray& line);
    /// Returns when the lines in the ring are written, however long that takes.
    void waitForRing();

    TraceQueue queue; ///< The owner runs the writer of the queue.

private:
    void changeWay();
    void leaveRing();
    bool addInWay(const QByteArray& line);

    RotatingLogFile* m_file;
    std::function<void()> m_waitForQueue;
    RotatingLogFileConfiguration m_configuration = {};
    quint64 m_modules = 0;
    int m_process;
    bool m_isRingAllowed = false;
    mutable std::shared_mutex m_mutex; ///< Callers share it, and a change of the way excludes them.
    LogBuffer* m_buffer = nullptr;
    int m_place = -1; ///< Of the file in the ring, or -1 while lines take the queue.
};
