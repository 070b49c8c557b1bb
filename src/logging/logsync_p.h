#pragma once

#include <QtGlobal>

#include <chrono>
#include <memory>

class SyncThread;
class UnsyncedFile;

/// Forces what was written to log files to the storage, in a thread of its own, so that no thread
/// that logs ever waits for the storage. The thread sleeps until a file has unsynced data, and
/// syncs all such files when the first of them is due. It begins half of the urgent delay before
/// the promised moment, which is the time that it leaves the storage.
///
/// One thread starts and stops it; any thread may call the other functions. A forked child has no
/// such thread: there, add() and hurry() do nothing until start() is called, and stop() returns at
/// once. No function of a child waits for a lock that the parent held.
class LogSync
{
public:
    using Milliseconds = std::chrono::milliseconds;

    LogSync();
    ~LogSync();
    Q_DISABLE_COPY(LogSync)

    /// The longest time that a line is missing from the storage, and that of an urgent line.
    void setDelays(Milliseconds interval, Milliseconds urgentDelay);
    /// Starts the thread if it does not run. Without threads in the system, nothing is synced.
    void start();
    /// Syncs all files and ends the thread. After stopLimit, it leaves that to the thread, which a
    /// storage may block that does not answer.
    void stop();
    static constexpr Milliseconds stopLimit{5000};

    /// Takes a file that has got unsynced data.
    void add(std::shared_ptr<UnsyncedFile> file);
    /// Brings the next sync forward for an urgent line that was written before.
    void hurry();

private:
    std::shared_ptr<SyncThread> m_thread;
};
