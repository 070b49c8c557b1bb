#pragma once

#include <QByteArray>
#include <QMutex>
#include <QSemaphore>

#include <atomic>
#include <memory>

/// A queue of lines from the callers of a LogInFile to its writer thread. The callers never wait
/// for a lock of the writer, which is the least urgent thread of the machine and may not run for a
/// second.
///
/// The memory of the lines is bounded. The first line that does not fit closes the queue. Lines are
/// then dropped and counted until half of the queue is empty.
class TraceQueue
{
public:
    static constexpr qint64 maximumSize_B = qint64(64) * 1024 * 1024;

    /// A line, whose bytes follow it in memory.
    struct Line
    {
        Line* next;
        qint64 droppedBefore; ///< The number of lines dropped since the line before.
        qint64 size;          ///< 0 if there is only a number of dropped lines to report.
        bool isMark;          ///< Whether waitUntilWritten() has queued it.

        const char* bytes() const { return reinterpret_cast<const char*>(this + 1); }
    };
    struct Deleter
    {
        void operator()(Line* line) const { ::operator delete(line); }
    };
    using LinePointer = std::unique_ptr<Line, Deleter>;

    TraceQueue() = default;
    ~TraceQueue();
    Q_DISABLE_COPY(TraceQueue)

    /// Queues the line or drops it. Any thread may call it.
    void add(const QByteArray& bytes);
    /// Returns when the writer has written every line that was queued before.
    void waitUntilWritten();
    /// Makes next() return null after the last line.
    void end();

    /// Waits for the next line; null after the end. Only the writer calls it, and the call tells
    /// the queue that the previous line is written.
    LinePointer next();

private:
    static qint64 memoryOf(qint64 size);
    bool isRoomFor(qint64 size);
    void push(const QByteArray& bytes, bool isMark);
    LinePointer takeOldest();

    std::atomic<Line*> m_newest = nullptr; // lines that the writer has not taken, newest first
    Line* m_oldest = nullptr;              // lines that the writer has taken, oldest first
    bool m_isMarkReached = false;          // used by the writer only
    std::atomic<qint64> m_memory = 0;
    std::atomic<qint64> m_dropped = 0;
    std::atomic<bool> m_isClosed = false;
    std::atomic<bool> m_isEnded = false;
    QSemaphore m_available;
    QSemaphore m_marksReached;
    QMutex m_waiting; // one thread at a time
};
