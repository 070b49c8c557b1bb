#include "logging/syncthread_p.h"

#include "signalsblocked.h"

#include <algorithm>
#include <limits>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <time.h>

namespace
{

constexpr qint64 s_never = std::numeric_limits<qint64>::max();

qint64 now_ms()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

// Returns when the semaphore was posted or the time has come, and at times for no reason.
void waitUntil(sem_t& semaphore, qint64 end_ms)
{
    const timespec end = {time_t(end_ms / 1000), long(end_ms % 1000) * 1000000};
    if (end_ms == s_never)
        sem_wait(&semaphore);
    else
        sem_clockwait(&semaphore, CLOCK_MONOTONIC, &end);
}

void syncFolder(const std::string& path)
{
    const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    ::close(folder);
}

void start(std::thread& thread, const std::shared_ptr<SyncThread>& owner, void (SyncThread::*run)())
{
    const zeltools::SignalsBlocked blocked;
    try {
        thread = std::thread(run, owner);
    } catch (const std::system_error&) {
        // The lines still reach the operating system, which writes them to the storage.
    }
}

} // namespace

SyncThread::SyncThread()
    : m_due_ms(s_never)
{
    sem_init(&m_wake, 0, 0);
    sem_init(&m_ended, 0, 0);
}

SyncThread::~SyncThread()
{
    sem_destroy(&m_wake);
    sem_destroy(&m_ended);
}

void SyncThread::setDelays(Milliseconds interval, Milliseconds urgentDelay)
{
    const auto bounded = [](Milliseconds delay) {
        constexpr std::chrono::milliseconds longest = std::chrono::hours(24);
        return std::clamp(delay, std::chrono::milliseconds(0), longest).count();
    };
    const qint64 longest_ms = bounded(interval);
    m_urgent_ms = std::min<qint64>(bounded(urgentDelay), longest_ms) / 2;
    m_interval_ms = longest_ms - m_urgent_ms;
}

void SyncThread::setDelaysOf(const SyncThread& other)
{
    m_urgent_ms = other.m_urgent_ms.load();
    m_interval_ms = other.m_interval_ms.load();
}

void SyncThread::start(const std::shared_ptr<SyncThread>& thread)
{
    const std::lock_guard<std::mutex> lock(thread->m_mutex);
    thread->m_isStopping = false;
    if (thread->m_isRunning)
        return;
    std::thread runner;
    ::start(runner, thread, &SyncThread::run);
    if (!runner.joinable())
        return;
    pthread_setname_np(runner.native_handle(), "Log sync");
    runner.detach();
    thread->m_isRunning = true;
}

void SyncThread::stop(Milliseconds limit)
{
    const qint64 end_ms = now_ms() + limit.count();
    m_isStopping = true;
    sem_post(&m_wake);
    while (isRunning() && now_ms() < end_ms)
        waitUntil(m_ended, end_ms);
}

bool SyncThread::isRunning()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isRunning;
}

void SyncThread::run()
{
    while (!hasEnded()) {
        while (!m_isStopping && now_ms() < m_due_ms)
            waitUntil(m_wake, m_due_ms);
        syncAll();
    }
}

bool SyncThread::hasEnded()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isStopping || !m_files.empty())
        return false;
    m_isRunning = false;
    sem_post(&m_ended);
    return true;
}

void SyncThread::syncAll()
{
    std::vector<std::shared_ptr<UnsyncedFile>> files;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        files.swap(m_files);
        m_due_ms = s_never;
    }
    for (const auto& file : files)
        file->sync();
    std::set<std::string> folders;
    for (const auto& file : files)
        folders.insert(file->folder());
    for (const std::string& folder : folders)
        syncFolder(folder);
}

void SyncThread::add(std::shared_ptr<UnsyncedFile> file)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isRunning)
        return;
    m_files.push_back(std::move(file));
    bringForward(m_interval_ms);
}

void SyncThread::hurry()
{
    if (now_ms() + m_urgent_ms >= m_due_ms)
        return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_files.empty())
        bringForward(m_urgent_ms);
}

void SyncThread::bringForward(qint64 delay_ms)
{
    const qint64 due_ms = now_ms() + delay_ms;
    if (due_ms >= m_due_ms)
        return;
    m_due_ms = due_ms;
    sem_post(&m_wake);
}
