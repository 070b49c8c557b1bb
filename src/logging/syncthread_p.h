#pragma once

#include "logging/unsyncedfile_p.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

#include <semaphore.h>
#include <unistd.h>

/// The thread of LogSync, and what it shares with the callers. The thread may outlive LogSync when
/// the storage does not answer, so both own this object.
class SyncThread
{
public:
    using Milliseconds = std::chrono::milliseconds;

    SyncThread();
    ~SyncThread();
    Q_DISABLE_COPY(SyncThread)

    /// The functions of LogSync, for the process that has created the object.
    void setDelays(Milliseconds interval, Milliseconds urgentDelay);
    void setDelaysOf(const SyncThread& other);
    static void start(const std::shared_ptr<SyncThread>& thread);
    void stop(Milliseconds limit);
    void add(std::shared_ptr<UnsyncedFile> file);
    void hurry();

    bool isOfThisProcess() const { return m_process == getpid(); }

private:
    void run();
    bool hasEnded();
    bool isRunning();
    void syncAll();
    void bringForward(qint64 delay_ms);

    const pid_t m_process = getpid();
    std::atomic<qint64> m_interval_ms;
    std::atomic<qint64> m_urgent_ms;
    std::atomic<qint64> m_due_ms; // changes under the mutex
    std::mutex m_mutex;
    std::vector<std::shared_ptr<UnsyncedFile>> m_files;
    bool m_isRunning = false;
    std::atomic<bool> m_isStopping = false;
    // A condition variable that the thread of the parent waits for could never be destroyed in a
    // forked child.
    sem_t m_wake;
    sem_t m_ended;
};
