#pragma once

#include <QByteArray>
#include <QSemaphore>

#include <atomic>
#include <memory>

/// The lines on their way from the callers of a LogInFile to its writer, in the order in which they
/// came. The callers never wait for a lock that the writer holds: it is the least urgent thread of
/// the machine and might not run again for a second.
///
/// The memory of the lines is bounded. The first line that does not fit closes the queue: lines are
/// dropped and counted from then on, until half of the queue is empty.
class TraceQueue
{
public:
    static constexpr qint64 maximumSize_B = qint64(64) * 1024 * 1024;

    /// A line, whose bytes follow it in memory.
    struct Line
    {
        Line* next;
        qint64 droppedBefore; ///< The number of lines dropped since the line before.
        qint64 size;          ///< 0 where there is only a number to tell.
        bool isMark;          ///< Of waitUntilWritten().

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

    /// Takes the line, or drops it. Any thread may call it.
    void add(const QByteArray& bytes);
    /// Returns when the writer is done with every line that was taken before. One thread at a time
    /// may call it.
    void waitUntilWritten();
    /// Lets the writer end when it is done with all lines.
    void end();

    /// The writer's function: the next line, for which it waits. Null after the end. Asking for a
    /// line means that the one before is written.
    LinePointer next();

private:
    static qint64 memoryOf(qint64 size);
    bool isRoomFor(qint64 size);
    void push(const QByteArray& bytes, bool isMark);
    LinePointer takeOldest();

    std::atomic<Line*> m_newest = nullptr; // and those before it, newest first
    Line* m_oldest = nullptr;              // the writer's, oldest first
    bool m_isMarkReached = false;          // the writer's
    std::atomic<qint64> m_memory = 0;
    std::atomic<qint64> m_dropped = 0;
    std::atomic<bool> m_isClosed = false;
    std::atomic<bool> m_isEnded = false;
    QSemaphore m_available;
    QSemaphore m_marksReached;
};
