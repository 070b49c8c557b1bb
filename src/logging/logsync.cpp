#include "logging/logsync_p.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <pthread.h>
#include <semaphore.h>
#include <signal.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace
{

constexpr qint64 s_never = std::numeric_limits<qint64>::max();

qint64 now_ms()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

// A semaphore takes no lock. A condition variable that a thread of the parent waited for could
// never be destroyed in a forked child.
class Signal
{
public:
    Signal() { sem_init(&m_semaphore, 0, 0); }
    ~Signal() { sem_destroy(&m_semaphore); }
    Q_DISABLE_COPY(Signal)

    void send() { sem_post(&m_semaphore); }
    void clear()
    {
        while (sem_trywait(&m_semaphore) == 0) {
        }
    }
    /// Returns when the signal was sent or the time has come, and at times for no reason.
    void wait(qint64 end_ms)
    {
        const timespec end = {time_t(end_ms / 1000), long(end_ms % 1000) * 1000000};
        if (end_ms == s_never)
            sem_wait(&m_semaphore);
        else
            sem_clockwait(&m_semaphore, CLOCK_MONOTONIC, &end);
    }

private:
    sem_t m_semaphore;
};

// Signals of the host are handled by the threads of the host.
class BlockedSignals
{
public:
    BlockedSignals()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_kept);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &m_kept, nullptr); }
    Q_DISABLE_COPY(BlockedSignals)

private:
    sigset_t m_kept;
};

} // namespace

/// What the thread and the callers share.
class LogSync::Worker
{
public:
    void setDelays(Milliseconds interval, Milliseconds urgentDelay)
    {
        const auto bounded = [](Milliseconds delay) {
            constexpr qint64 longest_ms = 24 * 60 * 60 * 1000;
            return std::clamp<qint64>(delay.count(), 0, longest_ms);
        };
        m_urgent_ms = bounded(urgentDelay) / 2;
        m_interval_ms = std::max<qint64>(bounded(interval) - m_urgent_ms, 0);
    }

    void setDelaysOf(const Worker& other)
    {
        m_urgent_ms = other.m_urgent_ms.load();
        m_interval_ms = other.m_interval_ms.load();
    }
    bool isOfThisProcess() const { return m_process == getpid(); }

    static void start(const std::shared_ptr<Worker>& worker);
    void stop();
    void add(std::shared_ptr<Entry> entry);
    void hurry();

private:
    bool isRunning();
    void run();
    bool hasEnded();
    void syncAll();
    void bringForward(qint64 delay_ms);

    const pid_t m_process = getpid();
    std::atomic<qint64> m_interval_ms;
    std::atomic<qint64> m_urgent_ms;
    std::atomic<qint64> m_due_ms = s_never; // changes under the mutex
    std::mutex m_mutex;
    std::vector<std::shared_ptr<Entry>> m_entries;
    bool m_isRunning = false;
    std::atomic<bool> m_isStopping = false;
    Signal m_wake;
    Signal m_ended;
};

void LogSync::Worker::start(const std::shared_ptr<Worker>& worker)
{
    const std::lock_guard<std::mutex> lock(worker->m_mutex);
    worker->m_isStopping = false;
    if (worker->m_isRunning)
        return;
    worker->m_ended.clear();
    const BlockedSignals blocked;
    try {
        std::thread thread([worker] { worker->run(); });
        pthread_setname_np(thread.native_handle(), "Log sync");
        thread.detach();
        worker->m_isRunning = true;
    } catch (const std::system_error&) {
        // The lines still reach the operating system, which writes them to the storage.
    }
}

void LogSync::Worker::stop()
{
    const qint64 end_ms = now_ms() + stopLimit.count();
    m_isStopping = true;
    m_wake.send();
    while (isRunning() && now_ms() < end_ms)
        m_ended.wait(end_ms);
}

bool LogSync::Worker::isRunning()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isRunning;
}

void LogSync::Worker::run()
{
    while (!hasEnded()) {
        while (!m_isStopping && now_ms() < m_due_ms)
            m_wake.wait(m_due_ms);
        syncAll();
    }
}

bool LogSync::Worker::hasEnded()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isStopping || !m_entries.empty())
        return false;
    m_isRunning = false;
    m_ended.send();
    return true;
}

void LogSync::Worker::syncAll()
{
    std::vector<std::shared_ptr<Entry>> entries;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        entries.swap(m_entries);
        m_due_ms = s_never;
    }
    for (const auto& entry : entries)
        entry->sync();
}

void LogSync::Worker::add(std::shared_ptr<Entry> entry)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isRunning)
        return;
    m_entries.push_back(std::move(entry));
    bringForward(m_interval_ms);
}

void LogSync::Worker::hurry()
{
    if (now_ms() + m_urgent_ms >= m_due_ms)
        return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_entries.empty())
        bringForward(m_urgent_ms);
}

void LogSync::Worker::bringForward(qint64 delay_ms)
{
    const qint64 due_ms = now_ms() + delay_ms;
    if (due_ms >= m_due_ms)
        return;
    m_due_ms = due_ms;
    m_wake.send();
}

LogSync::Entry::Entry(int descriptor, std::string folder)
    : m_descriptor(descriptor)
    , m_folder(std::move(folder))
{
}

LogSync::Entry::~Entry()
{
    if (isWaiting())
        ::close(m_descriptor);
}

void LogSync::Entry::sync()
{
    const int descriptor = m_descriptor.exchange(-1);
    if (descriptor < 0)
        return;
    fdatasync(descriptor);
    ::close(descriptor);
    if (m_folder.empty())
        return;
    const int folder = ::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    ::close(folder);
}

// If sync() takes the descriptor at the same time, its number may already belong to another file,
// and nothing is closed here.
void LogSync::Entry::dropDeleted()
{
    int descriptor = m_descriptor;
    struct stat file;
    if (descriptor >= 0 && fstat(descriptor, &file) == 0 && file.st_nlink == 0 &&
        m_descriptor.compare_exchange_strong(descriptor, -1))
        ::close(descriptor);
}

LogSync::LogSync()
    : m_worker(std::make_shared<Worker>())
{
    setDelays(Milliseconds(5000), Milliseconds(200));
}

LogSync::~LogSync()
{
    stop();
}

void LogSync::setDelays(Milliseconds interval, Milliseconds urgentDelay)
{
    m_worker->setDelays(interval, urgentDelay);
}

void LogSync::start()
{
    if (!m_worker->isOfThisProcess()) {
        const std::shared_ptr<Worker> parents = std::move(m_worker);
        m_worker = std::make_shared<Worker>();
        m_worker->setDelaysOf(*parents);
    }
    Worker::start(m_worker);
}

void LogSync::stop()
{
    if (m_worker->isOfThisProcess())
        m_worker->stop();
}

void LogSync::add(std::shared_ptr<Entry> entry)
{
    if (m_worker->isOfThisProcess())
        m_worker->add(std::move(entry));
}

void LogSync::hurry()
{
    if (m_worker->isOfThisProcess())
        m_worker->hurry();
}
