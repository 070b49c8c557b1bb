#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>

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

    /// A file with data that may not be on the storage yet. It owns a descriptor of the file.
    class Entry
    {
    public:
        /// `folder` is the folder whose entry for the file is synced too, or empty.
        Entry(int descriptor, std::string folder);
        ~Entry();
        Q_DISABLE_COPY(Entry)

        /// Whether a later sync() covers what is in the file now.
        bool isWaiting() const { return m_descriptor >= 0; }
        /// Blocks until the data is on the storage. It ends isWaiting() first.
        void sync();
        /// Ends isWaiting() without a sync if the file has no name any more, so that its blocks
        /// become free.
        void dropDeleted();

    private:
        std::atomic<int> m_descriptor;
        const std::string m_folder;
    };

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
    void add(std::shared_ptr<Entry> entry);
    /// Brings the next sync forward for an urgent line that was written before.
    void hurry();

private:
    class Worker;

    std::shared_ptr<Worker> m_worker; // shared with the thread, which may outlive this object
};
